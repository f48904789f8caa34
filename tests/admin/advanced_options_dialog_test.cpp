// The Advanced Installation Options dialog, driven by every path.
#include "install_fixture.h"

namespace jx::test {

namespace {

class AdvancedOptionsDialog : public InstallDialog {
protected:
    int run() { return jxDllDialog(0, JxAdvancedOptionsDialog, AdvancedInstallationOptionsDlgProc, &install); }

    std::string values() const {
        return std::to_string(install.reserved0) + " " + std::to_string(install.reserved1) + " " +
               std::to_string(install.reserved2);
    }
};

TEST_F(AdvancedOptionsDialog, ShowsTheStoredValues) {
    EXPECT_EQ(shownBy([&] { return run(); }, press(IDCANCEL)),
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

}  // namespace

}  // namespace jx::test
