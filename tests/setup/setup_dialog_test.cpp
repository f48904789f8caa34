// The setup library's dialog, driven by every path through its entry point.
#include <jxwindow.h>
#include <sys/stat.h>

#include <stdexcept>

#include "dialog_dump.h"
#include "scripted_user.h"
#include "setup/setup_template.h"
#include "setup_library.h"

namespace {

using namespace jx::setup;
using namespace jx::test;
using Texts = std::vector<std::string>;

constexpr HWND kOwner = 77;  // only its not being 0 counts

constexpr char kSales[] =
    "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\n; kept\n"
    "Server=a\nPWD=hush\nEmpty=\n";

std::string box(const std::string& text, unsigned int style = MB_ICONEXCLAMATION) {
    return "Data Source Setup|" + text + "|" + std::to_string(style);
}

// Fills both fields and presses a button; a secret's value goes into the hidden field.
Action enter(const char* keyword, const char* value, unsigned short button) {
    return [=](ScriptedUser&, HWND dialog) {
        EXPECT_EQ(JXW_UserEdit(dialog, kKeyEdit, keyword), 1);
        const bool hidden = JXW_IsWindowEnabled(JXW_GetDlgItem(dialog, kHiddenEdit)) != 0;
        EXPECT_EQ(JXW_UserEdit(dialog, hidden ? kHiddenEdit : kValueEdit, value), 1);
        return JXW_UserCommand(dialog, button);
    };
}

class SetupDialog : public SetupLibrary {
protected:
    ~SetupDialog() override { EXPECT_EQ(JXW_NextDialog(0), 0U) << "a dialog was left"; }

    BOOL add(const std::string& attributes = list({})) const {
        return configure(ODBC_ADD_DSN, attributes, kDriver, kOwner);
    }
    BOOL change(const std::string& attributes = list({"DSN=Sales"})) const {
        return configure(ODBC_CONFIG_DSN, attributes, kDriver, kOwner);
    }

    static std::string written(const std::string& name, const std::string& keys) {
        return "[ODBC Data Sources]\n" + name + "=Sample Driver\n\n[" + name + "]\nDriver=/opt/sample/libsample.so\n" +
               keys;
    }
};

// ---- adding ----

TEST_F(SetupDialog, BeginsEmptyForANewDataSource) {
    ScriptedUser user{look(), press(IDCANCEL)};
    EXPECT_EQ(add(), FALSE);
    EXPECT_EQ(user.dumps[0],
              "\"Data Source Setup\" centered\n  label \"Data source &name:\"\n  edit 201 \"\" focus\n"
              "  label \"Driver:\"\n  label 202 \"Sample Driver\"\n  label \"Key&s and values:\"\n  list 203\n"
              "  button 204 \"&Add\"\n  button 205 \"&Change\" grey\n  button 206 \"&Remove\" grey\n"
              "  label \"&Key:\"\n  edit 207 \"\"\n  label \"&Value:\"\n  edit 208 \"\"\n"
              "  label \"&Hidden value:\"\n  edit 209 \"\" password grey\n"
              "  button 1 \"OK\" default\n  button 2 \"Cancel\"\n");
    EXPECT_EQ(dataSources(), "(absent)");
}

TEST_F(SetupDialog, StoresWhatWasTyped) {
    ScriptedUser user{type(kNameEdit, " Sales "), enter("Server", "a", kAddButton), enter(" Port ", "1=2", kAddButton),
                      enter("Empty", "", kAddButton), press(IDOK)};
    EXPECT_EQ(add(), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", "Server=a\nPort=1=2\nEmpty=\n"));
    EXPECT_TRUE(user.boxes.empty());
}

TEST_F(SetupDialog, IsReachedThroughTheInstaller) {
    ScriptedUser user{type(kNameEdit, "Sales"), key(JXW_KEY_ENTER)};
    EXPECT_EQ(SQLConfigDataSource(kOwner, ODBC_ADD_DSN, kDriver, nullptr), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", ""));
}

TEST_F(SetupDialog, BeginsWithTheAttributesGiven) {
    ScriptedUser user{look(), press(IDOK)};
    EXPECT_EQ(add(list({"DSN=Sales", "DRIVER=x", "Server=a", "Password=hush"})), TRUE);
    EXPECT_NE(user.dumps[0].find("edit 201 \"Sales\" focus"), std::string::npos);
    EXPECT_NE(user.dumps[0].find("  list 203\n      Server = a\n      Password = ********\n"), std::string::npos);
    EXPECT_EQ(dataSources(), written("Sales", "Server=a\nPassword=hush\n"));
}

TEST_F(SetupDialog, CancellingAnAddWritesNothing) {
    for (const int escape : {JXW_KEY_ESCAPE, JXW_KEY_CLOSE}) {
        ScriptedUser user{type(kNameEdit, "Sales"), enter("Server", "a", kAddButton), key(escape)};
        EXPECT_EQ(add(), FALSE);
        EXPECT_EQ(dataSources(), "(absent)");
    }
    ScriptedUser gone;
    EXPECT_EQ(add(list({"DSN=Sales"})), FALSE);
    EXPECT_EQ(dataSources(), "(absent)");
}

TEST_F(SetupDialog, AsksBeforeAnAddReplacesADataSource) {
    for (const unsigned int answer : {unsigned{IDNO}, unsigned{IDCANCEL}, 0U, unsigned{IDYES}}) {
        SCOPED_TRACE(answer);
        home.put(".odbc.ini", kSales);
        ScriptedUser user({type(kNameEdit, "sales"), press(IDOK), press(IDCANCEL)}, {answer});
        EXPECT_EQ(add(), answer == IDYES ? TRUE : FALSE);
        EXPECT_EQ(user.boxes, Texts{box("There is a data source sales already. Replace it with all its keys?", 36)});
        EXPECT_EQ(user.actionsLeft(), answer == IDYES ? 1U : 0U);
        EXPECT_EQ(dataSources(), answer == IDYES ? written("sales", "") : kSales);
    }
}

TEST_F(SetupDialog, AsksBeforeItReplacesWhatIsOnlyListedOrOnlyTheDefaultsEntry) {
    home.put(".odbc.ini", "[ODBC Data Sources]\nListed=Sample Driver\n");
    home.put(".odbcinst.ini", installedDriver() + "\n[Default]\nDriver=Sample Driver\n");
    for (const char* name : {"Listed", "Default"}) {
        ScriptedUser user({type(kNameEdit, name), press(IDOK), press(IDCANCEL)}, {IDNO});
        EXPECT_EQ(add(), FALSE);
        EXPECT_EQ(user.boxes.size(), 1U) << name;
    }
}

TEST_F(SetupDialog, StaysOpenForANameThatCannotBe) {
    for (const char* name : {"", "  ", "ODBC", "a=b", "a name of thirty-three characters"}) {
        SCOPED_TRACE(name);
        ScriptedUser user({type(kNameEdit, name), press(IDOK), press(IDCANCEL)}, {IDOK});
        EXPECT_EQ(add(), FALSE);
        EXPECT_EQ(user.boxes.size(), 1U);
        EXPECT_EQ(user.actionsLeft(), 0U);
        EXPECT_EQ(dataSources(), "(absent)");
    }
}

// .odbc.ini cannot be locked here: a directory has the name of its lock file.
TEST_F(SetupDialog, AFailedWriteLeavesEverythingAsItWasAndTheDialogOpen) {
    home.put("sources.ini", kSales);
    setenv("ODBCINI", home.file("sources.ini").c_str(), 1);
    const std::string inTheWay = home.file(".sources.ini.jxlock");
    ASSERT_EQ(mkdir(inTheWay.c_str(), 0700), 0);
    for (const char* name : {"Sales", "Default", "New"}) {
        SCOPED_TRACE(name);
        ScriptedUser user({type(kNameEdit, name), enter("Server", "b", kAddButton), press(IDOK), look(),
                           call([&](HWND) { rmdir(inTheWay.c_str()); }), press(IDCANCEL)},
                          {name[0] == 'S' ? unsigned{IDYES} : unsigned{IDOK}, IDOK});
        EXPECT_EQ(add(), FALSE);
        EXPECT_EQ(user.boxes.back().find("Data Source Setup|The data source was not stored."), 0U);
        // Restoring the entry of the default data source succeeded, so the store reports no failure.
        EXPECT_EQ(user.boxes.back().find("\nCannot ") != std::string::npos, name[0] != 'D') << user.boxes.back();
        EXPECT_NE(user.dumps[0].find("      Server = b\n"), std::string::npos);
        EXPECT_EQ(home.text("sources.ini"), kSales);
        EXPECT_NE(drivers().find(installedDriver()), std::string::npos);
        EXPECT_EQ(drivers().find("[Default]"), std::string::npos);
        mkdir(inTheWay.c_str(), 0700);
    }
    rmdir(inTheWay.c_str());
}

TEST_F(SetupDialog, TriesAgainAfterAFailedWrite) {
    const std::string inTheWay = home.file(".odbc.ini.jxlock");
    ASSERT_EQ(mkdir(inTheWay.c_str(), 0700), 0);
    ScriptedUser user(
        {type(kNameEdit, "Sales"), press(IDOK), call([&](HWND) { rmdir(inTheWay.c_str()); }), press(IDOK)}, {IDOK});
    EXPECT_EQ(add(), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", ""));
}

// ---- changing ----

TEST_F(SetupDialog, ShowsWhatIsStoredWithSecretsHidden) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{look(), selectRow(kKeyList, 1), look(), selectRow(kKeyList, 0), look(), press(IDCANCEL)};
    EXPECT_EQ(change(), FALSE);
    EXPECT_NE(user.dumps[0].find("edit 201 \"Sales\" grey"), std::string::npos);
    EXPECT_NE(user.dumps[0].find("  list 203 focus\n      Server = a\n      PWD = ********\n      Empty = \n"),
              std::string::npos)
        << user.dumps[0];
    EXPECT_NE(user.dumps[1].find("edit 207 \"PWD\"\n  label \"&Value:\"\n  edit 208 \"\" grey\n"
                                 "  label \"&Hidden value:\"\n  edit 209 \"****\" password\n"),
              std::string::npos);
    EXPECT_NE(user.dumps[2].find("edit 207 \"Server\"\n  label \"&Value:\"\n  edit 208 \"a\"\n"
                                 "  label \"&Hidden value:\"\n  edit 209 \"\" password grey\n"),
              std::string::npos);
    for (const std::string& dump : user.dumps)
        EXPECT_EQ(dump.find("hush"), std::string::npos);
}

TEST_F(SetupDialog, StoresWhatChangedAndNothingElse) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{selectRow(kKeyList, 0), type(kValueEdit, "b"), press(kChangeButton),
                      enter("Port", "1", kAddButton), press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_EQ(dataSources(),
              "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\n; kept\n"
              "Server=b\nPWD=hush\nEmpty=\nPort=1\n");
}

TEST_F(SetupDialog, KeepsWhatOthersWroteMeanwhile) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{selectRow(kKeyList, 2), press(kRemoveButton),
                      call([](HWND) { SQLWritePrivateProfileString("Sales", "Server", "other", ".odbc.ini"); }),
                      press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_EQ(dataSources(),
              "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\n; kept\n"
              "Server=other\nPWD=hush\n");
}

TEST_F(SetupDialog, ChangesASecretThroughTheHiddenField) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{selectRow(kKeyList, 1), refused(type(kValueEdit, "x")), type(kHiddenEdit, "new"),
                      press(kChangeButton), press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_NE(dataSources().find("PWD=new\n"), std::string::npos);
}

TEST_F(SetupDialog, ChangesAKeysNameInItsPlaceInTheList) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{selectRow(kKeyList, 0), enter("Host", "a", kChangeButton), look(), press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_NE(user.dumps[0].find("    > Host = a\n      PWD = ********\n"), std::string::npos);
    EXPECT_EQ(dataSources().find("Server"), std::string::npos);
    EXPECT_NE(dataSources().find("Host=a\n"), std::string::npos);
}

TEST_F(SetupDialog, OkWithoutAChangeLeavesTheFileUntouched) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{selectRow(kKeyList, 2), press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_EQ(dataSources(), kSales);
}

TEST_F(SetupDialog, CancellingAChangeWritesNothing) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{selectRow(kKeyList, 0), press(kRemoveButton), key(JXW_KEY_ESCAPE)};
    EXPECT_EQ(change(), FALSE);
    EXPECT_EQ(dataSources(), kSales);
}

TEST_F(SetupDialog, LaysTheAttributesGivenOverWhatIsStored) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{look(), press(IDOK)};
    EXPECT_EQ(change(list({"DSN=Sales", "SERVER=b", "Empty=", "Port=1"})), TRUE);
    EXPECT_NE(user.dumps[0].find("      Server = b\n      PWD = ********\n      Port = 1\n"), std::string::npos);
    EXPECT_NE(dataSources().find("Server=b\nPWD=hush\nPort=1\n"), std::string::npos);
}

TEST_F(SetupDialog, ChangesThroughTheInstallerToo) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{enter("Port", "1", IDOK)};
    EXPECT_EQ(SQLConfigDataSource(kOwner, ODBC_CONFIG_DSN, kDriver, list({"DSN=Sales"}).c_str()), TRUE);
    EXPECT_NE(dataSources().find("Port=1\n"), std::string::npos);
}

TEST_F(SetupDialog, ShowsValuesOfAnyLengthWhole) {
    const std::string text(70000, 'v');
    home.put(".odbc.ini", written("Sales", "Text=" + text + "\nOther=1\n"));
    ScriptedUser user{selectRow(kKeyList, 0), type(kKeyEdit, "Copy"), press(kAddButton), press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", "Text=" + text + "\nOther=1\nCopy=" + text + "\n"));
}

// ---- the list and its fields ----

TEST_F(SetupDialog, EmptiesTheFieldsAfterAnAddAndARemoval) {
    ScriptedUser user{enter("Server", "a", kAddButton), look(), selectRow(kKeyList, 0), press(kRemoveButton), look()};
    add();
    for (const std::string& dump : user.dumps) {
        EXPECT_NE(dump.find("button 205 \"&Change\" grey\n  button 206 \"&Remove\" grey\n"), std::string::npos);
        EXPECT_NE(dump.find("edit 208 \"\"\n"), std::string::npos);
    }
    EXPECT_NE(user.dumps[0].find("edit 207 \"\" focus\n"), std::string::npos);
    EXPECT_NE(user.dumps[1].find("  list 203\n  button"), std::string::npos);
}

TEST_F(SetupDialog, RefusesAKeyThatIsInTheListAlready) {
    ScriptedUser user(
        {enter("Server", "a", kAddButton), enter("SERVER", "b", kAddButton), type(kKeyEdit, "Port"), press(kAddButton),
         selectRow(kKeyList, 1), type(kKeyEdit, "server"), press(kChangeButton), look(), press(IDCANCEL)},
        {IDOK, IDOK});
    add();
    EXPECT_EQ(user.boxes,
              (Texts{box("The key SERVER is in the list already."), box("The key server is in the list already.")}));
    EXPECT_NE(user.dumps[0].find("      Server = a\n    > Port = b\n"), std::string::npos);
}

TEST_F(SetupDialog, RefusesKeysAndValuesThatTheFileCannotHold) {
    struct Row {
        const char *keyword, *value;
    };
    for (const Row& row : {Row{"", "a"}, Row{"DSN", "a"}, Row{"driver", "a"}, Row{"a=b", "c"}, Row{"[a]", "b"},
                           Row{"Server", " a"}, Row{"Server", "a\nb"}}) {
        SCOPED_TRACE(row.keyword);
        for (const auto button : {static_cast<unsigned short>(kAddButton), static_cast<unsigned short>(IDOK)}) {
            ScriptedUser user({enter(row.keyword, row.value, button), look(), press(IDCANCEL)}, {IDOK});
            EXPECT_EQ(add(list({"DSN=Sales"})), FALSE);
            EXPECT_EQ(user.boxes.size(), 1U);
            EXPECT_NE(user.dumps[0].find("  list 203\n  button"), std::string::npos);
        }
    }
    EXPECT_EQ(dataSources(), "(absent)");
}

TEST_F(SetupDialog, OkTakesWhatWasTypedLast) {
    ScriptedUser user{enter("Server", "a", kAddButton), enter("server", "b", IDOK)};
    EXPECT_EQ(add(list({"DSN=Sales"})), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", "Server=b\n"));
    ScriptedUser other{selectRow(kKeyList, 0), enter("Port", "1", IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", "Server=b\nPort=1\n"));
}

TEST_F(SetupDialog, OkRefusesToGiveTheSelectedRowAnotherRowsKey) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user({selectRow(kKeyList, 0), type(kKeyEdit, "EMPTY"), press(IDOK), look(), press(IDCANCEL)}, {IDOK});
    EXPECT_EQ(change(), FALSE);
    EXPECT_EQ(user.boxes, Texts{box("The key EMPTY is in the list already.")});
    ASSERT_EQ(user.dumps.size(), 1U);
    EXPECT_NE(user.dumps[0].find("    > Server = a\n      PWD = ********\n      Empty = \n"), std::string::npos);
    EXPECT_EQ(dataSources(), kSales);
}

TEST_F(SetupDialog, OkTakesTheSelectedRowsNewValue) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{selectRow(kKeyList, 0), type(kKeyEdit, "server"), type(kValueEdit, "b"), press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_NE(dataSources().find("Server=b\nPWD=hush\nEmpty=\n"), std::string::npos);
}

TEST_F(SetupDialog, OkTakesNothingFromEmptiedFields) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{selectRow(kKeyList, 0), type(kKeyEdit, ""), type(kValueEdit, ""), press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_EQ(dataSources(), kSales);
}

// A key that cannot be typed in the dialog, but may be in a file edited by hand.
TEST_F(SetupDialog, OkLeavesASelectedRowThatCouldNotBeTyped) {
    const std::string odd = written("Sales", "DSN=Other\nServer=a\n");
    home.put(".odbc.ini", odd);
    ScriptedUser user{selectRow(kKeyList, 0), press(IDOK)};
    EXPECT_EQ(change(), TRUE);
    EXPECT_TRUE(user.boxes.empty());
    EXPECT_EQ(dataSources(), odd);
    ScriptedUser other({selectRow(kKeyList, 0), type(kValueEdit, "Sales"), press(IDOK), press(IDCANCEL)}, {IDOK});
    EXPECT_EQ(change(), FALSE);
    EXPECT_EQ(other.boxes.size(), 1U);
    EXPECT_EQ(dataSources(), odd);
}

TEST_F(SetupDialog, NeverBringsAHiddenValueIntoSight) {
    ScriptedUser user{enter("PWD", "hush", kAddButton), selectRow(kKeyList, 0), type(kKeyEdit, "PA"), look(),
                      press(IDCANCEL)};
    add();
    EXPECT_NE(user.dumps[0].find("edit 207 \"PA\" focus\n  label \"&Value:\"\n  edit 208 \"\"\n"), std::string::npos);
    EXPECT_EQ(user.dumps[0].find("hush"), std::string::npos);
}

TEST_F(SetupDialog, HidesAValueThatWasTypedBeforeItsKey) {
    ScriptedUser user{type(kValueEdit, "hush"), type(kKeyEdit, "Password"), look(), press(kAddButton), press(IDOK)};
    EXPECT_EQ(add(list({"DSN=Sales"})), TRUE);
    EXPECT_NE(user.dumps[0].find("edit 208 \"\" grey\n  label \"&Hidden value:\"\n  edit 209 \"****\" password\n"),
              std::string::npos);
    EXPECT_EQ(dataSources(), written("Sales", "Password=hush\n"));
}

TEST_F(SetupDialog, GreysChangeAndRemoveWhileNothingIsSelected) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{refused(press(kChangeButton)), refused(press(kRemoveButton)), selectRow(kKeyList, 0),
                      selectRow(kKeyList, -1),       refused(press(kChangeButton)), look()};
    change();
    EXPECT_NE(user.dumps[0].find("edit 207 \"\"\n"), std::string::npos);
}

TEST_F(SetupDialog, AnswersItsCommandsAsADialogShould) {
    home.put(".odbc.ini", kSales);
    ScriptedUser user{call([](HWND dialog) {
        for (const int id : {0, 3, 10, 201, 202, 208, 999, int{kChangeButton}, int{kRemoveButton}})
            EXPECT_EQ(JXW_SendMessage(dialog, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_SendMessage(dialog, WM_COMMAND, kKeyList, LBN_DBLCLK << 16), 0);
        EXPECT_EQ(JXW_SendMessage(dialog, 1025, 0, 0), 0);
        EXPECT_EQ(JXW_IsDialogEnded(dialog, nullptr), 0);
    })};
    change();
    EXPECT_EQ(dataSources(), kSales);
}

// ---- without a user ----

TEST_F(SetupDialog, WithoutAScreenAWindowChangesNothing) {
    EXPECT_EQ(add(list({"DSN=Sales", "Server=a"})), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", "Server=a\n"));
    EXPECT_EQ(change(list({"DSN=Sales", "Server=b"})), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", "Server=b\n"));
    EXPECT_EQ(add(), FALSE);
    EXPECT_EQ(change(list({})), FALSE);
}

TEST_F(SetupDialog, WithoutAWindowAScreenChangesNothing) {
    ScriptedUser user;
    EXPECT_EQ(configure(ODBC_ADD_DSN, list({"DSN=Sales"})), TRUE);
    EXPECT_EQ(configure(ODBC_CONFIG_DSN, list({"DSN=Sales", "Server=b"})), TRUE);
    EXPECT_EQ(dataSources(), written("Sales", "Server=b\n"));
    EXPECT_TRUE(user.appearances.empty());
}

TEST_F(SetupDialog, ShowsNothingWhenThereIsNothingToEdit) {
    ScriptedUser user;
    home.put(".odbc.ini", kSales);
    EXPECT_EQ(change(list({"DSN=Other"})), FALSE);
    EXPECT_EQ(change(list({"DSN=ODBC"})), FALSE);
    EXPECT_EQ(change(list({"Server=a"})), FALSE);
    EXPECT_EQ(add(list({"DSN=Other", "Server"})), FALSE);
    EXPECT_EQ(configure(ODBC_ADD_DSN, list({"DSN=Other"}), "Unknown Driver", kOwner), FALSE);
    EXPECT_EQ(configure(99, list({"DSN=Sales"}), kDriver, kOwner), FALSE);
    EXPECT_TRUE(user.appearances.empty());
    EXPECT_EQ(dataSources(), kSales);
}

TEST_F(SetupDialog, RemovesWithoutADialog) {
    ScriptedUser user;
    home.put(".odbc.ini", kSales);
    EXPECT_EQ(configure(ODBC_REMOVE_DSN, list({"DSN=Sales"}), kDriver, kOwner), TRUE);
    EXPECT_EQ(dataSources(), "[ODBC Data Sources]\n\n");
    EXPECT_TRUE(user.appearances.empty());
}

TEST_F(SetupDialog, AnExceptionOfTheScreenPassesAndLeavesNoDialogBehind) {
    ScriptedUser user{call([](HWND) { throw std::runtime_error("the screen's own words"); })};
    EXPECT_THROW(add(), std::runtime_error);
    EXPECT_EQ(JXW_NextDialog(0), 0U);
}

TEST_F(SetupDialog, StaysOpenWhileItsLibraryIsUnloadedAndLoadedByOthers) {
    ScriptedUser user{call([](HWND) {
                          // The installer loads and unloads the library for a call of its own.
                          EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, kDriver, list({"DSN=Inner"}).c_str()), TRUE);
                      }),
                      type(kNameEdit, "Outer"), press(IDOK)};
    EXPECT_EQ(SQLConfigDataSource(kOwner, ODBC_ADD_DSN, kDriver, nullptr), TRUE);
    EXPECT_NE(dataSources().find("[Inner]"), std::string::npos);
    EXPECT_NE(dataSources().find("[Outer]"), std::string::npos);
}

}  // namespace
