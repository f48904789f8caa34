// SQLInstallDriverEx, SQLInstallTranslator(Ex), SQLInstallDriverManager.
#include <gtest/gtest.h>

#include <filesystem>

#include "guarded_buffer.h"
#include "installer_home.h"

using namespace jx::test;
using namespace std::string_literals;

namespace {

const std::string kDirectory = JX_LIBRARY_DIRECTORY "/odbc";

struct Told {
    BOOL done;
    std::string path;
    WORD length;
    DWORD count;
};

Told install(const std::string& list, const char* pathIn = nullptr, WORD request = ODBC_INSTALL_COMPLETE,
             WORD size = 1024) {
    Told told{FALSE, "", 7777, 7777};
    GuardedBuffer path(size);
    told.done = SQLInstallDriverEx(list.c_str(), pathIn, path.data(), size, &told.length, request, &told.count);
    EXPECT_TRUE(path.isGuarded());
    told.path = path.text();
    return told;
}

TEST(DriverInstallation, CompleteWritesWhatTheListSaysAndCountsFromOne) {
    const InstallerHome home;
    const Told told = install("PG\0Driver=pg.so\0Setup=pgs.so\0Description=A driver\0SQLLevel=1\0"s);
    EXPECT_EQ(told.done, TRUE) << record(1);
    EXPECT_EQ(told.path, kDirectory);
    EXPECT_EQ(told.length, kDirectory.size());
    EXPECT_EQ(told.count, 1U);
    EXPECT_EQ(home.text(kSystemDrivers), "[ODBC Drivers]\nPG=Installed\n\n[PG]\nDriver=" + kDirectory +
                                             "/pg.so\nSetup=" + kDirectory +
                                             "/pgs.so\nDescription=A driver\nSQLLevel=1\nUsageCount=1\n");
    EXPECT_EQ(install("pg\0Driver=pg.so\0"s).count, 2U);
    EXPECT_EQ(install("PG\0Driver=pg.so\0"s).count, 3U);
    EXPECT_EQ(home.text(kUserDrivers), "(absent)");
}

TEST(DriverInstallation, InquiryChangesNothingAndTellsThePath) {
    const InstallerHome home;
    const Told told = install("PG\0Driver=pg.so\0"s, nullptr, ODBC_INSTALL_INQUIRY);
    EXPECT_EQ(told.done, TRUE) << record(1);
    EXPECT_EQ(told.path, kDirectory);
    EXPECT_EQ(told.count, 0U);
    EXPECT_EQ(home.text(kSystemDrivers), "(absent)");
}

TEST(DriverInstallation, AnEarlierInstallationsDirectoryIsToldAndItsKeysStay) {
    const InstallerHome home{{kSystemDrivers, "[PG]\nDriver=/opt/old/pg.so\nMine=1\n"}};
    const Told told = install("PG\0Driver=pg2.so\0"s, "/opt/new");
    EXPECT_EQ(told.done, TRUE) << record(1);
    EXPECT_EQ(told.path, "/opt/old");
    EXPECT_EQ(told.count, 2U) << "a driver without a count becomes 2";
    EXPECT_EQ(home.text(kSystemDrivers),
              "[PG]\nDriver=/opt/old/pg2.so\nMine=1\nUsageCount=2\n\n[ODBC Drivers]\nPG=Installed\n");
}

TEST(DriverInstallation, ACountThatIsNoNumberCountsAsAbsent) {
    for (const char* count : {"x", "", "-1", "99999999999", "1x"}) {
        SCOPED_TRACE(count);
        const InstallerHome home{{kSystemDrivers, "[PG]\nDriver=/opt/pg.so\nUsageCount="s + count + "\n"}};
        EXPECT_EQ(install("PG\0Driver=pg.so\0"s).count, 2U);
    }
}

TEST(DriverInstallation, ThePathInIsTakenAndAnAbsoluteDriverStays) {
    const InstallerHome home;
    EXPECT_EQ(install("A\0Driver=a.so\0"s, "/opt/absent/").path, "/opt/absent") << "it need not exist";
    EXPECT_EQ(value("A", "Driver", "odbcinst.ini"), "/opt/absent/a.so");
    EXPECT_EQ(install("B\0Driver=/srv/b.so\0"s, "/opt/other").path, "/srv");
    EXPECT_EQ(value("B", "Driver", "odbcinst.ini"), "/srv/b.so");
    EXPECT_EQ(install("C\0Driver=c.so\0"s, "").path, kDirectory);
    EXPECT_EQ(install("D\0Driver=d.so\0"s, "/").path, "/");
    EXPECT_EQ(value("D", "Driver", "odbcinst.ini"), "/d.so");
}

TEST(DriverInstallation, KeywordsAreInAnyCase) {
    const InstallerHome home;
    EXPECT_EQ(install("PG\0DRIVER=/opt/pg.so\0setup=/opt/pgs.so\0"s).done, TRUE) << record(1);
    EXPECT_EQ(value("PG", "Setup", "odbcinst.ini"), "/opt/pgs.so");
}

struct Refused {
    const char* what;
    std::string list;
    DWORD code;
};

TEST(DriverInstallation, ABadListIsRefusedAndChangesNothing) {
    const Refused rows[] = {
        {"nothing", "\0"s, ODBC_ERROR_INVALID_PARAM_SEQUENCE},
        {"a name alone", "PG\0"s, ODBC_ERROR_INVALID_PARAM_SEQUENCE},
        {"no Driver", "PG\0Setup=a.so\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"Driver later", "PG\0Setup=a.so\0Driver=b.so\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"Setup later", "PG\0Driver=a.so\0k=v\0Setup=b.so\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"an empty Driver", "PG\0Driver=\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"no =", "PG\0Driver=a.so\0word\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"no keyword", "PG\0Driver=a.so\0=v\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"a keyword twice", "PG\0Driver=a.so\0k=1\0K=2\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"Driver twice", "PG\0Driver=a.so\0Driver=b.so\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"UsageCount", "PG\0Driver=a.so\0UsageCount=5\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"a value with a line break", "PG\0Driver=a.so\0k=a\nb\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"a key with [", "PG\0Driver=a.so\0[k=v\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"a relative path", "PG\0Driver=lib/a.so\0"s, ODBC_ERROR_INVALID_KEYWORD_VALUE},
        {"ODBC", "ODBC\0Driver=a.so\0"s, ODBC_ERROR_INVALID_NAME},
        {"ODBC Core", "odbc core\0Driver=a.so\0"s, ODBC_ERROR_INVALID_NAME},
        {"Default", "Default\0Driver=a.so\0"s, ODBC_ERROR_INVALID_NAME},
        {"a name with a line break", "P\nG\0Driver=a.so\0"s, ODBC_ERROR_INVALID_NAME},
        {"not UTF-8", "P\xFF\0Driver=a.so\0"s, ODBC_ERROR_INVALID_STR},
    };
    for (const Refused& row : rows) {
        SCOPED_TRACE(row.what);
        const InstallerHome home;
        EXPECT_EQ(install(row.list).done, FALSE);
        EXPECT_EQ(firstCode(), row.code) << record(1);
        EXPECT_EQ(home.text(kSystemDrivers), "(absent)");
    }
    EXPECT_EQ(SQLInstallDriverEx(nullptr, nullptr, nullptr, 0, nullptr, ODBC_INSTALL_COMPLETE, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_PARAM_SEQUENCE});
}

TEST(DriverInstallation, OtherRequestsAndARelativePathInAreRefused) {
    const InstallerHome home;
    for (const WORD request : {WORD{0}, WORD{3}, WORD{65535}}) {
        EXPECT_EQ(install("PG\0Driver=a.so\0"s, nullptr, request).done, FALSE);
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_REQUEST_TYPE});
    }
    for (const char* path : {"lib", "./lib", "../lib", "~/lib"}) {
        EXPECT_EQ(install("PG\0Driver=a.so\0"s, path).done, FALSE);
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_PATH});
    }
    EXPECT_EQ(home.text(kSystemDrivers), "(absent)");
}

TEST(DriverInstallation, ACutPathOutIsRefusedBeforeAnythingChanges) {
    const InstallerHome home;
    for (const WORD request : {WORD{ODBC_INSTALL_INQUIRY}, WORD{ODBC_INSTALL_COMPLETE}})
        for (const WORD size : {WORD{1}, WORD{3}, WORD{8}}) {
            SCOPED_TRACE(size);
            const Told told = install("PG\0Driver=a.so\0"s, "/opt/lib", request, size);
            EXPECT_EQ(told.done, FALSE);
            EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_BUFF_LEN});
            EXPECT_EQ(told.path, std::string("/opt/lib").substr(0, size - 1U));
            EXPECT_EQ(told.length, 8);
        }
    EXPECT_EQ(home.text(kSystemDrivers), "(absent)");
    EXPECT_EQ(install("PG\0Driver=a.so\0"s, "/opt/lib", ODBC_INSTALL_COMPLETE, 9).done, TRUE);
}

TEST(DriverInstallation, NullLengthsAndCountsAreSkipped) {
    const InstallerHome home;
    char path[512];
    EXPECT_EQ(
        SQLInstallDriverEx("PG\0Driver=a.so\0", nullptr, path, sizeof path, nullptr, ODBC_INSTALL_COMPLETE, nullptr),
        TRUE);
}

TEST(DriverInstallation, WithoutTheRightItIsFalseWithTheReason) {
    const InstallerHome home;
    const TestVariable variable("ODBCSYSINI", home.file("absent"));
    EXPECT_EQ(install("PG\0Driver=a.so\0"s).done, FALSE);
    const std::string text = record(1);
    EXPECT_TRUE(text.starts_with("17: Driver \"PG\" was not written to " + home.file("absent/odbcinst.ini"))) << text;
    EXPECT_NE(text.find("No such file or directory"), std::string::npos) << text;
}

TEST(DriverInstallation, WTakesAndGivesUnits) {
    const InstallerHome home;
    SQLWCHAR path[64];
    WORD length = 0;
    EXPECT_EQ(SQLInstallDriverExW(wide(u"B\u00FCcher\0Driver=a.so\0k=\u00E9\0"), wide(u"/opt/\u00E9"), path, 64,
                                  &length, ODBC_INSTALL_COMPLETE, nullptr),
              TRUE)
        << record(1);
    EXPECT_EQ(length, 6);
    EXPECT_EQ(fromWide(path, 6), u"/opt/\u00E9");
    EXPECT_EQ(home.text(kSystemDrivers),
              "[ODBC Drivers]\nB\xC3\xBC"
              "cher=Installed\n\n[B\xC3\xBC"
              "cher]\nDriver=/opt/\xC3\xA9/a.so\nk=\xC3\xA9\nUsageCount=1\n");
    const char16_t half[] = {u'P', 0xD800, 0, u'D', 0, 0};
    EXPECT_EQ(SQLInstallDriverExW(wide(half), nullptr, path, 64, nullptr, ODBC_INSTALL_COMPLETE, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_STR});
}

TEST(TranslatorInstallation, IsTheSameInItsOwnListAndSetupMayBeAbsent) {
    const InstallerHome home;
    char path[512];
    WORD length = 0;
    DWORD count = 0;
    EXPECT_EQ(SQLInstallTranslatorEx("T\0Translator=/opt/t.so\0", nullptr, path, sizeof path, &length,
                                     ODBC_INSTALL_COMPLETE, &count),
              TRUE)
        << record(1);
    EXPECT_STREQ(path, "/opt");
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(home.text(kSystemDrivers),
              "[ODBC Translators]\nT=Installed\n\n[T]\nTranslator=/opt/t.so\nUsageCount=1\n");
    EXPECT_EQ(SQLInstallTranslator(nullptr, "T\0Translator=t.so\0Setup=ts.so\0", nullptr, path, sizeof path, nullptr,
                                   ODBC_INSTALL_COMPLETE, &count),
              TRUE)
        << record(1);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(value("T", "Setup", "odbcinst.ini"), "/opt/ts.so");
    EXPECT_EQ(SQLInstallTranslator("/media/odbc.inf", "T\0Translator=t.so\0", nullptr, path, sizeof path, nullptr,
                                   ODBC_INSTALL_COMPLETE, &count),
              FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_INF});
    EXPECT_EQ(
        SQLInstallTranslatorEx("T\0Driver=t.so\0", nullptr, path, sizeof path, nullptr, ODBC_INSTALL_COMPLETE, &count),
        FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_KEYWORD_VALUE});
    DWORD left = 99;
    EXPECT_EQ(SQLRemoveTranslator("t", &left), TRUE);
    EXPECT_EQ(left, 1U);
    EXPECT_EQ(SQLRemoveTranslatorW(wide(u"T"), &left), TRUE);
    EXPECT_EQ(left, 0U);
    EXPECT_EQ(listed("ODBC Translators", "odbcinst.ini"), "");
    EXPECT_EQ(listed("T", "odbcinst.ini"), "");
    EXPECT_EQ(SQLRemoveTranslator("T", &left), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_COMPONENT_NOT_FOUND});
}

TEST(DriverManagerCount, IsKeptInTheCoreSection) {
    const InstallerHome home;
    GuardedBuffer path(sizeof JX_LIBRARY_DIRECTORY);
    WORD length = 0;
    EXPECT_EQ(SQLInstallDriverManager(path.data(), sizeof JX_LIBRARY_DIRECTORY, &length), TRUE) << record(1);
    EXPECT_EQ(path.text(), JX_LIBRARY_DIRECTORY);
    EXPECT_EQ(length, sizeof JX_LIBRARY_DIRECTORY - 1);
    EXPECT_EQ(home.text(kSystemDrivers), "[ODBC Core]\nUsageCount=1\n");
    SQLWCHAR room[512];
    EXPECT_EQ(SQLInstallDriverManagerW(room, 512, nullptr), TRUE);
    EXPECT_EQ(SQLInstallDriverManager(path.data(), 3, &length), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_BUFF_LEN});
    EXPECT_EQ(SQLInstallDriverManager(nullptr, 0, nullptr), FALSE);
    EXPECT_EQ(home.text(kSystemDrivers), "[ODBC Core]\nUsageCount=2\n");
    DWORD count = 99;
    EXPECT_EQ(SQLRemoveDriverManager(&count), TRUE);
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(SQLRemoveDriverManager(nullptr), TRUE);
    EXPECT_EQ(SQLRemoveDriverManager(&count), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_COMPONENT_NOT_FOUND});
    EXPECT_EQ(listed(nullptr, "odbcinst.ini"), "");
}

}  // namespace
