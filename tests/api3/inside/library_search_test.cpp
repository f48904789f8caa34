// Where a setup library is looked for that is named without a directory.
#include <gtest/gtest.h>

#include <filesystem>

#include "installer_home.h"

using namespace jx::test;

namespace {

namespace fs = std::filesystem;

std::string setupCalls(const InstallerHome& home) {
    const TestVariable libraries("JX_TEST_LIBRARIES", home.path());
    const TestVariable calls("JX_SETUP_CALLS", home.file("calls"));
    EXPECT_EQ(SQLConfigDataSource(nullptr, ODBC_ADD_DSN, "PG", "DSN=Sales\0"), TRUE) << record(1);
    const std::string written = home.text("calls");
    return written == "(absent)" ? "" : written.substr(0, written.find(' '));
}

void copySetup(const InstallerHome& home, const char* which, const char* place) {
    fs::create_directories(fs::path(home.file(place)).parent_path());
    fs::copy_file(std::string(JX_SETUP_LIBRARIES "/libsetup_") + which + ".so", home.file(place));
}

TEST(LibrarySearch, ABareNameIsAFileInTheLibrarysOwnDirectoryOfDriversFirst) {
    const InstallerHome home{{kSystemDrivers, "[PG]\nDriver=pg.so\nSetup=setup.so\n"}};
    copySetup(home, "narrow", "odbc/setup.so");
    copySetup(home, "wide", "multiarch/setup.so");
    EXPECT_EQ(setupCalls(home), "ConfigDSN");
}

TEST(LibrarySearch, ThenInTheSystemsDirectoryOfDrivers) {
    const InstallerHome home{{kSystemDrivers, "[PG]\nDriver=pg.so\nSetup=setup.so\n"}};
    copySetup(home, "wide", "multiarch/setup.so");
    EXPECT_EQ(setupCalls(home), "ConfigDSNW");
}

TEST(LibrarySearch, AValueWithASlashIsAPathAndARelativeOneIsNotLoaded) {
    const InstallerHome home{{kSystemDrivers, "[PG]\nDriver=pg.so\nSetup=odbc/setup.so\n"}};
    copySetup(home, "narrow", "odbc/setup.so");
    const fs::path before = fs::current_path();
    fs::current_path(home.path());
    EXPECT_EQ(setupCalls(home), "") << "the generic routine did it";
    EXPECT_EQ(SQLConfigDriver(nullptr, ODBC_INSTALL_DRIVER, "PG", nullptr, nullptr, 0, nullptr), FALSE);
    EXPECT_NE(record(1).find("relative path"), std::string::npos) << record(1);
    fs::current_path(before);
}

TEST(LibrarySearch, ARegisteredDriversNameInAnyCaseMeansThatDriversLibrary) {
    const InstallerHome home;
    copySetup(home, "wide", "somewhere/both.so");
    home.put(kSystemDrivers,
             "[PG]\nDriver=pg.so\nSetup=OTHER driver\n[Other Driver]\nDriver=" + home.file("somewhere/both.so") + "\n");
    EXPECT_EQ(setupCalls(home), "ConfigDSNW");
}

TEST(LibrarySearch, WhatIsNowhereIsLeftToTheLoaderWhichSaysWhy) {
    const InstallerHome home{{kSystemDrivers, "[PG]\nDriver=pg.so\nSetup=libjx-not-there.so\n"}};
    EXPECT_EQ(setupCalls(home), "");
    EXPECT_EQ(SQLConfigDriver(nullptr, ODBC_INSTALL_DRIVER, "PG", nullptr, nullptr, 0, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_LOAD_LIB_FAILED});
    EXPECT_NE(record(1).find("libjx-not-there.so"), std::string::npos) << record(1);
}

}  // namespace
