// Two texts side by side.
#include "odbcadmin/model/diff.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace jx::model {
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

}  // namespace
}  // namespace jx::model
