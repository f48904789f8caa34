// Looking at a library's file, and saying what is wrong with it.
#include "odbcadmin/cli/library_warning.h"

#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/library_state.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

void warnOfLibrary(const Session& session, const std::string& what, const std::string& path) {
    if (path.find('/') == std::string::npos || session.quiet)
        return;
    // In an image a library lies below its root.
    const std::string root = session.root.empty() ? "" : model::absolutePath(unmarked(session.root));
    const std::string state = doctor::libraryFileState(root + path);
    if (state == "missing")
        session.warn("the " + what + " " + path + " is not there");
    else if (state == "broken")
        session.warn("the " + what + " " + path + " cannot be used; see odbcadmin driver check");
    else if (state == "wrong architecture")
        session.warn("the " + what + " " + path + " is for another kind of processor");
}

}  // namespace jx::cli
