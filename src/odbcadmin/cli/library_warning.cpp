// Looking at a library's file, and saying what is wrong with it.
#include "odbcadmin/cli/library_warning.h"

#include "odbcadmin/doctor/library_state.h"

namespace jx::cli {

void warnOfLibrary(const Session& session, const std::string& what, const std::string& path) {
    if (path.find('/') == std::string::npos || session.quiet)
        return;
    const std::string state = doctor::libraryFileState(session.imageRoot() + path);
    if (state == "missing")
        session.warn("the " + what + " " + path + " is not there");
    else if (state == "broken")
        session.warn("the " + what + " " + path + " cannot be used; see odbcadmin driver check");
    else if (state == "wrong architecture")
        session.warn("the " + what + " " + path + " is for another kind of processor");
}

}  // namespace jx::cli
