// The error records: SQLInstallerError and SQLPostInstallerError.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "guarded_buffer.h"
#include "installer_home.h"

using namespace jx::test;

namespace {

// An empty queue.
void begin() {
    SQLValidDSN("Sales");
}

TEST(InstallerError, RecordsOneToEightInTheirOrder) {
    begin();
    for (int number = 1; number <= 8; ++number)
        EXPECT_EQ(SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, std::to_string(number).c_str()), SQL_SUCCESS);
    EXPECT_EQ(SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "9"), SQL_ERROR) << "the first 8 stay";
    for (WORD number = 1; number <= 8; ++number)
        EXPECT_EQ(record(number), "1: " + std::to_string(number));
    EXPECT_EQ(record(9), "");
    EXPECT_EQ(recordCount(), 8) << "reading leaves them";
}

TEST(InstallerError, EachFunctionEmptiesTheQueueExceptTheTwo) {
    begin();
    SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "a");
    SQLInstallerError(1, nullptr, nullptr, 0, nullptr);
    SQLPostInstallerErrorW(ODBC_ERROR_INVALID_STR, wide(u"b\u00E9"));
    EXPECT_EQ(record(1), "1: a");
    EXPECT_EQ(record(2), "4: b\xC3\xA9");
    begin();
    EXPECT_EQ(recordCount(), 0);
}

TEST(InstallerError, PastTheEndIsNoDataWithLengthZeroAndAnEmptyText) {
    begin();
    for (const WORD number : {WORD{1}, WORD{8}, WORD{9}, WORD{65535}}) {
        SCOPED_TRACE(number);
        GuardedBuffer buffer(8);
        WORD length = 77;
        DWORD code = 77;
        EXPECT_EQ(SQLInstallerError(number, &code, buffer.data(), 8, &length), SQL_NO_DATA);
        EXPECT_EQ(length, 0);
        EXPECT_EQ(buffer.text(), "");
        EXPECT_EQ(buffer.behind(1), "???????");
    }
}

TEST(InstallerError, RecordZeroIsAnErrorAndWritesNothing) {
    begin();
    SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "a");
    GuardedBuffer buffer(8);
    WORD length = 77;
    DWORD code = 77;
    EXPECT_EQ(SQLInstallerError(0, &code, buffer.data(), 8, &length), SQL_ERROR);
    EXPECT_TRUE(buffer.isUntouched());
    EXPECT_EQ(length, 77);
    EXPECT_EQ(code, 77U);
}

struct Cut {
    WORD size;
    const char* text;
    RETCODE result;
};

TEST(InstallerError, ACutTextGivesInfoAndTheFullLength) {
    begin();
    SQLPostInstallerError(ODBC_ERROR_INVALID_DSN,
                          "ab\xC3\xA9"
                          "c");
    for (const Cut& row : {Cut{1, "", SQL_SUCCESS_WITH_INFO}, Cut{3, "ab", SQL_SUCCESS_WITH_INFO},
                           Cut{4, "ab", SQL_SUCCESS_WITH_INFO}, Cut{5, "ab\xC3\xA9", SQL_SUCCESS_WITH_INFO},
                           Cut{6,
                               "ab\xC3\xA9"
                               "c",
                               SQL_SUCCESS},
                           Cut{7,
                               "ab\xC3\xA9"
                               "c",
                               SQL_SUCCESS}}) {
        SCOPED_TRACE(row.size);
        GuardedBuffer buffer(row.size);
        WORD length = 0;
        DWORD code = 0;
        EXPECT_EQ(SQLInstallerError(1, &code, buffer.data(), row.size, &length), row.result);
        EXPECT_EQ(buffer.text(), row.text);
        EXPECT_EQ(length, 5);
        EXPECT_EQ(code, DWORD{ODBC_ERROR_INVALID_DSN});
        EXPECT_TRUE(buffer.isGuarded());
    }
}

TEST(InstallerError, ANullTextPointerOrSizeZeroStillGivesCodeAndLength) {
    begin();
    SQLPostInstallerError(ODBC_ERROR_INVALID_DSN, "abc");
    WORD length = 0;
    DWORD code = 0;
    EXPECT_EQ(SQLInstallerError(1, &code, nullptr, 512, &length), SQL_SUCCESS);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(code, DWORD{ODBC_ERROR_INVALID_DSN});
    GuardedBuffer buffer(4);
    EXPECT_EQ(SQLInstallerError(1, nullptr, buffer.data(), 0, &length), SQL_SUCCESS_WITH_INFO);
    EXPECT_TRUE(buffer.isUntouched());
    EXPECT_EQ(SQLInstallerError(1, nullptr, nullptr, 0, nullptr), SQL_SUCCESS);
}

TEST(InstallerError, WCountsUnits) {
    begin();
    SQLPostInstallerError(ODBC_ERROR_INVALID_DSN,
                          "a\xF0\x9F\x98\x80"
                          "b");
    SQLWCHAR room[8] = {};
    WORD length = 0;
    EXPECT_EQ(SQLInstallerErrorW(1, nullptr, room, 5, &length), SQL_SUCCESS);
    EXPECT_EQ(length, 4);
    EXPECT_EQ(fromWide(room, 4), u"a\U0001F600b");
    EXPECT_EQ(SQLInstallerErrorW(1, nullptr, room, 3, &length), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(fromWide(room, 2), std::u16string(u"a\0", 2)) << "a pair is not cut";
}

TEST(InstallerError, CodesOneToTwentyThreeCanBePostedAndNoOther) {
    for (DWORD code = 0; code <= 30; ++code) {
        SCOPED_TRACE(code);
        begin();
        const bool isCode = code >= 1 && code <= 23;
        EXPECT_EQ(SQLPostInstallerError(code, nullptr), isCode ? SQL_SUCCESS : SQL_ERROR);
        EXPECT_EQ(recordCount(), isCode ? 1 : 0);
        if (isCode) {
            EXPECT_GT(record(1).size(), 8U) << "a null text is the code's own sentence";
        }
    }
    EXPECT_EQ(SQLPostInstallerError(0xFFFFFFFF, "x"), SQL_ERROR);
}

TEST(InstallerError, ATextThatIsNoTextIsNotPosted) {
    begin();
    EXPECT_EQ(SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "\xFF"), SQL_ERROR);
    const char16_t half[] = {0xD800, u'a', 0};
    EXPECT_EQ(SQLPostInstallerErrorW(ODBC_ERROR_GENERAL_ERR, wide(half)), SQL_ERROR);
    EXPECT_EQ(recordCount(), 0);
}

TEST(InstallerError, ALongTextIsToldAsFarAsALengthGoes) {
    begin();
    SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, std::string(70'000, 'x').c_str());
    WORD length = 0;
    std::vector<char> room(65'535);
    EXPECT_EQ(SQLInstallerError(1, nullptr, room.data(), 65'535, &length), SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(length, 65'535);
}

TEST(InstallerError, EachThreadHasAQueueOfItsOwn) {
    begin();
    SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "mine");
    std::thread([] {
        EXPECT_EQ(recordCount(), 0);
        SQLPostInstallerError(ODBC_ERROR_INVALID_DSN, "its own");
        EXPECT_EQ(record(1), "9: its own");
    }).join();
    EXPECT_EQ(record(1), "1: mine");
    EXPECT_EQ(recordCount(), 1);
}

TEST(InstallerError, AForkedChildHasTheQueueOfItsThreadAndChangesOnlyItsOwn) {
    begin();
    SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "before the fork");
    const pid_t child = fork();
    if (child == 0) {
        const bool inherited = record(1) == "1: before the fork";
        SQLValidDSN("Sales");
        _exit(inherited && recordCount() == 0 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(recordCount(), 1);
}

}  // namespace
