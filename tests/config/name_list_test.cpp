// Walking over lists of names, on input that the store never gives.
#include "config/name_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace jx::test {

namespace {

using namespace std::string_literals;

NameList walkOver(const std::string& list) {
    return {asBytes(list.data()), list.size()};
}

std::vector<std::string> namesIn(const std::string& buffer) {
    NameList walk = walkOver(buffer);
    std::vector<std::string> names;
    for (std::string_view name = walk.next(); !name.empty(); name = walk.next())
        names.emplace_back(name);
    EXPECT_TRUE(walk.next().empty());
    return names;
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
    NameList walk = walkOver(list);
    EXPECT_EQ(walk.count(), 2U);
    EXPECT_EQ(walk.sizeInBytes(), 6U);
    EXPECT_EQ(walk.next(), "abc");
    EXPECT_EQ(walk.count(), 1U);
    EXPECT_EQ(walk.sizeInBytes(), 2U);
    EXPECT_EQ(NameList(asBytes(list.data()), 0).count(), 0U);
}

}  // namespace jx::test
