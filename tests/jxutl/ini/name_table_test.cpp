// The hash table of names: equal hashes, growth and emptying.
#include "jxutl/ini/name_table.h"

#include <gtest/gtest.h>

namespace jx::ini {
namespace {

// Looks the wanted number up by its hash.
std::uint32_t find(const NameTable& table, std::uint32_t hash, std::uint32_t wanted) {
    return table.find(hash, [wanted](std::uint32_t number) { return number == wanted; });
}

TEST(NameTable, AnEmptyTableFindsNothing) {
    const NameTable table;
    EXPECT_EQ(find(table, 7, 0), NameTable::kNone);
    EXPECT_EQ(table.memory(), 0U);
}

TEST(NameTable, FindsEveryNumberWhateverTheHashes) {
    for (const std::uint32_t hashes : {1U, 3U, 1000U}) {
        SCOPED_TRACE(hashes);
        NameTable table;
        for (std::uint32_t number = 0; number < 200; ++number)
            table.insert(number % hashes, number);
        for (std::uint32_t number = 0; number < 200; ++number)
            EXPECT_EQ(find(table, number % hashes, number), number);
        EXPECT_EQ(find(table, 0, 200), NameTable::kNone);
        EXPECT_EQ(find(table, 1000, 0), NameTable::kNone);
    }
}

TEST(NameTable, AsksOnlyAboutNumbersOfTheSameHash) {
    NameTable table;
    table.insert(16, 1);  // the same slot in a small table
    table.insert(32, 2);
    EXPECT_EQ(table.find(32, [](std::uint32_t) { return true; }), 2U);
    EXPECT_EQ(table.find(48, [](std::uint32_t) { return true; }), NameTable::kNone);
}

TEST(NameTable, AClearedTableIsEmptyAndGivesBackMuchUnusedMemory) {
    NameTable table;
    for (std::uint32_t number = 0; number < 1000; ++number)
        table.insert(number, number);
    const std::size_t full = table.memory();
    table.clear();
    EXPECT_EQ(find(table, 5, 5), NameTable::kNone);
    EXPECT_EQ(table.memory(), full);
    table.insert(5, 6);
    EXPECT_EQ(find(table, 5, 6), 6U);
    table.clear();
    EXPECT_LT(table.memory(), full);
}

}  // namespace
}  // namespace jx::ini
