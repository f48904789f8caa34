// The command line of xodbcadmin.
#pragma once

#include <string>

namespace jx::desktop {

struct Options {
    enum class Wish { dialogs, help, version, wrongUse };

    Wish wish = Wish::dialogs;
    std::string home;     // the home folder to work in; empty: the user's
    std::string trouble;  // what is wrong with the use
};

// Reads the command line of main.
Options readOptions(int count, char** arguments);

// What --help prints.
extern const char* const kHelpText;

}  // namespace jx::desktop
