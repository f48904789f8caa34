// The Add Data Source dialog, driven by every path.
#include <stdexcept>

#include "dialog_dump.h"
#include "dialog_fixture.h"

namespace jx::test {

namespace {

constexpr HWND kOwner = 77;  // only its not being 0 counts

class AddDataSourceDialog : public DialogTest {
protected:
    AddDataSourceDialog() {
        putDrivers({{"Both", setupLibrary("driver_both")},
                    {"Refuser", setupLibrary("driver_refusing")},
                    {"Lost", "/nowhere/setup.so"},
                    {"Thrower", setupLibrary("driver_throwing")}});
    }
};

TEST_F(AddDataSourceDialog, ListsTheInstalledDriversWithoutASelection) {
    ScriptedUser user{look(), press(IDCANCEL)};
    EXPECT_EQ(SQLCreateDataSource(kOwner, "ignored"), FALSE);
    EXPECT_EQ(
        user.dumps[0],
        "\"Add Data Source\" centered\n  label \"&Driver for the new data source:\"\n  list 101 focus\n"
        "      Both\n      Refuser\n      Lost\n      Thrower\n  button 1 \"OK\" default\n  button 2 \"Cancel\"\n");
}

TEST_F(AddDataSourceDialog, WithoutDriversOnlyCancelCloses) {
    home.put(".odbcinst.ini", "");
    ScriptedUser user{look(), refused(press(IDOK)), refused(key(JXW_KEY_ENTER)), key(JXW_KEY_ESCAPE)};
    EXPECT_EQ(SQLCreateDataSource(kOwner, nullptr), FALSE);
    EXPECT_NE(user.dumps[0].find("button 1 \"OK\" default grey"), std::string::npos);
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(AddDataSourceDialog, ListsAnEntryByItsKeyAlone) {
    home.put(".odbcinst.ini", "[ODBC Drivers]\nOne=Installed=yes\nTwo\nThree =\n");
    ScriptedUser user{look()};
    SQLCreateDataSource(kOwner, nullptr);
    EXPECT_EQ(listIn(user.dumps[0]), "  list 101 focus\n      One\n      Two\n      Three\n");
}

TEST_F(AddDataSourceDialog, ShowsAListLongerThanItsBufferWithoutLosingItsPlace) {
    std::string text = "[ODBC Drivers]\n";
    for (int number = 100; number < 300; ++number)
        text += "Driver" + std::to_string(number) + "=Installed\n";
    home.put(".odbcinst.ini", text);
    ScriptedUser user{look()};
    SQLCreateDataSource(kOwner, nullptr);
    EXPECT_NE(user.dumps[0].find("      Driver100\n      Driver101\n"), std::string::npos);
    EXPECT_NE(user.dumps[0].find("      Driver201\n"), std::string::npos);
    EXPECT_EQ(user.dumps[0].find("Driver203"), std::string::npos);
}

TEST_F(AddDataSourceDialog, KnowsWhileItIsOpen) {
    ScriptedUser user{call([](HWND dialog) { EXPECT_EQ(HWNDADDLG, dialog); })};
    EXPECT_EQ(SQLCreateDataSource(kOwner, nullptr), FALSE);
    EXPECT_EQ(HWNDADDLG, 0U);
}

TEST_F(AddDataSourceDialog, PressingOkWithoutASelectionLeavesItOpen) {
    ScriptedUser user{press(IDOK), selectRow(JxAddDataSourceList, -1), refused(press(IDOK)),
                      selectRow(JxAddDataSourceList, 0), press(IDOK)};
    EXPECT_EQ(SQLCreateDataSource(kOwner, nullptr), TRUE);
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(AddDataSourceDialog, AddsThroughTheSelectedDriver) {
    for (const auto& confirm : {press(IDOK), key(JXW_KEY_ENTER), doubleClick(JxAddDataSourceList, 0)}) {
        const SetupCalls own;
        HWND dialog = 0;
        ScriptedUser user{call([&](HWND hwnd) { dialog = hwnd; }), selectRow(JxAddDataSourceList, 0), confirm};
        EXPECT_EQ(SQLCreateDataSource(kOwner, nullptr), TRUE);
        EXPECT_EQ(own.lines(),
                  (Lines{"loaded", "CONFIGDSN hwnd=" + std::to_string(dialog) + " request=1 driver=Both attributes=|",
                         "unloaded"}));
        EXPECT_TRUE(user.boxes.empty());
    }
}

TEST_F(AddDataSourceDialog, ClosesAfterAFailedAddToo) {
    for (const int row : {1, 2}) {
        ScriptedUser user({doubleClick(JxAddDataSourceList, row)}, {IDOK});
        EXPECT_EQ(SQLCreateDataSource(kOwner, nullptr), FALSE);
        EXPECT_EQ(user.boxes, Texts{adminBox(52, 48)}) << row;
        EXPECT_EQ(user.appearances, (Texts{"+Add Data Source", "-Add Data Source"}));
    }
}

TEST_F(AddDataSourceDialog, SaysWhyADriverNameThatDoesNotFitCannotBeUsed) {
    const std::string name(50, 'd');
    putDrivers({{name.c_str(), setupLibrary("driver_both")}});
    ScriptedUser user({doubleClick(JxAddDataSourceList, 0), press(IDOK), press(IDCANCEL)}, {IDOK, IDOK});
    EXPECT_EQ(SQLCreateDataSource(kOwner, nullptr), FALSE);
    EXPECT_EQ(user.boxes, (Texts{kRowRefused, kRowRefused}));
    EXPECT_EQ(user.actionsLeft(), 0U);
    EXPECT_TRUE(calls.lines().empty());
}

TEST_F(AddDataSourceDialog, TakesADriverNameThatJustFits) {
    const std::string name(49, 'd');
    putDrivers({{name.c_str(), setupLibrary("driver_both")}});
    ScriptedUser user{doubleClick(JxAddDataSourceList, 0)};
    EXPECT_EQ(SQLCreateDataSource(kOwner, nullptr), TRUE);
}

TEST_F(AddDataSourceDialog, ClicksItselfWhenItIsCalledFromOutside) {
    static int clicks;
    static int pair;
    clicks = 0;
    const JxDialogProcedure watched = [](HWND dialog, int message, int wparam, uintptr_t lparam) {
        if (message == WM_LBUTTONDOWN) {
            ++clicks;
            pair = wparam;
            EXPECT_EQ(lparam, 0U);
        }
        return AddDataSourceDlgProc(dialog, message, wparam, lparam);
    };
    OdbcIns ins;
    ScriptedUser user{call([](HWND dialog) { EXPECT_EQ(JXW_SendMessage(dialog, WM_USER + 1, 0, 0), 0); }),
                      press(IDCANCEL)};
    EXPECT_EQ(JXW_DialogBox(BJXHINST, 100, 0, watched, &ins), 1);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(pair, 0x00040004);
}

TEST_F(AddDataSourceDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{call([](HWND open) {
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxClaimedCommand, 0), 1);
        for (const int id : {0, 3, 100, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxAddDataSourceList, 3 << 16), 0);
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    SQLCreateDataSource(kOwner, nullptr);
}

TEST_F(AddDataSourceDialog, AnExceptionOfADriverPassesAndLeavesNoDialogBehind) {
    ScriptedUser user{doubleClick(JxAddDataSourceList, 3)};
    EXPECT_THROW(SQLCreateDataSource(kOwner, nullptr), std::runtime_error);
    EXPECT_EQ(HWNDADDLG, 0U);
    EXPECT_EQ(JXW_NextDialog(0), 0U);
}

}  // namespace

}  // namespace jx::test
