// The Options dialog, driven by every path.
#include "dialog_fixture.h"

namespace jx::test {

namespace {

class OptionsDialog : public DialogTest {
protected:
    int run() { return jxDllDialog(0, JxOptionsDialog, OdbcOptionsDlgProc, &ins); }

    OdbcIns ins;
};

TEST_F(OptionsDialog, ShowsWhatIsNotStoredAsOff) {
    EXPECT_EQ(shownBy([&] { return run(); }, press(IDOK)),
              "\"Options\"\n  group \"Call tracing\"\n"
              "  check 111 [ ] \"&Trace the calls of the driver manager\" focus\n"
              "  check 112 [ ] \"&Stop tracing by itself\"\n  label \"Trace &file:\"\n  edit 113 \"sql.log\"\n"
              "  button 114 \"&Choose a file (not available)\"\n  button 1 \"OK\" default\n  button 2 \"Cancel\"\n");
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC]\nTrace=0\nTraceAutoStop=0\nTraceFile=sql.log\n");
}

TEST_F(OptionsDialog, ShowsTheLowSixteenBitsOfWhatIsStored) {
    struct Row {
        const char *stored, *shown;
    };
    for (const Row& row : {Row{"1", "[x]"}, Row{"0", "[ ]"}, Row{"65536", "[ ]"}, Row{"65537", "[x]"},
                           Row{"32768", "[x]"}, Row{"x", "[ ]"}, Row{"", "[ ]"}, Row{"7", "[x]"}}) {
        SCOPED_TRACE(row.stored);
        home.put(".odbc.ini", std::string("[ODBC]\nTrace=") + row.stored + "\n");
        ScriptedUser user{look()};
        run();
        EXPECT_NE(user.dumps[0].find(std::string("check 111 ") + row.shown), std::string::npos) << user.dumps[0];
    }
}

TEST_F(OptionsDialog, StoresAllThreeOnOk) {
    home.put(".odbc.ini", "; mine\n[ODBC]\nTrace=7\nTraceAutoStop=1\nTraceFile=a.log\nOther=x\n");
    ScriptedUser user{click(JxTraceAutoStopBox), type(JxTraceFileEdit, "/tmp/b.log"), key(JXW_KEY_ENTER)};
    run();
    EXPECT_EQ(home.text(".odbc.ini"), "; mine\n[ODBC]\nTrace=1\nTraceAutoStop=0\nTraceFile=/tmp/b.log\nOther=x\n");
}

TEST_F(OptionsDialog, StoresAnEmptyFileName) {
    ScriptedUser user{type(JxTraceFileEdit, ""), press(IDOK)};
    run();
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC]\nTrace=0\nTraceAutoStop=0\nTraceFile=\n");
}

TEST_F(OptionsDialog, CancelLeavesTheFileUntouched) {
    for (const auto& cancel : {press(IDCANCEL), key(JXW_KEY_ESCAPE)}) {
        ScriptedUser user{click(JxTraceBox), type(JxTraceFileEdit, "x"), cancel};
        EXPECT_EQ(run(), 1);
        EXPECT_EQ(home.text(".odbc.ini"), "(absent)");
    }
}

TEST_F(OptionsDialog, ChoosingAFileDoesNothing) {
    ScriptedUser user{press(JxTraceFileButton), look(), press(IDCANCEL)};
    run();
    EXPECT_NE(user.dumps[0].find("edit 113 \"sql.log\""), std::string::npos);
}

TEST_F(OptionsDialog, ClosesThoughTheFileCannotBeWritten) {
    home.put(".odbc.ini", "");
    ScriptedUser user{type(JxTraceFileEdit, "a\nb"), press(IDOK)};
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC]\nTrace=0\nTraceAutoStop=0\n");
}

TEST_F(OptionsDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{call([](HWND open) {
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxClaimedCommand, 0), 1);
        for (const int id : {0, 3, 111, 113, 114, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    run();
}

}  // namespace

}  // namespace jx::test
