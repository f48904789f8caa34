// The exported data, and the calls that do nothing.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <cstring>

namespace jx::test {

TEST(ExportedData, HoldsTheNamesOfTheConfigurationFiles) {
    EXPECT_STREQ(INS_ODBCINI_ODBC, "ODBC");
    EXPECT_STREQ(INS_ODBCINI_DS, "ODBC Data Sources");
    EXPECT_STREQ(INS_ODBCINI_DRIVER, "Driver");
    EXPECT_STREQ(INS_ODBCINI_DRIVERS, "ODBC Drivers");
    EXPECT_STREQ(INS_ODBCINI_DEFAULT, "Default");
    EXPECT_STREQ(INS_ODBCINI_FILENAME, ".odbc.ini");
    EXPECT_STREQ(INS_ODBCINST_FILENAME, ".odbcinst.ini");
    EXPECT_STREQ(INS_ODBCINST_TRANSLATORS, "ODBC Translators");
    EXPECT_STREQ(BJXHINST, "odbcinst");
}

TEST(ExportedData, BeginsWithNoDialogAndNoBuffers) {
    EXPECT_EQ(HWNDDSDLG, 0U);
    EXPECT_EQ(HWNDADDLG, 0U);
    EXPECT_EQ(inbuf, nullptr);
    EXPECT_EQ(outbuf, nullptr);
    EXPECT_EQ(bigbuf, nullptr);
}

TEST(ExportedData, HandlesAreAsWideAsAPointer) {
    static_assert(sizeof HWNDDSDLG == sizeof(void*) && sizeof HWNDADDLG == sizeof(void*));
    static_assert(sizeof inbuf == sizeof(void*) && sizeof outbuf == sizeof(void*) && sizeof bigbuf == sizeof(void*));
    static_assert(sizeof(HWND) == 4 && sizeof(WORD) == 2 && sizeof(DWORD) == 4 && sizeof(BOOL) == 4);
}

TEST(Decompress, DoesNothingAndAnswers1) {
    unsigned char source[] = "source";
    unsigned char target[] = "target";
    EXPECT_EQ(Decompress(1, source, target), 1U);
    EXPECT_EQ(Decompress(0, nullptr, nullptr), 1U);
    EXPECT_EQ(std::memcmp(source, "source", 7), 0);
    EXPECT_EQ(std::memcmp(target, "target", 7), 0);
}

}  // namespace jx::test
