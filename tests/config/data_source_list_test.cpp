// The data source list: order, the default data source, drivers, display texts, and the check of a name against it.
#include <gtest/gtest.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <string>
#include <utility>
#include <vector>

#include "data_source_rows.h"
#include "message_box_script.h"
#include "test_home.h"

namespace jx::test {

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

constexpr char kTwo[] = "[ODBC Data Sources]\nB=Driver Two\nA=Driver One\n\n[A]\nDriver=/opt/a.so\n";
constexpr char kDefault[] = "[Default]\nDriver=Driver Three\n";

std::string textOf(const unsigned char* text) {
    return text == nullptr ? "(null)" : reinterpret_cast<const char*>(text);
}

// List: an installer object whose list is released at the end.
struct List : OdbcIns {
    ~List() { ResetData(ResetAll); }
    List() = default;
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    Rows rows() const {
        Rows found;
        for (std::uint32_t row = 0; row < entryCount; ++row)
            found.emplace_back(textOf(entries[row].name), textOf(entries[row].driver));
        return found;
    }
};

std::string display(const OdbcIns& ins, std::size_t row) {
    return reinterpret_cast<const char*>(ins.entries[row].display);
}

std::string unknownNameText() {
    unsigned char text[255] = {};
    JXW_LoadString(BJXHINST, 55, text, sizeof text);
    return textOf(text);
}

}  // namespace

TEST(DataSourceNames, ComeInTheOrderOfTheFile) {
    const TestHome home{{".odbc.ini", kTwo}};
    List list;
    EXPECT_EQ(list.GetDataSourceNames(), 0U);
    EXPECT_EQ(list.hasDefault, 0U);
    EXPECT_EQ(list.rows(), (Rows{{"B", "(null)"}, {"A", "(null)"}}));
    EXPECT_EQ(list.GetDriverNames(), 0U);
    EXPECT_EQ(list.rows(), (Rows{{"B", "Driver Two"}, {"A", "Driver One"}}));
}

TEST(DataSourceNames, EndWithTheDefaultWhoseDriverStandsBesideTheDrivers) {
    const TestHome home{{".odbc.ini", kTwo}, {".odbcinst.ini", kDefault}};
    List list;
    EXPECT_EQ(list.GetDataSourceNames(), 0U);
    EXPECT_NE(list.hasDefault, 0U);
    EXPECT_EQ(list.entryCount, 3U);
    EXPECT_EQ(list.GetDriverNames(), 0U);
    EXPECT_EQ(list.ConcatenateNames(), 0U);
    EXPECT_EQ(list.rows(), (Rows{{"B", "Driver Two"}, {"A", "Driver One"}, {"Default", "Driver Three"}}));
    EXPECT_EQ(textOf(list.entries[2].display), "Default (Driver Three)");
}

TEST(DataSourceNames, DoNotListADefaultThatIsAloneAndKeepWhatHasDefaultSaid) {
    for (const char* text : {"", "[ODBC Data Sources]\n", "[Default]\nDriver=/opt/a.so\n"}) {
        SCOPED_TRACE(text);
        const TestHome home{{".odbc.ini", text}, {".odbcinst.ini", kDefault}};
        List list;
        for (const std::uint32_t before : {0U, 1U}) {
            list.hasDefault = before;
            EXPECT_EQ(list.GetDataSourceNames(), 1U);
            EXPECT_EQ(list.entryCount, 0U);
            EXPECT_EQ(list.hasDefault, before);
        }
    }
}

TEST(DataSourceNames, ForgetAnEarlierCountWhenThereAreNone) {
    const TestHome home;
    OdbcIns ins;
    ins.entryCount = 5;
    EXPECT_EQ(ins.GetDataSourceNames(), 1U);
    EXPECT_EQ(ins.entryCount, 0U);
}

TEST(DataSourceNames, ForgetADefaultThatIsGone) {
    const TestHome home{{".odbc.ini", kTwo}, {".odbcinst.ini", "[Default]\nDriver=\n"}};
    List list;
    list.hasDefault = 1;
    EXPECT_EQ(list.GetDataSourceNames(), 0U);
    EXPECT_EQ(list.hasDefault, 0U);
    EXPECT_EQ(list.entryCount, 2U);
}

TEST(DataSourceNames, KeepALongDefaultDriverWhole) {
    const std::string driver(600, 'd');
    const TestHome home{{".odbc.ini", kTwo}};
    home.put(".odbcinst.ini", "[Default]\nDriver=" + driver + "\n");
    List list;
    EXPECT_EQ(list.GetDataSourceNames(), 0U);
    EXPECT_EQ(list.GetDriverNames(), 0U);
    EXPECT_EQ(list.rows().back(), (std::pair<std::string, std::string>{"Default", driver}));
}

TEST(DataSourceNames, OfAVeryLongSectionEndBeforeANameThatDoesNotFit) {
    std::string text = "[ODBC Data Sources]\n";
    for (int key = 0; key < 150; ++key)
        text += "source" + std::to_string(1000 + key) + "=D\n";
    const TestHome home;
    home.put(".odbc.ini", text);
    home.put(".odbcinst.ini", kDefault);
    List list;
    EXPECT_EQ(list.GetDataSourceNames(), 0U);
    // 93 names of 11 bytes fill all 1023 bytes: one more byte and the next would begin.
    ASSERT_EQ(list.entryCount, 94U);
    EXPECT_EQ(list.rows()[92].first, "source1092");
    EXPECT_EQ(list.rows()[93].first, "Default");
    home.put(".odbc.ini", "[ODBC Data Sources]\n" + std::string(1020, 'x') + "=D\nabcdef=D\n");
    list.ResetData(ResetAll);
    EXPECT_EQ(list.GetDataSourceNames(), 0U);
    ASSERT_EQ(list.entryCount, 2U);
    EXPECT_EQ(list.rows()[1].first, "Default");
}

// A cut name would be another data source's.
TEST(DataSourceNames, AreNoneWhenTheFirstDoesNotFit) {
    for (const std::size_t length : {1021U, 1022U, 1023U, 1024U, 1025U, 32767U, 32768U, 65535U, 70000U}) {
        SCOPED_TRACE(length);
        const TestHome home;
        home.put(".odbc.ini", "[ODBC Data Sources]\n" + std::string(length, 'x') + "=D\nb=D\n");
        List list;
        const bool fits = length <= 1023;
        EXPECT_EQ(list.GetDataSourceNames(), fits ? 0U : 1U);
        ASSERT_EQ(list.entryCount, length == 1021 ? 2U : fits ? 1U : 0U);
        if (fits) {
            EXPECT_EQ(list.rows()[0].first.size(), length);
        }
    }
}

TEST(DriverNames, OfAnEmptyListWithAStaleDefaultAreNotLookedFor) {
    const TestHome home{{".odbcinst.ini", kDefault}};
    List list;
    list.hasDefault = 1;
    EXPECT_EQ(list.GetDriverNames(), 0U);
    EXPECT_EQ(list.entryCount, 0U);
    EXPECT_EQ(list.entries, nullptr);
}

TEST(DriverNames, AreEmptyForKeysWithoutValue) {
    const TestHome home{{".odbc.ini", "[ODBC Data Sources]\nA=\nB\n"}};
    List list;
    EXPECT_EQ(list.GetDataSourceNames(), 0U);
    EXPECT_EQ(list.GetDriverNames(), 0U);
    EXPECT_EQ(list.rows(), (Rows{{"A", ""}, {"B", ""}}));
}

TEST(DriverNames, CanBeLookedForAgain) {
    const TestHome home{{".odbc.ini", kTwo}};
    List list;
    EXPECT_EQ(list.GetDataSourceNames(), 0U);
    EXPECT_EQ(list.GetDriverNames(), 0U);
    home.put(".odbc.ini", "[ODBC Data Sources]\nA=New\n");
    EXPECT_EQ(list.GetDriverNames(), 0U);
    EXPECT_EQ(list.rows(), (Rows{{"B", ""}, {"A", "New"}}));
}

TEST(DataSourceEntries, RefuseNullsAlsoAsMembers) {
    const TestHome home{{".odbc.ini", kTwo}, {".odbcinst.ini", "[D]\nDriver=/opt/d.so\n"}};
    unsigned char name[] = "A";
    unsigned char driver[] = "D";
    OdbcIns ins;
    EXPECT_EQ(ins.jxSQLWriteDSNToIni(name, nullptr), 0);
    EXPECT_EQ(ins.jxSQLWriteDSNToIni(nullptr, driver), 0);
    EXPECT_EQ(ins.jxSQLRemoveDSNFromIni(nullptr), 0);
    EXPECT_EQ(home.text(".odbc.ini"), kTwo);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/opt/d.so\n");
}

TEST(KnownDataSource, IsFoundByItsExactSpelling) {
    const TestHome home{{".odbc.ini", kTwo}, {".odbcinst.ini", kDefault}};
    MessageBoxScript boxes;
    for (const char* name : {"A", "B", "Default"}) {
        List list;
        EXPECT_EQ(list.jxSQLValidDSN(name), 1) << name;
    }
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(KnownDataSource, ReportsEveryOtherName) {
    const TestHome home{{".odbc.ini", kTwo}, {".odbcinst.ini", kDefault}};
    for (const char* name : {"a", "C", "", "default", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(name == nullptr ? "(null)" : name);
        MessageBoxScript boxes;
        List list;
        EXPECT_EQ(list.jxSQLValidDSN(name), 0);
        EXPECT_EQ(boxes.boxes(), (Boxes{{0, unknownNameText(), "KALDERO ODBC Admin", 16}}));
        EXPECT_NE(boxes.boxes()[0].text, "");
    }
}

TEST(KnownDataSource, LeavesItsListAndTheAddedFlagWithTheObject) {
    const TestHome home{{".odbc.ini", kTwo}};
    List list;
    list.dataSourceAdded = 1;
    list.dataSourceName[0] = 'x';
    EXPECT_EQ(list.jxSQLValidDSN("A"), 1);
    EXPECT_EQ(list.rows(), (Rows{{"B", "(null)"}, {"A", "(null)"}}));
    EXPECT_EQ(list.dataSourceAdded, 1);
    EXPECT_EQ(list.dataSourceName[0], 0);
    EXPECT_EQ(list.jxSQLValidDSN("A"), 1);
    EXPECT_EQ(list.entryCount, 2U);
}

TEST(KnownDataSource, IsUnknownInAnEmptyList) {
    const TestHome home{{".odbcinst.ini", kDefault}};
    MessageBoxScript boxes;
    List list;
    EXPECT_EQ(list.jxSQLValidDSN("Default"), 0);
    EXPECT_EQ(boxes.boxes().size(), 1U);
}

TEST(ConcatenateNames, PutsTheDriverInParentheses) {
    OdbcIns ins;
    setRows(ins, {{"Sales", "Sample Driver"}, {"Default", "Sample Driver"}, {"a (b)", "c (d)"}});
    EXPECT_EQ(ins.ConcatenateNames(), 0U);
    EXPECT_EQ(display(ins, 0), "Sales (Sample Driver)");
    EXPECT_EQ(display(ins, 1), "Default (Sample Driver)");
    EXPECT_EQ(display(ins, 2), "a (b) (c (d))");
    ins.ResetData(ResetAll);
}

TEST(ConcatenateNames, LeavesTheParenthesesEmptyForAnEmptyOrNullDriver) {
    OdbcIns ins;
    setRows(ins, {{"Sales", ""}, {"Plain", nullptr}, {nullptr, nullptr}, {"", ""}});
    EXPECT_EQ(ins.ConcatenateNames(), 0U);
    EXPECT_EQ(display(ins, 0), "Sales ()");
    EXPECT_EQ(display(ins, 1), "Plain ()");
    EXPECT_EQ(display(ins, 2), " ()");
    EXPECT_EQ(display(ins, 3), " ()");
    ins.ResetData(ResetAll);
}

TEST(ConcatenateNames, TakesLongNames) {
    OdbcIns ins;
    const std::string name(70000, 'n');
    const std::string driver(65535, 'd');
    setRows(ins, {{name.c_str(), driver.c_str()}});
    EXPECT_EQ(ins.ConcatenateNames(), 0U);
    EXPECT_EQ(display(ins, 0), name + " (" + driver + ")");
    ins.ResetData(ResetAll);
}

TEST(ConcatenateNames, DoesNotReleaseAnEarlierDisplayText) {
    OdbcIns ins;
    setRows(ins, {{"A", "B"}});
    ins.ConcatenateNames();
    unsigned char* earlier = ins.entries[0].display;
    EXPECT_EQ(ins.ConcatenateNames(), 0U);
    EXPECT_NE(ins.entries[0].display, earlier);
    EXPECT_STREQ(reinterpret_cast<const char*>(earlier), "A (B)");
    ramFree(earlier);
    ins.ResetData(ResetAll);
}

TEST(ConcatenateNames, OfAnEmptyListDoesNothing) {
    OdbcIns ins;
    EXPECT_EQ(ins.ConcatenateNames(), 0U);
    ins.entryCount = 3;
    EXPECT_EQ(ins.ConcatenateNames(), 0U);
    EXPECT_EQ(ins.entries, nullptr);
}

}  // namespace jx::test
