// What a user may type for a data source, what is hidden of it, and what has changed.
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

TEST(DataSourceForm, TellsWhatChanged) {
    const std::vector<Attribute> before{{"Server", "a"}, {"Port", "1"}, {"Empty", ""}};
    EXPECT_EQ(texts(changesBetween(before, before)), "");
    EXPECT_EQ(texts(changesBetween(before, {{"EMPTY", ""}, {"server", "a"}, {"Port", "1"}})), "");
    EXPECT_EQ(texts(changesBetween(before, {{"Server", "A"}, {"Empty", ""}})), "-Port|Server=A|");
    EXPECT_EQ(texts(changesBetween(before, {{"Server", ""}, {"Port", "1"}, {"Empty", "x"}, {"New", ""}})),
              "Server=|Empty=x|New=|");
    EXPECT_EQ(texts(changesBetween({}, {})), "");
}

TEST(DataSourceForm, HidesTheValuesOfSecrets) {
    for (const char* secret : {"PWD",          "pwd",          "Password",    "UserPassword", "PASSWD", "Passphrase",
                               "ClientSecret", "access_token", "Credentials", "Pass",         "pass",   "DBPass",
                               "user_pass",    "Passcode",     "PASS_CODE",   "Pass Word",    "ApiKey", "api_key",
                               "X-API-Key",    "Private Key",  "private_key", "SSLPrivateKey"}) {
        EXPECT_TRUE(isSecret(secret)) << secret;
        EXPECT_EQ(rowText({secret, "x"}), std::string(secret) + " = ********");
        EXPECT_EQ(rowText({secret, "a long one"}), std::string(secret) + " = ********");
        EXPECT_EQ(rowText({secret, ""}), std::string(secret) + " = ");
    }
    for (const char* open : {"Server", "UID", "PW", "Database", "PassThrough", "Passive", "Key", "KeyFile", "PublicKey",
                             "Api", "Private", ""})
        EXPECT_FALSE(isSecret(open)) << open;
    EXPECT_EQ(rowText({"Server", "a=b"}), "Server = a=b");
}

TEST(DataSourceForm, HidesConnectStringsWithAPassword) {
    for (const char* secret : {"Server=a;PWD=x", "pwd=", "UID=u; Password = x", "PASSWORD=x"})
        EXPECT_EQ(rowText({"Connect", secret}), "Connect = ********") << secret;
    for (const char* open : {"Server=a;UID=u", "pwd", "password", "see pwd in file", "passwort=x"})
        EXPECT_EQ(rowText({"Connect", open}), std::string("Connect = ") + open);
}

TEST(DataSourceForm, TrimsOuterBlanks) {
    EXPECT_EQ(trimmed(" \tx y\t "), "x y");
    EXPECT_EQ(trimmed("x"), "x");
    EXPECT_EQ(trimmed(" \t"), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(DataSourceForm, ObjectsToNamesThatNoNewDataSourceCanHave) {
    for (const char* name : {"", "ODBC", "odbc data sources", "a=b", "[a]", "a;b", "#a", " a", "a\t", "a\nb",
                             "a name of thirty-three characters"})
        EXPECT_NE(objectionToName(name), nullptr) << name;
    for (const char* name : {"Sales", "Default", "a b", "a#b", "a name of thirty-two characters."})
        EXPECT_EQ(objectionToName(name), nullptr) << name;
}

TEST(DataSourceForm, ObjectsToKeysThatTheFileCannotHoldOrThatAreNotTheUsers) {
    for (const char* keyword : {"", "DSN", "dsn", "Driver", "DRIVER", "a=b", "[a", ";a", "#a", "a\nb", "a\rb"})
        EXPECT_NE(objectionToKeyword(keyword), nullptr) << keyword;
    for (const char* keyword : {"Server", "a b", "a;b", "a#b", "a[b]", "DSN2", "DriverX"})
        EXPECT_EQ(objectionToKeyword(keyword), nullptr) << keyword;
}

TEST(DataSourceForm, ObjectsToValuesThatTheFileDoesNotGiveBack) {
    for (const char* value : {" a", "a ", "\ta", "a\t", " ", "a\nb", "a\r"})
        EXPECT_NE(objectionToValue(value), nullptr) << value;
    for (const char* value : {"", "a", "a b", "a=b;c", "\"a\"", "# a"})
        EXPECT_EQ(objectionToValue(value), nullptr) << value;
}

}  // namespace
