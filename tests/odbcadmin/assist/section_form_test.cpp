// What is done with one data source of the system: setting up, viewing, testing, copying, renaming.
#include "odbcadmin/assist/section_form.h"

#include <control_ids.h>

#include <algorithm>
#include <cstdlib>

#include "both_scopes.h"
#include "odbcadmin/assist/forms.h"

namespace jx::assist::test {
namespace {

class SectionForm : public BothScopes {
protected:
    Action text(unsigned short control) {
        return call([this, control](HWND dialog) {
            std::string whole(512, '\0');
            whole.resize(static_cast<std::size_t>(
                JXW_GetDlgItemText(dialog, control, whole.data(), static_cast<int>(whole.size()))));
            told_.push_back(whole);
        });
    }

    Action setUp(int row) { return doubleClick(JxDataSourcesList, row); }
};

TEST_F(SectionForm, StoresWhatIsChangedAddedAndRemovedInOneChangeOfTheSystemsFile) {
    manage({setUp(kSystemStock), title(), text(kSectionWhere), see(), selectRow(kSectionList, 1),
            type(kSectionValue, "db3"), press(kSectionSet), type(kSectionKey, "Port"), type(kSectionValue, "5"),
            press(kSectionSet), see(), press(IDOK), see()});
    EXPECT_EQ(told_, (Lines{"Setup of Stock (System)",
                            "For all users of this machine, in " + home_.systemFile("odbc.ini") + ":11."}));
    EXPECT_EQ(seen_, (Lines{" Driver = Theirs\n Server = db2\n", " Driver = Theirs\n Server = db3\n Port = 5\n",
                            " Sales (Mine)\n Refuse (Mine)\n Sales (Mine)  [system, shadowed] \n"
                            ">Stock (Theirs)  [system] \n"}));
    std::string expected = kBothSystemSources;
    expected.replace(expected.find("db2\n"), 4, "db3\nPort=5\n");
    EXPECT_EQ(home_.systemText("odbc.ini"), expected);
    manage({setUp(kSystemStock), selectRow(kSectionList, 1), press(kSectionRemove), type(kSectionKey, "port"),
            type(kSectionValue, "6"), press(IDOK)});
    expected.replace(expected.find("Server=db3\nPort=5\n"), 18, "Port=6\n");
    EXPECT_EQ(home_.systemText("odbc.ini"), expected);
    EXPECT_EQ(home_.text(".odbc.ini"), kBothUserSources);
}

TEST_F(SectionForm, WorksOnTheSystemsWhereTheUserHasOneOfTheSameName) {
    manage({selectRow(JxDataSourcesList, kSystemSales), press(JxSetupButton), selectRow(kSectionList, 1),
            type(kSectionValue, "small"), press(IDOK)});
    std::string expected = kBothSystemSources;
    expected.replace(expected.find("big"), 3, "small");
    EXPECT_EQ(home_.systemText("odbc.ini"), expected);
    EXPECT_EQ(home_.text(".odbc.ini"), kBothUserSources);
}

TEST_F(SectionForm, ServesTheUsersDataSourceWhoseDriverOnlyTheSystemHas) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nWeb=Theirs\n[Web]\nDriver=Theirs\nServer=db2\n");
    manage({setUp(0), title(), text(kSectionWhere), selectRow(kSectionList, 1), type(kSectionValue, "db3"), press(IDOK),
            see()});
    EXPECT_EQ(told_, (Lines{"Setup of Web", "In " + home_.file(".odbc.ini") + ":3."}));
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\nWeb=Theirs\n[Web]\nDriver=Theirs\nServer=db3\n");
    EXPECT_EQ(home_.systemText("odbc.ini"), kBothSystemSources);
    EXPECT_TRUE(seen_.at(0).starts_with(">Web (Theirs)\n")) << seen_.at(0);
}

TEST_F(SectionForm, CancelStoresNothingAndOkWithoutAChangeLeavesTheFileAlone) {
    manage({setUp(kSystemStock), selectRow(kSectionList, 1), press(kSectionRemove), press(IDCANCEL),
            setUp(kSystemStock), press(IDOK)});
    EXPECT_TRUE(isUntouched());
}

TEST_F(SectionForm, SecretsAreStarsInTheListAndTypedInAFieldOfTheirOwn) {
    const auto fields = call([this](HWND dialog) {
        for (const unsigned short field : {kSectionValue, kSectionHidden})
            told_.push_back(JXW_IsWindowEnabled(JXW_GetDlgItem(dialog, field)) != 0 ? "open" : "grey");
    });
    manage({setUp(kSystemSales), see(), fields, selectRow(kSectionList, 2), fields, text(kSectionHidden),
            text(kSectionValue), type(kSectionKey, "Port"), fields, text(kSectionValue)});
    EXPECT_EQ(seen_, Lines{" Driver = Mine\n Server = big\n PWD = ********\n"});
    EXPECT_EQ(told_, (Lines{"open", "grey", "grey", "open", "geheim", "", "open", "grey", ""}));
}

TEST_F(SectionForm, WhatCannotBeStoredIsReportedAtOnce) {
    const Lines boxes =
        manage({setUp(kSystemStock), type(kSectionKey, "a=b"), type(kSectionValue, "1"), press(kSectionSet),
                type(kSectionKey, ""), press(IDOK), selectRow(kSectionList, 0), press(kSectionRemove),
                type(kSectionKey, "PWD"), type(kSectionHidden, "********"), press(IDOK), press(IDCANCEL)},
               {IDOK, IDOK, IDOK, IDOK});
    ASSERT_EQ(boxes.size(), 4U);
    EXPECT_TRUE(boxes[0].starts_with("Data Source of the System|The key \"a=b\" cannot be stored: ")) << boxes[0];
    EXPECT_EQ(boxes[1], "Data Source of the System|The value has no key. Type one.|48");
    EXPECT_EQ(boxes[2], "Data Source of the System|A data source cannot be without its Driver.|48");
    EXPECT_TRUE(boxes[3].starts_with("Data Source of the System|The value given for PWD is what a hidden secret"))
        << boxes[3];
    EXPECT_TRUE(isUntouched());
}

TEST_F(SectionForm, ASecretForAFileThatEverybodyMayReadIsStoredAfterAQuestionOnly) {
    std::filesystem::permissions(home_.systemFile("odbc.ini"), std::filesystem::perms(0644));
    const auto store = [&](unsigned int answer) {
        return manage(
            {setUp(kSystemStock), type(kSectionKey, "PWD"), type(kSectionHidden, "geheim"), press(IDOK), see()},
            {answer});
    };
    EXPECT_EQ(store(IDNO), Lines{"Data Source of the System|Everybody may read " + home_.systemFile("odbc.ini") +
                                 ", and the value of PWD is a secret.\nStore it all the same?|52"});
    EXPECT_TRUE(isUntouched());
    EXPECT_EQ(seen_.at(0), " Driver = Theirs\n Server = db2\n PWD = ********\n");
    store(IDYES);
    EXPECT_EQ(home_.systemText("odbc.ini"), kBothSystemSources + "PWD=geheim\n");
}

// ---- without the right ----

TEST_F(SectionForm, WithoutTheRightEachCommandNamesTheFileAndGivesTheCommandWithSudo) {
    const Lines boxes = manage({loseRights(),
                                selectRow(JxDataSourcesList, kSystemStock),
                                press(JxDeleteButton),
                                press(JxSetupButton),
                                selectRow(kSectionList, 1),
                                type(kSectionValue, "db 3"),
                                press(IDOK),
                                selectRow(kSectionList, 1),
                                press(kSectionRemove),
                                type(kSectionKey, "PWD"),
                                type(kSectionHidden, "geheim"),
                                press(IDOK),
                                press(IDCANCEL),
                                key(7),
                                type(kLineText, "Stores"),
                                press(IDOK),
                                press(IDCANCEL),
                                key(6),
                                type(kLineText, "Stores"),
                                press(IDOK),
                                press(IDCANCEL),
                                press(JxDriversButton),
                                selectRow(JxDriversList, 1),
                                press(JxDeleteDriverButton)},
                               {IDYES, IDOK, IDOK, IDOK, IDOK, IDOK, IDYES, IDOK});
    regainRights();
    const std::string begin = "Permission denied.\n\nRun it with the right to: sudo ODBCSYSINI=" + home_.systemPath() +
                              " " + command() + " --system ";
    const auto holds = [&](std::size_t box, const std::string& text) {
        EXPECT_NE(boxes.at(box).find(begin + text), std::string::npos) << boxes.at(box);
    };
    holds(1, "dsn remove Stock|16");
    holds(2, "dsn set Stock 'Server=db 3'|16");
    holds(3, "dsn set Stock 'PWD=********' && sudo ODBCSYSINI=" + home_.systemPath() + " " + command() +
                 " --system dsn unset Stock Server (with the secret in place of the stars)|16");
    holds(4, "dsn rename Stock Stores|48");
    holds(5, "dsn copy Stock Stores|48");
    holds(7, "driver remove Theirs|16");
    EXPECT_TRUE(boxes.at(1).starts_with("Data Sources|The data source was not removed. Cannot lock " +
                                        home_.systemPath() + "/"))
        << boxes.at(1);
    EXPECT_TRUE(isUntouched());
}

TEST_F(SectionForm, WithoutTheRightACopyForAllUsersNamesTheUsersHome) {
    const Lines boxes = manage(
        {loseRights(), key(6), type(kLineText, "Shop"), click(kCopyToSystem), press(IDOK), press(IDCANCEL)}, {IDOK});
    regainRights();
    EXPECT_NE(boxes.at(0).find(" " + command() + " --home " + home_.path() + " dsn copy Sales Shop --to system|48"),
              std::string::npos)
        << boxes.at(0);
    EXPECT_TRUE(isUntouched());
}

// ---- the other keys ----

TEST_F(SectionForm, F4ShowsTheValuesOfTheScopeThatIsChosenAndWhichOfTwoAnswers) {
    manage({key(4), text(kValuesWhere), see(), press(IDCANCEL), selectRow(JxDataSourcesList, kSystemSales), key(4),
            title(), text(kValuesWhere), see(), press(IDCANCEL), selectRow(JxDataSourcesList, kSystemStock), key(4),
            text(kValuesWhere)});
    const std::string user = home_.file(".odbc.ini");
    const std::string system = home_.systemFile("odbc.ini");
    std::erase(told_, "");
    EXPECT_EQ(told_, (Lines{"Driver Mine. In " + user + ":6. It shadows the system's, " + system + ":5.",
                            "Values of Sales (System)",
                            "Driver Mine. In " + system + ":5. Shadowed by your own, " + user + ":6.",
                            "Driver Theirs. In " + system + ":11."}));
    EXPECT_EQ(seen_, (Lines{">Driver = Mine\n Server = db1\n", ">Driver = Mine\n Server = big\n PWD = ********\n"}));
}

TEST_F(SectionForm, F3ConnectsWithTheSystemsUnlessTheUsersOwnAnswers) {
    EXPECT_EQ(
        manage({selectRow(JxDataSourcesList, kSystemStock), key(3), selectRow(JxDataSourcesList, kSystemSales), key(3)},
               {IDOK, IDOK}),
        (Lines{"Test|Stock: connected.\nDriver: small driver 01.02|0",
               "Test|Your own Sales shadows the system's: your programs get [Sales] of " + home_.file(".odbc.ini") +
                   ":6. Another user can test the system's.|48"}));
}

TEST_F(SectionForm, F6CopiesWithinTheSystemOrToTheUser) {
    manage({selectRow(JxDataSourcesList, kSystemStock), key(6), type(kLineText, "Stock 2"), press(IDOK), see()});
    EXPECT_EQ(home_.systemText("odbc.ini"), kBothSystemSources + "\n[Stock 2]\nDriver=Theirs\nServer=db2\n");
    EXPECT_NE(seen_.at(0).find(">Stock 2 (Theirs)  [system] \n"), std::string::npos) << seen_.at(0);
    home_.putSystem("odbc.ini", kBothSystemSources);
    manage({selectRow(JxDataSourcesList, kSystemStock), key(6), click(kCopyToUser), press(IDOK), see()});
    EXPECT_EQ(home_.systemText("odbc.ini"), kBothSystemSources);
    EXPECT_NE(home_.text(".odbc.ini").find("[Stock]\nDriver=Theirs\nServer=db2\n"), std::string::npos);
}

TEST_F(SectionForm, F6CopiesTheUsersToTheSystem) {
    manage({selectRow(JxDataSourcesList, 1), key(6), click(kCopyToSystem), press(IDOK), see()});
    EXPECT_EQ(home_.text(".odbc.ini"), kBothUserSources);
    EXPECT_NE(home_.systemText("odbc.ini").find("\nRefuse=Mine\n"), std::string::npos) << home_.systemText("odbc.ini");
    EXPECT_NE(seen_.at(0).find(">Refuse (Mine)  [system, shadowed] \n"), std::string::npos) << seen_.at(0);
}

TEST_F(SectionForm, F7RenamesTheSystems) {
    manage({selectRow(JxDataSourcesList, kSystemStock), key(7), type(kLineText, "Shop"), press(IDOK), see()});
    std::string expected = kBothSystemSources;
    expected.replace(expected.find("Stock"), 5, "Shop");
    EXPECT_EQ(home_.systemText("odbc.ini"), expected);
    EXPECT_EQ(home_.text(".odbc.ini"), kBothUserSources);
    EXPECT_NE(seen_.at(0).find(">Shop (Theirs)  [system] \n"), std::string::npos) << seen_.at(0);
}

TEST_F(SectionForm, ASecretThatIsCopiedOrRenamedInAFileThatEverybodyMayReadIsAskedAbout) {
    std::filesystem::permissions(home_.systemFile("odbc.ini"), std::filesystem::perms(0644));
    const auto sales = selectRow(JxDataSourcesList, kSystemSales);
    const auto shop = type(kLineText, "Shop");
    const std::string question = "Everybody may read " + home_.systemFile("odbc.ini") +
                                 ", and the value of PWD is a secret.\nStore it all the same?|52";
    EXPECT_EQ(
        manage({sales, key(7), shop, press(IDOK), press(IDCANCEL), sales, key(6), shop, press(IDOK), press(IDCANCEL)},
               {IDNO, IDNO}),
        (Lines{"Rename|" + question, "Copy|" + question}));
    EXPECT_TRUE(isUntouched());
    manage({sales, key(7), shop, press(IDOK), see()}, {IDYES});
    EXPECT_EQ(home_.systemText("odbc.ini").find("Sales"), std::string::npos);
    EXPECT_EQ(home_.text(".odbc.ini"), kBothUserSources);
    EXPECT_NE(seen_.at(0).find(">Shop (Mine)  [system] \n"), std::string::npos) << seen_.at(0);
}

}  // namespace
}  // namespace jx::assist::test
