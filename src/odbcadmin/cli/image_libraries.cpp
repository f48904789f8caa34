// Choosing between the two.
#include "odbcadmin/cli/image_libraries.h"

namespace jx::cli {

doctor::LoaderPlaces placesOf(const Session& session) {
    return session.root.empty() ? doctor::loaderPlaces() : doctor::imagePlaces(session.imageRoot());
}

}  // namespace jx::cli
