// The installer object: beginning, clearing, display texts.
#include <gtest/gtest.h>
#include <jxmemory.h>
#include <odbcins.h>

#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "test_home.h"

namespace jx::test {

namespace {

unsigned char* heapText(const char* text) {
    return ramAllocStr(reinterpret_cast<const unsigned char*>(text));
}

// Gives ins a list of rows with names and drivers (null stays null).
void setRows(OdbcIns& ins, std::initializer_list<std::pair<const char*, const char*>> rows) {
    ins.entries = static_cast<DataSourceEntry*>(ramAllocZ(rows.size() * sizeof(DataSourceEntry)));
    ins.entryCount = 0;
    for (const auto& [name, driver] : rows) {
        ins.entries[ins.entryCount].name = heapText(name);
        ins.entries[ins.entryCount].driver = heapText(driver);
        ++ins.entryCount;
    }
}

std::string display(const OdbcIns& ins, std::size_t row) {
    return reinterpret_cast<const char*>(ins.entries[row].display);
}

bool isZero(const char (&field)[50]) {
    const std::array<char, 50> zeros{};
    return std::memcmp(field, zeros.data(), sizeof field) == 0;
}

}  // namespace

TEST(InstallerObject, BeginsWithAnEmptyListAndNoDataSourceAdded) {
    alignas(OdbcIns) std::array<unsigned char, sizeof(OdbcIns)> memory;
    memory.fill(0xEE);
    auto* ins = new (memory.data()) OdbcIns;
    EXPECT_EQ(ins->entryCount, 0U);
    EXPECT_EQ(ins->entries, nullptr);
    EXPECT_EQ(ins->hasDefault, 0U);
    EXPECT_EQ(ins->dataSourceAdded, 0);
    EXPECT_EQ(ins->pfnConfigDSN, nullptr);
    EXPECT_EQ(ins->pfnConfigTranslator, nullptr);
    EXPECT_EQ(ins->hSetupLib, nullptr);
    EXPECT_TRUE(isZero(ins->dataSourceName));
    EXPECT_TRUE(isZero(ins->driverName));
    ins->~OdbcIns();
}

TEST(InstallerObject, LivesOnTheHeapToo) {
    const auto ins = std::make_unique<OdbcIns>();
    EXPECT_EQ(ins->ResetData(ResetAll), 0U);
}

TEST(InstallerObject, ReleasesNoListWhenItEnds) {
    DataSourceEntry* rows = nullptr;
    {
        OdbcIns ins;
        setRows(ins, {{"A", "B"}});
        rows = ins.entries;
    }
    EXPECT_STREQ(reinterpret_cast<const char*>(rows[0].name), "A");
    OdbcIns other;
    other.entries = rows;
    other.entryCount = 1;
    other.ResetData(ResetAll);
}

TEST(ResetData, OfAFreshObjectReleasesNothing) {
    OdbcIns ins;
    EXPECT_EQ(ins.ResetData(ResetAll), 0U);
    EXPECT_EQ(ins.ResetData(ResetKeepAddedFlag), 0U);
    EXPECT_EQ(ins.entryCount, 0U);
    EXPECT_EQ(ins.entries, nullptr);
}

TEST(ResetData, ClearsSelectionNamesAndFlag) {
    OdbcIns ins;
    std::memset(ins.dataSourceName, 'x', sizeof ins.dataSourceName);
    std::memset(ins.driverName, 'x', sizeof ins.driverName);
    ins.selectedIndex = -1;
    ins.dataSourceAdded = 1;
    EXPECT_EQ(ins.ResetData(ResetAll), 0U);
    EXPECT_EQ(ins.selectedIndex, 0);
    EXPECT_TRUE(isZero(ins.dataSourceName));
    EXPECT_TRUE(isZero(ins.driverName));
    EXPECT_EQ(ins.dataSourceAdded, 0);
}

TEST(ResetData, KeepsTheAddedFlagWhenAskedTo) {
    OdbcIns ins;
    std::memset(ins.dataSourceName, 'x', sizeof ins.dataSourceName);
    std::memset(ins.driverName, 'x', sizeof ins.driverName);
    ins.selectedIndex = 9;
    ins.dataSourceAdded = 1;
    EXPECT_EQ(ins.ResetData(ResetKeepAddedFlag), 0U);
    EXPECT_EQ(ins.dataSourceAdded, 1);
    EXPECT_EQ(ins.selectedIndex, 0);
    EXPECT_TRUE(isZero(ins.dataSourceName));
    EXPECT_TRUE(isZero(ins.driverName));
}

TEST(ResetData, ReleasesEveryRowAlsoThoseWithNulls) {
    OdbcIns ins;
    setRows(ins, {{"A", "B"}, {nullptr, nullptr}, {"C", nullptr}});
    ins.entries[0].display = heapText("A (B)");
    EXPECT_EQ(ins.ResetData(ResetAll), 0U);
    EXPECT_EQ(ins.entryCount, 0U);
    EXPECT_EQ(ins.ResetData(ResetAll), 0U);
}

TEST(ResetData, MarksTheListEmptyByItsCountAloneAndLeavesHasDefault) {
    OdbcIns ins;
    setRows(ins, {{"A", "B"}});
    ins.hasDefault = 1;
    const auto rows = reinterpret_cast<std::uintptr_t>(ins.entries);
    ins.ResetData(ResetAll);
    EXPECT_EQ(ins.entryCount, 0U);
    EXPECT_EQ(ins.hasDefault, 1U);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(ins.entries), rows);
}

TEST(ResetData, SurvivesACountWithoutAList) {
    OdbcIns ins;
    ins.entryCount = 5;
    EXPECT_EQ(ins.ResetData(ResetAll), 0U);
    EXPECT_EQ(ins.entryCount, 0U);
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

TEST(ConcatenateNames, LeavesAnEarlierDisplayTextToWhoeverTookIt) {
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
