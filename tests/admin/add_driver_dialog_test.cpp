// The Add Driver dialog, driven by every path.
#include <jxmemory.h>

#include <utility>

#include "admin/driver_addition.h"
#include "dialog_fixture.h"

namespace jx::test {

namespace {

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

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
