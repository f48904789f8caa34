// What a file can store, and the reasons for what it cannot.
#include "rules/storable.h"

#include <gtest/gtest.h>

#include <string_view>

namespace jx::rules::test {
namespace {

using namespace std::string_view_literals;

struct Row {
    std::string_view section, key, value;
    Text what;
    std::string_view why;  // empty: it can be stored
};

void expect(const Row& row, const Refusal& refusal) {
    SCOPED_TRACE(testing::Message() << row.section << "|" << row.key << "|" << row.value);
    EXPECT_EQ(refusal ? std::string_view(refusal.why) : ""sv, row.why);
    EXPECT_TRUE(!refusal || refusal.what == row.what);
}

constexpr Row kRefusedByTheStore[] = {
    {"", "k", "v", Text::section, "it is empty"},
    {"a\nb", "k", "v", Text::section, "it holds a line break"},
    {"a\rb", "k", "v", Text::section, "it holds a line break"},
    {"a ;b", "k", "v", Text::section, "a blank and ; begin a comment in it"},
    {"a\t#b", "k", "v", Text::section, "a blank and # begin a comment in it"},
    {"a", "k=", "v", Text::key, "it holds ="},
    {"a", "k\n", "v", Text::key, "it holds a line break"},
    {"a", "[k", "v", Text::key, "it begins with ["},
    {"a", ";k", "v", Text::key, "it begins with ;"},
    {"a", "#k", "v", Text::key, "it begins with #"},
    {"a", "k", "v\r", Text::value, "it holds a line break"},
    {"", "k=", "v\n", Text::section, "it is empty"},  // the first counts
};

TEST(Storable, WhatTheStoreRefusesIsRefusedEitherWay) {
    for (const Row& row : kRefusedByTheStore) {
        expect(row, refusalOf(row.section, row.key, row.value));
        expect(row, exactRefusalOf(row.section, row.key, row.value));
    }
}

TEST(Storable, WhatWouldNotComeBackAsItIsIsRefusedWhereThatCounts) {
    constexpr Row rows[] = {
        {"a", "", "v", Text::key, "it is empty"},
        {" a", "k", "v", Text::section, "it begins or ends with a blank"},
        {"a", "k\t", "v", Text::key, "it begins or ends with a blank"},
        {"a", "k", " v", Text::value, "it begins or ends with a blank"},
        {"a\0"sv, "k", "v", Text::section, "it holds a NUL"},
        {"a", "k", "v\0w"sv, Text::value, "it holds a NUL"},
    };
    for (const Row& row : rows) {
        EXPECT_FALSE(refusalOf(row.section, row.key, row.value));
        expect(row, exactRefusalOf(row.section, row.key, row.value));
    }
}

TEST(Storable, EverythingElseIsStored) {
    for (const Row& row : {Row{"a", "k", "v", {}, ""}, Row{"a]b", "k[", "=;#[]", {}, ""},
                           Row{"a;b#c", "k;#", "", {}, ""}, Row{";a", "\xFF", "\"v\"", {}, ""}})
        expect(row, exactRefusalOf(row.section, row.key, row.value));
}

}  // namespace
}  // namespace jx::rules::test
