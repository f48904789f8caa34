// The installer object: constructor, destructor, and ResetData.
#include <gtest/gtest.h>
#include <odbcins.h>

#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "data_source_rows.h"

namespace jx::test {

namespace {

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
    ins.entries[0].display = heapCopy("A (B)");
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

}  // namespace jx::test
