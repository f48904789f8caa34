// The small helpers of the configuration members, on input that the store never gives them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "config/attribute_list.h"
#include "config/capability_keys.h"
#include "config/message_box.h"
#include "config/name_list.h"
#include "config/sized_output.h"
#include "guarded_buffer.h"

namespace jx::test {

namespace {

using namespace std::string_literals;

const unsigned char* bytesOf(const std::string& text) {
    return asBytes(text.data());
}

std::vector<std::string> namesIn(const std::string& buffer) {
    NameList walk(bytesOf(buffer), buffer.size());
    std::vector<std::string> names;
    for (std::string_view name = walk.next(); !name.empty(); name = walk.next())
        names.emplace_back(name);
    EXPECT_TRUE(walk.next().empty());
    return names;
}

// The bytes in memory of their own, so that a read behind them is seen.
std::vector<unsigned char> exactly(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string dataSourceIn(const std::string& list) {
    AttributeList attributes;
    if (!attributes.take(exactly(list).data()))
        return "(refused)";
    const unsigned char* name = attributes.dataSource();
    return name == nullptr ? "(none)" : asChars(name);
}

std::string messageAround(std::size_t nameLength, std::size_t before, std::size_t after) {
    return asChars(MessageText(std::string(before, 'b'), std::string(nameLength, 'n'), std::string(after, 'a')).text());
}

}  // namespace

TEST(NameListWalk, EndsAtTheEmptyNameOrWithTheBuffer) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(namesIn(""), Names{});
    EXPECT_EQ(namesIn("\0"s), Names{});
    EXPECT_EQ(namesIn("a\0b\0\0c\0"s), (Names{"a", "b"}));
    EXPECT_EQ(namesIn("a\0b\0"s), (Names{"a", "b"}));
    EXPECT_EQ(namesIn("a\0cut"s), (Names{"a", "cut"}));
    EXPECT_EQ(namesIn(std::string(70000, 'x')), (Names{std::string(70000, 'x')}));
}

TEST(NameListWalk, CountsNamesAndBytesWithoutMoving) {
    const std::string list = "abc\0d\0\0"s;
    NameList walk(bytesOf(list), list.size());
    EXPECT_EQ(walk.count(), 2U);
    EXPECT_EQ(walk.sizeInBytes(), 6U);
    EXPECT_EQ(walk.next(), "abc");
    EXPECT_EQ(walk.count(), 1U);
    EXPECT_EQ(walk.sizeInBytes(), 2U);
    EXPECT_EQ(NameList(bytesOf(list), 0).count(), 0U);
}

TEST(AttributeItems, GiveTheFirstDataSourceBeforeAnItemWithoutEqualsSign) {
    struct Row {
        std::string list;
        std::string name;
    };
    const Row rows[] = {
        {"DSN=Sales\0\0"s, "Sales"}, {"x=1\0DSN=Sales\0\0"s, "Sales"},
        {"DSN=a\0DSN=b\0\0"s, "a"},  {"DSN=\0\0"s, ""},
        {"DSN==\0\0"s, "="},         {"dsn=a\0\0"s, "(none)"},
        {"DSNx=a\0\0"s, "(none)"},   {"x\0DSN=a\0\0"s, "(none)"},
        {"=DSN=a\0\0"s, "(none)"},   {"x=DSN\0DSN=[a;b\0\0"s, "[a;b"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.list);
        EXPECT_EQ(dataSourceIn(row.list), row.name);
    }
}

TEST(AttributeItems, TakeListsUpTo1024BytesAndReadNothingBehindTheirEnd) {
    for (const std::size_t size : {7U, 1022U, 1023U, 1024U, 1025U, 1026U, 70000U}) {
        SCOPED_TRACE(size);
        const std::string list = "DSN=" + std::string(size - 6, 'n') + std::string(2, '\0');
        ASSERT_EQ(list.size(), size);
        EXPECT_EQ(dataSourceIn(list), size <= 1024 ? std::string(size - 6, 'n') : "(refused)");
    }
}

TEST(AttributeItems, AreNoneInNullAndEmptyLists) {
    EXPECT_TRUE(AttributeList::isEmpty(nullptr));
    EXPECT_TRUE(AttributeList::isEmpty(asBytes("")));
    EXPECT_FALSE(AttributeList::isEmpty(asBytes("x\0")));
}

TEST(MessageAroundAName, CutsTheNameAtTheLastByteThatFits) {
    EXPECT_EQ(messageAround(3, 2, 2), "bbnnnaa");
    EXPECT_EQ(messageAround(0, 0, 0), "");
    for (const std::size_t length : {1000U, 1018U, 1019U, 1020U, 32768U, 70000U}) {
        SCOPED_TRACE(length);
        const std::size_t kept = std::min<std::size_t>(length, 1023 - 4);
        EXPECT_EQ(messageAround(length, 2, 2), "bb" + std::string(kept, 'n') + "aa");
    }
}

TEST(MessageAroundAName, CutsWordsThatAreTooLongThemselves) {
    EXPECT_EQ(messageAround(5, 1023, 1), std::string(1023, 'b'));
    EXPECT_EQ(messageAround(5, 1022, 5), std::string(1022, 'b') + "a");
    EXPECT_EQ(messageAround(5, 70000, 70000), std::string(1023, 'b'));
}

TEST(SizedOutput, ListsAreWholeOnlyWithRoomForTheirFinalNul) {
    const std::string list = "ab\0c\0"s;
    constexpr unsigned short kSizes[] = {1, 4, 5, 6, 7, 32767, 32768, 65535};
    for (const unsigned short size : kSizes) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(size);
        unsigned short length = 99;
        handOutList(bytesOf(list), list.size(), buffer.bytes(), size, &length);
        const std::size_t copied = std::min<std::size_t>(list.size(), size - 1U);
        EXPECT_EQ(length, copied);
        EXPECT_EQ(buffer.all(), list.substr(0, copied) + std::string(size - copied, '\0'));
        EXPECT_TRUE(buffer.isGuarded());
    }
}

TEST(SizedOutput, TextsAreCutToTheirBuffer) {
    constexpr unsigned short kSizes[] = {0, 1, 3, 4, 5, 32767, 32768, 65535};
    for (const unsigned short size : kSizes) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(size);
        unsigned short length = 99;
        handOutText(asBytes("abc"), buffer.bytes(), size, &length);
        const std::size_t copied = size == 0 ? 0 : std::min<std::size_t>(3, size - 1U);
        EXPECT_EQ(length, copied);
        EXPECT_EQ(size == 0 ? "" : buffer.text(), std::string("abc").substr(0, copied));
        EXPECT_TRUE(buffer.isGuarded());
    }
}

TEST(CapabilityKeys, StandInTheOrderInWhichTheyAreCopied) {
    const std::vector<std::string> keys(kCapabilityKeys.begin(), kCapabilityKeys.end());
    EXPECT_EQ(keys, (std::vector<std::string>{"APILevel", "CreateDSN", "ConnectFunctions", "DriverODBCVer", "FileUsage",
                                              "FileExtns", "SQLLevel"}));
}

}  // namespace jx::test
