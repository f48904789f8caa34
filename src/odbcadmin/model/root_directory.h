// Working on the files of an image: a directory that holds the root of another system.
#pragma once

#include <optional>
#include <string>

#include "odbcadmin/model/reason.h"

namespace jx::model {

// From here on the files of this process are those below directory: its etc, and the home directory that HOME names,
// or this account's, below it. The variables that move files count no more, since they are this system's. Sets HOME
// and ODBCSYSINI of the process and unsets ODBCINI and ODBCINSTINI.
// Failure  the directory is not there, or one of the four files would lead out of it by a symbolic link: a change of an
//          image must not reach this system. The variables are set all the same.
Reason enterRoot(const std::string& directory);

// A path of this system as the image below root has it: "/opt/libx.so" for "/srv/image/opt/libx.so". Nothing when it
// lies outside, and for a relative one. An empty root is this system's own: every path stays what it is.
std::optional<std::string> pathInImage(const std::string& root, const std::string& path);

}  // namespace jx::model
