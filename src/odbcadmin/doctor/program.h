// A program as it is started by its name: the file, what runs it when it is a script, and what keeps a search path for
// libraries from reaching it.
//
//     const Program program = findProgram("psql");
//     if (program.obstacle == Program::Obstacle::none)
//         ... program.path, program.file.needed ...
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/doctor/library_file.h"

namespace jx::doctor {

struct Program {
    enum class Obstacle {
        none,
        absent,         // neither its path nor the directories of PATH lead to a file
        notExecutable,  // this user may not run it, or it is not a regular file
        notProgram,     // of a kind that this system does not run
        otherSystem,
        linkedStatically,
        raisedRights,  // set-user-ID and the like: the loader then takes no search path from the environment
    };

    std::string path;                       // of the file that was found; with a slash in it
    std::vector<std::string> interpreters;  // of a script: what runs it, and what runs that if it is a script, too
    LibraryFile file;                       // of what runs in the end
    Obstacle obstacle = Obstacle::none;
};

// Looks for it as shells do. A script's interpreter is followed, also one that env looks for. Deliberate: a script has
// raised rights as its only obstacle, since what it starts inherits the search path, whatever its interpreter is.
// A program that may be run and not be read is taken to have none.
Program findProgram(const std::string& name);

}  // namespace jx::doctor
