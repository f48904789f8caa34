// What to advise a user who may not change the system's files.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/model/reason.h"

namespace jx::model {

// A command line of odbcadmin that does what was wanted, for a user who is to repeat it with more rights.
struct RepeatedCommand {
    std::vector<std::string> words;  // behind the program's name
    bool isInRoot = false;           // it works in a root directory of its own, where no variable moves files
    bool needsHome = false;          // it works on files of this user's, too, and does not name his home directory
};

// The advice of the reason; where a right on one of the system's files is missing, the commands with sudo, ready to
// paste, joined by "&&". Secrets in them are masked: the advice stands on the screen.
std::string adviceOn(const Reason& reason, const std::vector<RepeatedCommand>& commands);

}  // namespace jx::model
