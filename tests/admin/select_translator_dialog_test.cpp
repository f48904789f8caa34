// The Select Translator dialog, driven by every path.
#include "config/translators.h"
#include "dialog_fixture.h"

namespace jx::test {

namespace {

class SelectTranslatorDialog : public DialogTest {
protected:
    SelectTranslatorDialog() { home.put(".odbcinst.ini", "[ODBC Translators]\nLatin=Installed\nGreek\nlatin2=x\n"); }

    // The name the dialog leaves when it opens with current.
    std::string choose(const std::string& current) {
        unsigned char name[kTranslatorNameSize] = {};
        current.copy(reinterpret_cast<char*>(name), sizeof name - 1);
        TranslatorChoice choice{name, &ins, 9};
        EXPECT_EQ(jxDllDialog(0, JxSelectTranslatorDialog, SelectTranslatorDlgProc, &choice), 1);
        chosen = choice.chosen;
        return reinterpret_cast<char*>(name);
    }

    OdbcIns ins;
    unsigned int chosen = 9;
};

TEST_F(SelectTranslatorDialog, ListsTheTranslatorsBehindNone) {
    ScriptedUser user{look(), press(IDCANCEL)};
    choose("");
    EXPECT_EQ(user.dumps[0],
              "\"Select Translator\" centered\n  label \"&Translators:\"\n  list 144 focus\n"
              "    > <No Translator>\n      Latin\n      Greek\n      latin2\n"
              "  button 1 \"OK\" default\n  button 2 \"Cancel\"\n  label \"Cancel chooses no translator.\"\n");
}

TEST_F(SelectTranslatorDialog, BeginsWithTheCurrentOne) {
    struct Row {
        const char *current, *selected;
    };
    for (const Row& row : {Row{"", "> <No Translator>"}, Row{"Greek", "> Greek"}, Row{"greek", "> <No Translator>"},
                           Row{"Cyrillic", "> <No Translator>"}, Row{"<No Translator>", "> <No Translator>"},
                           Row{"latin2", "> latin2"}}) {
        SCOPED_TRACE(row.current);
        ScriptedUser user{look()};
        choose(row.current);
        EXPECT_NE(user.dumps[0].find(row.selected), std::string::npos) << user.dumps[0];
    }
}

TEST_F(SelectTranslatorDialog, GivesTheSelectedOneBack) {
    for (const auto& confirm : {press(IDOK), key(JXW_KEY_ENTER), doubleClick(JxTranslatorsList, 2)}) {
        ScriptedUser user{selectRow(JxTranslatorsList, 2), confirm};
        EXPECT_EQ(choose("Latin"), "Greek");
        EXPECT_EQ(chosen, 1U);
        EXPECT_EQ(user.actionsLeft(), 0U);
    }
}

TEST_F(SelectTranslatorDialog, KeepsTheCurrentOneWhenItIsConfirmed) {
    ScriptedUser user{press(IDOK)};
    EXPECT_EQ(choose("Greek"), "Greek");
}

TEST_F(SelectTranslatorDialog, GivesNoneForTheFirstRow) {
    ScriptedUser user{selectRow(JxTranslatorsList, 0), press(IDOK)};
    EXPECT_EQ(choose("Latin"), "<No Translator>");
    EXPECT_EQ(chosen, 1U);
}

TEST_F(SelectTranslatorDialog, GivesNoneForTheFirstRowWhateverItsText) {
    ScriptedUser user{call([](HWND dialog) {
                          JXW_SendDlgItemMessage(dialog, JxTranslatorsList, LB_INSERTSTRING, 0,
                                                 reinterpret_cast<uintptr_t>("Cyrillic"));
                      }),
                      selectRow(JxTranslatorsList, 0), press(IDOK)};
    EXPECT_EQ(choose("Latin"), "<No Translator>");
}

TEST_F(SelectTranslatorDialog, CancelAnswersWithNoTranslatorWhateverWasCurrent) {
    for (const int escape : {JXW_KEY_ESCAPE, JXW_KEY_CLOSE}) {
        ScriptedUser user{selectRow(JxTranslatorsList, 2), key(escape)};
        EXPECT_EQ(choose("Latin"), "<No Translator>");
        EXPECT_EQ(chosen, 0U);
    }
    ScriptedUser user{press(IDCANCEL)};
    EXPECT_EQ(choose("Latin"), "<No Translator>");
}

TEST_F(SelectTranslatorDialog, ACancelBehindAnOkChangesNothing) {
    ScriptedUser user{selectRow(JxTranslatorsList, 1), test::call([](HWND dialog) {
                          JXW_SendMessage(dialog, WM_COMMAND, IDOK, 0);
                          JXW_SendMessage(dialog, WM_COMMAND, IDCANCEL, 0);
                      })};
    EXPECT_EQ(choose(""), "Latin");
    EXPECT_EQ(chosen, 1U);
}

TEST_F(SelectTranslatorDialog, GreysOkWhileNothingIsSelected) {
    ScriptedUser user{selectRow(JxTranslatorsList, -1), refused(press(IDOK)), refused(key(JXW_KEY_ENTER)),
                      selectRow(JxTranslatorsList, 1), press(IDOK)};
    EXPECT_EQ(choose(""), "Latin");
}

TEST_F(SelectTranslatorDialog, ConfirmingWithoutASelectionGivesNone) {
    ScriptedUser user{selectRow(JxTranslatorsList, -1),
                      call([](HWND dialog) { JXW_SendMessage(dialog, WM_COMMAND, IDOK, 0); })};
    EXPECT_EQ(choose("Latin"), "<No Translator>");
    EXPECT_EQ(chosen, 1U);
}

TEST_F(SelectTranslatorDialog, WithoutTranslatorsOffersNone) {
    home.put(".odbcinst.ini", "");
    ScriptedUser user{look(), press(IDOK)};
    EXPECT_EQ(choose("Latin"), "<No Translator>");
    EXPECT_EQ(listIn(user.dumps[0]), "  list 144 focus\n    > <No Translator>\n");
}

TEST_F(SelectTranslatorDialog, DoesNotTakeANameThatDoesNotFit) {
    home.put(".odbcinst.ini", "[ODBC Translators]\n" + std::string(255, 'a') + "=x\n" + std::string(256, 'b') + "=x\n");
    const std::string reason =
        "KALDERO ODBC Admin|This translator cannot be used: its name is longer than 255 bytes. Choose another one, "
        "or shorten the name in section ODBC Translators of .odbcinst.ini.|" +
        std::to_string(MB_OK | MB_ICONEXCLAMATION);
    for (const auto& confirm : {press(IDOK), doubleClick(JxTranslatorsList, 2)}) {
        ScriptedUser user({selectRow(JxTranslatorsList, 2), confirm, selectRow(JxTranslatorsList, 1), press(IDOK)},
                          {IDOK});
        EXPECT_EQ(choose(""), std::string(255, 'a'));
        EXPECT_EQ(user.actionsLeft(), 0U);
        EXPECT_EQ(user.boxes, Texts{reason});
    }
}

TEST_F(SelectTranslatorDialog, IsWhatSqlGetTranslatorShows) {
    ScriptedUser user{doubleClick(JxTranslatorsList, 0)};
    char name[20] = "Latin";
    char path[20] = "?";
    WORD nameLength = 7;
    WORD pathLength = 7;
    DWORD option = 5;
    EXPECT_EQ(SQLGetTranslator(77, name, sizeof name, &nameLength, path, sizeof path, &pathLength, &option), TRUE);
    EXPECT_EQ(nameLength + pathLength, 0);
    EXPECT_STREQ(name, "Latin");
    EXPECT_EQ(user.appearances.size(), 2U);
}

TEST_F(SelectTranslatorDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{call([](HWND open) {
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxClaimedCommand, 0), 1);
        for (const int id : {0, 3, 143, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxTranslatorsList, 3 << 16), 0);
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    choose("");
}

}  // namespace

}  // namespace jx::test
