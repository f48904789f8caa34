// The sentences of docs/ini-store.md about format and reading, one test each, through the profile calls only.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <jxprofile.h>
#include "disk_check.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

// What a read returns, with | for the NULs of a list.
std::string read(const char* section, const char* key, const char* fallback = "none", int size = 1000,
                 const char* file = ".odbc.ini") {
    std::vector<unsigned char> room(static_cast<std::size_t>(std::max(size, 1)), '?');
    const int count =
        jxGetPrivateProfileString(bytes(section), bytes(key), bytes(fallback), room.data(), size, bytes(file));
    std::string text(reinterpret_cast<const char*>(room.data()), static_cast<std::size_t>(count));
    std::replace(text.begin(), text.end(), '\0', '|');
    return text;
}

int write(const char* section, const char* key, const char* value) {
    return jxWritePrivateProfileString(bytes(section), bytes(key), bytes(value), bytes(".odbc.ini"));
}

TEST(IniStore, NamesMatchWithoutCaseAndListsKeepTheFilesSpelling) {
    const TestHome home{{".odbc.ini", "[Sales]\nDriver=d\n"}};
    EXPECT_EQ(read("SALES", "driver"), "d");
    EXPECT_EQ(read("sales", nullptr), "Driver|");
    EXPECT_EQ(read(nullptr, nullptr), "Sales|");
}

TEST(IniStore, OnlyAsciiLettersHaveACase) {
    const TestHome home{{".odbc.ini", "[A]\n\xC3\x84=1\n"}};
    EXPECT_EQ(read("A", "\xC3\x84"), "1");
    EXPECT_EQ(read("A", "\xC3\xA4"), "none");
}

TEST(IniStore, SectionsOfOneNameAreOneSection) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n[B]\n[a]\nk=2\nl=3\n"}};
    EXPECT_EQ(read("A", "k"), "1");
    EXPECT_EQ(read("A", "l"), "3");
    EXPECT_EQ(read("A", nullptr), "k|l|");
    EXPECT_EQ(read(nullptr, nullptr), "A|B|");
    EXPECT_EQ(write("A", nullptr, nullptr), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[B]\n");
}

TEST(IniStore, OfTwoEqualKeysTheFirstCountsAndADeletionRemovesBoth) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\nK=2\nl=3\n"}};
    EXPECT_EQ(read("A", "k"), "1");
    EXPECT_EQ(read("A", nullptr), "k|l|");
    EXPECT_EQ(write("A", "k", nullptr), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nl=3\n");
}

TEST(IniStore, BlanksAroundNamesAndValuesAreIgnored) {
    const TestHome home{{".odbc.ini", " [ A ] \n\t k\t = x  y \t\n"}};
    EXPECT_EQ(read("A", "k"), "x  y");
    EXPECT_EQ(read(" A ", "\tk "), "x  y");
}

TEST(IniStore, QuotesAndBackslashesMeanNothing) {
    const TestHome home{{".odbc.ini", "[A]\nk=\"x\\n\" ; 'y'\n"}};
    EXPECT_EQ(read("A", "k"), "\"x\\n\" ; 'y'");
}

TEST(IniStore, ALineThatBeginsWithASemicolonOrANumberSignIsAComment) {
    const TestHome home{{".odbc.ini", "[A]\n;k=1\n  # k=2\nk=3\n"}};
    EXPECT_EQ(read("A", "k"), "3");
    EXPECT_EQ(read("A", nullptr), "k|");
}

TEST(IniStore, ASectionNameRunsToTheLastBracketBeforeAComment) {
    const TestHome home{{".odbc.ini", "[a]b]\nk=1\n[c] ; see [d]\nk=2\n[e;f]\nk=3\n[open\n"}};
    EXPECT_EQ(read(nullptr, nullptr), "a]b|c|e;f|");
    EXPECT_EQ(read("a]b", "k"), "1");
    EXPECT_EQ(read("c", "k"), "2");
}

TEST(IniStore, OddFilesAreAccepted) {
    const std::string value(100'000, 'v');
    const TestHome home{{".odbc.ini", "\xEF\xBB\xBF[A]\r\nk=1\r\n\x01\xFF\r\nlong=" + value + "\r\nlast=2"}};
    EXPECT_EQ(read("A", "k"), "1");
    EXPECT_EQ(read("A", "long", "none", 200'000), value);
    EXPECT_EQ(read("A", "last"), "2");
}

TEST(IniStore, AnAbsentSectionGivesTheDefaultAndAnEmptyOneAnEmptyList) {
    const TestHome home{{".odbc.ini", "[Empty]\n[A]\nflag\n"}};
    EXPECT_EQ(read("Empty", nullptr), "");
    EXPECT_EQ(read("No", nullptr), "none");
    EXPECT_EQ(read("A", "no"), "none");
    EXPECT_EQ(read("A", "k", "none", 1000, home.file("no.ini").c_str()), "none");
    EXPECT_EQ(read("A", "k", nullptr), "");
    EXPECT_EQ(read("A", nullptr), "flag|");
    EXPECT_EQ(read("A", "flag"), "");
}

TEST(IniStore, WhatDoesNotFitIsCut) {
    const TestHome home{{".odbc.ini", "[A]\nkey=value\n"}};
    EXPECT_EQ(read("A", "key", "none", 6), "value");
    EXPECT_EQ(read("A", "key", "none", 4), "val");
    EXPECT_EQ(read("A", "key", "none", 1), "");
    EXPECT_EQ(read("A", nullptr, "none", 4), "key");
    EXPECT_EQ(read("A", nullptr, "none", 5), "key|");
    EXPECT_EQ(read("A", "key", "none", 0), "");
    EXPECT_EQ(read("A", "key", "none", -1), "");
}

TEST(IniStore, TheTwoNamesMeanTheUsersFilesAndOthersAreAsSpelled) {
    const TestHome home{{".odbc.ini", "[A]\nk=home\n"}};
    home.put("other.ini", "[A]\nk=other\n");
    home.put("named.ini", "[A]\nk=named\n");
    EXPECT_EQ(read("A", "k"), "home");
    EXPECT_EQ(read("A", "k", "none", 1000, home.file("other.ini").c_str()), "other");
    setenv("ODBCINI", "", 1);
    EXPECT_EQ(read("A", "k"), "home");
    setenv("ODBCINI", home.file("named.ini").c_str(), 1);
    EXPECT_EQ(read("A", "k"), "named");
    setenv("ODBCINSTINI", home.file("other.ini").c_str(), 1);
    EXPECT_EQ(read("A", "k", "none", 1000, ".odbcinst.ini"), "other");
}

TEST(IniStore, AReadSeesAWriteAtOnce) {
    const TestHome home{{".odbc.ini", "[A]\nk=0\n"}};
    for (int number = 1; number <= 50; ++number) {
        EXPECT_EQ(write("A", "k", std::to_string(number).c_str()), 1);
        EXPECT_EQ(read("A", "k"), std::to_string(number));
    }
}

TEST(IniStore, AReadSeesWhatAnotherProgramWroteInPlace) {
    const TestHome home{{".odbc.ini", "[A]\nk=0\n"}};
    for (int number = 1; number <= 9; ++number) {
        home.put(".odbc.ini", "[A]\nk=" + std::to_string(number) + "\n");
        EXPECT_EQ(read("A", "k"), std::to_string(number));
    }
}

TEST(IniStore, WhatIsNotARegularFileGivesTheDefaultWithoutWaiting) {
    const TestHome home;
    ASSERT_EQ(::mkfifo(home.file("fifo").c_str(), 0600), 0);
    ASSERT_EQ(::mkdir(home.file("directory").c_str(), 0700), 0);
    for (const char* name : {"fifo", "directory"})
        EXPECT_EQ(read("A", "k", "none", 1000, home.file(name).c_str()), "none");
}

TEST(IniStore, ANewSectionFollowsOneBlankLineAtTheEnd) {
    const TestHome home{{".odbc.ini", "[A]\nk=1"}};
    EXPECT_EQ(write("B", "l", "2"), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1\n\n[B]\nl=2\n");
}

TEST(IniStore, ANewKeyFollowsTheLastKeyOfItsSectionOrItsHeader) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n; note\n\n[B]\n; of B\n"}};
    EXPECT_EQ(write("A", "l", "2"), 1);
    EXPECT_EQ(write("B", "m", "3"), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1\nl=2\n; note\n\n[B]\nm=3\n; of B\n");
}

TEST(IniStore, DeletingASectionSparesTheCommentAboveTheNext) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n; of A\n\n; of B\n# too\n[B]\n"}};
    EXPECT_EQ(write("A", nullptr, nullptr), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "; of B\n# too\n[B]\n");
}

TEST(IniStore, EveryOtherLineStaysByteForByte) {
    const TestHome home{
        {".odbc.ini", "\xEF\xBB\xBF;\x01 top\r\n\r\n [A] ;x\n\tk =  1  \n=odd\n[open\n\xFF\n[B]\r\nb\r\n"}};
    EXPECT_EQ(write("a", "K", "22"), 1);
    EXPECT_EQ(home.text(".odbc.ini"),
              "\xEF\xBB\xBF;\x01 top\r\n\r\n [A] ;x\n\tk =  22  \n=odd\n[open\n\xFF\n[B]\r\nb\r\n");
}

TEST(IniStore, AHardLinkKeepsTheOldText) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    ASSERT_EQ(::link(home.file(".odbc.ini").c_str(), home.file("second").c_str()), 0);
    EXPECT_EQ(write("A", "k", "2"), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=2\n");
    EXPECT_EQ(home.text("second"), "[A]\nk=1\n");
    EXPECT_EQ(stateOf(home.file("second")).st_nlink, 1U);
}

}  // namespace
}  // namespace jx::ini::test
