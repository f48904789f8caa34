// The function keys of lists: testing, viewing, reading again, copying, renaming, filtering, listing all.
#include "odbcadmin/assist/list_keys.h"

#include <control_ids.h>

#include <array>
#include <filesystem>

#include "dialog_dump.h"
#include "list_dialogs.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/lists.h"

namespace jx::assist::test {
namespace {

class ListKeys : public ListDialogs {
protected:
    ListKeys() : ListDialogs(kSources) {}

    std::vector<int> numbersAfter(const Action& way) {
        std::vector<int> numbers;
        manage({way, call([&](HWND dialog) {
                    for (const FunctionKey& each : assistant_.functionKeys(dialog))
                        numbers.push_back(each.number);
                })});
        return numbers;
    }

    static constexpr const char* kSources =
        "[ODBC Data Sources]\nSales=Mine\nRefuse=Mine\n[Sales]\nDriver=Mine\nServer=db1\nPWD=geheim\n[Refuse]\nDriver="
        "Mine\nPWD=geheim\n";
};

TEST_F(ListKeys, AreThoseThatMeanSomethingInTheDialog) {
    EXPECT_EQ(numbersAfter(open()), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(numbersAfter(press(JxDriversButton)), (std::vector<int>{1, 2, 5}));
    EXPECT_EQ(numbersAfter(press(JxAddButton)), (std::vector<int>{1, 2, 5}));
    EXPECT_EQ(numbersAfter(press(JxOptionsButton)), (std::vector<int>{1, 2}));
    EXPECT_EQ(numbersAfter(key(4)), (std::vector<int>{1}));
}

TEST_F(ListKeys, F3ConnectsWithTheChosenDataSource) {
    EXPECT_EQ(manage({key(3)}, {IDOK}), Lines{"Test|Sales: connected.\nDriver: small driver 01.02|0"});
}

TEST_F(ListKeys, F3SaysWhatTheDriverSaidWithoutSecretsAndWhatTheDoctorFinds) {
    const Lines boxes = manage({selectRow(JxDataSourcesList, 1), key(3)}, {IDOK});
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_TRUE(
        boxes[0].starts_with("Test|Cannot connect to Refuse: SQLDriverConnect failed with result -1.\n\n28000 "
                             "(native 1001) Wrong password for anna, UID=anna;PWD=********;\n  means: "))
        << boxes[0];
    EXPECT_TRUE(
        boxes[0].ends_with("\n\nThe doctor finds nothing wrong with its entries and its driver's libraries.|48"))
        << boxes[0];
    std::filesystem::remove(folder_.driver());
    const std::string missing = manage({key(3)}, {IDOK}).at(0);
    EXPECT_NE(missing.find("\n\nThe doctor says: "), std::string::npos) << missing;
}

TEST_F(ListKeys, F4ShowsTheValuesWithStarsForSecrets) {
    std::string title, where;
    const auto note = call([&](HWND dialog) {
        JxwDialogInfo info{};
        JXW_GetDialogInfo(dialog, &info);
        title = info.title;
        std::array<char, 512> text{};
        JXW_GetDlgItemText(dialog, kValuesWhere, text.data(), static_cast<int>(text.size()));
        where = text.data();
    });
    manage({key(4), see(), note, press(IDCANCEL)});
    EXPECT_EQ(seen_, Lines{">Driver = Mine\n Server = db1\n PWD = ********\n"});
    EXPECT_EQ(title, "Values of Sales");
    EXPECT_EQ(where, "Driver Mine. In " + home_.file(".odbc.ini") + ":4.");
}

TEST_F(ListKeys, F5ReadsTheListAgainAndKeepsTheChosenRow) {
    const auto change = call([this](HWND) {
        home_.put(".odbc.ini", "[ODBC Data Sources]\nNew=Mine\nSales=Mine\nOther=Mine\nRefuse=Mine\n");
    });
    manage({selectRow(JxDataSourcesList, 1), change, key(5), see()});
    EXPECT_EQ(seen_, Lines{" New (Mine)\n Sales (Mine)\n Other (Mine)\n>Refuse (Mine)\n"});
    EXPECT_EQ(told_, Lines{"The list is read again."});
}

TEST_F(ListKeys, F6CopiesAndChoosesTheCopy) {
    manage({key(6), type(kLineText, "Sales 2"), press(IDOK), see()});
    EXPECT_EQ(seen_, Lines{" Sales (Mine)\n Refuse (Mine)\n>Sales 2 (Mine)\n"});
    EXPECT_NE(home_.text(".odbc.ini").find("[Sales 2]\nDriver=Mine\nServer=db1\nPWD=geheim\n"), std::string::npos);
}

TEST_F(ListKeys, F7RenamesAndStaysWithTheRow) {
    manage({key(7), type(kLineText, "Shop"), press(IDOK), see()});
    EXPECT_NE(seen_.at(0).find(">Shop (Mine)\n"), std::string::npos) << seen_.at(0);
    EXPECT_EQ(home_.text(".odbc.ini").find("Sales"), std::string::npos);
}

TEST_F(ListKeys, ANameThatIsRefusedIsReportedAndCanBeTypedAnew) {
    const Lines boxes =
        manage({key(6), type(kLineText, "Refuse"), press(IDOK), type(kLineText, "a[b"), press(IDOK), press(IDCANCEL)},
               {IDOK, IDOK});
    EXPECT_TRUE(boxes.at(0).starts_with("Copy|There is a data source Refuse")) << boxes.at(0);
    EXPECT_TRUE(boxes.at(1).starts_with("Copy|No data source can be called \"a[b\"")) << boxes.at(1);
    EXPECT_EQ(home_.text(".odbc.ini"), kSources);
}

TEST_F(ListKeys, F8ShowsOnlyTheRowsThatContainTheTextUntilItIsTakenBack) {
    const auto notice = call([this](HWND dialog) { told_.push_back(cutNotice(dialog)); });
    const auto filter = [&](const char* text) { return type(kLineText, text); };
    manage({key(8), filter("REF"), press(IDOK), see(), notice, press(JxOptionsButton), press(IDCANCEL), see(), key(8),
            filter("none"), press(IDOK), see(), key(8), filter(""), press(IDOK), see()});
    EXPECT_EQ(seen_, (Lines{">Refuse (Mine)\n", ">Refuse (Mine)\n", "", ">Sales (Mine)\n Refuse (Mine)\n"}));
    EXPECT_EQ(told_.at(1), "Filter \"REF\": 1 of 2 shown; F8 changes it.");
}

TEST_F(ListKeys, TheFilterStaysWhenTheLibraryFillsItsList) {
    manage({key(8), type(kLineText, "ref"), press(IDOK), press(JxDriversButton), press(JxCloseButton), see()});
    EXPECT_EQ(seen_, Lines{">Refuse (Mine)\n"});
}

TEST_F(ListKeys, KeysOfADataSourceSayThatOneIsToBeChosen) {
    home_.put(".odbc.ini", "");
    manage({key(3), key(4), key(6), key(7)});
    EXPECT_EQ(told_, Lines(4, "Choose a data source in the list first."));
}

TEST_F(ListKeys, AChangeByAnotherProgramIsNoticedOnceAndShown) {
    const auto notice = call([this](HWND dialog) { told_.push_back(noticeChange(dialog)); });
    const auto change =
        call([this](HWND) { home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Mine\n[Sales]\nDriver=Mine\n"); });
    const auto touch = call([this](HWND) {
        home_.put(".odbc.ini", "; a remark\n[ODBC Data Sources]\nSales=Mine\n[Sales]\nDriver=Mine\n");
    });
    manage({open(), notice, change, notice, see(), notice, touch, notice, press(JxDriversButton), open(), notice,
            call([this](HWND) { home_.put(".odbcinst.ini", ""); }), notice, see()});
    const std::string changed = "Another program has changed " + home_.path();
    EXPECT_EQ(told_, (Lines{"", changed + "/.odbc.ini: the list is up to date again.", "", "", "",
                            changed + "/.odbcinst.ini: the list is up to date again."}));
    EXPECT_EQ(seen_, (Lines{">Sales (Mine)\n", ""}));
}

class ManySources : public ListKeys {
protected:
    ManySources() {
        std::string list = "[ODBC Data Sources]\n";
        std::string sections;
        for (int number = 1000; number < 1200; ++number) {
            list += "Source" + std::to_string(number) + "=Mine\n";
            sections += "[Source" + std::to_string(number) + "]\nDriver=Mine\nSize=" + std::to_string(number) + "\n";
        }
        home_.put(".odbc.ini", list + sections);
    }
};

TEST_F(ManySources, F9ListsAllOfThemWhenTheLibraryHasLeftSomeOut) {
    const auto notice = call([this](HWND dialog) { told_.push_back(cutNotice(dialog)); });
    int rows = 0;
    const auto count =
        call([&](HWND dialog) { rows = JXW_SendDlgItemMessage(dialog, kSourcesList, LB_GETCOUNT, 0, 0); });
    manage({open(), notice, key(9), count});
    EXPECT_EQ(told_.at(0), "93 of 200 shown; F9 shows all.");
    EXPECT_EQ(rows, 200);
}

TEST_F(ManySources, EachOfThemCanBeViewedTestedSetUpAndRemovedThere) {
    const auto last = selectRow(kSourcesList, 199);
    const Lines boxes =
        manage({open(), key(9), last, press(kSourcesView), see(), press(IDCANCEL), press(kSourcesTest),
                press(kSourcesSetup), press(IDCANCEL), press(kSourcesRemove), press(kSourcesRemove), press(IDCANCEL)},
               {IDOK, IDNO, IDYES});
    EXPECT_EQ(seen_, Lines{">Driver = Mine\n Size = 1199\n"});
    EXPECT_EQ(boxes, (Lines{"Test|Source1199: connected.\nDriver: small driver 01.02|0",
                            "Data Sources|Remove the data source \"Source1199\"?\nIts settings are deleted and cannot "
                            "be restored.|52",
                            "Data Sources|Remove the data source \"Source1199\"?\nIts settings are deleted and cannot "
                            "be restored.|52"}));
    EXPECT_EQ(home_.text(".odbc.ini").find("Source1199"), std::string::npos);
    EXPECT_NE(home_.text(".odbc.ini").find("Source1198"), std::string::npos);
}

TEST_F(ManySources, OneThatHasNoSectionCanBeRemovedAndSaysWhyItCannotBeSetUp) {
    home_.put(".odbc.ini", home_.text(".odbc.ini") + "[ODBC Data Sources]\nLoose=Mine\n");
    const Lines boxes = manage(
        {open(), key(9), selectRow(kSourcesList, 200), press(kSourcesSetup), press(kSourcesRemove)}, {IDOK, IDYES});
    EXPECT_EQ(boxes.at(0), "Data Sources|The data source Loose is in the list, but has no section in " +
                               home_.file(".odbc.ini") + ": there is nothing to set up. Delete it and add it anew.|48");
    EXPECT_EQ(home_.text(".odbc.ini").find("Loose"), std::string::npos);
}

TEST_F(ManySources, AFilterAlsoFindsThoseThatTheLibraryHasLeftOut) {
    manage({open(), key(8), type(kLineText, "e1199"), press(IDOK), see()});
    EXPECT_EQ(seen_, Lines{">Source1199 (Mine)\n"});
}

TEST_F(ManySources, AfterARemovalTheNextRowIsChosen) {
    int row = -1;
    const auto note =
        call([&](HWND dialog) { row = JXW_SendDlgItemMessage(dialog, kSourcesList, LB_GETCURSEL, 0, 0); });
    manage({open(), key(9), selectRow(kSourcesList, 5), press(kSourcesRemove), note}, {IDYES});
    EXPECT_EQ(row, 5);
}

}  // namespace
}  // namespace jx::assist::test
