// The command line: reading it and running what it asks for.
//
// A file NAME_command.cpp adds its verbs (verb.h) in a function that commands.h declares and command_line.cpp calls.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/cli/exit_code.h"

namespace jx::cli {

// Shows the dialogs until the user leaves and gives the program's exit code.
using ShowDialogs = ExitCode (*)();

// Reads the line and runs what it asks for. A line without a command asks for the dialogs, at most with --home and
// --no-color; null: there are none, and it is wrong use.
ExitCode runCommandLine(std::vector<std::string> arguments, ShowDialogs showDialogs = nullptr);

}  // namespace jx::cli
