// SQLInstallODBC: one batch installation from a script.
#include "install/batch_installation.h"

#include <gtest/gtest.h>
#include <jxdialog.h>
#include <odbcinst.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "config/text_bytes.h"
#include "install/script_items.h"
#include "message_box_script.h"
#include "page_edge.h"
#include "record_text.h"
#include "recorded_hooks.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using namespace std::string_literals;

constexpr HWND kWindow = 77;
const ShownBox kAborted{kWindow, "Installation was aborted", "KALDERO ODBC Admin", 0};

std::string fileText(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

std::string data(const std::string& name, const std::string& directory = "") {
    std::string text = fileText(JX_INSTALL_DATA "/" + name);
    EXPECT_FALSE(text.empty()) << name;
    for (std::size_t at = text.find("@DIR@"); at != std::string::npos; at = text.find("@DIR@", at))
        text.replace(at, 5, directory);
    return text;
}

std::vector<std::string> sortedLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    return lines;
}

// A script of one driver D with one library.
std::string oneDriver(const std::string& file = "d.so") {
    return "[D]\n\"Driver\"=" + scriptLine(file) + "\n";
}

std::string oneDriverInstalled(const std::string& directory) {
    return "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=" + directory + "/d.so\n";
}

BOOL installAll(HWND window, const std::string& script, const char* source, std::string list) {
    PageEdge drivers(list + "\0"s);
    return SQLInstallODBC(window, script.c_str(), source, drivers.data());
}

// Puts the process into a directory and back.
class WorkingDirectory {
public:
    explicit WorkingDirectory(const std::string& path) : before_(std::filesystem::current_path()) {
        std::filesystem::current_path(path);
    }
    ~WorkingDirectory() { std::filesystem::current_path(before_); }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

private:
    std::filesystem::path before_;
};

TEST(BatchInstallation, OfARealisticScriptLeavesExactlyTheseFiles) {
    const TestHome home({{".odbcinst.ini", data("before.odbcinst.ini")}, {".odbc.ini", data("before.odbc.ini")}});
    MessageBoxScript boxes;
    const std::string script = JX_INSTALL_DATA "/odbc.inf";
    EXPECT_EQ(installAll(0, script, nullptr,
                         "Nimbus SQL\0Heron Text Files (*.csv; *.tab)\0Ledger 4=chosen\0Quarry Search\0"s),
              FALSE);
    EXPECT_EQ(home.text(".odbcinst.ini"), data("after.odbcinst.ini", JX_INSTALL_DATA));
    EXPECT_EQ(home.text(".odbc.ini"), data("after.odbc.ini", JX_INSTALL_DATA));
    EXPECT_EQ(boxes.boxes(),
              (Boxes{{0, "Not able to find comma 6 in File: " + script + " Section: Quarry Search Entry: Index",
                      "KALDERO ODBC Admin", 0}}));
}

TEST(BatchInstallation, LeavesTheSameEntriesWhenItIsRepeated) {
    const TestHome home;
    const MessageBoxScript boxes;
    const auto installedLines = [&] {
        const std::string list = "Nimbus SQL\0Heron Text Files (*.csv; *.tab)\0Ledger 4\0"s;
        installAll(0, JX_INSTALL_DATA "/odbc.inf", nullptr, list);
        return sortedLines(home.text(".odbcinst.ini") + home.text(".odbc.ini"));
    };
    const auto once = installedLines();
    EXPECT_EQ(installedLines(), once) << "sections move to the end, their content stays";
}

TEST(BatchInstallation, WithoutAWindowOrAListInstallsTranslatorsAndCoreComponentsOnly) {
    for (const bool isNull : {true, false}) {
        const TestHome home({{"odbc.inf", "[ODBC Drivers]\n\"D\"=\n" + oneDriver() +
                                              "[ODBC Translators]\n\"T\"=\n[T]\n\"Translator\"=" + scriptLine("t.so") +
                                              "\n[ODBC]\n\"Driver\"=" + scriptLine("core.so") + "\n"}});
        char empty[] = "";
        EXPECT_EQ(SQLInstallODBC(0, home.file("odbc.inf").c_str(), "/l", isNull ? nullptr : empty), FALSE);
        EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Translators]\nT=Installed\n\n[T]\nTranslator=/l/t.so\n");
    }
}

TEST(BatchInstallation, ReturnsFalseAndReportsAnAbortionThoughTheFilesHoldItsOutcome) {
    const TestHome home({{"odbc.inf", oneDriver()}});
    MessageBoxScript boxes;
    EXPECT_EQ(installAll(kWindow, home.file("odbc.inf"), "/l", "D\0"s), FALSE);
    EXPECT_EQ(home.text(".odbcinst.ini"), oneDriverInstalled("/l"));
    EXPECT_EQ(boxes.boxes(), Boxes{kAborted});
}

TEST(BatchInstallation, RunsNoDialogWhenThereIsAList) {
    const TestHome home({{"odbc.inf", oneDriver()}});
    const MessageBoxScript boxes;
    RecordedHooks hooks;
    installAll(kWindow, home.file("odbc.inf"), "/l", "D\0"s);
    installAll(0, home.file("odbc.inf"), "/l", "");
    EXPECT_EQ(hooks.calls, std::vector<std::string>{}) << "nor without a window";
}

TEST(BatchInstallation, GoesOnBehindAnEmptyListOfTranslators) {
    const TestHome home({{"odbc.inf", "[ODBC Translators]\n; none\n" + oneDriver()}});
    TestRecord record(home.file("odbc.inf").c_str());
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(record.get()), 1U);
    installAll(0, home.file("odbc.inf"), "/l", "D\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"), oneDriverInstalled("/l"));
}

TEST(BatchInstallation, PassesOverComponentsThatAreNamedLikeAListOfThem) {
    const MessageBoxScript boxes;
    constexpr char kBefore[] = "[ODBC Drivers]\nMine=Installed\n\n[ODBC Translators]\nYours=Installed\n";
    const std::string files = "\n\"Driver\"=" + scriptLine("d.so") + "\n\"Setup\"=" + scriptLine("s.so") +
                              "\n\"Translator\"=" + scriptLine("t.so") + "\n";
    const TestHome home({{".odbcinst.ini", kBefore},
                         {"odbc.inf", "[ODBC Drivers]" + files + "[ODBC Translators]" + files +
                                          "\"ODBC Translators\"=\n\"ODBC Drivers\"=\n[D]" + files}});
    installAll(0, home.file("odbc.inf"), "/l", "ODBC Drivers\0odbc drivers \0ODBC Translators\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"), kBefore);
    EXPECT_EQ(home.text(".odbc.ini"), "(absent)");
}

TEST(BatchInstallation, ShowsNothingWithoutAWindow) {
    const TestHome home({{"odbc.inf", oneDriver()}});
    MessageBoxScript boxes;
    EXPECT_EQ(installAll(0, home.file("odbc.inf"), "/l", "D\0"s), FALSE);
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(BatchInstallation, WithoutAScriptReturnsAtOnce) {
    const TestHome home;
    MessageBoxScript boxes;
    JXW_SetCursor(kJxwWaitCursor);
    char list[] = "D\0";
    EXPECT_EQ(SQLInstallODBC(kWindow, nullptr, "/l", list), FALSE);
    EXPECT_EQ(JXW_GetCursor(), unsigned{kJxwWaitCursor});
    EXPECT_EQ(boxes.boxes(), Boxes{});
    JXW_SetCursor(kJxwArrowCursor);
}

TEST(BatchInstallation, PutsTheArrowBackAlsoWithoutAWindow) {
    const TestHome home;
    JXW_SetCursor(kJxwWaitCursor);
    SQLInstallODBC(0, home.file("absent.inf").c_str(), nullptr, nullptr);
    EXPECT_EQ(JXW_GetCursor(), unsigned{kJxwArrowCursor});
}

TEST(BatchInstallation, CutsTheCallersListAtItsEqualsSigns) {
    const TestHome home({{"odbc.inf", oneDriver()}});
    char list[] = "D=1\0E\0";
    SQLInstallODBC(0, home.file("odbc.inf").c_str(), "/l", list);
    EXPECT_EQ(std::string(list, 7), "D\0001\0E\0\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"), oneDriverInstalled("/l"));
}

TEST(BatchInstallation, FindsNothingUnderAQuotedNameSinceItKeepsTheClosingQuote) {
    const TestHome home({{"odbc.inf", oneDriver()}});
    installAll(0, home.file("odbc.inf"), "/l", "\"D\"\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
}

TEST(BatchInstallation, EndsAsCancelledWhenNoHostShowsTheDriverDialog) {
    const TestHome home({{"odbc.inf", oneDriver()}});
    MessageBoxScript boxes;
    JXW_SetCursor(kJxwWaitCursor);
    char empty[] = "";
    EXPECT_EQ(SQLInstallODBC(kWindow, home.file("odbc.inf").c_str(), "/l", nullptr), FALSE);
    EXPECT_EQ(SQLInstallODBC(kWindow, home.file("odbc.inf").c_str(), "/l", empty), FALSE);
    EXPECT_EQ(JXW_GetCursor(), unsigned{kJxwWaitCursor}) << "a cancelled run leaves the cursor";
    EXPECT_EQ(boxes.boxes(), Boxes{});
    EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
    JXW_SetCursor(kJxwArrowCursor);
}

TEST(BatchInstallation, InstallsTheDriversThatAHostsDialogPutsIntoTheRecord) {
    const TestHome home({{"odbc.inf", oneDriver() + "[D-Keys]\nAPILevel=1\n"}});
    MessageBoxScript boxes;
    RecordedHooks hooks;
    hooks.onDialog = [](HWND owner, JxDialogProcedure procedure, void* record) {
        EXPECT_EQ(owner, kWindow);
        EXPECT_EQ(procedure, &InstallDriversDlgProc);
        auto* choice = static_cast<InstallDriversRecord*>(record);
        EXPECT_EQ(choice->proceed, 0U);
        appendItem(choice->install, "D", DriverItem);
        appendItem(choice->install, "D", DriverItem);
        choice->proceed = 1;
    };
    EXPECT_EQ(SQLInstallODBC(kWindow, home.file("odbc.inf").c_str(), "/l", nullptr), FALSE);
    EXPECT_EQ(hooks.calls, std::vector<std::string>{"dialog 129"});
    EXPECT_EQ(home.text(".odbcinst.ini"), oneDriverInstalled("/l") + "APILevel=1\n");
    EXPECT_EQ(boxes.boxes(), Boxes{kAborted});
}

TEST(BatchInstallation, ShowsTheWaitCursorOnceTheUserHasChosen) {
    const TestHome home({{"odbc.inf", "[D]\n\"Setup\"=too few\n"}});
    unsigned int cursor = 0;
    RecordedHooks hooks;
    hooks.onDialog = [](HWND, JxDialogProcedure, void* record) {
        auto* choice = static_cast<InstallDriversRecord*>(record);
        appendItem(choice->install, "D", DriverItem);
        choice->proceed = 1;
    };
    JXW_SetMessageBoxHandler(
        [](void* seen, HWND owner, const char*, const char*, unsigned int) {
            if (owner == 0)
                *static_cast<unsigned int*>(seen) = JXW_GetCursor();
            return unsigned{IDOK};
        },
        &cursor);
    SQLInstallODBC(kWindow, home.file("odbc.inf").c_str(), "/l", nullptr);
    JXW_SetMessageBoxHandler(nullptr, nullptr);
    EXPECT_EQ(cursor, unsigned{kJxwWaitCursor});
    EXPECT_EQ(JXW_GetCursor(), unsigned{kJxwArrowCursor});
}

TEST(BatchInstallation, ReleasesItsRecordWhenAHostsDialogThrows) {
    const TestHome home;
    RecordedHooks hooks;
    hooks.onDialog = [](HWND, JxDialogProcedure, void* record) {
        appendItem(static_cast<InstallDriversRecord*>(record)->install, "D", DriverItem);
        throw std::string("thrown by the host");
    };
    EXPECT_THROW(SQLInstallODBC(kWindow, home.file("odbc.inf").c_str(), "/l", nullptr), std::string);
}

TEST(BatchInstallation, ReleasesItsRecordWhenTheMessageBoxHandlerThrows) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=no commas\n"}});
    JXW_SetMessageBoxHandler(
        [](void*, HWND, const char*, const char*, unsigned int) -> unsigned int { throw std::string("handler"); },
        nullptr);
    EXPECT_THROW(installAll(0, home.file("odbc.inf"), "/l", "D\0"s), std::string);
    EXPECT_THROW(installAll(kWindow, home.file("absent.inf"), "/l", "D\0"s), std::string);
    JXW_SetMessageBoxHandler(nullptr, nullptr);
}

TEST(BatchInstallation, SelectsEveryComponent) {
    const TestHome home({{"odbc.inf", oneDriver() + "[ODBC Translators]\n\"T\"=\n[T]\n\"Setup\"=" + scriptLine("t.so") +
                                          "\n[ODBC Administrator]\n\"Setup\"=" + scriptLine("core.so") + "\n"}});
    installAll(0, home.file("odbc.inf"), "/l", "D\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"),
              oneDriverInstalled("/l") + "\n[T]\nSetup=/l/t.so\n\n[ODBC Administrator]\nSetup=/l/core.so\n");
}

TEST(BatchInstallation, RegistersFilesWhereTheyLie) {
    const TestHome home({{"odbc.inf", oneDriver()}});
    std::filesystem::create_directory(home.file("pkg"));
    std::filesystem::copy_file(home.file("odbc.inf"), home.file("pkg/odbc.inf"));
    const WorkingDirectory inside(home.path());
    const std::string here = std::filesystem::current_path();
    struct Row {
        std::string script;
        const char* source;
        std::string directory;
    };
    const Row rows[] = {
        {home.file("odbc.inf"), nullptr, home.path()},
        {home.file("odbc.inf"), "", home.path()},
        {home.file("odbc.inf"), "/cdrom", "/cdrom"},
        {home.file("odbc.inf"), "/cdrom/", "/cdrom"},
        {home.file("odbc.inf"), "/cdrom///", "/cdrom"},
        {home.file("odbc.inf"), "/", ""},
        {"odbc.inf", nullptr, here},
        {"pkg/odbc.inf", nullptr, here + "/pkg"},
        {"odbc.inf", "pkg", here + "/pkg"},
        {home.path() + "//odbc.inf", nullptr, home.path()},
        {"./odbc.inf", nullptr, here + "/."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.script + " from " + (row.source == nullptr ? "(null)" : row.source));
        home.put(".odbcinst.ini", "");
        installAll(0, row.script, row.source, "D\0"s);
        EXPECT_EQ(home.text(".odbcinst.ini"), oneDriverInstalled(row.directory));
    }
}

TEST(BatchInstallation, EndsAsAnAbortedOneWhenTheCurrentDirectoryIsNeededAndGone) {
    const TestHome home;
    const std::string gone = home.file("gone");
    std::filesystem::create_directory(gone);
    const WorkingDirectory inside(home.path());
    ASSERT_EQ(chdir(gone.c_str()), 0);
    ASSERT_EQ(rmdir(gone.c_str()), 0);
    MessageBoxScript boxes;
    RecordedHooks hooks;
    JXW_SetCursor(kJxwWaitCursor);
    EXPECT_EQ(installAll(kWindow, "odbc.inf", nullptr, "D\0"s), FALSE);
    EXPECT_EQ(SQLInstallODBC(kWindow, "odbc.inf", nullptr, nullptr), FALSE) << "the user is asked for nothing";
    EXPECT_EQ(boxes.boxes(), (Boxes{kAborted, kAborted}));
    EXPECT_EQ(hooks.calls, std::vector<std::string>{});
    EXPECT_EQ(JXW_GetCursor(), unsigned{kJxwArrowCursor});
    EXPECT_TRUE(home.names().empty());
}

TEST(BatchInstallation, SurvivesScriptsThatCannotBeRead) {
    const TestHome home;
    std::vector<std::string> scripts = unusableScripts(home);
    scripts.emplace_back("/dev/zero");
    for (const std::string& script : scripts) {
        SCOPED_TRACE(script);
        EXPECT_EQ(installAll(0, script, "/l", "D\0"s), FALSE);
        EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
    }
}

TEST(BatchInstallation, TakesNamesOf1024CharactersAndMore) {
    for (const std::size_t size : {1023U, 1024U, 1025U, 70000U}) {
        SCOPED_TRACE(size);
        const std::string name(size, 'n');
        const TestHome home(
            {{"odbc.inf", "[" + name + "]\n\"Driver\"=" + scriptLine("d.so") + "\n[" + name + "-Keys]\nAPILevel=1\n"}});
        installAll(0, home.file("odbc.inf"), "/l", name + "\0"s);
        EXPECT_EQ(home.text(".odbcinst.ini"),
                  "[ODBC Drivers]\n" + name + "=Installed\n\n[" + name + "]\nDriver=/l/d.so\nAPILevel=1\n");
    }
}

TEST(Outcome, IsShownOnlyToAWindowAndNotWhenNothingHappened) {
    struct Row {
        unsigned int window;
        bool succeeded;
        bool anyFile;
        const char* text;
    };
    constexpr Row rows[] = {{kWindow, false, false, "Installation was aborted"},
                            {kWindow, false, true, "Installation was aborted"},
                            {kWindow, true, true, "Installation completed successfully"},
                            {kWindow, true, false, nullptr},
                            {0, false, true, nullptr},
                            {0, true, true, nullptr}};
    for (const Row& row : rows) {
        MessageBoxScript boxes;
        reportOutcome(row.window, row.succeeded, row.anyFile);
        EXPECT_EQ(boxes.boxes(),
                  row.text == nullptr ? Boxes{} : (Boxes{{row.window, row.text, "KALDERO ODBC Admin", 0}}));
    }
}

}  // namespace
