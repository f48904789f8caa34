// Reading the few options there are.
#include "odbcadmin/desktop/options.h"

#include <getopt.h>

#include <array>

namespace jx::desktop {

const char* const kHelpText =
    "Usage: xodbcadmin [--home DIR]\n"
    "\n"
    "Shows ODBC data sources and drivers in windows, to add, change and remove them.\n"
    "\n"
    "  --home DIR   work on the files of this home folder\n"
    "  --help       print this text\n"
    "  --version    print the version\n"
    "\n"
    "Windows are as large as the desktop asks for (Xft.dpi, GDK_SCALE, QT_SCALE_FACTOR).\n"
    "odbcadmin shows the same dialogs in a terminal and has commands for scripts.\n"
    "\n"
    "Exit codes: 0 done, 1 failed, 2 wrong use or no display, 7 the home folder cannot be used.\n";

namespace {

enum Choice : int { kHomeChoice = 1, kHelpChoice, kVersionChoice };

constexpr std::array<option, 4> kOptions{{{"home", required_argument, nullptr, kHomeChoice},
                                          {"help", no_argument, nullptr, kHelpChoice},
                                          {"version", no_argument, nullptr, kVersionChoice},
                                          {nullptr, 0, nullptr, 0}}};

Options wrongUse(const std::string& trouble) {
    return {Options::Wish::wrongUse, "", trouble};
}

}  // namespace

Options readOptions(int count, char** arguments) {
    Options options;
    opterr = 0;
    optind = 1;
    for (int choice = 0; (choice = getopt_long(count, arguments, ":h", kOptions.data(), nullptr)) != -1;) {
        if (choice == kHomeChoice && *optarg != '\0')
            options.home = optarg;
        else if (choice == kHomeChoice || choice == ':')
            return wrongUse("--home needs a folder");
        else if (choice == kHelpChoice || choice == 'h')
            options.wish = Options::Wish::help;
        else if (choice == kVersionChoice)
            options.wish = Options::Wish::version;
        else
            return wrongUse("there is no option " + std::string(arguments[optind - 1]));
    }
    if (optind < count)
        return wrongUse("it takes no argument such as " + std::string(arguments[optind]));
    return options;
}

}  // namespace jx::desktop
