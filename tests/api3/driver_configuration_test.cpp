// SQLConfigDriver.
#include <gtest/gtest.h>

#include "guarded_buffer.h"
#include "setup_home.h"

using namespace jx::test;

namespace {

BOOL configure(WORD request, const char* driver, const char* text) {
    return SQLConfigDriver(nullptr, request, driver, text, nullptr, 0, nullptr);
}

TEST(DriverConfiguration, InstallRemoveAndTheDriversOwnRequestsGoToItsRoutine) {
    const SetupHome home;
    EXPECT_EQ(configure(ODBC_INSTALL_DRIVER, "Narrow", nullptr), TRUE);
    EXPECT_EQ(configure(ODBC_REMOVE_DRIVER, "narrow", "a=b"), TRUE);
    EXPECT_EQ(configure(101, "Wide", "own"), TRUE);
    EXPECT_EQ(configure(65535, "Narrow", ""), TRUE);
    EXPECT_EQ(SQLConfigDriverW(nullptr, 102, wide(u"Wide"), wide(u"w"), nullptr, 0, nullptr), TRUE);
    EXPECT_EQ(home.calls(),
              "ConfigDriver 1 Narrow mode 0: (null)\nConfigDriver 2 narrow mode 0: a=b\nConfigDriverW 101 Wide mode 0: "
              "own\nConfigDriver 65535 Narrow mode 0: \nConfigDriverW 102 Wide mode 0: w\n");
}

TEST(DriverConfiguration, ADriverWithoutARoutineIsNoError) {
    const SetupHome home;
    for (const char* driver : {"None", "DsnOnly", "Plain"})
        EXPECT_EQ(configure(ODBC_INSTALL_DRIVER, driver, nullptr), TRUE) << driver << record(1);
}

TEST(DriverConfiguration, TheTimeoutIsStoredWhereTheDriverIs) {
    const SetupHome home;
    EXPECT_EQ(configure(ODBC_CONFIG_DRIVER, "Plain", "CPTimeout=60"), TRUE) << record(1);
    EXPECT_EQ(value("Plain", "CPTimeout", "odbcinst.ini"), "60");
    EXPECT_EQ(configure(ODBC_CONFIG_DRIVER, "Plain", " cptimeout = 0 "), TRUE) << record(1);
    EXPECT_EQ(value("Plain", "CPTimeout", "odbcinst.ini"), "0");
    home.put(kUserDrivers, "[Plain]\nDriver=/opt/mine.so\n");
    EXPECT_EQ(SQLConfigDriverA(nullptr, ODBC_CONFIG_DRIVER, "Plain", "CPTimeout=7", nullptr, 0, nullptr), TRUE);
    EXPECT_EQ(home.text(kUserDrivers), "[Plain]\nDriver=/opt/mine.so\nCPTimeout=7\n");
}

TEST(DriverConfiguration, WhatIsRefused) {
    const SetupHome home;
    struct Row {
        WORD request;
        const char* driver;
        const char* text;
        DWORD code;
    };
    const Row rows[] = {{0, "Plain", nullptr, ODBC_ERROR_INVALID_REQUEST_TYPE},
                        {4, "Plain", nullptr, ODBC_ERROR_INVALID_REQUEST_TYPE},
                        {100, "Plain", nullptr, ODBC_ERROR_INVALID_REQUEST_TYPE},
                        {1, "Unknown", nullptr, ODBC_ERROR_COMPONENT_NOT_FOUND},
                        {1, "ODBC Core", nullptr, ODBC_ERROR_COMPONENT_NOT_FOUND},
                        {1, "", nullptr, ODBC_ERROR_INVALID_NAME},
                        {1, nullptr, nullptr, ODBC_ERROR_INVALID_NAME},
                        {1, "Missing", nullptr, ODBC_ERROR_LOAD_LIB_FAILED},
                        {1, "P\xFF", nullptr, ODBC_ERROR_INVALID_STR},
                        {3, "Plain", nullptr, ODBC_ERROR_INVALID_KEYWORD_VALUE},
                        {3, "Plain", "", ODBC_ERROR_INVALID_KEYWORD_VALUE},
                        {3, "Plain", "CPTimeout", ODBC_ERROR_INVALID_KEYWORD_VALUE},
                        {3, "Plain", "CPTimeout=", ODBC_ERROR_INVALID_KEYWORD_VALUE},
                        {3, "Plain", "CPTimeout=-1", ODBC_ERROR_INVALID_KEYWORD_VALUE},
                        {3, "Plain", "CPTimeout=1x", ODBC_ERROR_INVALID_KEYWORD_VALUE},
                        {3, "Plain", "CPTimeout=99999999999", ODBC_ERROR_INVALID_KEYWORD_VALUE},
                        {3, "Plain", "Other=1", ODBC_ERROR_INVALID_KEYWORD_VALUE}};
    const std::string before = home.text(kSystemDrivers);
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.request) + (row.text == nullptr ? "" : row.text));
        EXPECT_EQ(configure(row.request, row.driver, row.text), FALSE);
        EXPECT_EQ(firstCode(), row.code) << record(1);
    }
    EXPECT_EQ(home.text(kSystemDrivers), before);
}

TEST(DriverConfiguration, ARoutineThatFailsGivesItsRecordsOrOneOfOurs) {
    const SetupHome home("post fail");
    EXPECT_EQ(configure(ODBC_INSTALL_DRIVER, "Narrow", nullptr), FALSE);
    EXPECT_EQ(record(1), "8: the routine's own reason");
    EXPECT_EQ(recordCount(), 1);
}

TEST(DriverConfiguration, TheMessageComesInTheFormThatIsAskedFor) {
    const SetupHome home("message");
    for (const char* driver : {"Narrow", "Wide"}) {
        SCOPED_TRACE(driver);
        GuardedBuffer message(16);
        WORD length = 0;
        EXPECT_EQ(SQLConfigDriver(nullptr, 101, driver, nullptr, message.data(), 16, &length), TRUE);
        EXPECT_EQ(message.text(), "\xC3\xA9k");
        EXPECT_EQ(length, 3);
        EXPECT_TRUE(message.isGuarded());
        SQLWCHAR room[16];
        const char16_t* name = *driver == 'N' ? u"Narrow" : u"Wide";
        EXPECT_EQ(SQLConfigDriverW(nullptr, 101, wide(name), nullptr, room, 16, &length), TRUE);
        EXPECT_EQ(length, 2);
        EXPECT_EQ(fromWide(room, 2), u"\u00E9k");
    }
}

}  // namespace
