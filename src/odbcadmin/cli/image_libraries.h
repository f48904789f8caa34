// Where a verb looks for libraries: on this system, or in the image that --root names.
#pragma once

#include "odbcadmin/cli/session.h"
#include "odbcadmin/doctor/loader_places.h"

namespace jx::cli {

doctor::LoaderPlaces placesOf(const Session& session);

}  // namespace jx::cli
