// From the terminal to the first dialog.
#include "odbcadmin/terminal/run.h"

#include <odbcinst.h>
#include <strings.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "odbcadmin/terminal/curses_terminal.h"
#include "odbcadmin/terminal/screen.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::terminal {

namespace {

constexpr int kWrongUse = 2;

int refuse(const std::string& why) {
    std::fprintf(stderr,
                 "odbcadmin: %s\n"
                 "Without arguments it shows its dialogs, which need one. Commands work everywhere, such as\n"
                 "  odbcadmin dsn list\n"
                 "  odbcadmin --help\n",
                 why.c_str());
    return kWrongUse;
}

std::string kindOfTerminal() {
    const char* kind = std::getenv("TERM");
    return kind != nullptr ? kind : "";
}

// The locale that the environment names; the C library looks at the first of these that is not empty.
std::string namedLocale() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* name = std::getenv(variable);
        if (name != nullptr && *name != '\0')
            return name;
    }
    return {};
}

// A locale that is not installed, as after a login from another machine, most likely is one of UTF-8, unless its name
// says otherwise.
void chooseLocale() {
    if (std::setlocale(LC_CTYPE, "") != nullptr)
        return;
    const std::string name = namedLocale();
    const std::size_t dot = name.find('.');
    const std::string charset = dot == std::string::npos ? "" : name.substr(dot + 1, name.find('@', dot) - dot - 1);
    if (charset.empty() || strcasecmp(charset.c_str(), "utf-8") == 0 || strcasecmp(charset.c_str(), "utf8") == 0)
        std::setlocale(LC_CTYPE, "C.UTF-8");
}

}  // namespace

int runScreen() {
    if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDOUT_FILENO) == 0)
        return refuse("standard input or output is not a terminal");
    const std::string kind = kindOfTerminal();
    if (kind.empty() || kind == "dumb")
        return refuse("this terminal cannot show dialogs (TERM is \"" + kind + "\")");
    chooseLocale();
    CursesTerminal terminal(STDIN_FILENO, STDOUT_FILENO);
    if (!terminal.isOpen())
        return refuse("this kind of terminal is not known here (TERM is \"" + kind + "\")");
    const auto manage = trial::installerFunction<decltype(&SQLManageDataSources)>("SQLManageDataSources");
    if (manage == nullptr)
        return refuse(trial::installerTrouble());
    const Screen screen(terminal);
    manage(0);
    return 0;
}

}  // namespace jx::terminal
