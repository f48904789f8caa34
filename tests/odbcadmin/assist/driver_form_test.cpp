// The dialog that registers a driver: what it refuses, asks and writes.
#include "odbcadmin/assist/driver_form.h"

#include <gtest/gtest.h>
#include <odbcinst.h>

#include <cstdlib>
#include <filesystem>

#include "driver_folder.h"
#include "odbcadmin/trial/installer_library.h"
#include "scripted_user.h"
#include "test_home.h"

namespace jx::assist::test {
namespace {

using jx::test::press;
using jx::test::ScriptedUser;
using jx::test::type;

const std::string kWarning = "|" + std::to_string(MB_OK | MB_ICONEXCLAMATION);
const std::string kInsist = "|" + std::to_string(MB_YESNO | MB_ICONEXCLAMATION);
const std::string kReplace = "|" + std::to_string(MB_YESNO | MB_ICONQUESTION);

class DriverForm : public testing::Test {
protected:
    DriverForm() { lookForDriversIn({}); }

    using Boxes = std::vector<std::string>;

    // Fills the form in, presses OK, answers the boxes, leaves; gives the boxes without their title.
    Boxes fill(const std::string& name, const std::string& library, const std::string& setup,
               std::initializer_list<unsigned int> answers) {
        ScriptedUser user({type(kFormName, name), type(kFormLibrary, library), type(kFormSetup, setup), press(IDOK)},
                          answers);
        wasEntered_ = registerDriver(0);
        Boxes boxes;
        for (const std::string& box : user.boxes) {
            EXPECT_TRUE(box.starts_with("Register a Driver|")) << box;
            boxes.push_back(box.substr(box.find('|') + 1));
        }
        EXPECT_EQ(user.answersLeft(), 0U);
        return boxes;
    }

    // Selects the row of that text.
    static jx::test::Action chooseRow(const std::string& text) {
        return jx::test::call([text](HWND dialog) {
            JxwControlInfo list{};
            JXW_GetControlInfo(dialog, 1, &list);
            for (int row = 0; row < list.rowCount; ++row)
                if (text == JXW_GetRow(dialog, 1, row))
                    JXW_UserSelect(dialog, kFormFound, row);
        });
    }

    std::string drivers() const { return home_.text(".odbcinst.ini"); }

    jx::test::TestHome home_;
    bool wasEntered_ = false;
};

TEST_F(DriverForm, EntersADriverWithItsSetupLibrary) {
    EXPECT_EQ(fill("Mine", JX_DRIVER, JX_DRIVER, {IDOK}), (Boxes{"Mine is registered.|" + std::to_string(MB_OK)}));
    EXPECT_TRUE(wasEntered_);
    EXPECT_EQ(drivers(), "[ODBC Drivers]\nMine=Installed\n\n[Mine]\nDriver=" JX_DRIVER "\nSetup=" JX_DRIVER "\n");
}

TEST_F(DriverForm, BlanksAroundAFieldAreNoPartOfIt) {
    fill(" Mine\t", " " JX_DRIVER " ", " ", {IDOK});
    EXPECT_EQ(drivers(), "[ODBC Drivers]\nMine=Installed\n\n[Mine]\nDriver=" JX_DRIVER "\n");
}

// The words are the command's: the model refuses for both.
TEST_F(DriverForm, RefusesWhatTheFileOrTheDialogsCouldNotHold) {
    const std::string longest(49, 'n');
    const std::string name = "No driver can be called ";
    const struct {
        std::string name, library, setup, why;
    } rows[] = {
        {"", "/a.so", "", "The driver has no name. Give it one."},
        {longest + "n", "/a.so", "", name + "\"" + longest + "n\": it has more than 49 bytes. Choose another name."},
        {"a=b", "/a.so", "", name + "\"a=b\": it holds =. Choose another name."},
        {"A(B", "/a.so", "", name + "\"A(B\": its parentheses are not in pairs. Choose another name."},
        {"a;b", "/a.so", "", name + "\"a;b\": it holds one of []{};=\"\\. Choose another name."},
        {"odbc drivers", "/a.so", "",
         name + "\"odbc drivers\": the section of that name has another use. Choose another name."},
        {"DEFAULT", "/a.so", "", name + "\"DEFAULT\": the section of that name has another use. Choose another name."},
        {"Mine", "", "", "The driver has no library. Name it, such as /usr/lib/odbc/libsqlite3odbc.so."},
        {"Mine", "./a.so", "", "The path of the driver's library does not begin with /. Give its full path."},
        {"Mine", "/a.so", "x/b.so", "The path of the setup library does not begin with /. Give its full path."},
        {"Mine", "/" + std::string(1023, 'x'), "",
         "The path of the driver's library is too long. At most 1023 bytes are possible."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(fill(row.name, row.library, row.setup, {IDOK}), (Boxes{row.why + kWarning}));
        EXPECT_FALSE(wasEntered_);
        EXPECT_EQ(drivers(), "(absent)");
    }
}

TEST_F(DriverForm, TakesANameWithParenthesesInPairs) {
    fill("A(B)", JX_DRIVER, "", {IDOK});
    EXPECT_EQ(drivers(), "[ODBC Drivers]\nA(B)=Installed\n\n[A(B)]\nDriver=" JX_DRIVER "\n");
}

TEST_F(DriverForm, SaysWhatSpeaksAgainstALibraryAndEntersItOnlyIfTheUserInsists) {
    const std::string ask = "\n\nRegister the driver all the same?" + kInsist;
    const struct {
        std::string library, setup, trouble;
    } rows[] = {
        {"/none/a.so", "",
         "The driver's library cannot be loaded. The loader says:\n/none/a.so: cannot open shared object file: No such "
         "file or directory"},
        {JX_CRASHER, "", "The driver's library crashes when it is loaded: signal 11 (Segmentation fault)."},
        {JX_EXITER, "", "The driver's library cannot be unloaded: exit code 7."},
        {JX_SETUP_LIBRARY, "",
         "The driver's library can be loaded, but has no function SQLConnect: is it the right file?"},
        {JX_DRIVER, JX_CRASHER, "The setup library crashes when it is loaded: signal 11 (Segmentation fault)."},
        {JX_CRASHER, JX_EXITER,
         "The driver's library crashes when it is loaded: signal 11 (Segmentation fault).\n\nThe setup library cannot "
         "be "
         "unloaded: exit code 7."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.trouble);
        EXPECT_EQ(fill("Mine", row.library, row.setup, {IDNO}), (Boxes{row.trouble + ask}));
        EXPECT_FALSE(wasEntered_);
        EXPECT_EQ(drivers(), "(absent)");
    }
    EXPECT_EQ(fill("Mine", "/none/a.so", "", {IDYES, IDOK}).size(), 2U);
    EXPECT_TRUE(wasEntered_);
    EXPECT_EQ(drivers(), "[ODBC Drivers]\nMine=Installed\n\n[Mine]\nDriver=/none/a.so\n");
}

TEST_F(DriverForm, ReplacesTheLibrariesOfAKnownDriverOnlyWhenWanted) {
    const std::string before =
        "[ODBC Drivers]\nMINE=Installed\n[MINE]\nDriver=/old.so\nSetup=/old_setup.so\nKey=kept\n";
    home_.put(".odbcinst.ini", before);
    EXPECT_EQ(fill("Mine", JX_DRIVER, "", {IDNO}),
              (Boxes{"A driver called Mine is registered already. Replace its libraries?" + kReplace}));
    EXPECT_EQ(drivers(), before);
    EXPECT_EQ(fill("Mine", JX_DRIVER, "", {IDYES, IDOK}).size(), 2U);
    EXPECT_EQ(drivers(), "[ODBC Drivers]\nMINE=Installed\n[MINE]\nDriver=" JX_DRIVER "\nKey=kept\n");
}

TEST_F(DriverForm, AFileThatCannotBeWrittenIsReportedAndTheDialogStays) {
    setenv("ODBCINSTINI", "/none/odbcinst.ini", 1);
    const Boxes boxes = fill("Mine", JX_DRIVER, "", {IDOK});
    EXPECT_EQ(boxes,
              (Boxes{"The driver was not entered. Cannot lock /none/.odbcinst.ini.jxlock: No such file or directory. "
                     "Make the directory first.|" +
                     std::to_string(MB_OK | MB_ICONSTOP)}));
    EXPECT_FALSE(wasEntered_);
}

TEST_F(DriverForm, CancelEntersNothing) {
    const ScriptedUser user({type(kFormName, "Mine"), type(kFormLibrary, JX_DRIVER), press(IDCANCEL)});
    EXPECT_FALSE(registerDriver(0));
    EXPECT_EQ(drivers(), "(absent)");
}

TEST_F(DriverForm, ProposesTheSetupLibraryOfThisProduct) {
    EXPECT_EQ(trial::generalSetupLibrary(), JX_SETUP_LIBRARY);
    ScriptedUser user({jx::test::look()});
    registerDriver(0);
    EXPECT_NE(user.dumps.at(0).find("\"" JX_SETUP_LIBRARY "\""), std::string::npos) << user.dumps.at(0);
}

TEST_F(DriverForm, ListsTheDriversInTheUsualPlacesAndTakesTheChosenOne) {
    const jx::test::DriverFolder folder(home_);
    const std::string path = folder.driver();
    const ScriptedUser user({chooseRow(path), press(IDOK)}, {IDOK});
    EXPECT_TRUE(registerDriver(0));
    EXPECT_EQ(drivers(),
              "[ODBC Drivers]\nmydriver=Installed\n\n[mydriver]\nDriver=" + path + "\nSetup=" JX_SETUP_LIBRARY "\n");
}

TEST_F(DriverForm, ADriverWithASetupLibraryBesideItIsEnteredWithThatOne) {
    const jx::test::DriverFolder folder(home_);
    const std::string setup = folder.addSetup();
    ScriptedUser user({chooseRow(folder.driver()), jx::test::look()});
    registerDriver(0);
    EXPECT_NE(user.dumps.at(0).find("edit 13 \"" + setup + "\""), std::string::npos) << user.dumps.at(0);
}

TEST_F(DriverForm, ATildeIsTheHomeDirectory) {
    const jx::test::DriverFolder folder(home_);
    fill("Mine", "~/lib/libmydriver.so", "", {IDOK});
    EXPECT_EQ(drivers(), "[ODBC Drivers]\nMine=Installed\n\n[Mine]\nDriver=" + folder.driver() + "\n");
}

TEST_F(DriverForm, NamesTheNextStepOnlyWhereItCanBeTaken) {
    const auto nextOf = [this](const std::string& name, const std::string& setup) {
        ScriptedUser user({jx::test::call([&](HWND dialog) { registerDriver(dialog); }), type(kFormName, name),
                           type(kFormLibrary, JX_DRIVER), type(kFormSetup, setup), press(IDOK)},
                          {IDOK});
        SQLManageDataSources(0);
        return user.boxes.at(0);
    };
    EXPECT_EQ(nextOf("Mine", JX_SETUP_LIBRARY),
              "Register a Driver|Mine is registered.\nNext: Add... in the Data Sources dialog makes a data source for "
              "it.|0");
    EXPECT_EQ(nextOf("Yours", ""),
              "Register a Driver|Yours is registered.\nWithout a setup library its data sources are made by: odbcadmin "
              "dsn add|0");
}

TEST_F(DriverForm, BrowseGoesThroughDirectoriesToAFile) {
    home_.put("a.so", "");
    std::filesystem::create_directories(home_.file("b/c"));
    home_.put("b/d.so", "");
    ScriptedUser user({type(kFormLibrary, "~/"), press(kFormBrowse), jx::test::look(),
                       jx::test::doubleClick(kFilesList, 1), jx::test::look(), jx::test::selectRow(kFilesList, 0),
                       press(IDOK), jx::test::selectRow(kFilesList, 1), press(IDOK), jx::test::selectRow(kFilesList, 2),
                       press(IDOK), jx::test::look()});
    registerDriver(0);
    EXPECT_EQ(user.dumps.at(0), "\"Choose a File\"\n  label 61 \"" + home_.file("") +
                                    "\"\n  list 62 focus\n    > ../\n      b/\n      a.so\n  button 1 \"&Open\" "
                                    "default\n  button 2 \"Cancel\"\n");
    EXPECT_NE(user.dumps.at(1).find("\"" + home_.file("b/") + "\"\n  list 62 focus\n    > ../\n      c/\n      d.so"),
              std::string::npos)
        << user.dumps.at(1);
    EXPECT_NE(user.dumps.at(2).find("\"" + home_.file("b/d.so") + "\""), std::string::npos) << user.dumps.at(2);
}

TEST_F(DriverForm, BrowseBeginsSomewhereElseWhenThereIsNoSuchDirectory) {
    ScriptedUser user(
        {type(kFormLibrary, "/none/x.so"), press(kFormBrowse), jx::test::look(), press(IDCANCEL), jx::test::look()});
    registerDriver(0);
    EXPECT_NE(user.dumps.at(0).find("\"/usr/lib/\""), std::string::npos) << user.dumps.at(0);
    EXPECT_NE(user.dumps.at(1).find("\"/none/x.so\""), std::string::npos) << user.dumps.at(1);
}

}  // namespace
}  // namespace jx::assist::test
