// Connection strings written and read: each with what stands in them.
#include "odbcadmin/model/connection_string.h"

#include <gtest/gtest.h>

namespace jx::model::test {
namespace {

struct QuotingRow {
    const char* value;
    const char* written;
};

TEST(ConnectionString, WritesBracesWhereAValueNeedsThem) {
    const QuotingRow rows[] = {
        {"", ""},
        {"plain", "plain"},
        {"two words", "two words"},
        {"a=b", "a=b"},
        {"tcp:db,1433", "tcp:db,1433"},
        {"a}b", "a}b"},
        {"a{b", "a{b"},
        {"[a]", "[a]"},
        {"a;b", "{a;b}"},
        {";", "{;}"},
        {" a", "{ a}"},
        {"a\t", "{a\t}"},
        {" ", "{ }"},
        {"{a", "{{a}"},
        {"{a}", "{{a}}}"},
        {"a;}", "{a;}}}"},
        {"a;}}b", "{a;}}}}b}"},
        {"gr\xC3\xBC\xC3\x9F;e", "{gr\xC3\xBC\xC3\x9F;e}"},
    };
    for (const QuotingRow& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(connectionValue(row.value), row.written);
        for (const std::string& form : {connectionValue(row.value), bracedValue(row.value)}) {
            const ConnectionPairs read = readConnectionString("A=1;K=" + form + ";Z={}");
            EXPECT_EQ(read.error, "");
            EXPECT_EQ(read.pairs, (Pairs{{"A", "1"}, {"K", row.value}, {"Z", ""}}));
        }
    }
}

struct ReadingRow {
    const char* text;
    Pairs pairs;
};

TEST(ConnectionString, ReadsWhatDriversAccept) {
    const ReadingRow rows[] = {
        {"", {}},
        {" ;; ; ", {}},
        {"A=b", {{"A", "b"}}},
        {"A=b;", {{"A", "b"}}},
        {" A \t=\t b ; C=d ", {{"A", "b"}, {"C", "d"}}},
        {"A=", {{"A", ""}}},
        {"A=;B=c", {{"A", ""}, {"B", "c"}}},
        {"A={b} ;C= {d;e}", {{"A", "b"}, {"C", "d;e"}}},
        {"A={ b }", {{"A", " b "}}},
        {"A={b}}c}", {{"A", "b}c"}}},
        {"A={}}}", {{"A", "}"}}},
        {"A=b{c};D=e", {{"A", "b{c}"}, {"D", "e"}}},
        {"A=b=c", {{"A", "b=c"}}},
        {"A=\"b\"", {{"A", "\"b\""}}},
        {"PWD=first;pwd=second;A=b", {{"PWD", "first"}, {"A", "b"}}},
        {"DRIVER={SQLite3};Database=/srv/x.db", {{"DRIVER", "SQLite3"}, {"Database", "/srv/x.db"}}},
        {"two words=b", {{"two words", "b"}}},
    };
    for (const ReadingRow& row : rows) {
        SCOPED_TRACE(row.text);
        const ConnectionPairs read = readConnectionString(row.text);
        EXPECT_EQ(read.error, "");
        EXPECT_EQ(read.pairs, row.pairs);
    }
}

struct RefusedRow {
    const char* text;
    const char* error;
};

TEST(ConnectionString, TellsWhatItCannotReadWithoutAnyValue) {
    const RefusedRow rows[] = {
        {"A", "attribute 1 has no ="},
        {"A=b;secret;C=d", "attribute 2 has no ="},
        {"=b", "attribute 1 has no keyword before its ="},
        {"A=b; =c", "attribute 2 has no keyword before its ="},
        {"PWD={a", "attribute 1, PWD, has a { that is never closed"},
        {"PWD={a}}", "attribute 1, PWD, has a { that is never closed"},
        {"PWD={", "attribute 1, PWD, has a { that is never closed"},
        {"A=b;PWD={a}b", "attribute 2, PWD, goes on behind its closing }; a } of the value itself is written }}"},
    };
    for (const RefusedRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(readConnectionString(row.text).error, row.error);
    }
}

TEST(ConnectionString, RefusesKeywordsThatWouldBeReadAsOthers) {
    for (const char* good : {"A", "two words", "[a]", "{a}", "a,b"})
        EXPECT_EQ(whyNoKeyword(good), nullptr) << good;
    for (const char* bad : {"", "a;b", "a=b", " a", "a\t"})
        EXPECT_NE(whyNoKeyword(bad), nullptr) << bad;
}

TEST(ConnectionString, IsAsLongAsItMustBe) {
    for (const std::size_t size : {0U, 1U, 32767U, 32768U, 65535U, 70000U}) {
        const std::string value(size, '}');
        const std::string text = joinedAttributes({{"K", bracedValue(value)}});
        EXPECT_EQ(readConnectionString(text).pairs, (Pairs{{"K", value}}));
    }
}

}  // namespace
}  // namespace jx::model::test
