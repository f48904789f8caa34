// The Data Sources dialog, driven by every path.
#include <stdexcept>

#include "dialog_dump.h"
#include "dialog_fixture.h"

namespace jx::test {

namespace {

class DataSourcesDialog : public DialogTest {
protected:
    DataSourcesDialog() {
        putDrivers({{"Writer", setupLibrary("driver_writing")},
                    {"Refuser", setupLibrary("driver_refusing")},
                    {"Lost (old)", "/nowhere/setup.so"}});
        putDataSources({{"Sales", "Writer"}, {"Stock", "Refuser"}, {"Old", "Lost (old)"}});
    }

    static constexpr char kButtons[] =
        "  button 105 \"&Setup...\" default\n  button 106 \"D&elete\"\n  button 107 \"&Add...\"\n"
        "  button 108 \"D&rivers...\"\n  button 109 \"&Options...\"\n  button 104 \"&Close\"\n";

    static std::string call(int request, const char* driver, const char* name, HWND dialog) {
        return "ConfigDSN hwnd=" + std::to_string(dialog) + " request=" + std::to_string(request) +
               " driver=" + driver + " attributes=DSN=" + name + "||";
    }

    // The handle of the dialog, from an action.
    Action noteDialog() {
        return test::call([this](HWND hwnd) {
            dialog = hwnd;
            EXPECT_EQ(HWNDDSDLG, hwnd);
        });
    }

    HWND dialog = 0;
};

TEST_F(DataSourcesDialog, ListsDataSourcesWithTheirDrivers) {
    ScriptedUser user{look(), press(JxCloseButton)};
    EXPECT_EQ(SQLManageDataSources(0), 1);
    ASSERT_EQ(user.dumps.size(), 1U);
    EXPECT_EQ(user.dumps[0], std::string("\"Data Sources\" centered\n  label \"&Data sources (driver):\"\n"
                                         "  list 103 focus\n    > Sales (Writer)\n      Stock (Refuser)\n"
                                         "      Old (Lost (old))\n") +
                                 kButtons);
    EXPECT_EQ(user.appearances, (Texts{"+Data Sources", "-Data Sources"}));
}

TEST_F(DataSourcesDialog, WithoutDataSourcesGreysSetupAndDelete) {
    home.put(".odbc.ini", "");
    ScriptedUser user{look(), refused(doubleClick(JxDataSourcesList, 0)), refused(press(JxSetupButton)),
                      refused(press(JxDeleteButton)), key(JXW_KEY_ESCAPE)};
    EXPECT_EQ(SQLManageDataSources(0), 1);
    EXPECT_EQ(user.dumps[0],
              "\"Data Sources\" centered\n  label \"&Data sources (driver):\"\n  list 103 focus\n"
              "  button 105 \"&Setup...\" default grey\n  button 106 \"D&elete\" grey\n  button 107 \"&Add...\"\n"
              "  button 108 \"D&rivers...\"\n  button 109 \"&Options...\"\n  button 104 \"&Close\"\n");
}

TEST_F(DataSourcesDialog, ListsTheDefaultDataSourceLast) {
    home.put(".odbcinst.ini", home.text(".odbcinst.ini") + "\n[Default]\nDriver=Writer\n");
    ScriptedUser user{look()};
    SQLManageDataSources(0);
    EXPECT_EQ(listIn(user.dumps[0]),
              "  list 103 focus\n    > Sales (Writer)\n      Stock (Refuser)\n      Old (Lost (old))\n"
              "      Default (Writer)\n");
}

TEST_F(DataSourcesDialog, KnowsWhileItIsOpen) {
    ScriptedUser user{noteDialog(), press(JxCloseButton)};
    SQLManageDataSources(0);
    EXPECT_EQ(HWNDDSDLG, 0U);
}

TEST_F(DataSourcesDialog, OpensAgainAfterAnExceptionOfTheScreen) {
    {
        ScriptedUser user{test::call([](HWND) { throw std::runtime_error("the screen is gone"); })};
        EXPECT_THROW(SQLManageDataSources(0), std::runtime_error);
    }
    ScriptedUser user{look(), press(JxCloseButton)};
    EXPECT_EQ(SQLManageDataSources(0), 1);
    EXPECT_EQ(user.dumps.size(), 1U);
}

TEST_F(DataSourcesDialog, OpensAgainAfterTheEndOfAThreadWithItOpen) {
    std::thread([] {
        ScriptedUser user{test::call([](HWND) { pthread_exit(nullptr); })};
        SQLManageDataSources(0);
    }).join();
    ScriptedUser user{look(), press(JxCloseButton)};
    EXPECT_EQ(SQLManageDataSources(0), 1);
    EXPECT_EQ(user.dumps.size(), 1U);
}

TEST_F(DataSourcesDialog, GreysSetupAndDeleteWhileNothingIsSelected) {
    ScriptedUser user{selectRow(JxDataSourcesList, -1), refused(press(JxSetupButton)), refused(press(JxDeleteButton)),
                      selectRow(JxDataSourcesList, 1), look()};
    SQLManageDataSources(0);
    EXPECT_NE(user.dumps[0].find("button 105 \"&Setup...\" default\n  button 106 \"D&elete\"\n"), std::string::npos);
    EXPECT_TRUE(calls.lines().empty());
}

TEST_F(DataSourcesDialog, SetsUpTheSelectedOneThroughItsDriver) {
    ScriptedUser user{noteDialog(), press(JxSetupButton), look()};
    SQLManageDataSources(0);
    EXPECT_EQ(calls.lines(), (Lines{"loaded", call(2, "Writer", "Sales", dialog), "unloaded"}));
    EXPECT_TRUE(user.boxes.empty());
}

TEST_F(DataSourcesDialog, ShowsTheNewListAfterASetup) {
    ScriptedUser user{selectRow(JxDataSourcesList, 0), test::call([this](HWND) {
                          putDataSources({{"New", "Writer"}});
                      }),
                      key(JXW_KEY_ENTER), look()};
    SQLManageDataSources(0);
    EXPECT_EQ(listIn(user.dumps[0]), "  list 103 focus\n    > New (Writer)\n");
}

TEST_F(DataSourcesDialog, ADoubleClickSetsUpToo) {
    ScriptedUser user({noteDialog(), doubleClick(JxDataSourcesList, 1)}, {IDOK});
    SQLManageDataSources(0);
    EXPECT_EQ(calls.lines(), (Lines{"loaded", call(2, "Refuser", "Stock", dialog), "unloaded"}));
}

TEST_F(DataSourcesDialog, AFailedSetupLeavesTheOldListAndUnloadsTheLibrary) {
    ScriptedUser user({selectRow(JxDataSourcesList, 1), test::call([this](HWND) { putDataSources({}); }),
                       press(JxSetupButton), look()},
                      {IDOK});
    SQLManageDataSources(0);
    EXPECT_EQ(user.boxes, Texts{adminBox(51, 48)});
    EXPECT_EQ(listIn(user.dumps[0]),
              "  list 103\n      Sales (Writer)\n    > Stock (Refuser)\n      Old (Lost (old))\n");
    EXPECT_EQ(calls.lines().back(), "unloaded");
}

TEST_F(DataSourcesDialog, ReportsASetupLibraryThatCannotBeLoaded) {
    ScriptedUser user({selectRow(JxDataSourcesList, 2), press(JxSetupButton), press(JxDeleteButton)},
                      {IDOK, IDYES, IDOK});
    const std::string before = home.text(".odbc.ini");
    SQLManageDataSources(0);
    EXPECT_EQ(user.boxes,
              (Texts{adminBox(54, 48), "KALDERO ODBC Admin|" + filled(53, "Old") + "|36", adminBox(54, 48)}));
    EXPECT_EQ(home.text(".odbc.ini"), before);
}

TEST_F(DataSourcesDialog, DeletesAfterAskingAndOnlyThroughTheDriver) {
    ScriptedUser user({noteDialog(), press(JxDeleteButton), look()}, {IDYES});
    SQLManageDataSources(0);
    EXPECT_EQ(user.boxes, Texts{"KALDERO ODBC Admin|" + filled(53, "Sales") + "|36"});
    EXPECT_EQ(calls.lines(), (Lines{"loaded", call(3, "Writer", "Sales", dialog), "unloaded"}));
    EXPECT_EQ(listIn(user.dumps[0]), "  list 103\n    > Stock (Refuser)\n      Old (Lost (old))\n");
}

TEST_F(DataSourcesDialog, DeletesNothingUnlessTheAnswerIsYes) {
    for (const unsigned int answer : {unsigned{IDNO}, unsigned{IDCANCEL}, unsigned{IDOK}, 0U}) {
        ScriptedUser user({press(JxDeleteButton)}, {answer});
        SQLManageDataSources(0);
        EXPECT_TRUE(calls.lines().empty()) << answer;
    }
}

TEST_F(DataSourcesDialog, ReportsADriverThatRefusesToDelete) {
    ScriptedUser user({selectRow(JxDataSourcesList, 1), press(JxDeleteButton), look()}, {IDYES, IDOK});
    SQLManageDataSources(0);
    EXPECT_EQ(user.boxes, (Texts{"KALDERO ODBC Admin|" + filled(53, "Stock") + "|36", adminBox(50, 48)}));
    EXPECT_NE(user.dumps[0].find("> Stock (Refuser)"), std::string::npos);
    EXPECT_EQ(calls.lines().back(), "unloaded");
}

TEST_F(DataSourcesDialog, SaysWhyARowThatNamesNoDriverCannotBeUsed) {
    for (const char* row : {"Sales", "Sales Writer)", ""}) {
        SCOPED_TRACE(row);
        ScriptedUser user({test::call([row](HWND open) {
                               JXW_SendDlgItemMessage(open, JxDataSourcesList, LB_INSERTSTRING, 0,
                                                      reinterpret_cast<uintptr_t>(row));
                           }),
                           selectRow(JxDataSourcesList, 0), press(JxSetupButton), press(JxDeleteButton)},
                          {IDOK, IDOK});
        SQLManageDataSources(0);
        EXPECT_EQ(user.boxes, (Texts{kRowRefused, kRowRefused}));
        EXPECT_TRUE(calls.lines().empty());
    }
}

TEST_F(DataSourcesDialog, TakesNamesWithBlanksAndParenthesesApartFromTheirEnd) {
    putDrivers({{"Writer (new)", setupLibrary("driver_writing")}});
    putDataSources({{"Sales of (May)", "Writer (new)"}});
    ScriptedUser user{noteDialog(), press(JxSetupButton)};
    SQLManageDataSources(0);
    EXPECT_EQ(calls.lines()[1], call(2, "Writer (new)", "Sales of (May)", dialog));
}

TEST_F(DataSourcesDialog, DeletingTheLastOneGreysTheButtons) {
    putDataSources({{"Sales", "Writer"}});
    ScriptedUser user({press(JxDeleteButton), look()}, {IDYES});
    SQLManageDataSources(0);
    EXPECT_NE(user.dumps[0].find("button 105 \"&Setup...\" default grey\n  button 106 \"D&elete\" grey\n"),
              std::string::npos);
}

TEST_F(DataSourcesDialog, SaysWhyANameThatDoesNotFitCannotBeUsed) {
    const std::string name(50, 'n');
    putDataSources({{name.c_str(), "Writer"}});
    ScriptedUser user({press(JxSetupButton), press(JxDeleteButton), doubleClick(JxDataSourcesList, 0)},
                      {IDOK, IDOK, IDOK});
    SQLManageDataSources(0);
    EXPECT_TRUE(calls.lines().empty());
    EXPECT_EQ(user.boxes, (Texts{kRowRefused, kRowRefused, kRowRefused}));
}

TEST_F(DataSourcesDialog, AddsThroughTheDialogOfItsOwn) {
    putDrivers({{"Both", setupLibrary("driver_both")}});
    ScriptedUser user{press(JxAddButton), selectRow(JxAddDataSourceList, 0), test::call([this](HWND) {
                          putDataSources({{"Fresh", "Both"}});
                      }),
                      press(IDOK), look()};
    SQLManageDataSources(0);
    EXPECT_EQ(listIn(user.dumps[0]), "  list 103\n    > Fresh (Both)\n");
    EXPECT_EQ(user.appearances, (Texts{"+Data Sources", "+Add Data Source", "-Add Data Source", "-Data Sources"}));
}

TEST_F(DataSourcesDialog, LeavesTheListAsItIsWhenNothingWasAdded) {
    ScriptedUser user{press(JxAddButton), test::call([this](HWND) { putDataSources({}); }), press(IDCANCEL), look()};
    SQLManageDataSources(0);
    EXPECT_NE(user.dumps[0].find("> Sales (Writer)"), std::string::npos);
}

TEST_F(DataSourcesDialog, ReloadsTheListAfterTheDriversDialog) {
    ScriptedUser user{press(JxDriversButton), test::call([this](HWND) {
                          putDataSources({{"New", "Writer"}});
                      }),
                      press(JxCloseButton), look()};
    SQLManageDataSources(0);
    EXPECT_EQ(listIn(user.dumps[0]), "  list 103\n    > New (Writer)\n");
    EXPECT_EQ(user.appearances, (Texts{"+Data Sources", "+ODBC Drivers", "-ODBC Drivers", "-Data Sources"}));
}

TEST_F(DataSourcesDialog, DoesNotReloadTheListAfterTheOptionsDialog) {
    ScriptedUser user{press(JxOptionsButton), test::call([this](HWND) {
                          putDataSources({{"New", "Writer"}});
                      }),
                      press(IDCANCEL), look()};
    SQLManageDataSources(0);
    EXPECT_NE(user.dumps[0].find("> Sales (Writer)"), std::string::npos);
    EXPECT_EQ(user.appearances, (Texts{"+Data Sources", "+Options", "-Options", "-Data Sources"}));
}

TEST_F(DataSourcesDialog, ASecondCallMovesTheFocusAndChangesNothing) {
    std::string before;
    ScriptedUser user{test::call([&](HWND open) {
                          before = dumpDialog(open);
                          const HWND other = JXW_CreateDialog(BJXHINST, 110, 0, AboutDlgProc, nullptr);
                          EXPECT_EQ(SQLManageDataSources(0), 0);
                          EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(open, JxDataSourcesList));
                          JXW_DestroyDialog(other);
                      }),
                      test::call([&](HWND open) { EXPECT_EQ(dumpDialog(open), before); })};
    EXPECT_EQ(SQLManageDataSources(0), 1);
    EXPECT_EQ(user.appearances, (Texts{"+Data Sources", "+Options", "-Options", "-Data Sources"}));
}

TEST_F(DataSourcesDialog, AnswersItsCommandsAsAgreed) {
    ScriptedUser user{test::call([](HWND open) {
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxClaimedCommand, 0), 1);
        for (const int id : {0, 1, 2, 102, 110, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, JxDataSourcesList, 3 << 16), 0);
        for (const int message : {0, 16, 513, 1025})
            EXPECT_EQ(JXW_SendMessage(open, message, 0, 0), 0) << message;
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    SQLManageDataSources(0);
}

TEST_F(DataSourcesDialog, AnExceptionOfADriverPassesAndLeavesNoDialogBehind) {
    putDrivers({{"Writer", setupLibrary("driver_throwing")}});
    for (int round = 0; round < 2; ++round) {
        ScriptedUser user{press(JxSetupButton)};
        try {
            SQLManageDataSources(0);
            ADD_FAILURE() << "nothing was thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "the driver's own words");
        }
        EXPECT_EQ(HWNDDSDLG, 0U);
        EXPECT_EQ(JXW_NextDialog(0), 0U);
        EXPECT_EQ(user.appearances, (Texts{"+Data Sources", "-Data Sources"}));
    }
}

TEST_F(DataSourcesDialog, ShowsAListLongerThanItsBufferWithoutLosingItsPlace) {
    std::string list = "[ODBC Data Sources]\n";
    for (int number = 100; number < 300; ++number)
        list += "Source" + std::to_string(number) + "=Writer\n";
    home.put(".odbc.ini", list);
    ScriptedUser user{look()};
    SQLManageDataSources(0);
    EXPECT_NE(user.dumps[0].find("> Source100 (Writer)\n      Source101 (Writer)\n"), std::string::npos);
    EXPECT_NE(user.dumps[0].find("      Source201 (Writer)\n"), std::string::npos);
    EXPECT_EQ(user.dumps[0].find("Source203"), std::string::npos);
}

}  // namespace

}  // namespace jx::test
