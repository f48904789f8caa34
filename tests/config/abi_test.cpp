// The installer object's layout, which hosts are compiled with.
#include <gtest/gtest.h>
#include <odbcins.h>

#include <cstddef>
#include <type_traits>

namespace jx::test {

namespace {

constexpr bool k64Bit = sizeof(void*) == 8;

// The offset in a 64-bit and in a 32-bit process.
constexpr std::size_t offset(std::size_t in64Bit, std::size_t in32Bit) {
    return k64Bit ? in64Bit : in32Bit;
}

}  // namespace

static_assert(std::is_standard_layout_v<OdbcIns>);
static_assert(!std::is_polymorphic_v<OdbcIns>);
static_assert(offsetof(OdbcIns, dataSourceName) == 0);
static_assert(offsetof(OdbcIns, driverName) == 50);
static_assert(offsetof(OdbcIns, pfnConfigDSN) == offset(104, 100));
static_assert(offsetof(OdbcIns, pfnConfigTranslator) == offset(112, 104));
static_assert(offsetof(OdbcIns, hSetupLib) == offset(120, 108));
static_assert(offsetof(OdbcIns, selectedIndex) == offset(128, 112));
static_assert(offsetof(OdbcIns, dataSourceAdded) == offset(130, 114));
static_assert(offsetof(OdbcIns, entryCount) == offset(132, 116));
static_assert(offsetof(OdbcIns, entries) == offset(136, 120));
static_assert(offsetof(OdbcIns, hasDefault) == offset(144, 124));
static_assert(sizeof(OdbcIns) == offset(152, 128));

static_assert(std::is_same_v<decltype(OdbcIns::dataSourceName), char[50]>);
static_assert(std::is_same_v<decltype(OdbcIns::driverName), char[50]>);
static_assert(std::is_same_v<decltype(OdbcIns::selectedIndex), std::int16_t>);
static_assert(std::is_same_v<decltype(OdbcIns::dataSourceAdded), std::uint8_t>);
static_assert(std::is_same_v<decltype(OdbcIns::entryCount), std::uint32_t>);
static_assert(std::is_same_v<decltype(OdbcIns::hasDefault), std::uint32_t>);

static_assert(offsetof(DataSourceEntry, name) == 0);
static_assert(offsetof(DataSourceEntry, driver) == sizeof(void*));
static_assert(offsetof(DataSourceEntry, display) == 2 * sizeof(void*));
static_assert(sizeof(DataSourceEntry) == 3 * sizeof(void*));

static_assert(ResetAll == 0 && ResetKeepAddedFlag == 1);

TEST(InstallerObjectLayout, IsTheOneTheLibraryWasBuiltWith) {
    // The library sets the first and the last field where this program expects them.
    OdbcIns ins;
    ins.dataSourceName[0] = 'x';
    ins.driverName[49] = 'x';
    ins.hasDefault = 5;
    ins.ResetData(ResetAll);
    EXPECT_EQ(ins.dataSourceName[0], 0);
    EXPECT_EQ(ins.driverName[49], 0);
    EXPECT_EQ(ins.hasDefault, 5U);
}

}  // namespace jx::test
