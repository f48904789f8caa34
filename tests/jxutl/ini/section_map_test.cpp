// The places of sections in a map, against those found by walking through the text.
#include "jxutl/ini/section_map.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "random_text.h"

namespace jx::ini::test {
namespace {

using Places = std::vector<std::array<std::size_t, 3>>;

Places placesOf(std::string_view text, const SectionMap& map, std::string_view name) {
    Places places;
    SectionsNamed sections(text, map, name);
    while (sections.next())
        places.push_back({sections.header(), sections.body(), sections.bodyEnd()});
    return places;
}

void expectAsByWalking(std::string_view text, const SectionMap& map) {
    ASSERT_TRUE(map.isThere());
    for (const char* name : {"A", "a", "ODBC Data Sources", "b]c", "[d", "B", "absent"})
        EXPECT_EQ(placesOf(text, map, name), placesOf(text, SectionMap(), name)) << name << " in\n" << text;
}

TEST(SectionMap, FindsTheSectionsThatAWalkFinds) {
    Random random(8);
    for (int round = 0; round < 1000; ++round) {
        const std::string text = random.oneIn(4) ? randomBytes(random, random.below(200)) : randomFile(random);
        SectionMap map;
        map.build(text);
        expectAsByWalking(text, map);
    }
}

TEST(SectionMap, FollowsWhatIsReplaced) {
    const std::string text = "; c\n[A]\nk=1\n[B]\nk=2\n [a] ; c\nk=3\n";
    struct Row {
        const char* what;
        const char* by;
    };
    for (const Row& row : {Row{"k=1\n", ""}, Row{"1", "a longer value"}, Row{"; c\n", "; another\n; and one\n"},
                           Row{"[B]\nk=2\n", ""}, Row{"[A]\nk=1\n[B]\n", "x=1\n"}, Row{"k=3\n", "k=4\n"}}) {
        SCOPED_TRACE(row.what);
        std::string edited = text;
        SectionMap map;
        map.build(edited);
        const std::size_t begin = edited.find(row.what);
        const std::size_t size = std::string_view(row.what).size();
        edited.replace(begin, size, row.by);
        map.replaced(begin, begin + size, std::string_view(row.by).size());
        expectAsByWalking(edited, map);
    }
}

TEST(SectionMap, LeavesAHeaderThatFollowsAnInsertionInItsPlaceInTheText) {
    std::string text = "[A]\n[B]\n";
    SectionMap map;
    map.build(text);
    text.insert(4, "k=1\n");
    map.replaced(4, 4, 4);
    expectAsByWalking(text, map);
    EXPECT_EQ(placesOf(text, map, "A"), (Places{{0, 4, 8}}));
}

TEST(SectionMap, KnowsWhatIsAddedAtTheEnd) {
    std::string text = "[A]\nk=1\n";
    SectionMap map;
    map.build(text);
    for (int round = 0; round < 100; ++round) {
        map.makeRoom();
        const std::size_t header = text.size();
        text += "[B]\nk=1\n";
        map.added(text, header, 4, std::string_view(text).substr(header + 1, 1));
        expectAsByWalking(text, map);
    }
}

TEST(SectionMap, IsNotThereBeforeItIsBuiltAndAfterItWasDropped) {
    SectionMap map;
    EXPECT_FALSE(map.isThere());
    map.build("[A]\n");
    map.drop();
    EXPECT_FALSE(map.isThere());
    EXPECT_EQ(placesOf("[B]\n", map, "b"), (Places{{0, 4, 4}})) << "a walk finds it";
}

}  // namespace
}  // namespace jx::ini::test
