// Hashes of names.
#include "jxutl/ini/name_hash.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "jxutl/ini/name_table.h"

namespace jx::ini::test {
namespace {

// Every pair of bytes, at every place of names of every length that the code treats differently.
TEST(NameHash, IsTheSameForNamesThatMatchAndForNoOthers) {
    for (const std::size_t size : {1U, 2U, 3U, 4U, 7U, 8U, 9U, 15U, 16U, 17U, 64U, 65U, 130U})
        for (std::size_t place = 0; place < size; ++place) {
            std::string left(size, 'x');
            std::string right(size, 'X');
            for (int byte = 0; byte < 256; ++byte)
                for (const int other : {byte, byte ^ 0x20, byte ^ 0x80}) {
                    left[place] = static_cast<char>(byte);
                    right[place] = static_cast<char>(other);
                    ASSERT_EQ(hashName(left) == hashName(right), rules::sameName(left, right))
                        << size << " " << place << " " << byte << " " << other;
                }
        }
}

TEST(NameHash, EveryByteAndTheLengthCount) {
    for (std::size_t size = 0; size < 200; ++size) {
        const std::string name(size, 'n');
        ASSERT_NE(hashName(name), hashName(name + "n")) << size;
        for (std::size_t place = 0; place < size; ++place) {
            std::string other = name;
            other[place] = 'm';
            ASSERT_NE(hashName(name), hashName(other)) << size << " " << place;
        }
    }
}

// Names of data sources often differ in a few digits at the end; tables use the lower bits of the hash.
TEST(NameHash, NumberedNamesSpreadOverATable) {
    for (const std::string_view stem : {"", "ds", "Data Source ", "A rather long name of a data source, number "}) {
        std::set<std::uint32_t> slots;
        for (int number = 0; number < 4096; ++number)
            slots.insert(hashName(std::string(stem) + std::to_string(number)) & 0xFFFU);
        EXPECT_GT(slots.size(), 4096U * 55 / 100) << stem;  // chance alone gives 63 of 100
    }
}

constexpr std::uint32_t kNames = 20'000;

std::vector<std::string> numberedNames() {
    std::vector<std::string> names;
    for (std::uint32_t number = 0; number < kNames; ++number)
        names.push_back("A rather long key number " + std::to_string(number));
    return names;
}

// They differ in the bit of case only, in bytes that are no letters: a hash that ignores that bit in every byte gives
// all of them one value, whatever its key.
std::vector<std::string> namesOfCaseBits() {
    std::vector<std::string> names;
    for (std::uint32_t number = 0; number < kNames; ++number) {
        std::string name(20, '@');
        for (std::size_t bit = 0; bit < name.size(); ++bit)
            if ((number >> bit & 1U) != 0)
                name[bit] = '`';
        names.push_back(name);
    }
    return names;
}

// They collide in a hash that multiplies by a known number: their first eight bytes make up for the last eight.
std::vector<std::string> namesForAKnownFactor() {
    constexpr std::uint64_t kCaseBits = 0x2020202020202020U;
    std::vector<std::string> names;
    for (std::uint64_t number = 0; names.size() < kNames; ++number) {
        std::uint64_t last = 0;
        for (std::uint64_t rest = number, at = 0; at < 8; ++at, rest /= 26)
            last |= ('a' + rest % 26) << at * 8;
        std::uint64_t mixed = (last + 16) * 0x9E3779B97F4A7C15U;
        mixed ^= mixed >> 32U;
        const std::uint64_t first = 0x1234567812345678U - mixed;
        if ((first & kCaseBits) != kCaseBits)
            continue;
        std::string name(16, '\0');
        std::memcpy(name.data(), &first, sizeof first);
        std::memcpy(name.data() + 8, &last, sizeof last);
        names.push_back(name);
    }
    return names;
}

// How many names a table compares to find each of them.
std::size_t comparisons(const std::vector<std::string>& names) {
    NameTable table;
    for (std::uint32_t number = 0; number < names.size(); ++number)
        table.insert(hashName(names[number]), number);
    std::size_t count = 0;
    for (std::uint32_t number = 0; number < names.size(); ++number)
        table.find(hashName(names[number]), [&](std::uint32_t found) {
            ++count;
            return found == number;
        });
    return count;
}

TEST(NameHash, HostileNamesNeedNoMoreComparisonsThanOthers) {
    for (const auto& names : {numberedNames(), namesOfCaseBits(), namesForAKnownFactor()}) {
        ASSERT_EQ(names.size(), kNames);
        EXPECT_LT(comparisons(names), kNames + kNames / 100);
    }
}

}  // namespace
}  // namespace jx::ini::test
