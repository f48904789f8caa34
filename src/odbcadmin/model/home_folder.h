// Working on the files of another home folder.
#pragma once

#include <string>

namespace jx::model {

// Makes that folder the home of this process, and forgets ODBCINI and ODBCINSTINI: the two files are those in it. Call
// it before other threads are started. Empty on success; else a sentence that names the folder and the reason, and
// nothing has changed.
std::string enterHome(const std::string& folder);

}  // namespace jx::model
