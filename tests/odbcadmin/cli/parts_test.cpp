// The parts below the verbs: differences, near names, secrets, texts, sections.
#include <gtest/gtest.h>

#include "odbcadmin/cli/diff.h"
#include "odbcadmin/cli/ini_view.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/text.h"
#include "rules/secrets.h"
#include "rules/utf8.h"

namespace jx::admin {
namespace {

std::string diff(std::string_view before, std::string_view after) {
    return unifiedDiff("f", before, after, [](std::string_view line) { return std::string(line); });
}

TEST(Diff, SameTextsHaveNone) {
    EXPECT_EQ(diff("", ""), "");
    EXPECT_EQ(diff("a\n", "a\n"), "");
}

TEST(Diff, ShowsOneChangeWithThreeLinesAround) {
    EXPECT_EQ(diff("1\n2\n3\n4\n5\n6\n7\n8\n9\n", "1\n2\n3\n4\nx\n6\n7\n8\n9\n"),
              "--- f\n+++ f\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+x\n 6\n 7\n 8\n");
}

TEST(Diff, EmptyTextsHaveTheirOwnRanges) {
    EXPECT_EQ(diff("", "a\nb\n"), "--- f\n+++ f\n@@ -0,0 +1,2 @@\n+a\n+b\n");
    EXPECT_EQ(diff("a\n", ""), "--- f\n+++ f\n@@ -1 +0,0 @@\n-a\n");
}

TEST(Diff, TellsAMissingLastLineEnd) {
    EXPECT_EQ(diff("a", "a\n"), "--- f\n+++ f\n@@ -1 +1 @@\n-a\n\\ No newline at end of file\n+a\n");
}

TEST(Diff, PartsFarChangesAndJoinsNearOnes) {
    const std::string text = diff("a\n1\n2\n3\n4\n5\n6\n7\nb\n", "A\n1\n2\n3\n4\n5\n6\n7\nB\n");
    EXPECT_EQ(text, "--- f\n+++ f\n@@ -1,4 +1,4 @@\n-a\n+A\n 1\n 2\n 3\n@@ -6,4 +6,4 @@\n 5\n 6\n 7\n-b\n+B\n");
    EXPECT_EQ(diff("a\n1\n2\n3\n4\n5\n6\nb\n", "A\n1\n2\n3\n4\n5\n6\nB\n"),
              "--- f\n+++ f\n@@ -1,8 +1,8 @@\n-a\n+A\n 1\n 2\n 3\n 4\n 5\n 6\n-b\n+B\n");
}

TEST(Diff, FindsTheShortestWay) {
    EXPECT_EQ(diff("a\nb\nc\na\nb\nb\na\n", "c\nb\na\nb\na\nc\n"),
              "--- f\n+++ f\n@@ -1,7 +1,6 @@\n-a\n-b\n c\n+b\n a\n b\n-b\n a\n+c\n");
}

// Beyond a thousand edits the texts are given as a whole.
TEST(Diff, TextsThatHaveNothingInCommonAreOneChange) {
    std::string before;
    std::string after;
    for (int i = 0; i < 3000; ++i) {
        before += "b" + std::to_string(i) + "\n";
        after += "a" + std::to_string(i) + "\n";
    }
    const std::string text = diff("same\n" + before, "same\n" + after);
    EXPECT_EQ(text.substr(0, 40), "--- f\n+++ f\n@@ -1,3001 +1,3001 @@\n same\n");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 6004);
}

TEST(NearMatches, CountsEdits) {
    struct Row {
        const char* left;
        const char* right;
        std::size_t distance;
    };
    for (const Row& row :
         {Row{"", "", 0}, Row{"a", "", 1}, Row{"Sales", "sales", 0}, Row{"Sales", "Slaes", 1}, Row{"Sales", "Sals", 1},
          Row{"Sales", "Salse", 1}, Row{"abc", "xyz", 3}, Row{"kitten", "sitting", 3}}) {
        SCOPED_TRACE(row.left);
        EXPECT_EQ(editDistance(row.left, row.right, 9), row.distance);
        EXPECT_EQ(editDistance(row.right, row.left, 9), row.distance);
    }
    EXPECT_EQ(editDistance("kitten", "sitting", 2), 3U);
    EXPECT_EQ(editDistance("a", "aaaaaaaaaa", 3), 4U);
}

TEST(NearMatches, GivesTheNearestFirstAndThreeAtMost) {
    EXPECT_EQ(nearMatches("Sales", {"Other", "Sale", "SALES1", "Sales22", "Salt", "Sailes"}),
              (std::vector<std::string>{"Sale", "SALES1", "Sailes"}));
    EXPECT_EQ(nearMatches("Sal", {"Sales of the year 2026"}), (std::vector<std::string>{"Sales of the year 2026"}));
    EXPECT_TRUE(nearMatches("x", {"abc", "", "y", "xy"}).empty());
    EXPECT_TRUE(nearMatches("", {"abc", "", "y"}).empty());
    EXPECT_EQ(adviceFor("Slaes", {"Sales", "Stales"}, "no"), "Did you mean Sales?");
    EXPECT_EQ(adviceFor("ab", {"aa", "ac"}, "no"), "Did you mean aa or ac?");
    EXPECT_EQ(adviceFor("qqqqq", {"Sales"}, "no"), "no");
}

TEST(Text, SplitsAtTheFirstEqualsSign) {
    EXPECT_EQ(splitPair("a=b=c"), (std::pair<std::string, std::string>("a", "b=c")));
    EXPECT_EQ(splitPair("a="), (std::pair<std::string, std::string>("a", "")));
    EXPECT_EQ(splitPair("a"), std::nullopt);
    EXPECT_EQ(splitPair("=b"), std::nullopt);
    EXPECT_EQ(splitPair(" =b"), std::nullopt);
}

TEST(IniView, JoinsSectionsOfOneNameAndTakesTheFirstOfEqualKeys) {
    const auto view = IniView::parse("x=0\n[A]\nk=1\nK=2\n[b]\n[a]\nk=3\nl=4\nnoValue\n[]\ny=1\n");
    ASSERT_TRUE(view);
    ASSERT_EQ(view->sections().size(), 2U);
    EXPECT_EQ(view->value("a", "K"), "1");
    EXPECT_EQ(view->value(" A ", " l "), "4");
    EXPECT_EQ(view->section("A")->entries.size(), 3U);
    EXPECT_EQ(view->find("A", "noValue")->value, "");
    EXPECT_EQ(view->find("A", "x"), nullptr);
    EXPECT_EQ(view->section("c"), nullptr);
    EXPECT_EQ(view->section("A")->line, 2U);
    EXPECT_EQ(view->find("a", "l")->line, 8U);
}

TEST(IniView, ManyEqualKeysCountOnce) {
    std::string text = "[A]\n";
    for (int i = 0; i < 40; ++i)
        text += (i % 2 == 0 ? "k" : "K") + std::to_string(i / 2) + "=" + std::to_string(i) + "\n";
    const auto view = IniView::parse(text);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->section("A")->entries.size(), 20U);
    EXPECT_EQ(view->value("A", "k3"), "6");
}

TEST(IniView, StaysGoodWhenMoved) {
    auto view = IniView::parse("[A]\nk=1\n");
    ASSERT_TRUE(view);
    const IniView moved = std::move(*view);
    EXPECT_EQ(moved.value("A", "k"), "1");
}

}  // namespace
}  // namespace jx::admin
