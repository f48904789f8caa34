// The exported profile functions on whole files.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <string>

#include "guarded_buffer.h"
#include "test_home.h"

namespace jx::test {

namespace {

constexpr char kSales[] = "[Sales]\nDriver=/opt/drv.so\nDatabase=sales\n";

// Reads with a buffer of 1024 bytes.
std::string read(const char* section, const char* entry, const char* fallback, const char* file) {
    GuardedBuffer buffer(1024);
    const int length = SQLGetPrivateProfileString(section, entry, fallback, buffer.data(), 1024, file);
    EXPECT_TRUE(buffer.isGuarded());
    return buffer.all().substr(0, static_cast<std::size_t>(length));
}

// A size and what it is taken for.
struct SizeRow {
    int size;
    int counts;
};

}  // namespace

TEST(ProfileRead, FindsAKeyOfEitherUserFile) {
    const TestHome home{{".odbc.ini", kSales}, {".odbcinst.ini", "[Sample Driver]\nSetup=/opt/s.so\n"}};
    EXPECT_EQ(read("Sales", "Database", "none", ".odbc.ini"), "sales");
    EXPECT_EQ(read("Sample Driver", "Setup", "none", ".odbcinst.ini"), "/opt/s.so");
}

TEST(ProfileRead, TakesTheUserFilesNamesInAnyCase) {
    const TestHome home{{".odbc.ini", kSales}, {".odbcinst.ini", "[Sample Driver]\nSetup=/opt/s.so\n"}};
    EXPECT_EQ(read("Sales", "Database", "none", ".ODBC.INI"), "sales");
    EXPECT_EQ(read("Sales", "Database", "none", ".Odbc.Ini"), "sales");
    EXPECT_EQ(read("Sample Driver", "Setup", "none", ".ODBCINST.INI"), "/opt/s.so");
}

TEST(ProfileRead, UsesEveryOtherNameAsSpelled) {
    const TestHome home{{"other.ini", "[A]\nx=1\n"}, {".odbc.ini", "[A]\nx=2\n"}};
    EXPECT_EQ(read("A", "x", "none", home.file("other.ini").c_str()), "1");
    EXPECT_EQ(read("A", "x", "none", home.file("OTHER.INI").c_str()), "none");
    EXPECT_EQ(read("A", "x", "none", home.file(".odbc.ini").c_str()), "2");
    EXPECT_EQ(read("A", "x", "none", ".odbc.inix"), "none");
    EXPECT_EQ(read("A", "x", "none", ""), "none");
}

TEST(ProfileRead, GivesTheListsOfKeysAndSections) {
    const TestHome home{{".odbc.ini", "[A]\nx=1\ny=2\n\n[B]\n"}};
    EXPECT_EQ(read("A", nullptr, "", ".odbc.ini"), listBytes({"x", "y"}));
    EXPECT_EQ(read(nullptr, nullptr, "", ".odbc.ini"), listBytes({"A", "B"}));
    EXPECT_EQ(read("B", nullptr, "none", ".odbc.ini"), "");
    EXPECT_EQ(read("C", nullptr, "none", ".odbc.ini"), "none");
}

TEST(ProfileRead, ClearsTheWholeBufferAlsoWhenTheDefaultIsCopied) {
    const TestHome home;
    GuardedBuffer buffer(100);
    EXPECT_EQ(SQLGetPrivateProfileString("A", "x", "abc", buffer.data(), 50, ".odbc.ini"), 3);
    EXPECT_EQ(buffer.all(), "abc" + std::string(47, '\0') + std::string(50, '?'));
    EXPECT_TRUE(buffer.isGuarded());
}

TEST(ProfileRead, ANullDefaultIsEmpty) {
    const TestHome home;
    EXPECT_EQ(read("A", "x", nullptr, ".odbc.ini"), "");
}

TEST(ProfileRead, CutsWhatDoesNotFit) {
    const TestHome home{{".odbc.ini", "[A]\nx=12345\n"}};
    for (int size = 1; size <= 8; ++size) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(static_cast<std::size_t>(size));
        const int expected = std::min(size - 1, 5);
        EXPECT_EQ(SQLGetPrivateProfileString("A", "x", "", buffer.data(), size, ".odbc.ini"), expected);
        EXPECT_EQ(buffer.text(), std::string("12345").substr(0, static_cast<std::size_t>(expected)));
        EXPECT_TRUE(buffer.isGuarded());
    }
}

TEST(ProfileRead, NarrowsTheSizeToSigned16Bits) {
    constexpr SizeRow kRows[] = {{0, 0},        {-1, -1},     {1, 1},        {32767, 32767}, {32768, -32768},
                                 {65535, -1},   {65536, 0},   {65537, 1},    {70000, 4464},  {131072, 0},
                                 {INT_MAX, -1}, {INT_MIN, 0}, {98303, 32767}};
    const TestHome home{{".odbc.ini", "[A]\nx=12345\n"}};
    for (const SizeRow& row : kRows) {
        SCOPED_TRACE(row.size);
        GuardedBuffer buffer(140000);
        const int length = SQLGetPrivateProfileString("A", "x", "", buffer.data(), row.size, ".odbc.ini");
        EXPECT_TRUE(buffer.isGuarded());
        if (row.counts <= 0) {
            EXPECT_EQ(length, 0);
            EXPECT_TRUE(buffer.isUntouched());
            continue;
        }
        const auto size = static_cast<std::size_t>(row.counts);
        EXPECT_EQ(length, std::min(row.counts - 1, 5));
        EXPECT_EQ(buffer.all().substr(0, size), std::string("12345").substr(0, static_cast<std::size_t>(length)) +
                                                    std::string(size - static_cast<std::size_t>(length), '\0'));
        EXPECT_EQ(buffer.behind(size), std::string(140000 - size, '?'));
    }
}

TEST(ProfileRead, ANullBufferOrFileGivesNothing) {
    const TestHome home{{".odbc.ini", kSales}};
    EXPECT_EQ(SQLGetPrivateProfileString("Sales", "Database", "d", nullptr, 100, ".odbc.ini"), 0);
    GuardedBuffer buffer(100);
    EXPECT_EQ(SQLGetPrivateProfileString("Sales", "Database", "d", buffer.data(), 100, nullptr), 0);
    EXPECT_TRUE(buffer.isUntouched());
}

TEST(ProfileRead, OfADirectoryOrFifoGivesTheDefault) {
    const TestHome home;
    ASSERT_EQ(mkfifo(home.file("pipe").c_str(), 0600), 0);
    EXPECT_EQ(read("A", "x", "none", home.path().c_str()), "none");
    EXPECT_EQ(read("A", "x", "none", home.file("pipe").c_str()), "none");
}

TEST(ProfileWrite, ChangesOneKeyAndKeepsEveryOtherByte) {
    const TestHome home{{".odbc.ini", "; mine\r\n[Sales]\r\nDatabase = old ; kept\r\n\r\n# end\r\n"}};
    EXPECT_EQ(SQLWritePrivateProfileString("Sales", "Other", "1", ".ODBC.ini"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "; mine\r\n[Sales]\r\nDatabase = old ; kept\r\nOther=1\r\n\r\n# end\r\n");
    EXPECT_EQ(home.names(), (std::vector<std::string>{".odbc.ini"}));
}

TEST(ProfileWrite, DeletesAKeyForANullValueAndASectionForANullKey) {
    const TestHome home{{".odbcinst.ini", "[A]\nx=1\ny=2\n[B]\nz=3\n"}};
    EXPECT_EQ(SQLWritePrivateProfileString("A", "x", nullptr, ".odbcinst.ini"), TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[A]\ny=2\n[B]\nz=3\n");
    EXPECT_EQ(SQLWritePrivateProfileString("A", nullptr, nullptr, ".odbcinst.ini"), TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[B]\nz=3\n");
}

TEST(ProfileWrite, TakesTheNamesOfTheUserFilesFromTheExportedPointers) {
    const TestHome home;
    const std::string moved = home.file("moved.ini");
    std::string capitals = moved;
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), [](unsigned char c) { return std::toupper(c); });
    const char* own = INS_ODBCINI_FILENAME;
    INS_ODBCINI_FILENAME = moved.c_str();
    EXPECT_EQ(SQLWritePrivateProfileString("A", "x", "1", capitals.c_str()), TRUE);
    INS_ODBCINI_FILENAME = own;
    EXPECT_EQ(home.text("moved.ini"), "[A]\nx=1\n");
}

TEST(ProfileWrite, UsesEveryOtherNameAsSpelled) {
    const TestHome home;
    EXPECT_EQ(SQLWritePrivateProfileString("A", "x", "1", home.file("other.ini").c_str()), TRUE);
    EXPECT_EQ(home.text("other.ini"), "[A]\nx=1\n");
    EXPECT_EQ(home.names(), (std::vector<std::string>{"other.ini"}));
}

TEST(ProfileWrite, RefusesWhatAFileCannotHold) {
    const TestHome home{{".odbc.ini", kSales}};
    struct Row {
        const char *section, *entry, *text, *file;
    };
    constexpr Row kRows[] = {
        {"Sales", "x", "1", nullptr},       {nullptr, "x", "1", ".odbc.ini"},   {"", "x", "1", ".odbc.ini"},
        {"A\nB", "x", "1", ".odbc.ini"},    {"Sales", "x\r", "1", ".odbc.ini"}, {"Sales", "x", "1\n2", ".odbc.ini"},
        {"Sales", "x=y", "1", ".odbc.ini"}, {"Sales", "[x", "1", ".odbc.ini"},  {"Sales", "x", "1", ""},
        {"Sales", "x", "1", "/"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.entry == nullptr ? "(null)" : row.entry);
        EXPECT_EQ(SQLWritePrivateProfileString(row.section, row.entry, row.text, row.file), FALSE);
        EXPECT_EQ(home.text(".odbc.ini"), kSales);
    }
    EXPECT_EQ(home.names(), (std::vector<std::string>{".odbc.ini"}));
}

}  // namespace jx::test
