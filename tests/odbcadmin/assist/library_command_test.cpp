// What is asked and said before a command of the library's dialogs is carried out.
#include "odbcadmin/assist/library_command.h"

#include <control_ids.h>
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "odbcadmin/assist/forms.h"
#include "scripted_user.h"
#include "test_home.h"

namespace jx::assist::test {
namespace {

using jx::test::Action, jx::test::call, jx::test::doubleClick, jx::test::press, jx::test::ScriptedUser,
    jx::test::selectRow, jx::test::type;

const std::string kPlain = "[ODBC Drivers]\nPlain=Installed\n[Plain]\nDriver=/opt/plain.so\n";
const std::string kSales = "[ODBC Data Sources]\nSales=Plain\n[Sales]\nDriver=/opt/plain.so\nServer=db1\n";

class LibraryCommandTest : public testing::Test {
protected:
    LibraryCommandTest() {
        home_.put(".odbcinst.ini", kPlain);
        home_.put(".odbc.ini", kSales);
    }

    // Goes through the dialogs from the first one on, and gives the boxes.
    std::vector<std::string> manage(std::initializer_list<Action> actions,
                                    std::initializer_list<unsigned int> answers) {
        ScriptedUser user(actions, answers);
        SQLManageDataSources(0);
        appearances_ = user.appearances;
        EXPECT_EQ(user.actionsLeft(), 0U);
        EXPECT_EQ(user.answersLeft(), 0U);
        return user.boxes;
    }

    bool appeared(const std::string& title) const {
        return std::find(appearances_.begin(), appearances_.end(), "+" + title) != appearances_.end();
    }

    // No file can be made beside the data sources from now on.
    Action lockOut() {
        return call([this](HWND) { std::filesystem::create_directory(home_.file(".odbc.ini.jxlock")); });
    }

    jx::test::TestHome home_;
    const std::string offer_ =
        "Setup Library|The driver Plain brings no setup library, which its data sources are set "
        "up with.\nUse the general one?\n\nSetup=" JX_SETUP_LIBRARY " is then entered for it in " +
        home_.file(".odbcinst.ini") + ".|36";
    std::vector<std::string> appearances_;
};

TEST_F(LibraryCommandTest, ADriverWithoutASetupLibraryIsSetUpWithTheGeneralOneIfWished) {
    for (const bool isDoubleClick : {false, true}) {
        home_.put(".odbcinst.ini", kPlain);
        const auto setUp = isDoubleClick ? doubleClick(JxDataSourcesList, 0) : press(JxSetupButton);
        EXPECT_EQ(manage({setUp, press(IDCANCEL)}, {IDYES, IDOK}).at(0), offer_);
        EXPECT_TRUE(appeared("Data Source Setup"));
        EXPECT_EQ(home_.text(".odbcinst.ini"), kPlain + "Setup=" JX_SETUP_LIBRARY "\n");
    }
}

TEST_F(LibraryCommandTest, NoLeavesTheDriverAsItIs) {
    EXPECT_EQ(manage({press(JxSetupButton)}, {IDNO}), std::vector{offer_});
    EXPECT_FALSE(appeared("Data Source Setup"));
    EXPECT_EQ(home_.text(".odbcinst.ini"), kPlain);
}

TEST_F(LibraryCommandTest, ANewDataSourceOfSuchADriverIsOfferedTheSame) {
    EXPECT_EQ(manage({press(JxAddButton), selectRow(JxAddDataSourceList, 0), press(IDOK), press(IDCANCEL)}, {IDNO}),
              std::vector{offer_});
    EXPECT_EQ(manage({press(JxAddButton), doubleClick(JxAddDataSourceList, 0), press(IDCANCEL)}, {IDYES, IDOK}).at(0),
              offer_);
    EXPECT_TRUE(appeared("Data Source Setup"));
}

TEST_F(LibraryCommandTest, ASetupLibraryThatCannotBeEnteredIsReportedAndNothingIsSetUp) {
    std::filesystem::create_directory(home_.file(".odbcinst.ini.jxlock"));
    const auto boxes = manage({press(JxSetupButton)}, {IDYES, IDOK});
    EXPECT_EQ(boxes.at(1),
              "Setup Library|The setup library was not entered. Cannot lock " + home_.file(".odbcinst.ini.jxlock") +
                  ": it is not a lock of this library, and is left alone; move it away. The file is as it was.|16");
    EXPECT_FALSE(appeared("Data Source Setup"));
}

TEST_F(LibraryCommandTest, ADataSourceThatNoSetupLibraryCanRemoveIsRemovedHere) {
    const std::string question =
        "Data Sources|Remove the data source \"Sales\"?\nIts settings are deleted and cannot be restored.\nNo setup "
        "library takes part: its entries in " +
        home_.file(".odbc.ini") + " are removed.|52";
    EXPECT_EQ(manage({press(JxDeleteButton)}, {IDNO}), std::vector{question});
    EXPECT_EQ(home_.text(".odbc.ini"), kSales);
    EXPECT_EQ(manage({press(JxDeleteButton)}, {IDYES}), std::vector{question});
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\n");
}

TEST_F(LibraryCommandTest, ARemovalThatFailsNamesFileAndReason) {
    const auto boxes = manage({lockOut(), press(JxDeleteButton)}, {IDYES, IDOK});
    EXPECT_EQ(boxes.at(1),
              "Data Sources|The data source was not removed. Cannot lock " + home_.file(".odbc.ini.jxlock") +
                  ": it is not a lock of this library, and is left alone; move it away. The file is as it was.|16");
    EXPECT_EQ(home_.text(".odbc.ini"), kSales);
}

TEST_F(LibraryCommandTest, ADataSourceThatIsGoneIsReportedAndTheListReadAgain) {
    const auto removed = call([this](HWND) { home_.put(".odbc.ini", "[ODBC Data Sources]\n"); });
    const std::string gone = "Data Sources|The data source Sales is not in " + home_.file(".odbc.ini") +
                             " any more: another program has removed or renamed it. The list is read again.|48";
    int rows = -1;
    const auto count =
        call([&](HWND dialog) { rows = JXW_SendDlgItemMessage(dialog, JxDataSourcesList, LB_GETCOUNT, 0, 0); });
    for (const unsigned short button : {JxSetupButton, JxDeleteButton}) {
        home_.put(".odbc.ini", kSales);
        EXPECT_EQ(manage({removed, press(button), count}, {IDOK}), std::vector{gone});
        EXPECT_EQ(rows, 0);
    }
}

TEST_F(LibraryCommandTest, AFileThatCannotBeReadAnyMoreIsReported) {
    const auto spoil = call([this](HWND) {
        std::filesystem::remove(home_.file(".odbc.ini"));
        std::filesystem::create_directory(home_.file(".odbc.ini"));
    });
    EXPECT_EQ(manage({spoil, press(JxSetupButton)}, {IDOK}),
              std::vector<std::string>{"Data Sources|Cannot open " + home_.file(".odbc.ini") +
                                       ": Is a directory. There must be a file at this place, or nothing.|48"});
}

TEST_F(LibraryCommandTest, LongNamesAreSetUpAndRemovedAllTheSame) {
    const std::string name(50, 'n');
    home_.put(".odbcinst.ini", kPlain + "Setup=" JX_SETUP_LIBRARY "\n");
    home_.put(".odbc.ini", "[ODBC Data Sources]\n" + name + "=Plain\n[" + name + "]\nDriver=/opt/plain.so\n");
    EXPECT_EQ(manage({press(JxSetupButton), press(IDCANCEL)}, {}), std::vector<std::string>{});
    EXPECT_TRUE(appeared("Data Source Setup"));
    EXPECT_EQ(manage({press(JxDeleteButton)}, {IDYES}).size(), 1U);
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\n");
}

TEST_F(LibraryCommandTest, ADriverWithALongNameIsReported) {
    const std::string name(50, 'd');
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=" + name + "\n[Sales]\nDriver=/opt/plain.so\n");
    EXPECT_EQ(manage({press(JxSetupButton)}, {IDOK}),
              std::vector<std::string>{"Data Sources|The name of its driver, " + name +
                                       ", has 50 bytes; the installer takes at most 49. Give the driver a shorter name "
                                       "in " +
                                       home_.file(".odbcinst.ini") + ".|48"});
}

TEST_F(LibraryCommandTest, OptionsThatCannotBeStoredAreReportedAndStayInTheDialog) {
    const auto boxes =
        manage({press(JxOptionsButton), jx::test::click(JxTraceBox), lockOut(), press(IDOK),
                call([this](HWND) { std::filesystem::remove(home_.file(".odbc.ini.jxlock")); }), press(IDOK)},
               {IDOK});
    EXPECT_EQ(boxes,
              std::vector<std::string>{
                  "Options|The settings were not stored. Cannot lock " + home_.file(".odbc.ini.jxlock") +
                  ": it is not a lock of this library, and is left alone; move it away. The file is as it was.|16"});
    EXPECT_EQ(home_.text(".odbc.ini"), kSales + "\n[ODBC]\nTrace=1\nTraceAutoStop=0\nTraceFile=sql.log\n");
}

class RemovalTest : public LibraryCommandTest {
protected:
    RemovalTest() {
        home_.put("d.so", "library");
        home_.put("s.so", "setup");
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nPlain=Installed\n[Plain]\nDriver=" + home_.file("d.so") +
                                       "\nSetup=" + home_.file("s.so") + "\n");
        home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Plain\nMore=Plainer\n[Sales]\nDriver=/x.so\n[More]\nA=b\n");
    }
};

TEST_F(RemovalTest, OnlyUnregistersIfWishedAndLeavesFilesAndDataSources) {
    const std::string sources = home_.text(".odbc.ini");
    EXPECT_EQ(manage({press(JxDriversButton), press(JxDeleteDriverButton), press(kRemovalUnregister)}, {}),
              std::vector<std::string>{});
    EXPECT_EQ(home_.text(".odbcinst.ini"), "[ODBC Drivers]\n");
    EXPECT_EQ(home_.text("d.so"), "library");
    EXPECT_EQ(home_.text("s.so"), "setup");
    EXPECT_EQ(home_.text(".odbc.ini"), sources);
}

TEST_F(RemovalTest, NamesEverythingThatDeletingTheFilesRemoves) {
    ScriptedUser user({press(JxDriversButton), press(JxDeleteDriverButton), jx::test::look()});
    SQLManageDataSources(0);
    EXPECT_EQ(user.dumps.at(0), R"("Remove a Driver"
  label 21 "Driver: Plain"
  label 22 "Unregister Only leaves its files and the 1 data source that need it: Sales."
  label "Delete &Files removes from the disk and from your files, for good:"
  list 23 focus
    > file )" + home_.file("d.so") + R"(
      file )" + home_.file("s.so") + R"(
      entries of driver Plain
      data source Sales
      data source More
  button 24 "&Unregister Only"
  button 25 "D&elete Files..."
  button 2 "Cancel" default
)");
}

TEST_F(RemovalTest, DeletingTheFilesIsTheLibrarysAffairAndItAsksOnceMore) {
    EXPECT_EQ(manage({press(JxDriversButton), press(JxDeleteDriverButton), press(kRemovalDelete)}, {IDNO}).size(), 1U);
    EXPECT_EQ(home_.text("d.so"), "library");
    EXPECT_EQ(manage({press(JxDriversButton), press(JxDeleteDriverButton), press(kRemovalDelete)}, {IDYES}).size(), 1U);
    EXPECT_EQ(home_.text("d.so"), "(absent)");
    EXPECT_EQ(home_.text("s.so"), "(absent)");
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\n");
}

TEST_F(RemovalTest, CancelRemovesNothing) {
    const std::string before = home_.text(".odbcinst.ini");
    EXPECT_EQ(manage({press(JxDriversButton), press(JxDeleteDriverButton), press(IDCANCEL)}, {}),
              std::vector<std::string>{});
    EXPECT_EQ(home_.text(".odbcinst.ini"), before);
}

TEST_F(RemovalTest, ADriverThatCannotBeUnregisteredStaysWithTheReason) {
    std::filesystem::create_directory(home_.file(".odbcinst.ini.jxlock"));
    EXPECT_EQ(manage({press(JxDriversButton), press(JxDeleteDriverButton), press(kRemovalUnregister)}, {IDOK}),
              std::vector<std::string>{
                  "Remove a Driver|The driver was not removed. Cannot lock " + home_.file(".odbcinst.ini.jxlock") +
                  ": it is not a lock of this library, and is left alone; move it away. The file is as it was.|16"});
}

}  // namespace
}  // namespace jx::assist::test
