// SQLReadFileDSN and SQLWriteFileDSN.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "guarded_buffer.h"
#include "installer_home.h"

using namespace jx::test;

namespace {

std::string read(const std::string& file, const char* section, const char* key) {
    char room[256] = "?";
    return SQLReadFileDSN(file.c_str(), section, key, room, sizeof room, nullptr) == TRUE ? room : record(1);
}

TEST(FileDataSource, TheSuffixIsAppendedWhenItIsMissing) {
    const InstallerHome home;
    for (const char* name : {"a", "a.dsn", "a.DSN", "b.txt"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(SQLWriteFileDSN(home.file(name).c_str(), "ODBC", "DRIVER", "PG"), TRUE) << record(1);
        EXPECT_EQ(read(home.file(name), "odbc", "driver"), "PG");
    }
    EXPECT_EQ(home.text("a.dsn"), "[ODBC]\nDRIVER=PG\n");
    EXPECT_EQ(home.text("a.DSN"), "[ODBC]\nDRIVER=PG\n");
    EXPECT_EQ(home.text("b.txt.dsn"), "[ODBC]\nDRIVER=PG\n");
    EXPECT_EQ(home.text("a"), "(absent)");
}

TEST(FileDataSource, RelativeNamesLieInTheSystemsDirectoryNeverInTheCurrentOne) {
    const InstallerHome home;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(home.path());
    const mode_t mask = umask(0);
    EXPECT_EQ(SQLWriteFileDSN("Sales", "ODBC", "DRIVER", "PG"), TRUE) << record(1);
    umask(mask);
    EXPECT_EQ(home.text("system/ODBCDataSources/Sales.dsn"), "[ODBC]\nDRIVER=PG\n");
    EXPECT_EQ(home.text("Sales.dsn"), "(absent)");
    EXPECT_EQ(read("Sales.dsn", "ODBC", "DRIVER"), "PG");
    for (const char* name : {"../Sales", "a/../../Sales", "..", "a/..", "", "./../x"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(SQLWriteFileDSN(name, "ODBC", "DRIVER", "PG"), FALSE);
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_PATH});
        EXPECT_TRUE(read(name, "ODBC", "DRIVER").starts_with("12: "));
    }
    EXPECT_EQ(SQLWriteFileDSN(nullptr, "ODBC", "DRIVER", "PG"), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_PATH});
    std::filesystem::current_path(before);
    struct stat state {};
    ASSERT_EQ(stat(home.file("system/ODBCDataSources").c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 07777U, 0755U);
    ASSERT_EQ(stat(home.file("system/ODBCDataSources/Sales.dsn").c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 07777U, 0600U);
}

TEST(FileDataSource, NullsGiveKeysAndSectionsWithSemicolonsBetweenAndNoneBehindTheLast) {
    const InstallerHome home{{"a.dsn", "[ODBC]\nDRIVER=PG\nSERVER=db\nPORT=1\n[Other]\nk=v\n[Empty]\n"}};
    EXPECT_EQ(read(home.file("a"), "ODBC", nullptr), "DRIVER;SERVER;PORT");
    EXPECT_EQ(read(home.file("a"), nullptr, nullptr), "ODBC;Other;Empty");
    EXPECT_EQ(read(home.file("a"), "Empty", nullptr), "");
    EXPECT_TRUE(read(home.file("a"), nullptr, "k").starts_with("5: "));
}

TEST(FileDataSource, WhatIsNotThereIsAFailureThatNamesIt) {
    const InstallerHome home{{"a.dsn", "[ODBC]\nDRIVER=PG\n"}};
    EXPECT_EQ(read(home.file("a"), "ODBC", "PORT"),
              "11: The key \"PORT\" of section \"ODBC\" is not in " + home.file("a.dsn") + ".");
    EXPECT_EQ(read(home.file("a"), "No", nullptr), "11: Section \"No\" is not in " + home.file("a.dsn") + ".");
    EXPECT_TRUE(read(home.file("absent"), "ODBC", "DRIVER").starts_with("11: "));
    ASSERT_EQ(mkfifo(home.file("fifo.dsn").c_str(), 0600), 0);
    EXPECT_NE(read(home.file("fifo"), "ODBC", "DRIVER").find(home.file("fifo.dsn")), std::string::npos);
}

TEST(FileDataSource, ACutTextIsAFailureWithTheFullLength) {
    const InstallerHome home{{"a.dsn",
                              "[ODBC]\nk=ab\xC3\xA9"
                              "c\n"}};
    struct Row {
        WORD size;
        const char* text;
        BOOL done;
    };
    for (const Row& row : {Row{1, "", FALSE}, Row{4, "ab", FALSE}, Row{5, "ab\xC3\xA9", FALSE},
                           Row{6,
                               "ab\xC3\xA9"
                               "c",
                               TRUE},
                           Row{65535,
                               "ab\xC3\xA9"
                               "c",
                               TRUE}}) {
        SCOPED_TRACE(row.size);
        GuardedBuffer buffer(row.size);
        WORD length = 0;
        EXPECT_EQ(SQLReadFileDSN(home.file("a").c_str(), "ODBC", "k", buffer.data(), row.size, &length), row.done);
        EXPECT_EQ(buffer.text(), row.text);
        EXPECT_EQ(length, 5);
        EXPECT_EQ(firstCode(), row.done == TRUE ? DWORD{0} : DWORD{ODBC_ERROR_OUTPUT_STRING_TRUNCATED});
        EXPECT_TRUE(buffer.isGuarded());
    }
    EXPECT_EQ(SQLReadFileDSN(home.file("a").c_str(), "ODBC", "k", nullptr, 10, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_BUFF_LEN});
}

TEST(FileDataSource, ValuesGoTo32767Bytes) {
    const InstallerHome home;
    const std::string longest(32'767, 'x');
    EXPECT_EQ(SQLWriteFileDSN(home.file("a").c_str(), "ODBC", "k", longest.c_str()), TRUE) << record(1);
    const std::string before = home.text("a.dsn");
    EXPECT_EQ(SQLWriteFileDSN(home.file("a").c_str(), "ODBC", "k", (longest + "x").c_str()), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_STR});
    EXPECT_TRUE(home.text("a.dsn") == before);
    std::vector<char> room(32'768);
    EXPECT_EQ(SQLReadFileDSN(home.file("a").c_str(), "ODBC", "k", room.data(), 32'768, nullptr), TRUE);
    EXPECT_TRUE(std::string(room.data()) == longest);
}

TEST(FileDataSource, WritesWhatItIsToldAlsoAPassword) {
    const InstallerHome home;
    EXPECT_EQ(SQLWriteFileDSNW(wide(u"/\u00E9"), nullptr, wide(u"k"), wide(u"v")), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_REQUEST_TYPE});
    const std::string file = home.file("a");
    EXPECT_EQ(SQLWriteFileDSNA(file.c_str(), "ODBC", "PWD", "secret"), TRUE);
    EXPECT_EQ(read(file, "ODBC", "PWD"), "secret");
    EXPECT_EQ(SQLWriteFileDSN(file.c_str(), "ODBC", "PWD", nullptr), TRUE);
    EXPECT_EQ(SQLWriteFileDSN(file.c_str(), "Other", "k", "v"), TRUE);
    EXPECT_EQ(SQLWriteFileDSN(file.c_str(), "ODBC", nullptr, nullptr), TRUE);
    EXPECT_EQ(home.text("a.dsn"), "[Other]\nk=v\n");
}

TEST(FileDataSource, WGivesUnits) {
    const InstallerHome home{{"a.dsn", "[ODBC]\nk=\xC3\xA9\xF0\x9F\x98\x80\n"}};
    std::u16string path;
    for (const char byte : home.file("a"))
        path += static_cast<char16_t>(byte);
    SQLWCHAR room[8];
    WORD length = 0;
    EXPECT_EQ(SQLReadFileDSNW(wide(path.c_str()), wide(u"ODBC"), wide(u"k"), room, 4, &length), TRUE);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(fromWide(room, 3), u"\u00E9\U0001F600");
    EXPECT_EQ(SQLReadFileDSNW(wide(path.c_str()), wide(u"ODBC"), wide(u"k"), room, 3, &length), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_OUTPUT_STRING_TRUNCATED});
    EXPECT_EQ(fromWide(room, 1), u"\u00E9");
}

}  // namespace
