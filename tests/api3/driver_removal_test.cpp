// SQLRemoveDriver.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "setup_home.h"

using namespace jx::test;

namespace {

TEST(DriverRemoval, ACountAboveOneIsLoweredAndNothingElseHappens) {
    const SetupHome home;
    home.put(kSystemDrivers, "[ODBC Drivers]\nPG=Installed\n\n[PG]\nDriver=/opt/pg.so\nUsageCount=3\n");
    DWORD count = 99;
    EXPECT_EQ(SQLRemoveDriver("pg", TRUE, &count), TRUE) << record(1);
    EXPECT_EQ(count, 2U);
    EXPECT_EQ(home.text(kSystemDrivers), "[ODBC Drivers]\nPG=Installed\n\n[PG]\nDriver=/opt/pg.so\nUsageCount=2\n");
}

TEST(DriverRemoval, AtZeroSectionAndListEntryGoAndNoFileIsDeleted) {
    const SetupHome home;
    home.put("pg.so", "a library");
    for (const std::string& count : {std::string("UsageCount=1\n"), std::string(), std::string("UsageCount=x\n")}) {
        home.put(kSystemDrivers, "[ODBC Drivers]\nPG=Installed\nOther=Installed\n\n[pg]\nDriver=" + home.file("pg.so") +
                                     "\n" + count + "\n[Other]\nDriver=x\n");
        DWORD left = 99;
        EXPECT_EQ(SQLRemoveDriver("Pg", FALSE, &left), TRUE) << record(1);
        EXPECT_EQ(left, 0U);
        EXPECT_EQ(home.text(kSystemDrivers), "[ODBC Drivers]\nOther=Installed\n\n[Other]\nDriver=x\n");
    }
    EXPECT_EQ(home.text("pg.so"), "a library");
}

TEST(DriverRemoval, TheSetupLibraryIsAskedAtZero) {
    const SetupHome home;
    EXPECT_EQ(SQLRemoveDriver("Narrow", FALSE, nullptr), TRUE) << record(1);
    EXPECT_EQ(SQLRemoveDriverW(wide(u"Wide"), FALSE, nullptr), TRUE) << record(1);
    EXPECT_EQ(home.calls(), "ConfigDriver 2 Narrow mode 0: (null)\nConfigDriverW 2 Wide mode 0: (null)\n");
    for (const char* driver : {"None", "DsnOnly", "Missing", "Plain"})
        EXPECT_EQ(SQLRemoveDriver(driver, FALSE, nullptr), TRUE) << driver << record(1);
    EXPECT_EQ(listed(nullptr, "odbcinst.ini"), "");
}

TEST(DriverRemoval, ASetupLibraryThatRefusesKeepsEverythingAsItWas) {
    for (const char* does : {"fail", "post fail"}) {
        const SetupHome home(does);
        const std::string before = home.text(kSystemDrivers);
        home.put(kUserSources, "[ODBC Data Sources]\nSales=Narrow\n[Sales]\nDriver=/opt/narrow.so\n");
        DWORD count = 99;
        EXPECT_EQ(SQLRemoveDriver("Narrow", TRUE, &count), FALSE);
        EXPECT_EQ(record(1), *does == 'p' ? "8: the routine's own reason"
                                          : "11: ConfigDriver of driver \"Narrow\" failed and gave no reason.");
        EXPECT_EQ(home.text(kSystemDrivers), before);
        EXPECT_EQ(value("Sales", "Driver"), "/opt/narrow.so");
        EXPECT_EQ(count, 99U);
    }
}

TEST(DriverRemoval, ADriverThatIsInstalledAgainMeanwhileStays) {
    const SetupHome home("install");
    DWORD count = 99;
    EXPECT_EQ(SQLRemoveDriver("Narrow", FALSE, &count), TRUE) << record(1);
    EXPECT_EQ(count, 1U);
    EXPECT_EQ(value("Narrow", "UsageCount", "odbcinst.ini"), "1");
    EXPECT_EQ(value("Narrow", "Driver", "odbcinst.ini"), "/opt/narrow.so");
}

TEST(DriverRemoval, AnExceptionOfTheRoutinePassesThroughAndTheCountIsPutBack) {
    const SetupHome home("throw");
    const std::string before = home.text(kSystemDrivers);
    EXPECT_THROW(SQLRemoveDriver("Narrow", FALSE, nullptr), std::runtime_error);
    EXPECT_EQ(home.text(kSystemDrivers), before);
}

TEST(DriverRemoval, WithDataSourcesThoseOfBothScopesGoAndOthersStay) {
    const SetupHome home;
    home.put(kUserSources,
             "[ODBC Data Sources]\nByList=plain\nKept=Narrow\n\n[ByList]\nk=1\n\n[ByName]\nDriver=PLAIN\n\n[ByPath]\n"
             "Driver=/opt/plain.so\n\n[Kept]\nDriver=/opt/narrow.so\n");
    home.put(kSystemSources, "[ODBC Data Sources]\nSystems=Plain\n\n[Systems]\nDriver=/opt/plain.so\n");
    EXPECT_EQ(SQLRemoveDriver("Plain", TRUE, nullptr), TRUE) << record(1);
    EXPECT_EQ(recordCount(), 0);
    EXPECT_EQ(home.text(kUserSources), "[ODBC Data Sources]\nKept=Narrow\n\n[Kept]\nDriver=/opt/narrow.so\n");
    EXPECT_EQ(home.text(kSystemSources), "[ODBC Data Sources]\n\n");
}

TEST(DriverRemoval, WithoutTheFlagDataSourcesStay) {
    const SetupHome home;
    home.put(kUserSources, "[Sales]\nDriver=/opt/plain.so\n");
    EXPECT_EQ(SQLRemoveDriver("Plain", FALSE, nullptr), TRUE);
    EXPECT_EQ(home.text(kUserSources), "[Sales]\nDriver=/opt/plain.so\n");
}

TEST(DriverRemoval, DataSourcesGoThroughConfigDsnWhereItLoads) {
    const SetupHome home("remove");
    home.put(kUserSources, "[Users]\nDriver=/opt/dsn_only.so\n");
    home.put(kSystemSources, "[Systems]\nDriver=/opt/dsn_only.so\n");
    EXPECT_EQ(SQLRemoveDriver("DsnOnly", TRUE, nullptr), TRUE) << record(1);
    EXPECT_EQ(home.calls(), "ConfigDSN 3 DsnOnly mode 1: DSN=Users\nConfigDSN 3 DsnOnly mode 2: DSN=Systems\n");
    EXPECT_EQ(listed(nullptr), "");
}

TEST(DriverRemoval, DataSourcesThatCannotBeRemovedAreToldOneRecordAFile) {
    const SetupHome home;
    home.put(kSystemSources, "[A]\nDriver=/opt/plain.so\n[B]\nDriver=Plain\n");
    home.put(kUserSources, "[C]\nDriver=Plain\n");
    SQLSetConfigMode(ODBC_USER_DSN);
    EXPECT_EQ(SQLRemoveDriver("Plain", TRUE, nullptr), TRUE);
    EXPECT_EQ(recordCount(), 1);
    const std::string text = record(1);
    EXPECT_TRUE(text.starts_with("20: ")) << text;
    for (const std::string& part : {std::string("\"A\", \"B\""), home.file(kSystemSources)})
        EXPECT_NE(text.find(part), std::string::npos) << text;
    EXPECT_EQ(home.text(kUserSources), "");
}

TEST(DriverRemoval, AFileThatCannotBeReadIsToldToo) {
    const SetupHome home;
    std::filesystem::create_directory(home.file(kUserSources));
    home.put(kSystemSources, "[B]\nDriver=Plain\n");
    EXPECT_EQ(SQLRemoveDriver("Plain", TRUE, nullptr), TRUE);
    EXPECT_EQ(recordCount(), 1);
    EXPECT_NE(record(1).find(home.file(kUserSources)), std::string::npos) << record(1);
    EXPECT_EQ(home.text(kSystemSources), "");
}

TEST(DriverRemoval, ADriverThatTheSystemDoesNotHaveIsNotFound) {
    const SetupHome home;
    home.put(kUserDrivers, "[Users]\nDriver=/opt/u.so\n");
    for (const char* name : {"Absent", "Users", "ODBC Drivers", "Default", "ODBC"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(SQLRemoveDriver(name, FALSE, nullptr), FALSE);
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_COMPONENT_NOT_FOUND}) << record(1);
    }
    EXPECT_EQ(SQLRemoveDriver("Users", FALSE, nullptr), FALSE);
    EXPECT_NE(record(1).find("it stands in the user's file " + home.file(kUserDrivers)), std::string::npos)
        << record(1);
    for (const char* name : {"", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(SQLRemoveDriver(name, FALSE, nullptr), FALSE);
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_NAME});
    }
    EXPECT_EQ(SQLRemoveDriver("\xFF", FALSE, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_STR});
}

TEST(DriverRemoval, TheReferencesGoTheSameWayAsTheirSection) {
    const SetupHome home;
    home.put(kUserSources, "[Sales]\nDriver=Plain\nPWD@file=/x\n");
    EXPECT_EQ(SQLRemoveDriver("Plain", TRUE, nullptr), TRUE);
    EXPECT_EQ(home.text(kUserSources), "");
}

}  // namespace
