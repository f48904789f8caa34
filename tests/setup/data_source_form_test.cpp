// What a user may type for a data source, which values are hidden, and what was changed.
#include "setup/data_source_form.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace jx::setup;

std::string texts(const std::vector<Attribute>& attributes) {
    std::string all;
    for (const auto& [keyword, value] : attributes)
        all += keyword + "=" + value + "|";
    return all;
}

std::string texts(const std::vector<KeyChange>& changes) {
    std::string all;
    for (const auto& [keyword, value] : changes)
        all += value ? keyword + "=" + *value + "|" : "-" + keyword + "|";
    return all;
}

TEST(DataSourceForm, FindsKeywordsInAnyCase) {
    const std::vector<Attribute> attributes{{"Server", "a"}, {"PWD", "b"}};
    EXPECT_EQ(placeOf(attributes, "SERVER"), 0U);
    EXPECT_EQ(placeOf(attributes, "pwd"), 1U);
    EXPECT_EQ(placeOf(attributes, "Port"), 2U);
    EXPECT_EQ(placeOf({}, ""), 0U);
}

TEST(DataSourceForm, OverlaysChangesAndTakesAnEmptyValueForARemoval) {
    std::vector<Attribute> attributes{{"Server", "a"}, {"Port", "1"}, {"Empty", ""}};
    overlay(attributes, {{"SERVER", "b"}, {"port", ""}, {"New", "x"}, {"Absent", ""}});
    EXPECT_EQ(texts(attributes), "Server=b|Empty=|New=x|");
}

TEST(DataSourceForm, KnowsWhatChanged) {
    const std::vector<Attribute> before{{"Server", "a"}, {"Port", "1"}, {"Empty", ""}};
    EXPECT_EQ(texts(changesBetween(before, before)), "");
    EXPECT_EQ(texts(changesBetween(before, {{"EMPTY", ""}, {"server", "a"}, {"Port", "1"}})), "");
    EXPECT_EQ(texts(changesBetween(before, {{"Server", "A"}, {"Empty", ""}})), "-Port|Server=A|");
    EXPECT_EQ(texts(changesBetween(before, {{"Server", ""}, {"Port", "1"}, {"Empty", "x"}, {"New", ""}})),
              "Server=|Empty=x|New=|");
    EXPECT_EQ(texts(changesBetween({}, {})), "");
}

TEST(DataSourceForm, HidesTheValuesOfSecrets) {
    EXPECT_TRUE(isSecret({"AccountKey", ""}));
    EXPECT_TRUE(isSecret({"Url", "db://anna:x@host"}));
    EXPECT_FALSE(isSecret({"Server", "a=b"}));
    EXPECT_EQ(rowText({"PIN", "x"}), "PIN = ********");
    EXPECT_EQ(rowText({"PIN", ""}), "PIN = ");
    EXPECT_EQ(rowText({"Url", "db://anna:x@host"}), "Url = db://anna:********@host");
    EXPECT_EQ(rowText({"Server", "a=b"}), "Server = a=b");
}

TEST(DataSourceForm, ObjectsToNamesThatNoNewDataSourceCanHave) {
    for (const char* name : {"", "ODBC", "odbc data sources", "a=b", "[a]", "a;b", "#a", " a", "a\t", "a\nb",
                             "a name of thirty-three characters"})
        EXPECT_NE(objectionToName(name, usersFiles()), "") << name;
    EXPECT_EQ(objectionToName("a[b", usersFiles()),
              "A new data source cannot have this name: it holds one of []{}(),;?*=!@\\.");
    for (const char* name : {"Sales", "Default", "a b", "a#b", "a name of thirty-two characters."})
        EXPECT_EQ(objectionToName(name, usersFiles()), "") << name;
}

TEST(DataSourceForm, ObjectsToKeysThatTheFileCannotHoldOrThatAreNotTheUsers) {
    for (const char* keyword : {"", "DSN", "dsn", "Driver", "DRIVER", "a=b", "[a", ";a", "#a", "a\nb", "a\rb"})
        EXPECT_NE(objectionToKeyword(keyword), "") << keyword;
    EXPECT_EQ(objectionToKeyword("a=b"), "This key cannot be stored: it holds =.");
    for (const char* keyword : {"Server", "a b", "a;b", "a#b", "a[b]", "DSN2", "DriverX"})
        EXPECT_EQ(objectionToKeyword(keyword), "") << keyword;
}

TEST(DataSourceForm, ObjectsToValuesThatTheFileDoesNotGiveBack) {
    for (const char* value : {" a", "a ", "\ta", "a\t", " ", "a\nb", "a\r"})
        EXPECT_NE(objectionToValue(value), "") << value;
    EXPECT_EQ(objectionToValue(" a"), "This value cannot be stored: it begins or ends with a blank.");
    for (const char* value : {"", "a", "a b", "a=b;c", "\"a\"", "# a"})
        EXPECT_EQ(objectionToValue(value), "") << value;
}

}  // namespace
