// Values that lie outside the file: KEY@file, KEY@env, KEY@credential.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "installer_home.h"

using namespace jx::test;

namespace {

TEST(SecretReference, TheValueIsWhatTheFileTheVariableOrTheCredentialHolds) {
    const InstallerHome home;
    home.put("secret", "from the file\n");
    home.put("pg", "from the credential\n");
    home.put(kUserSources, "[A]\nPassword@file=" + home.file("secret") +
                               "\n[B]\nPassword@env=JX_TEST_SECRET\n[C]\nPassword@credential=pg\n");
    const TestVariable variable("JX_TEST_SECRET", "from the variable");
    const TestVariable directory("CREDENTIALS_DIRECTORY", home.path());
    EXPECT_EQ(value("A", "Password"), "from the file");
    EXPECT_EQ(value("B", "PASSWORD"), "from the variable");
    EXPECT_EQ(value("C", "password"), "from the credential");
    EXPECT_EQ(recordCount(), 0);
    SQLWCHAR room[32];
    EXPECT_EQ(SQLGetPrivateProfileStringW(wide(u"A"), wide(u"Password"), nullptr, room, 32, wide(u"odbc.ini")), 13);
    EXPECT_EQ(fromWide(room, 13), u"from the file");
}

TEST(SecretReference, ItIsReadAtEachLookUp) {
    const InstallerHome home;
    home.put(kUserSources, "[A]\nPWD@file=" + home.file("secret") + "\n");
    for (const char* text : {"one", "two", "six"}) {
        home.put("secret", text);
        EXPECT_EQ(value("A", "PWD"), text);
    }
}

TEST(SecretReference, OneLineEndAtTheEndIsDropped) {
    const InstallerHome home;
    home.put(kUserSources, "[A]\nPWD@file=" + home.file("secret") + "\n");
    const std::pair<std::string, std::string> rows[] = {{"a", "a"},       {"a\n", "a"},   {"a\r\n", "a"},
                                                        {"a\n\n", "a\n"}, {"a\r", "a\r"}, {" a \n", " a "},
                                                        {"", ""},         {"\n", ""},     {"a\nb\n", "a\nb"}};
    for (const auto& [text, secret] : rows) {
        SCOPED_TRACE(text);
        home.put("secret", text);
        EXPECT_EQ(value("A", "PWD"), secret);
        EXPECT_EQ(recordCount(), 0);
    }
}

TEST(SecretReference, APlainKeyWins) {
    const InstallerHome home{{kUserSources, "[A]\nPWD@file=/nowhere\nPWD=plain\n"}};
    EXPECT_EQ(value("A", "PWD"), "plain");
    EXPECT_EQ(recordCount(), 0);
}

TEST(SecretReference, TheOrderIsFileEnvCredentialAndSuffixesAreInAnyCase) {
    const InstallerHome home;
    home.put("secret", "file");
    const TestVariable variable("JX_TEST_SECRET", "variable");
    home.put(kUserSources, "[A]\nPWD@ENV=JX_TEST_SECRET\nPWD@File=" + home.file("secret") + "\n");
    EXPECT_EQ(value("A", "PWD"), "file");
    home.put(kUserSources, "[A]\nPWD@Credential=x\nPWD@ENV=JX_TEST_SECRET\n");
    EXPECT_EQ(value("A", "PWD"), "variable");
}

TEST(SecretReference, KeyListsShowTheKeyOnceAndNotTheReference) {
    const InstallerHome home{
        {kUserSources, "[A]\nServer=a\nPWD@file=/x\nPWD@env=Y\nPassword=1\npassword@file=/z\nmail=a@b\nx@y=1\n"}};
    EXPECT_EQ(listed("A"), "Server|PWD|Password|mail|x@y|");
}

TEST(SecretReference, AskingForTheReferenceItselfGivesWhatIsWritten) {
    const InstallerHome home{{kUserSources, "[A]\nPWD@file=/nowhere\n"}};
    EXPECT_EQ(value("A", "PWD@file"), "/nowhere");
    EXPECT_EQ(recordCount(), 0);
}

struct Refused {
    const char* what;
    std::string line;
    std::string reason;
};

TEST(SecretReference, WhatIsRefusedGivesTheDefaultAndARecordThatNamesTheReasonNeverTheContent) {
    const InstallerHome home;
    home.put("nul", std::string("topsecret\0x", 11));
    home.put("large", "topsecret" + std::string(65'536, 'x'));
    home.put("others", "topsecret");
    home.put("group", "topsecret");
    std::filesystem::create_directory(home.file("directory"));
    ASSERT_EQ(mkfifo(home.file("fifo").c_str(), 0600), 0);
    ASSERT_EQ(chmod(home.file("others").c_str(), 0602), 0);
    const TestVariable empty("JX_TEST_UNSET", nullptr);
    const TestVariable big("JX_TEST_BIG", std::string(65'537, 'x'));
    const TestVariable directory("CREDENTIALS_DIRECTORY", home.path());
    const Refused rows[] = {
        {"absent", "PWD@file=" + home.file("absent"), "No such file or directory"},
        {"relative", "PWD@file=secret", "not an absolute path"},
        {"no path", "PWD@file=", "not an absolute path"},
        {"NUL", "PWD@file=" + home.file("nul"), "NUL"},
        {"too long", "PWD@file=" + home.file("large"), "64 KiB"},
        {"a file that others may write", "PWD@file=" + home.file("others"), "others"},
        {"a directory", "PWD@file=" + home.file("directory"), "not a regular file"},
        {"a FIFO", "PWD@file=" + home.file("fifo"), "not a regular file"},
        {"a device", "PWD@file=/dev/null", "not a regular file"},
        {"an unset variable", "PWD@env=JX_TEST_UNSET", "no such environment variable"},
        {"no variable", "PWD@env=", "no such environment variable"},
        {"a long variable", "PWD@env=JX_TEST_BIG", "64 KiB"},
        {"a credential with /", "PWD@credential=a/b", "not the name of a credential"},
        {"a credential ..", "PWD@credential=..", "not the name of a credential"},
        {"an absent credential", "PWD@credential=absent", "No such file or directory"},
    };
    for (const Refused& row : rows) {
        SCOPED_TRACE(row.what);
        home.put(kUserSources, "[Sales]\n" + row.line + "\n");
        EXPECT_EQ(value("Sales", "PWD"), "(default)");
        EXPECT_EQ(recordCount(), 1);
        const std::string text = record(1);
        EXPECT_TRUE(text.starts_with("11: ")) << text;
        for (const std::string& part : {row.reason, std::string("Sales"), home.file(kUserSources)})
            EXPECT_NE(text.find(part), std::string::npos) << text;
        EXPECT_EQ(text.find("topsecret"), std::string::npos) << text;
    }
}

TEST(SecretReference, SixtyFourKibibytesAreTaken) {
    const InstallerHome home;
    home.put(kUserSources, "[A]\nPWD@file=" + home.file("secret") + "\n");
    home.put("secret", std::string(65'536, 'x'));
    EXPECT_TRUE(value("A", "PWD") == std::string(65'536, 'x'));
}

TEST(SecretReference, WithoutACredentialsDirectoryACredentialIsRefused) {
    const InstallerHome home{{kUserSources, "[A]\nPWD@credential=pg\n"}};
    for (const char* directory : {static_cast<const char*>(nullptr), "", "relative"}) {
        const TestVariable variable("CREDENTIALS_DIRECTORY", directory);
        EXPECT_EQ(value("A", "PWD"), "(default)");
        EXPECT_NE(record(1).find("CREDENTIALS_DIRECTORY"), std::string::npos) << record(1);
    }
}

TEST(SecretReference, LinksAreFollowed) {
    const InstallerHome home;
    home.put("..data", "linked\n");
    std::filesystem::create_symlink("..data", home.file("secret"));
    home.put(kUserSources, "[A]\nPWD@file=" + home.file("secret") + "\n");
    EXPECT_EQ(value("A", "PWD"), "linked");
}

TEST(SecretReference, AFilesGroupCountsAsOthersUnlessItIsTheOwnersOwn) {
    const InstallerHome home;
    home.put("secret", "s");
    home.put(kUserSources, "[A]\nPWD@file=" + home.file("secret") + "\n");
    ASSERT_EQ(chmod(home.file("secret").c_str(), 0620), 0);
    EXPECT_EQ(value("A", "PWD"), "s") << "the group is the one of the account";
    if (geteuid() == 0) {
        ASSERT_EQ(chown(home.file("secret").c_str(), 0, 12345), 0);
        EXPECT_EQ(value("A", "PWD"), "(default)");
        EXPECT_NE(record(1).find("others"), std::string::npos) << record(1);
    }
}

TEST(SecretReference, TheSectionThatAnswersIsTheOnlyOneWhoseReferencesCount) {
    const InstallerHome home;
    home.put("secret", "systems");
    home.put(kUserSources, "[Sales]\nServer=attacker.example\n");
    home.put(kSystemSources, "[Sales]\nServer=db\nPWD@file=" + home.file("secret") + "\n");
    EXPECT_EQ(value("Sales", "PWD"), "(default)");
    EXPECT_EQ(recordCount(), 0);
}

TEST(SecretReference, ReferencesNeverNameCodeToLoadNorListsNorCounts) {
    const InstallerHome home;
    const TestVariable variable("JX_TEST_SECRET", "/evil.so");
    home.put(kUserSources,
             "[ODBC Data Sources]\nSales@env=JX_TEST_SECRET\n[Sales]\nDriver@env=JX_TEST_SECRET\nSetup@env="
             "JX_TEST_SECRET\nTranslator@env=JX_TEST_SECRET\n");
    for (const char* key : {"Driver", "Setup", "Translator", "DRIVER"})
        EXPECT_EQ(value("Sales", key), "(default)") << key;
    EXPECT_EQ(value("ODBC Data Sources", "Sales"), "(default)");
    home.put(kSystemDrivers, "[PG]\nDriver@env=JX_TEST_SECRET\nSetup@env=JX_TEST_SECRET\nUsageCount@env=X\n");
    for (const char* key : {"Driver", "Setup", "UsageCount"})
        EXPECT_EQ(value("PG", key, "odbcinst.ini"), "(default)") << key;
    WORD length = 0;
    char room[64];
    EXPECT_EQ(SQLGetInstalledDrivers(room, sizeof room, &length), FALSE) << "a reference registers no driver";
}

TEST(SecretReference, AFileDataSourceIsGivenAsItIsWritten) {
    const InstallerHome home;
    const TestVariable variable("JX_TEST_SECRET", "hidden");
    home.put("a.dsn", "[ODBC]\nPWD@env=JX_TEST_SECRET\n");
    char room[64];
    EXPECT_EQ(SQLReadFileDSN(home.file("a.dsn").c_str(), "ODBC", "PWD", room, sizeof room, nullptr), FALSE);
    EXPECT_EQ(SQLReadFileDSN(home.file("a.dsn").c_str(), "ODBC", nullptr, room, sizeof room, nullptr), TRUE);
    EXPECT_STREQ(room, "PWD@env");
}

}  // namespace
