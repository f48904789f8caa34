// The dialogs of a batch installation, driven by every path.
#include <jxmemory.h>

#include <utility>

#include "admin/driver_addition.h"
#include "dialog_fixture.h"
#include "install/install_record.h"

namespace jx::test {

namespace {

using install::_Install;
using install::InstallDriversRecord;

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

// A line of a script with so many commas; the fields are their numbers but for the date.
std::string line(int commas) {
    std::string text = "0";
    for (int field = 1; field <= commas; ++field)
        text += field == 5 ? ", 95-06-14"
                           : "," + std::string(static_cast<std::size_t>(field % 3), ' ') + "f" + std::to_string(field);
    return text;
}

class InstallDialog : public DialogTest {
protected:
    InstallDialog() {
        putScript("[ODBC Drivers]\n\"Sample Driver\"=x\n\"Other\"\n\"Third, one\"=\n");
        install.infFile = ramAllocStr(bytes(script.c_str()));
    }
    ~InstallDialog() override {
        for (std::uint32_t item = 0; item < install.itemCount; ++item)
            ramFree(install.items[item].name);
        ramFree(install.items);
        ramFree(install.infFile);
    }

    void putScript(const std::string& text) const { home.put("odbc.inf", text); }

    Texts items() const {
        Texts names;
        for (std::uint32_t item = 0; item < install.itemCount; ++item) {
            EXPECT_EQ(install.items[item].kind, install::DriverItem);
            names.emplace_back(reinterpret_cast<char*>(install.items[item].name));
        }
        return names;
    }

    const std::string script = home.file("odbc.inf");
    _Install install{};
};

// ---- Install Drivers ----

class InstallDriversDialog : public InstallDialog {
protected:
    int run() {
        const int result = jxDllDialog(0, JxInstallDriversDialog, InstallDriversDlgProc, &record);
        return result;
    }

    InstallDriversRecord record{9, &install};
};

TEST_F(InstallDriversDialog, ListsTheScriptsDriversWithoutTheirQuotes) {
    ScriptedUser user{look(), press(IDCANCEL)};
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(user.dumps[0],
              "\"Install Drivers\" centered\n  label \"&Drivers in the installation script:\"\n  list 130 focus\n"
              "    > Sample Driver\n      Other\n      Third, one\n  button 1 \"OK\" default\n  button 2 \"Cancel\"\n"
              "  button 131 \"&Advanced...\"\n");
    EXPECT_EQ(record.proceed, 0U);
    EXPECT_EQ(items(), Texts{});
}

TEST_F(InstallDriversDialog, AppendsTheSelectedDriverOncePerRow) {
    ScriptedUser user{selectRow(JxInstallDriversList, 1), press(IDOK)};
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(record.proceed, 1U);
    EXPECT_EQ(items(), (Texts{"Other", "Other", "Other"}));
}

TEST_F(InstallDriversDialog, AppendsNothingWithoutASelection) {
    ScriptedUser user{selectRow(JxInstallDriversList, -1), press(IDOK)};
    run();
    EXPECT_EQ(record.proceed, 1U);
    EXPECT_EQ(items(), Texts{});
}

TEST_F(InstallDriversDialog, CancelsItselfWhenTheScriptListsNoDrivers) {
    for (const char* text : {"", "[ODBC Drivers]\n", "[Other]\nA=B\n", "[ODBC Drivers]\nNOT AVAILABLE=1\n"}) {
        SCOPED_TRACE(text);
        putScript(text);
        record.proceed = 9;
        ScriptedUser user{press(IDOK)};
        EXPECT_EQ(run(), 1);
        EXPECT_EQ(record.proceed, 0U);
        EXPECT_EQ(user.actionsLeft(), 1U);
        EXPECT_TRUE(user.boxes.empty());
    }
}

TEST_F(InstallDriversDialog, CancelsItselfWithoutAScript) {
    ramFree(std::exchange(install.infFile, nullptr));
    ScriptedUser user;
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(record.proceed, 0U);
}

TEST_F(InstallDriversDialog, ADoubleClickDoesNothing) {
    ScriptedUser user{doubleClick(JxInstallDriversList, 1), key(JXW_KEY_ESCAPE)};
    run();
    EXPECT_EQ(user.actionsLeft(), 0U);
    EXPECT_EQ(record.proceed, 0U);
}

TEST_F(InstallDriversDialog, OpensTheAdvancedOptionsAndTheVersionsOnTheSameRecord) {
    ScriptedUser user{
        press(JxAdvancedButton), click(JxOptionFlagBox), press(JxVersionsButton), press(IDCANCEL), press(IDOK),
        press(IDCANCEL)};
    run();
    EXPECT_EQ(install.reserved0, 1U);
    EXPECT_EQ(user.appearances, (Texts{"+Install Drivers", "+Advanced Installation Options", "+Versions", "-Versions",
                                       "-Advanced Installation Options", "-Install Drivers"}));
}

TEST_F(InstallDriversDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{call([](HWND open) {
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxClaimedCommand, 0), 1);
        for (const int id : {0, 3, 130, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 1 << 16), 0) << id;
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    run();
}

TEST_F(InstallDriversDialog, LeavesOutTheDriverWhoseNameDoesNotFitWhole) {
    std::string text = "[ODBC Drivers]\n";
    for (int number = 100; number < 300; ++number)
        text += "\"Driver" + std::to_string(number) + "\"=x\n";
    putScript(text);
    ScriptedUser user{look()};
    run();
    EXPECT_NE(user.dumps[0].find("    > Driver100\n      Driver101\n"), std::string::npos);
    EXPECT_NE(user.dumps[0].find("      Driver184\n  button"), std::string::npos) << user.dumps[0];
}

// 1024 bytes hold the first key, its NUL, a key of 22 bytes and its NUL.
TEST_F(InstallDriversDialog, ShowsTheDriverWhoseNameJustFits) {
    const std::string first(998, 'a');
    for (const std::size_t size : {19U, 20U, 21U, 22U, 70000U}) {
        SCOPED_TRACE(size);
        const std::string second(size, 'b');
        putScript("[ODBC Drivers]\n\"" + first + "\"=x\n\"" + second + "\"=x\n");
        ScriptedUser user{look()};
        run();
        EXPECT_EQ(listIn(user.dumps[0]),
                  "  list 130 focus\n    > " + first + "\n" + (size <= 20 ? "      " + second + "\n" : ""));
    }
}

// ---- Advanced Installation Options ----

class AdvancedOptionsDialog : public InstallDialog {
protected:
    int run() { return jxDllDialog(0, JxAdvancedOptionsDialog, AdvancedInstallationOptionsDlgProc, &install); }

    std::string values() const {
        return std::to_string(install.reserved0) + " " + std::to_string(install.reserved1) + " " +
               std::to_string(install.reserved2);
    }
};

TEST_F(AdvancedOptionsDialog, ShowsTheStoredValues) {
    ScriptedUser user{look(), press(IDCANCEL)};
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(user.dumps[0],
              "\"Advanced Installation Options\" centered\n"
              "  check 121 [ ] \"&Option: on (kept, but has no effect yet)\" focus\n"
              "  group \"1st choice (no effect yet)\"\n  radio 122 (o) \"First: value &0\"\n"
              "  radio 123 ( ) \"First: value &1\"\n  radio 124 ( ) \"First: value &2\"\n"
              "  group \"2nd choice (no effect yet)\"\n  radio 125 (o) \"S&econd: value 0\"\n"
              "  radio 126 ( ) \"Se&cond: value 1\"\n  radio 127 ( ) \"Seco&nd: value 2\"\n"
              "  button 128 \"&Versions...\"\n  button 1 \"OK\" default\n  button 2 \"Cancel\"\n");
}

TEST_F(AdvancedOptionsDialog, ShowsAndStoresEveryCombination) {
    struct Row {
        std::uint32_t flag, first, second;
        const char* stored;
    };
    for (const Row& row : {Row{0, 0, 0, "0 0 0"}, Row{1, 1, 2, "1 1 2"}, Row{7, 2, 1, "1 2 1"}, Row{0, 3, 99, "0 2 2"},
                           Row{0x80000000U, 0xFFFFFFFFU, 0, "1 2 0"}}) {
        SCOPED_TRACE(row.stored);
        install.reserved0 = row.flag;
        install.reserved1 = row.first;
        install.reserved2 = row.second;
        ScriptedUser user{press(IDOK)};
        run();
        EXPECT_EQ(values(), row.stored);
    }
}

TEST_F(AdvancedOptionsDialog, TheTwoChoicesAreApart) {
    ScriptedUser user{click(JxFirstChoice2), click(JxSecondChoice1), click(JxOptionFlagBox), press(IDOK)};
    run();
    EXPECT_EQ(values(), "1 2 1");
}

TEST_F(AdvancedOptionsDialog, CancelStoresNothing) {
    install.reserved1 = 5;
    ScriptedUser user{click(JxFirstChoice0), click(JxOptionFlagBox), key(JXW_KEY_ESCAPE)};
    run();
    EXPECT_EQ(values(), "0 5 0");
}

TEST_F(AdvancedOptionsDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{call([](HWND open) {
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxClaimedCommand, 0), 1);
        for (const int id : {0, 3, 121, 122, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    run();
}

// ---- Versions ----

class VersionsDialog : public InstallDialog {
protected:
    int run() { return jxDllDialog(0, JxVersionsDialog, VersionsDlgProc, &install); }

    // The five texts as the dialog in front shows them.
    static std::string shown(HWND dialog) {
        std::string all;
        for (unsigned short id = JxVersionFileName; id <= JxVersionSize; ++id) {
            char text[64];
            JXW_GetDlgItemText(dialog, id, text, sizeof text);
            all += std::string(text) + "|";
        }
        return all;
    }

    // What the dialog shows for a driver line.
    std::string shownFor(const std::string& value, std::initializer_list<unsigned int> answers = {}) {
        putScript("[ODBC Drivers]\n\"Sample\"=x\n[Sample]\n\"Driver\"=" + value + "\n");
        std::string seen;
        ScriptedUser user({call([](HWND dialog) { JXW_SetDlgItemText(dialog, JxVersionFileName, "old"); }),
                           selectRow(JxVersionsList, 0), call([&](HWND dialog) { seen = shown(dialog); })},
                          answers);
        run();
        boxes = user.boxes;
        return seen;
    }

    Texts boxes;
};

TEST_F(VersionsDialog, ListsTheScriptsDrivers) {
    ScriptedUser user{look(), press(IDCANCEL)};
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(user.dumps[0],
              "\"Versions\" centered\n  label \"&Drivers in the installation script:\"\n  list 137 focus\n"
              "    > Sample Driver\n      Other\n      Third, one\n  button 2 \"Close\" default\n"
              "  button 1 \"OK (no effect)\"\n  label \"File name:\"\n  label 138 \"\"\n  label \"Kind:\"\n"
              "  label 139 \"\"\n  label \"Version:\"\n  label 140 \"\"\n  label \"Date:\"\n  label 141 \"\"\n"
              "  label \"Size:\"\n  label 142 \"\"\n");
}

TEST_F(VersionsDialog, ShowsFieldsOfTheSelectedDriver) {
    EXPECT_EQ(shownFor(line(20)), "f1|Driver|f19|06-14-95|f15|");
    EXPECT_EQ(shownFor(line(25)), "f1|Driver|f19|06-14-95|f15|");
    EXPECT_EQ(shownFor(",,,,,,,,,,,,,,,,,,,,"), "|Driver||||");
    EXPECT_TRUE(boxes.empty());
}

TEST_F(VersionsDialog, ShowsTheTextBehindTheFirstDashOfTheDateFirst) {
    EXPECT_EQ(shownFor("0,a,,,,95-06-14,,,,,,,,,,,,,,,"), "a|Driver||06-14-95||");
    EXPECT_EQ(shownFor("0,a,,,,-95,,,,,,,,,,,,,,,"), "a|Driver||95-||");
}

TEST_F(VersionsDialog, ShowsADateWithoutADashAsItStands) {
    EXPECT_EQ(shownFor("0,a,,,,1995,,,,,,,,,,,,,,,"), "a|Driver||1995||");
    EXPECT_EQ(shownFor("0,a,,,,-,,,,,,,,,,,,,,,"), "a|Driver||-||");
    EXPECT_EQ(shownFor("0,a,,,,1-,,,,,,,,,,,,,,,"), "a|Driver||-1||");
}

TEST_F(VersionsDialog, CountsTheMissingCommaOneTooHighAndClearsTheFields) {
    for (const int commas : {0, 1, 2, 10, 19}) {
        SCOPED_TRACE(commas);
        EXPECT_EQ(shownFor(line(commas), {IDOK}), "|||||");
        EXPECT_EQ(boxes, Texts{"KALDERO ODBC Admin|Not able to find comma " + std::to_string(commas + 2) +
                               " in File: " + script + " Section: Sample Entry: \"Driver\"|0"});
    }
}

TEST_F(VersionsDialog, LeavesTheFieldsForADriverWithoutALine) {
    putScript("[ODBC Drivers]\n\"Sample\"=x\n[Sample]\n\"Setup\"=y\n");
    std::string seen;
    ScriptedUser user{call([](HWND dialog) { JXW_SetDlgItemText(dialog, JxVersionDate, "old"); }),
                      selectRow(JxVersionsList, 0), selectRow(JxVersionsList, -1),
                      call([&](HWND dialog) { seen = shown(dialog); })};
    run();
    EXPECT_EQ(seen, "|||old||");
}

TEST_F(VersionsDialog, OkHasNoEffect) {
    ScriptedUser user{press(IDOK), press(IDOK), press(IDCANCEL)};
    run();
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(VersionsDialog, ADoubleClickEscapeAndEnterClose) {
    for (const auto& close : {doubleClick(JxVersionsList, 0), key(JXW_KEY_ESCAPE), key(JXW_KEY_ENTER)}) {
        ScriptedUser user{close, press(IDCANCEL)};
        EXPECT_EQ(run(), 1);
        EXPECT_EQ(user.actionsLeft(), 1U);
    }
}

TEST_F(VersionsDialog, WithoutDriversGreysOkAndStaysOpen) {
    putScript("");
    ScriptedUser user{look(), refused(press(IDOK)), press(IDCANCEL)};
    run();
    EXPECT_NE(user.dumps[0].find("button 1 \"OK (no effect)\" grey"), std::string::npos);
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(VersionsDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{call([](HWND open) {
        for (const int id : {0, 1, 3, 10, 138, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxVersionsList, 3 << 16), 0);
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 1);
    })};
    run();
}

// ---- Add Driver ----

class AddDriverDialog : public DialogTest {
protected:
    // The directory chosen when this is typed and OK is pressed; "(none)" when the dialog was cancelled.
    std::string choose(const std::string& typed) {
        ScriptedUser user{type(JxDirectoryEdit, typed), press(IDOK)};
        return run();
    }

    std::string run() {
        EXPECT_EQ(jxDllDialog(0, JxAddDriverDialog, AddDriverDlgProc, &record), 1);
        if (record.confirmed == 0) {
            EXPECT_EQ(record.chosen, nullptr);
            return "(none)";
        }
        const std::string chosen = reinterpret_cast<char*>(record.chosen);
        ramFree(std::exchange(record.chosen, nullptr));
        return chosen;
    }

    admin::AddDriverRecord record{9, nullptr, bytes("A:\\"), nullptr};
};

TEST_F(AddDriverDialog, ShowsTheProposedDirectory) {
    ScriptedUser user{look(), press(IDCANCEL)};
    EXPECT_EQ(run(), "(none)");
    EXPECT_EQ(user.dumps[0],
              "\"Add Driver\" centered\n  label 134 \"The directory must hold the installation script odbc.inf.\"\n"
              "  label \"&Directory:\"\n  edit 133 \"A:\\\" focus\n  button 1 \"OK\" default\n  button 2 \"Cancel\"\n");
}

TEST_F(AddDriverDialog, ShowsItsCallersTextAndNoProposal) {
    record.text = bytes("Where?");
    record.proposed = nullptr;
    ScriptedUser user{look(), key(JXW_KEY_ESCAPE)};
    run();
    EXPECT_NE(user.dumps[0].find("label 134 \"Where?\""), std::string::npos);
    EXPECT_NE(user.dumps[0].find("edit 133 \"\""), std::string::npos);
}

TEST_F(AddDriverDialog, DoublesASlashAtTheEndAndTakesABackslashAsItIs) {
    EXPECT_EQ(choose("/opt/odbc"), "/opt/odbc/");
    EXPECT_EQ(choose("/opt/odbc/"), "/opt/odbc//");
    EXPECT_EQ(choose("/"), "//");
    EXPECT_EQ(choose(" "), " /");
    ScriptedUser user{key(JXW_KEY_ENTER)};
    EXPECT_EQ(run(), "A:\\");
}

TEST_F(AddDriverDialog, TakesADirectoryThatFillsItsBuffer) {
    const std::string longest(1023, 'd');
    EXPECT_EQ(choose(longest), longest + "/");
    EXPECT_EQ(choose(longest + "dddd"), longest + "/");
}

TEST_F(AddDriverDialog, CancelsWithoutADirectoryWhateverWasTyped) {
    for (const auto& cancel : {press(IDCANCEL), key(JXW_KEY_ESCAPE), key(JXW_KEY_CLOSE)}) {
        record.confirmed = 9;
        ScriptedUser user{type(JxDirectoryEdit, "/opt/odbc"), cancel};
        EXPECT_EQ(run(), "(none)");
    }
}

TEST_F(AddDriverDialog, StaysOpenWhileTheFieldIsEmpty) {
    ScriptedUser user({type(JxDirectoryEdit, ""), press(IDOK), press(IDCANCEL)}, {IDOK});
    unsigned char stale[] = "stale";
    record.chosen = stale;
    EXPECT_EQ(run(), "(none)");
    EXPECT_EQ(user.boxes, Texts{"KALDERO ODBC Admin|The entry field needs to be filled to proceed|0"});
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(AddDriverDialog, TakesADirectoryOnce) {
    ScriptedUser user{type(JxDirectoryEdit, "/first"), call([](HWND open) {
                          JXW_SendMessage(open, WM_COMMAND, IDOK, 0);
                          JXW_SetDlgItemText(open, JxDirectoryEdit, "");
                          JXW_SendMessage(open, WM_COMMAND, IDOK, 0);
                      })};
    EXPECT_EQ(run(), "/first/");
    EXPECT_TRUE(user.boxes.empty());
}

TEST_F(AddDriverDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{call([](HWND open) {
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxClaimedCommand, 0), 1);
        for (const int id : {0, 3, 133, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    run();
}

}  // namespace

}  // namespace jx::test
