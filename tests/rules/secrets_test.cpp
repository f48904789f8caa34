// Which keys are secrets, and what is shown instead of their values.
#include "rules/secrets.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace jx::rules::test {
namespace {

TEST(Secrets, KnowsThemByName) {
    for (const char* key : {"PWD",           "pwd",
                            "Password",      "PASSWD",
                            "Secret",        "ClientSecret",
                            "client_secret", "Token",
                            "AuthToken",     "ApiKey",
                            "api_key",       "Private Key",
                            "PassPhrase",    "SslPwd",
                            "ProxyPwd",      "UserPwd",
                            "AccessKey",     "Credentials",
                            "Pass",          "DbPass",
                            "Passcode",      "AccountKey",
                            "PIN",           "PW",
                            "Pwd2",          "SharedAccessSignature",
                            "SAS",           "sig",
                            "SessionCookie", "Authorization"})
        EXPECT_TRUE(isSecretKey(key)) << key;
    for (const char* key : {"UID", "Server", "Driver", "Passthrough", "Compass", "LoginBypass", "PublicKey", "KeyFile",
                            "PasswordFile", "TokenTimeout", "SSLKeyPath", "Keyword", "", "Description"})
        EXPECT_FALSE(isSecretKey(key)) << key;
}

TEST(Secrets, MasksValuesAndPartsOfConnectionStrings) {
    EXPECT_EQ(masked("PWD", "x"), "********");
    EXPECT_EQ(masked("PWD", ""), "");
    EXPECT_EQ(masked("Server", "db1"), "db1");
    EXPECT_EQ(masked("Connect", "UID=a;PWD=b;DB=c"), "UID=a;PWD=********;DB=c");
    EXPECT_EQ(masked("Connect", "a;b;;"), "a;b;;");
}

TEST(Secrets, MaskPartsHoweverTheyAreWrapped) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"PWD={a;b};DB=c", "PWD=********;DB=c"},
        {"PWD={a}};b};DB=c", "PWD=********;DB=c"},
        {"PWD=\"a;b\" ;DB=c", "PWD=********;DB=c"},
        {"PWD={a;b", "PWD=********"},
        {"Pwd=", "Pwd="},
        {"Pwd=;DB=c", "Pwd=;DB=c"},
        {"Description=it's;PWD=a;b='", "Description=it's;PWD=********;b='"},
        {"{Driver=x;PWD=a}", "{Driver=x;PWD=********"},
        {"Connect={PWD=a;DB=c}", "Connect={PWD=********;DB=c}"},
        {"host=db1 password=a dbname=c", "host=db1 password=********"},
        {"host=secrets port=5", "host=secrets port=5"},
        {"The password of joe, UID=joe;b=c", "The password of joe, UID=joe;b=c"},
        {"Private Key=a;b=c", "Private Key=********;b=c"},
        {"db://joe:a@db1/c?x=y", "db://joe:********@db1/c?x=y"},
        {"db://joe:a@b@db1", "db://joe:********@db1"},
        {"db://db1/c?password=a", "db://db1/c?password=********"},
        {"db://joe@db1:5000/c", "db://joe@db1:5000/c"},
        {"db://joe:a/b@db1/c", "db://joe:********@db1/c"},
        {"x=db://joe:a@db1;y=db://ann:b@db2", "x=db://joe:********@db1;y=db://ann:********@db2"},
        {"https://store/box?sv=1&sig=abc", "https://store/box?sv=1&sig=********"},
        {"Endpoint=sb://a/;SharedAccessSignature=b", "Endpoint=sb://a/;SharedAccessSignature=********"},
        {"db://", "db://"},
        {"db://joe:", "db://joe:"},
        {"db://joe:@db1", "db://joe:@db1"},
        {"db://db1:5000/joe@x", "db://db1:5000/joe@x"},
    };
    for (const auto& [value, shown] : rows)
        EXPECT_EQ(masked("URL", value), shown);
}

TEST(Secrets, MasksLinesOfAFile) {
    const std::pair<const char*, const char*> rows[] = {{"PWD = x\r\n", "PWD = ********\r\n"},
                                                        {"; PWD=x\n", "; PWD=********\n"},
                                                        {"[PWD]\n", "[PWD]\n"},
                                                        {"PWD=\n", "PWD=\n"},
                                                        {"Server=x", "Server=x"},
                                                        {"PWD geheim\n", "PWD ********\n"},
                                                        {"; Password: geheim\r\n", "; Password ********\r\n"},
                                                        {"PWD\n", "PWD\n"},
                                                        {"Pass\xC2\xA0geheim\n", "Pass ********\n"},
                                                        {"", ""}};
    for (const auto& [line, shown] : rows)
        EXPECT_EQ(maskedLine(line), shown);
}

TEST(Secrets, FindTheWordOfALineWithoutAnEqualsSign) {
    const std::pair<const char*, const char*> rows[] = {
        {"PWD geheim", "PWD"}, {"PWD", ""}, {"PWD \t\r\n", ""}, {"Server geheim", ""}, {"", ""}};
    for (const auto& [line, word] : rows)
        EXPECT_EQ(secretWord(line), word);
}

}  // namespace
}  // namespace jx::rules::test
