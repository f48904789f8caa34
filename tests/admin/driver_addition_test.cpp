// Adding drivers from an installation script, in the ODBC Drivers dialog.
#include <sys/stat.h>

#include "dialog_fixture.h"

namespace jx::test {

namespace {

class AddingDrivers : public DialogTest {
protected:
    AddingDrivers() {
        home.put(".odbcinst.ini", "[ODBC Drivers]\nSample=Installed\n");
        mkdir(directory.c_str(), 0700);
    }

    int run() { return jxDllDialog(0, JxDriversDialog, OdbcDriversDlgProc, &ins); }

    OdbcIns ins;
    const std::string directory = home.file("kit");
};

TEST_F(AddingDrivers, CancellingChangesNothing) {
    ScriptedUser user{press(JxAddDriverButton), press(IDCANCEL), look()};
    run();
    EXPECT_EQ(user.appearances, (Texts{"+ODBC Drivers", "+Add Driver", "-Add Driver", "-ODBC Drivers"}));
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(AddingDrivers, AsksAgainForADirectoryThatHoldsNoScript) {
    ScriptedUser user({press(JxAddDriverButton), type(JxDirectoryEdit, directory), press(IDOK), look(), press(IDOK)},
                      {IDYES, IDNO});
    run();
    const std::string noScript = plain(169) + "|" + plain(171) + "|36";
    EXPECT_EQ(user.boxes, (Texts{noScript, noScript}));
    EXPECT_NE(user.dumps[0].find("edit 133 \"A:\\\""), std::string::npos);
    EXPECT_EQ(user.actionsLeft(), 0U);
}

TEST_F(AddingDrivers, RunsTheInstallationOfTheScript) {
    home.put("kit/odbc.inf", "[ODBC Drivers]\n\"Fresh\"=x\n");
    ScriptedUser user(
        {press(JxAddDriverButton), type(JxDirectoryEdit, directory), press(IDOK), look(), press(IDCANCEL)});
    run();
    EXPECT_EQ(listIn(user.dumps[0]), "  list 130 focus\n    > Fresh\n");
    EXPECT_EQ(user.appearances, (Texts{"+ODBC Drivers", "+Add Driver", "-Add Driver", "+Install Drivers",
                                       "-Install Drivers", "-ODBC Drivers"}));
}

TEST_F(AddingDrivers, LeavesItsListAsItIsAfterAnInstallationWhichIsAlwaysReportedAsAborted) {
    home.put("kit/odbc.inf", "[ODBC Drivers]\n\"Fresh\"=x\n");
    ScriptedUser user(
        {press(JxAddDriverButton), type(JxDirectoryEdit, directory), press(IDOK),
         call([this](HWND) { home.put(".odbcinst.ini", "[ODBC Drivers]\nNew=Installed\n"); }), press(IDOK), look()},
        {IDOK});
    run();
    EXPECT_EQ(user.boxes, Texts{"KALDERO ODBC Admin|Installation was aborted|0"});
    EXPECT_NE(user.dumps[0].find("> Sample\n"), std::string::npos);
}

}  // namespace

}  // namespace jx::test
