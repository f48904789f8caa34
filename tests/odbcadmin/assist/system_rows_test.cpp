// The system's data sources and drivers in the lists: their rows, what is shown of them, and removing them.
#include "odbcadmin/assist/system_rows.h"

#include <control_ids.h>
#include <sys/stat.h>

#include <cstdlib>

#include "both_scopes.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/help.h"
#include "odbcadmin/assist/lists.h"

namespace jx::assist::test {
namespace {

class SystemRows : public BothScopes {};

TEST_F(SystemRows, StandBehindTheUsersWithAMark) {
    manage({see(), press(JxDriversButton), see(), press(JxCloseButton), press(JxAddButton), see()});
    EXPECT_EQ(seen_, (Lines{">Sales (Mine)\n Refuse (Mine)\n Sales (Mine)  [system, shadowed] \n"
                            " Stock (Theirs)  [system] \n",
                            ">Mine\n Theirs  [system] \n Mine  [system, shadowed] \n", " Mine\n Theirs  [system] \n"}));
    EXPECT_TRUE(isUntouched());
}

TEST_F(SystemRows, AreNotThereWithoutFilesOfTheSystemAndNothingIsAskedAboutThem) {
    std::filesystem::remove(home_.systemFile("odbc.ini"));
    std::filesystem::remove(home_.systemFile("odbcinst.ini"));
    manage({see(), key(8), title(), press(IDCANCEL), key(6), title(), press(IDCANCEL), notice(),
            call([this](HWND dialog) { told_.push_back(headingOf(dialog)); }), press(JxDriversButton), see()});
    EXPECT_EQ(seen_, (Lines{">Sales (Mine)\n Refuse (Mine)\n", ">Mine\n"}));
    EXPECT_EQ(told_, (Lines{"Filter", "", "Copy a Data Source", "", "", "Data sources in ~/.odbc.ini"}));
}

TEST_F(SystemRows, AreNotThereTwiceWhenBothScopesHaveTheSameFiles) {
    setenv("ODBCINI", home_.systemFile("odbc.ini").c_str(), 1);
    setenv("ODBCINSTINI", home_.systemFile("odbcinst.ini").c_str(), 1);
    manage({see(), press(JxDriversButton), see()});
    EXPECT_EQ(seen_, (Lines{">Sales (Mine)\n", ""}));
}

TEST_F(SystemRows, AreChosenWhenTheUserHasNoneOfHisOwn) {
    home_.put(".odbc.ini", "");
    home_.put(".odbcinst.ini", "");
    manage({see(), press(JxDeleteButton), press(JxDriversButton), see(), press(JxDeleteDriverButton)}, {IDNO, IDNO});
    EXPECT_EQ(seen_, (Lines{">Sales (Mine)  [system] \n Stock (Theirs)  [system] \n",
                            ">Theirs  [system] \n Mine  [system] \n"}));
}

TEST_F(SystemRows, TheHeadingAndTheHelpNameTheSystem) {
    const auto tell = call([this](HWND dialog) {
        told_.push_back(headingOf(dialog));
        JxwControlInfo control{};
        for (int index = 0; JXW_GetControlInfo(dialog, index, &control) != 0; ++index)
            if (control.kind == JXW_LISTBOX)
                told_.push_back(helpOn(dialog, index));
    });
    manage({tell, selectRow(JxDataSourcesList, kSystemStock), tell, press(JxSetupButton), tell, press(IDCANCEL),
            press(JxDriversButton), selectRow(JxDriversList, 1), tell});
    const std::string file = home_.systemFile("odbc.ini");
    EXPECT_EQ(told_, (Lines{"Data sources in ~/.odbc.ini and " + file,
                            "Your data sources. Enter or a double click sets one up.",
                            "Data sources in ~/.odbc.ini and " + file,
                            "The system's, for all users. Enter shows its keys, to change them.",
                            "A data source in " + file, "What the driver gets. Choose a row to change or remove it.",
                            "Drivers in ~/.odbcinst.ini and " + home_.systemFile("odbcinst.ini"),
                            "The system's, for all users. Delete unregisters it; its files stay."}));
}

// ---- what is shown ----

TEST_F(SystemRows, F8ChoosesWhoseAreShownUntilThatIsTakenBack) {
    manage({key(8),
            click(kFilterSystem),
            press(IDOK),
            see(),
            notice(),
            press(JxOptionsButton),
            press(IDCANCEL),
            see(),
            key(8),
            click(kFilterUser),
            press(IDOK),
            see(),
            notice(),
            press(JxDriversButton),
            press(JxCloseButton),
            see(),
            key(8),
            type(kLineText, "sto"),
            click(kFilterSystem),
            press(IDOK),
            see(),
            notice(),
            key(8),
            type(kLineText, ""),
            click(kFilterBoth),
            press(IDOK),
            see(),
            notice()});
    const std::string systems = ">Sales (Mine)  [system, shadowed] \n Stock (Theirs)  [system] \n";
    const std::string users = ">Sales (Mine)\n Refuse (Mine)\n";
    EXPECT_EQ(seen_, (Lines{systems, systems, users, users, ">Stock (Theirs)  [system] \n",
                            " Sales (Mine)\n Refuse (Mine)\n Sales (Mine)  [system, shadowed] \n"
                            ">Stock (Theirs)  [system] \n"}));
    EXPECT_EQ(told_,
              (Lines{"", "System only: 2 of 4 shown; F8 changes it.", "", "User only: 2 of 4 shown; F8 changes it.", "",
                     "Filter \"sto\", System only: 1 of 4 shown; F8 changes it.", "", ""}));
}

TEST_F(SystemRows, AFilterLooksIntoTheRowsButNotIntoTheirMarks) {
    manage({key(8), type(kLineText, "SALES"), press(IDOK), see(), key(8), type(kLineText, "system"), press(IDOK), see(),
            call([this](HWND dialog) { told_.push_back(helpOn(dialog, 1)); })});
    EXPECT_EQ(seen_, (Lines{">Sales (Mine)\n Sales (Mine)  [system, shadowed] \n", ""}));
    EXPECT_EQ(told_.back(), "No data source contains \"system\". F8 changes the filter.");
}

TEST_F(SystemRows, AnEmptyListSaysWhoseAreNotThere) {
    home_.putSystem("odbc.ini", "[A]\nDriver=x\n");
    manage({key(8), type(kLineText, "none"), click(kFilterSystem), press(IDOK),
            call([this](HWND dialog) { told_.push_back(helpOn(dialog, 1)); })});
    EXPECT_EQ(told_.back(), "No data source of the system contains \"none\". F8 changes the filter.");
}

// ---- removing ----

TEST_F(SystemRows, DeleteRemovesTheSystemsAndLeavesTheUsersOfTheSameName) {
    const auto remove = [&](unsigned int answer) {
        return manage({selectRow(JxDataSourcesList, kSystemSales), press(JxDeleteButton), see()}, {answer});
    };
    EXPECT_EQ(remove(IDNO),
              Lines{"Data Sources|Remove the data source \"Sales\" of the system?\nAll users lose it: its "
                    "entries in " +
                    home_.systemFile("odbc.ini") +
                    " are deleted and cannot be restored.\nYour own one of that name stays.|52"});
    EXPECT_TRUE(isUntouched());
    remove(IDYES);
    EXPECT_EQ(home_.text(".odbc.ini"), kBothUserSources);
    EXPECT_EQ(home_.systemText("odbc.ini"), "; of all\n[ODBC Data Sources]\n\n[Stock]\nDriver=Theirs\nServer=db2\n");
    EXPECT_EQ(seen_.at(1), " Sales (Mine)\n Refuse (Mine)\n>Stock (Theirs)  [system] \n");
}

TEST_F(SystemRows, DeleteRemovesTheUsersAndLeavesTheSystemsOfTheSameName) {
    manage({selectRow(JxDataSourcesList, 0), press(JxDeleteButton), see()}, {IDYES});
    EXPECT_EQ(home_.systemText("odbc.ini"), kBothSystemSources);
    EXPECT_EQ(home_.text(".odbc.ini").find("Sales"), std::string::npos);
    EXPECT_NE(seen_.at(0).find(" Sales (Mine)  [system] \n"), std::string::npos) << seen_.at(0);
}

TEST_F(SystemRows, ADriverOfTheSystemIsUnregisteredAfterAQuestionAndTheUsersStays) {
    const std::string users = home_.text(".odbcinst.ini");
    const Lines boxes = manage({press(JxDriversButton), selectRow(JxDriversList, 1), press(JxDeleteDriverButton),
                                selectRow(JxDriversList, 2), press(JxDeleteDriverButton), see()},
                               {IDNO, IDYES});
    EXPECT_EQ(boxes, (Lines{"Remove a Driver|Unregister the driver Theirs for all users?\nIts entries in " +
                                home_.systemFile("odbcinst.ini") +
                                " are deleted; its files stay.\n1 data source needs it: Stock.|52",
                            "Remove a Driver|Unregister the driver Mine for all users?\nIts entries in " +
                                home_.systemFile("odbcinst.ini") +
                                " are deleted; its files stay.\n1 data source needs it: Sales.|52"}));
    EXPECT_EQ(home_.text(".odbcinst.ini"), users);
    EXPECT_EQ(home_.systemText("odbcinst.ini"), "[Theirs]\nDriver=" + folder_.driver() + "\n");
    EXPECT_EQ(seen_, Lines{">Mine\n Theirs  [system] \n"});
}

TEST_F(SystemRows, ADriverOfTheUsersIsUnregisteredAndTheSystemsStays) {
    const std::string systems = home_.systemText("odbcinst.ini");
    manage({press(JxDriversButton), press(JxDeleteDriverButton), press(kRemovalUnregister), see()});
    EXPECT_EQ(home_.text(".odbcinst.ini"), "[ODBC Drivers]\n");
    EXPECT_EQ(home_.systemText("odbcinst.ini"), systems);
    EXPECT_NE(seen_.at(0).find(" Mine  [system] \n"), std::string::npos) << seen_.at(0);
}

// Whatever the user's entry is called, its row is not taken for one of the system's.
TEST_F(SystemRows, AUsersNameThatLooksMarkedIsTheUsers) {
    const std::string systems = home_.systemText("odbcinst.ini");
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nTheirs  [system]=Installed\n[Theirs  [system]]\nDriver=/d.so\n");
    manage({press(JxDriversButton), see(), press(JxDeleteDriverButton), title(), press(kRemovalUnregister)});
    EXPECT_EQ(seen_.at(0), ">Theirs  [system]\n Theirs  [system] \n Mine  [system] \n");
    EXPECT_EQ(told_, Lines{"Remove a Driver"});
    EXPECT_EQ(home_.systemText("odbcinst.ini"), systems);
}

// ---- what other programs do ----

TEST_F(SystemRows, AChangeOfTheSystemsFileIsNoticedAndTheUserStaysWithNameAndScope) {
    const auto change = call([this](HWND) { home_.putSystem("odbc.ini", "[New]\nDriver=x\n" + kBothSystemSources); });
    const auto look = call([this](HWND dialog) { told_.push_back(noticeChange(dialog)); });
    manage({open(), selectRow(JxDataSourcesList, kSystemStock), look, change, look, see(), look});
    EXPECT_EQ(
        told_,
        (Lines{"", "Another program has changed " + home_.systemFile("odbc.ini") + ": the list is up to date again.",
               ""}));
    EXPECT_NE(seen_.at(0).find(">Stock (Theirs)  [system] \n"), std::string::npos) << seen_.at(0);
}

TEST_F(SystemRows, ARowWhoseMarkChangesStaysChosen) {
    const auto change = call([this](HWND) {
        home_.put(".odbc.ini", "[ODBC Data Sources]\nStock=Mine\nOther=Mine\nMore=Mine\n[Stock]\nDriver=Mine\n");
    });
    manage({open(), selectRow(JxDataSourcesList, kSystemStock), change, key(5), see()});
    EXPECT_EQ(seen_, Lines{" Stock (Mine)\n Other (Mine)\n More (Mine)\n Sales (Mine)  [system] \n"
                           ">Stock (Theirs)  [system, shadowed] \n"});
}

TEST_F(SystemRows, OneThatAnotherProgramHasRemovedIsReportedAndTheUsersOfThatNameIsLeftAlone) {
    const auto change = call([this](HWND) { home_.putSystem("odbc.ini", "[Stock]\nDriver=Theirs\n"); });
    for (const unsigned short button : {JxSetupButton, JxDeleteButton}) {
        home_.putSystem("odbc.ini", kBothSystemSources);
        EXPECT_EQ(manage({selectRow(JxDataSourcesList, kSystemSales), change, press(button)}, {IDOK}),
                  Lines{"Data Sources|The data source Sales is not in " + home_.systemFile("odbc.ini") +
                        " any more: another program has removed or renamed it. The list is read again.|48"});
        EXPECT_EQ(home_.text(".odbc.ini"), kBothUserSources);
    }
}

// ---- many and odd ones ----

TEST_F(SystemRows, AllAreShownAndCountedWhenTheLibrarysListIsCut) {
    std::string list = "[ODBC Data Sources]\n";
    for (int number = 1000; number < 1200; ++number)
        list += "Source" + std::to_string(number) + "=Mine\n";
    home_.put(".odbc.ini", list);
    int rows = 0;
    const auto count =
        call([&](HWND dialog) { rows = JXW_SendDlgItemMessage(dialog, kSourcesList, LB_GETCOUNT, 0, 0); });
    manage({open(), notice(), key(9), count, selectRow(kSourcesList, 201), press(kSourcesView), title(),
            press(IDCANCEL), press(kSourcesRemove), see()},
           {IDYES});
    EXPECT_EQ(told_.at(0), "95 of 202 shown; F9 shows all.");
    EXPECT_EQ(rows, 202);
    EXPECT_EQ(told_.at(1), "Values of Stock (System)");
    EXPECT_NE(seen_.at(0).find(">Sales (Mine)  [system] \n"), std::string::npos);
    EXPECT_EQ(home_.systemText("odbc.ini").find("Stock"), std::string::npos);
    EXPECT_EQ(home_.text(".odbc.ini"), list);
}

TEST_F(SystemRows, TwoThousandAreShownAndTheLastCanBeRemoved) {
    std::string text;
    for (int number = 1000; number < 3000; ++number)
        text += "[Source" + std::to_string(number) + "]\nDriver=Theirs\n";
    home_.putSystem("odbc.ini", text);
    int rows = 0;
    const auto count =
        call([&](HWND dialog) { rows = JXW_SendDlgItemMessage(dialog, JxDataSourcesList, LB_GETCOUNT, 0, 0); });
    manage({count, selectRow(JxDataSourcesList, 2001), press(JxDeleteButton)}, {IDYES});
    EXPECT_EQ(rows, 2002);
    EXPECT_EQ(home_.systemText("odbc.ini"), text.substr(0, text.rfind("[Source2999]")));
}

TEST_F(SystemRows, NamesWithBracketsAndEqualsSignsAreShownAndRemoved) {
    const std::string rest = "[Stock]\nDriver=Theirs\n";
    home_.putSystem("odbc.ini", rest + "[a]b (c]\nDriver=x)\n[k=v]\nDriver=(y)\n");
    manage({see(), selectRow(JxDataSourcesList, 3), press(JxDeleteButton), selectRow(JxDataSourcesList, 3),
            press(JxDeleteButton)},
           {IDYES, IDYES});
    EXPECT_EQ(seen_, Lines{">Sales (Mine)\n Refuse (Mine)\n Stock (Theirs)  [system] \n"
                           " a]b (c (x))  [system] \n k=v ((y))  [system] \n"});
    EXPECT_EQ(home_.systemText("odbc.ini"), rest);
}

TEST_F(SystemRows, AFileOfTheSystemThatCannotBeReadIsNamedAndTheUsersAreShown) {
    const std::string file = home_.systemFile("odbc.ini");
    const std::string drivers = home_.systemFile("odbcinst.ini");
    for (const bool isFifo : {false, true}) {
        for (const std::string& each : {file, drivers}) {
            std::filesystem::remove(each);
            if (isFifo) {
                EXPECT_EQ(::mkfifo(each.c_str(), 0600), 0);
            } else {
                std::filesystem::create_directory(each);
            }
        }
        told_.clear();
        seen_.clear();
        manage({see(), notice(), press(JxDriversButton), see(), notice()});
        EXPECT_EQ(seen_, (Lines{">Sales (Mine)\n Refuse (Mine)\n", ">Mine\n"}));
        const std::string why = isFifo ? ": Operation not supported." : ": Is a directory.";
        EXPECT_EQ(told_, (Lines{"Without the system's: Cannot open " + file + why,
                                "Without the system's: Cannot open " + drivers + why}));
    }
}

TEST_F(SystemRows, AFileOfTheSystemThatTheUserMayNotReadIsNamed) {
    const std::string file = home_.systemFile("odbc.ini");
    std::filesystem::permissions(file, std::filesystem::perms(0));
    manage({loseRights(), key(5), see(), notice(), call([this](HWND dialog) { told_.push_back(helpOn(dialog, 1)); })});
    regainRights();
    const std::string why = "Without the system's: Cannot open " + file + ": Permission denied.";
    EXPECT_EQ(seen_, Lines{">Sales (Mine)\n Refuse (Mine)\n"});
    std::erase(told_, "The list is read again.");
    EXPECT_EQ(told_, (Lines{why, why + " Your data sources. Enter or a double click sets one up."}));
}

}  // namespace
}  // namespace jx::assist::test
