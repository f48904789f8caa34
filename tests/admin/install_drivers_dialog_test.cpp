// The Install Drivers dialog, driven by every path.
#include <jxmemory.h>

#include <utility>

#include "install_fixture.h"

namespace jx::test {

namespace {

class InstallDriversDialog : public InstallDialog {
protected:
    int run() { return jxDllDialog(0, JxInstallDriversDialog, InstallDriversDlgProc, &record); }

    install::InstallDriversRecord record{9, &install};
};

TEST_F(InstallDriversDialog, ListsTheScriptsDriversWithoutTheirQuotes) {
    EXPECT_EQ(shownBy([&] { return run(); }, press(IDCANCEL)),
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

TEST_F(InstallDriversDialog, LeavesOutTheDriverWhoseNameDoesNotFit) {
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

}  // namespace

}  // namespace jx::test
