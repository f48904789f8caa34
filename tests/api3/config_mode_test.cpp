// SQLGetConfigMode and SQLSetConfigMode.
#include <gtest/gtest.h>

#include <thread>

#include "installer_home.h"

using namespace jx::test;

namespace {

UWORD mode() {
    UWORD mode = 99;
    EXPECT_EQ(SQLGetConfigMode(&mode), TRUE);
    return mode;
}

TEST(ConfigMode, IsOneValueForTheProcess) {
    const InstallerHome home;
    EXPECT_EQ(mode(), ODBC_BOTH_DSN);
    EXPECT_EQ(SQLSetConfigMode(ODBC_SYSTEM_DSN), TRUE);
    std::thread([] { EXPECT_EQ(mode(), ODBC_SYSTEM_DSN); }).join();
    std::thread([] { SQLSetConfigMode(ODBC_USER_DSN); }).join();
    EXPECT_EQ(mode(), ODBC_USER_DSN);
}

TEST(ConfigMode, OtherValuesAndNoPlaceAreRefused) {
    const InstallerHome home;
    for (const UWORD other : {UWORD{3}, UWORD{255}, UWORD{65535}}) {
        EXPECT_EQ(SQLSetConfigMode(other), FALSE);
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_PARAM_SEQUENCE});
        EXPECT_EQ(mode(), ODBC_BOTH_DSN);
    }
    EXPECT_EQ(SQLGetConfigMode(nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_PARAM_SEQUENCE});
}

TEST(Screens, NeedAWindowAndAHost) {
    const HWND window = reinterpret_cast<HWND>(&mode);
    char text[8];
    SQLWCHAR units[8];
    const auto expect = [](BOOL result, DWORD code) {
        EXPECT_EQ(result, FALSE);
        EXPECT_EQ(firstCode(), code);
    };
    expect(SQLCreateDataSource(nullptr, "Sales"), ODBC_ERROR_INVALID_HWND);
    expect(SQLCreateDataSource(window, "Sales"), ODBC_ERROR_REQUEST_FAILED);
    expect(SQLCreateDataSourceW(nullptr, wide(u"Sales")), ODBC_ERROR_INVALID_HWND);
    expect(SQLManageDataSources(nullptr), ODBC_ERROR_INVALID_HWND);
    expect(SQLManageDataSources(window), ODBC_ERROR_REQUEST_FAILED);
    expect(SQLGetTranslator(nullptr, text, 8, nullptr, text, 8, nullptr, nullptr), ODBC_ERROR_INVALID_HWND);
    expect(SQLGetTranslator(window, text, 8, nullptr, text, 8, nullptr, nullptr), ODBC_ERROR_REQUEST_FAILED);
    expect(SQLGetTranslatorW(window, units, 8, nullptr, units, 8, nullptr, nullptr), ODBC_ERROR_REQUEST_FAILED);
}

}  // namespace
