// SQLValidDSN, SQLWriteDSNToIni, SQLRemoveDSNFromIni, SQLRemoveDefaultDataSource.
#include <gtest/gtest.h>

#include "installer_home.h"

using namespace jx::test;

namespace {

constexpr char kDrivers[] = "[PG]\nDriver=/opt/pg.so\nSetup=/opt/pgs.so\n[Bare]\nDriver=bare.so\n";

struct Name {
    const char* name;
    BOOL isValid;
};

TEST(DataSourceName, NewNamesAreCheckedAndAnInvalidOnePostsNothing) {
    const std::string longest(32, 'x');
    const std::string tooLong(33, 'x');
    std::string accents;
    for (int i = 0; i < 32; ++i)
        accents += "\xC3\xA9";
    const std::string oneMore = accents + "\xC3\xA9";
    const Name rows[] = {{"Sales", TRUE},
                         {"a", TRUE},
                         {"a b", TRUE},
                         {"Sales 2026", TRUE},
                         {"B\xC3\xBC"
                          "cher",
                          TRUE},
                         {longest.c_str(), TRUE},
                         {accents.c_str(), TRUE},
                         {"a#b", TRUE},
                         {"a/b", TRUE},
                         {"Default", TRUE},
                         {"", FALSE},
                         {tooLong.c_str(), FALSE},
                         {oneMore.c_str(), FALSE},
                         {" a", FALSE},
                         {"a ", FALSE},
                         {"#a", FALSE},
                         {"a\tb", FALSE},
                         {"a\nb", FALSE},
                         {"a\x7F", FALSE},
                         {"\xC2\x85", FALSE},
                         {"\xFF", FALSE},
                         {"a\xC3", FALSE},
                         {"ODBC", FALSE},
                         {"odbc data sources", FALSE},
                         {"ODBC Drivers", FALSE},
                         {"ODBC Translators", FALSE},
                         {"ODBC Core", FALSE},
                         {nullptr, FALSE}};
    for (const Name& row : rows) {
        SCOPED_TRACE(row.name == nullptr ? "(null)" : row.name);
        EXPECT_EQ(SQLValidDSN(row.name), row.isValid);
        EXPECT_EQ(recordCount(), 0);
    }
    for (const char each : std::string("[]{}(),;?*=!@\\")) {
        SCOPED_TRACE(each);
        EXPECT_EQ(SQLValidDSN((std::string("a") + each + "b").c_str()), FALSE);
    }
}

TEST(DataSourceName, WIsTheSame) {
    EXPECT_EQ(SQLValidDSNW(wide(u"B\u00FCcher")), TRUE);
    EXPECT_EQ(SQLValidDSNW(wide(u"a;b")), FALSE);
    const char16_t half[] = {u'a', 0xD800, 0};
    EXPECT_EQ(SQLValidDSNW(wide(half)), FALSE);
    EXPECT_EQ(SQLValidDSNW(nullptr), FALSE);
    EXPECT_EQ(recordCount(), 0);
}

TEST(DataSourceEntry, TheListGetsTheDriversNameAndTheSectionItsLibrary) {
    const InstallerHome home{{kSystemDrivers, kDrivers}};
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "PG"), TRUE) << record(1);
    EXPECT_EQ(home.text(kUserSources), "[ODBC Data Sources]\nSales=PG\n\n[Sales]\nDriver=/opt/pg.so\n");
    EXPECT_EQ(SQLWriteDSNToIniW(wide(u"B\u00FC"), wide(u"Bare")), TRUE) << record(1);
    EXPECT_EQ(value("B\xC3\xBC", "Driver"), "Bare") << "the name where no path is registered";
}

TEST(DataSourceEntry, AnOlderSectionIsReplacedWithAllItsKeys) {
    const InstallerHome home{
        {kSystemDrivers, kDrivers},
        {kUserSources, "[ODBC Data Sources]\nSALES=Old\nOther=PG\n\n[sales]\nServer=a\nPWD=x\n\n[Other]\n"}};
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "PG"), TRUE);
    EXPECT_EQ(listed("ODBC Data Sources"), "Other|Sales|");
    EXPECT_EQ(listed("Sales"), "Driver|");
}

TEST(DataSourceEntry, TheDriversNameIsTakenInAnyCase) {
    const InstallerHome home{{kSystemDrivers, kDrivers}};
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "pg"), TRUE) << record(1);
    EXPECT_EQ(value("Sales", "Driver"), "/opt/pg.so");
}

TEST(DataSourceEntry, WhatIsRefusedChangesNothing) {
    const InstallerHome home{{kSystemDrivers, kDrivers}};
    struct Row {
        const char* name;
        const char* driver;
        DWORD code;
    };
    for (const Row& row :
         {Row{"a;b", "PG", ODBC_ERROR_INVALID_DSN}, Row{"", "PG", ODBC_ERROR_INVALID_DSN},
          Row{nullptr, "PG", ODBC_ERROR_INVALID_DSN}, Row{"ODBC", "PG", ODBC_ERROR_INVALID_DSN},
          Row{"Sales", "Unknown", ODBC_ERROR_INVALID_NAME}, Row{"Sales", "", ODBC_ERROR_INVALID_NAME},
          Row{"Sales", nullptr, ODBC_ERROR_INVALID_NAME}, Row{"Sales", "ODBC Drivers", ODBC_ERROR_INVALID_NAME},
          Row{"Sales", "Default", ODBC_ERROR_INVALID_NAME}, Row{"S\xFF", "PG", ODBC_ERROR_INVALID_STR},
          Row{"Sales", "P\xFF", ODBC_ERROR_INVALID_STR}}) {
        SCOPED_TRACE(row.name == nullptr ? "(null)" : row.name);
        EXPECT_EQ(SQLWriteDSNToIni(row.name, row.driver), FALSE);
        EXPECT_EQ(firstCode(), row.code) << record(1);
        EXPECT_EQ(home.text(kUserSources), "(absent)");
    }
}

TEST(DataSourceEntry, TheModeChoosesTheFile) {
    const InstallerHome home{{kSystemDrivers, kDrivers}};
    SQLSetConfigMode(ODBC_SYSTEM_DSN);
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "PG"), TRUE);
    EXPECT_EQ(home.text(kUserSources), "(absent)");
    EXPECT_EQ(home.text(kSystemSources), "[ODBC Data Sources]\nSales=PG\n\n[Sales]\nDriver=/opt/pg.so\n");
    SQLSetConfigMode(ODBC_BOTH_DSN);
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "PG"), FALSE) << "it would hide the system's";
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_REQUEST_FAILED});
    EXPECT_EQ(SQLRemoveDSNFromIni("Sales"), FALSE);
    SQLSetConfigMode(ODBC_SYSTEM_DSN);
    EXPECT_EQ(SQLRemoveDSNFromIni("Sales"), TRUE);
    EXPECT_EQ(listed(nullptr), "ODBC Data Sources|");
}

TEST(DataSourceEntry, OldNamesOfAnyLengthAndKindAreRemoved) {
    const std::string name(300, 'x');
    const InstallerHome home{
        {kUserSources, "[ODBC Data Sources]\n" + name + "=PG\na;b=PG\n\n[" + name + "]\nk=v\n[a;b]\nk=v\n"}};
    EXPECT_EQ(SQLRemoveDSNFromIni(name.c_str()), TRUE) << record(1);
    EXPECT_EQ(SQLRemoveDSNFromIni("A;B"), TRUE) << record(1);
    EXPECT_EQ(SQLRemoveDSNFromIni("absent"), TRUE);
    EXPECT_EQ(listed(nullptr), "ODBC Data Sources|");
    EXPECT_EQ(listed("ODBC Data Sources"), "");
}

TEST(DataSourceEntry, NamesThatNoFileHoldsAndReservedOnesAreNotRemoved) {
    const InstallerHome home{{kUserSources, "[ODBC]\nTrace=1\n[ODBC Data Sources]\nSales=PG\n"}};
    const std::string before = home.text(kUserSources);
    for (const char* name :
         {"", "a\nb", "ODBC", "odbc data sources", "ODBC Drivers", "ODBC Translators", "ODBC Core"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(SQLRemoveDSNFromIni(name), FALSE);
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_DSN}) << record(1);
    }
    EXPECT_EQ(SQLRemoveDSNFromIni(nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_DSN});
    EXPECT_EQ(home.text(kUserSources), before);
}

TEST(DataSourceEntry, TheDefaultDataSourceIsNotListedAndItsDriverStandsWithTheDrivers) {
    const InstallerHome home{{kSystemDrivers, kDrivers}};
    EXPECT_EQ(SQLWriteDSNToIni("default", "PG"), TRUE) << record(1);
    EXPECT_EQ(home.text(kUserSources), "[default]\nDriver=/opt/pg.so\n");
    EXPECT_EQ(value("Default", "Driver", "odbcinst.ini"), "PG");
    EXPECT_EQ(SQLRemoveDefaultDataSource(), TRUE) << record(1);
    EXPECT_EQ(listed(nullptr), "");
    EXPECT_EQ(value("Default", "Driver", "odbcinst.ini"), "(default)");
    EXPECT_EQ(SQLRemoveDefaultDataSource(), TRUE) << "without one too";
    char room[64];
    WORD length = 0;
    EXPECT_EQ(SQLGetInstalledDrivers(room, sizeof room, &length), TRUE);
    EXPECT_EQ(std::string(room, length), std::string("PG\0Bare\0", 8)) << "Default is no driver";
}

}  // namespace
