// The real program under tmux: every dialog at several sizes, on several kinds of terminals, compared as text.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "odbcadmin/doctor/driver_scan.h"
#include "pty.h"
#include "run_program.h"
#include "tmux.h"

namespace jx::test {
namespace {

constexpr const char* kSources =
    "[ODBC Data Sources]\nSales=SQLite3\nStock of the warehouse=SQLite3\n[Sales]\nDriver=/none\n"
    "[Stock of the warehouse]\nDriver=/none\n";
constexpr const char* kDrivers =
    "[ODBC Drivers]\nSQLite3=Installed\n[SQLite3]\nDriver=/none/driver.so\nSetup=/none/setup.so\n";
constexpr const char* kSystemSources =
    "[Sales]\nDriver=PostgreSQL\nServername=db1\n[Accounts]\nDriver=PostgreSQL\nServername=db2\n";
constexpr const char* kSystemDrivers = "[PostgreSQL]\nDriver=/none/psql.so\n";
constexpr const char* kScript =
    "[ODBC Drivers]\n\"Pack\"=\n\"Other\"=\n[Pack]\n\"Driver\"=1,libpack.so,,,,2024-01-31,,,,,,,,,,1067,,,,1.0,\n"
    "[Other]\n\"Driver\"=1,libother.so,,,,2023-02-28,,,,,,,,,,2134,,,,2.0,\n";

struct Kind {
    const char* name;
    int columns, lines;
    const char* environment;
};

constexpr Kind kWide{"80x24-xterm-utf8", 80, 24, "TERM=xterm-256color LC_ALL=C.UTF-8"};
constexpr Kind kSmall{"40x12-vt100-c", 40, 12, "TERM=vt100 LC_ALL=C"};
constexpr Kind kLarge{"132x43-screen-utf8", 132, 43, "TERM=screen LC_ALL=C.UTF-8 NO_COLOR=1"};
constexpr Kind kTiny{"20x5-xterm-utf8", 20, 5, "TERM=xterm-256color LC_ALL=C.UTF-8"};
constexpr Kind kHuge{"200x60-xterm-utf8", 200, 60, "TERM=xterm-256color LC_ALL=C.UTF-8"};
constexpr Kind kPlain{"80x24-vt100-c", 80, 24, "TERM=vt100 LC_ALL=C"};

std::string readFile(const std::string& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// Walk: one run of the program on one kind of terminal. What the dialogs hold is known from their dumps
// (docs/dialogs.md); a screen of each sort is compared whole with the file of its name.
class Walk {
public:
    explicit Walk(const Kind& kind)
        : kind_(kind),
          home_{{".odbc.ini", kSources}, {".odbcinst.ini", kDrivers}, {"odbc.inf", kScript}},
          tmux_(home_, kind.columns, kind.lines, kind.environment, shellQuoted(JX_ODBCADMIN)) {}

    // The same with files of the system's, in a folder of the home directory, so that their path is the same each time.
    Walk(const Kind& kind, const char* systemSources, const char* systemDrivers)
        : kind_(kind),
          home_{{".odbc.ini", kSources}, {".odbcinst.ini", kDrivers}},
          tmux_((putSystem(systemSources, systemDrivers), home_), kind.columns, kind.lines, kind.environment,
                shellQuoted(JX_ODBCADMIN)) {}

    // Sends keys and waits for a text that only the screen they lead to has.
    void pass(const std::string& keys, const std::string& part) {
        tmux_.keys(keys);
        const std::string shown = tmux_.waitForPart(part);
        EXPECT_NE(shown.find(part), std::string::npos) << "no " << part << " in\n" << shown;
    }

    // Sends keys and compares the screen. part: what is there when it is complete, for writing captures.
    void step(const std::string& keys, const std::string& name, const std::string& part) {
        SCOPED_TRACE(name);
        if (!keys.empty())
            tmux_.keys(keys);
        const std::string file = "/" + name + "-" + kind_.name + ".txt";
        const char* target = std::getenv("JX_WRITE_CAPTURES");
        if (target != nullptr) {
            std::ofstream(target + file) << tmux_.waitForPart(part);
            return;
        }
        const std::string expected = readFile(JX_CAPTURES + file);
        const std::string shown = tmux_.waitForScreen(expected);
        EXPECT_TRUE(shown == expected) << shown << "\nbut expected was\n" << expected;
    }

    const TestHome& home() const { return home_; }
    const Tmux& tmux() const { return tmux_; }

private:
    void putSystem(const char* sources, const char* drivers) const {
        std::filesystem::create_directory(home_.file("etc"));
        home_.put("etc/odbc.ini", sources);
        home_.put("etc/odbcinst.ini", drivers);
        setenv("ODBCSYSINI", home_.file("etc").c_str(), 1);
    }

    Kind kind_;
    TestHome home_;
    Tmux tmux_;
};

// The dialog that registers a driver shows those of this machine.
bool hasDriversInUsualPlaces() {
    return !doctor::scanForDrivers(doctor::usualDriverDirectories(doctor::loaderPlaces())).empty();
}

// Through every dialog that can be reached and back.
void walkThroughEverything(const Kind& kind) {
    Walk walk(kind);
    walk.step("", "data-sources", "F2 new driver");
    walk.step("F1", "help", " Help ");
    walk.pass("Enter M-o", "Call tracing");
    walk.pass("Escape M-a", "Driver for");
    walk.step("Escape M-s", "setup-not-loaded", "(!)");
    walk.pass("Enter M-e", "Remove the data");
    walk.pass("n M-r", "Installed drivers");
    walk.pass("M-e", "Remove a Driver");
    walk.pass("M-e", "Remove the driver");
    const std::string form = "n F2 M-s BSpace";
    if (hasDriversInUsualPlaces())
        walk.pass(form, "Asks for the");
    else
        walk.step(form, "register-driver", "Asks for the");
    walk.pass("Enter", "has no name");
    walk.pass("Enter Escape M-a", "Add Driver");
    walk.pass("'/none' Enter", "(?)");
    walk.pass("Enter '" + walk.home().path() + "' Enter", "Install Drivers");
    walk.pass("M-a", "value 0");
    walk.pass("M-v", "installation script:");
    walk.step("Down", "versions-chosen", "Other");
    walk.pass("Escape Escape Escape", "Installs from");
    walk.tmux().keys("Escape Escape");
    // The server goes with its last window.
    const std::string gone = walk.tmux().waitForPart(walk.home().file("tmux"));
    EXPECT_NE(gone.find(walk.home().file("tmux")), std::string::npos) << gone;
    EXPECT_EQ(walk.home().text(".odbc.ini"), kSources);
    EXPECT_EQ(walk.home().text(".odbcinst.ini"), kDrivers);
}

TEST(Program, ShowsEveryDialogAt80x24) {
    walkThroughEverything(kWide);
}

TEST(Program, ShowsEveryDialogAt40x12InAsciiWithoutColours) {
    walkThroughEverything(kSmall);
}

// The main dialog, and the one that keys open from it.
void walkThroughTheFirst(const Kind& kind, const char* keys, const char* text) {
    Walk walk(kind);
    walk.step("", "data-sources", "F2 new driver");
    walk.pass(keys, text);
}

TEST(Program, ShowsTheFirstDialogsAt132x43) {
    walkThroughTheFirst(kLarge, "M-r", "Installed drivers");
}

TEST(Program, ShowsTheFirstDialogsOnAPlainTerminal) {
    walkThroughTheFirst(kPlain, "M-o", "Call tracing");
}

TEST(Program, ShowsTheMainDialogAt200x60) {
    walkThroughTheFirst(kHuge, "M-r", "Installed drivers");
}

TEST(Program, ShowsWhereTheUserIsAt20x5) {
    Walk walk(kTiny);
    walk.step("", "data-sources", "Your data");
    walk.pass("Tab", "<   Setup...    >");
    walk.pass("M-o", "[ ] Trace");
    walk.pass("M-f", "sql.log");
    walk.pass("Escape F1", "Data sources in");
    walk.pass("Enter M-e", "[Yes] <No >");
}

// From the user's row to the system's of the same name, through all that is done with it, and back.
TEST(Program, ShowsBothScopesAndRemovesTheOneThatIsChosen) {
    Walk walk(kWide, kSystemSources, kSystemDrivers);
    walk.step("", "both-scopes", "F2 new driver");
    walk.step("Down Down F8", "what-is-shown", "empty shows all");
    walk.pass("M-y Enter", "System only: 2 of 4 shown; F8 changes it.");
    walk.pass("Enter", "Setup of Sales (System)");
    walk.pass("Escape F6", "For all users (system)");
    walk.pass("Escape F8 M-u Enter M-e", "of the system?");
    walk.pass("y", "3 of 3");
    EXPECT_EQ(walk.home().text(".odbc.ini"), kSources);
    EXPECT_EQ(walk.home().text("etc/odbc.ini"), "[Accounts]\nDriver=PostgreSQL\nServername=db2\n");
    walk.pass("M-r Down", "PostgreSQL  [system]");
    walk.pass("M-e", "Unregister the driver");
    walk.pass("y", "1 of 1");
    EXPECT_EQ(walk.home().text(".odbcinst.ini"), kDrivers);
    EXPECT_EQ(walk.home().text("etc/odbcinst.ini"), "");
}

TEST(Program, ANewSizeAtDepthShowsTheSameDialogs) {
    Walk walk(kWide);
    walk.step("", "data-sources", "F2 new driver");
    walk.step("M-r M-e M-e", "remove-driver", "(!)");
    walk.tmux().resize(50, 14);
    EXPECT_NE(walk.tmux().waitForPart("Arrows scroll").find("Remove the driver"), std::string::npos);
    walk.tmux().resize(80, 24);
    walk.step("", "remove-driver", "the marked letter answers");
}

TEST(Program, KeysThatTheTerminalsDescriptionDoesNotHaveAreNotTyped) {
    Walk walk(kPlain);
    walk.step("", "data-sources", "F2 new driver");
    // Insert, F12 with a modifier, End and Home as other terminals send them: no dialog opens.
    walk.step("-H 1b 5b 32 7e 1b 5b 32 34 3b 35 7e 1b 5b 34 7e 1b 5b 31 7e", "data-sources", "F2 new driver");
}

TEST(Program, WithoutATerminalItTellsItsUseAndEndsWithTwo) {
    const TestHome home;
    const std::string redirected = shellQuoted(JX_ODBCADMIN) + " </dev/null >" + home.file("out") + " 2>" +
                                   home.file("err") + "; echo $? >" + home.file("code");
    EXPECT_EQ(std::system(redirected.c_str()), 0);
    EXPECT_EQ(home.text("code"), "2\n");
    EXPECT_EQ(home.text("out"), "");
    EXPECT_EQ(home.text("err"),
              "odbcadmin: standard input or output is not a terminal\n"
              "Without arguments it shows its dialogs, which need one. Commands work everywhere, such as\n"
              "  odbcadmin dsn list\n  odbcadmin --help\n");
    for (const char* kind : {"TERM=dumb", "TERM=no-such-terminal", "TERM="}) {
        SCOPED_TRACE(kind);
        Pty pty(JX_ODBCADMIN, {kind, "HOME=" + home.path()});
        EXPECT_EQ(pty.waitForEnd(), "exited 2");
        const std::string told = pty.take();
        EXPECT_NE(told.find("(TERM is \""), std::string::npos) << told;
        EXPECT_EQ(told.find('\033'), std::string::npos);
    }
}

}  // namespace
}  // namespace jx::test
