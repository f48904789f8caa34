// Names found again among many, in any case, and no others.
#include "odbcadmin/model/name_places.h"

#include <gtest/gtest.h>

#include <string>

#include "rules/names.h"

namespace jx::model::test {
namespace {

TEST(NamePlaces, FindsEachNameInAnyCaseAndNoOther) {
    std::vector<std::string> names{"", "a", "ab", "abc", "abcdefg", "abcdefgh", "abcdefghi", std::string(70'000, 'x')};
    for (int i = 0; i < 5000; ++i)
        names.push_back("Source " + std::to_string(i));
    NamePlaces places;
    EXPECT_TRUE(places.isEmpty());
    const auto find = [&](std::string_view name) {
        return places.find(NamePlaces::hashOf(name), [&](std::size_t at) { return rules::sameName(names[at], name); });
    };
    EXPECT_EQ(find("a"), std::nullopt);
    for (std::size_t i = 0; i < names.size(); ++i)
        places.add(NamePlaces::hashOf(names[i]), i);
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(find(names[i]), i) << names[i];
    EXPECT_EQ(find("SOURCE 17"), find("Source 17"));
    EXPECT_EQ(find("Source 5000"), std::nullopt);
    EXPECT_EQ(find("abcdefghj"), std::nullopt);
}

TEST(NamePlaces, GivesTheFirstOfEqualNamesAndTellsSeedsApart) {
    NamePlaces places;
    places.add(NamePlaces::hashOf("a", 1), 7);
    places.add(NamePlaces::hashOf("A", 1), 3);
    const auto any = [](std::size_t /*at*/) { return true; };
    EXPECT_EQ(places.find(NamePlaces::hashOf("a", 1), any), 7U);
    EXPECT_NE(NamePlaces::hashOf("a", 1), NamePlaces::hashOf("a", 2));
}

}  // namespace
}  // namespace jx::model::test
