// The Versions dialog, driven by every path.
#include "install_fixture.h"

namespace jx::test {

namespace {

// A line of a script with this many commas. Each field is "f" and its number, but field 5 is a date.
std::string line(int commas) {
    std::string text = "0";
    for (int field = 1; field <= commas; ++field)
        text += field == 5 ? ", 95-06-14"
                           : "," + std::string(static_cast<std::size_t>(field % 3), ' ') + "f" + std::to_string(field);
    return text;
}

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
    EXPECT_EQ(shownBy([&] { return run(); }, press(IDCANCEL)),
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

}  // namespace

}  // namespace jx::test
