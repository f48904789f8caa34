// SQLGetPrivateProfileString: which file answers, what comes back and what is left alone.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>
#include <thread>

#include "guarded_buffer.h"
#include "installer_home.h"

using namespace jx::test;

namespace {

TEST(ProfileLookup, KnownNamesMeanTheConfigurationFilesWithOrWithoutADotAndInAnyCase) {
    const InstallerHome home{{kUserSources, "[Sales]\nServer=users\n"}, {kSystemDrivers, "[PG]\nDriver=pg.so\n"}};
    for (const char* file : {"odbc.ini", ".odbc.ini", "ODBC.INI", ".Odbc.Ini"}) {
        SCOPED_TRACE(file);
        EXPECT_EQ(value("Sales", "Server", file), "users");
    }
    for (const char* file : {"odbcinst.ini", ".odbcinst.ini", "ODBCINST.INI"}) {
        SCOPED_TRACE(file);
        EXPECT_EQ(value("PG", "Driver", file), "pg.so");
    }
}

TEST(ProfileLookup, AnyOtherNameMustBeAbsolute) {
    const InstallerHome home{{"other.ini", "[Sales]\nServer=here\n"}, {"odbc.ini", "[Sales]\nServer=undotted\n"}};
    EXPECT_EQ(value("Sales", "Server", home.file("other.ini").c_str()), "here");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(home.path());
    for (const char* file : {"other.ini", "./other.ini", "", "..odbc.ini", "odbc.ini ", "./odbc.ini"}) {
        SCOPED_TRACE(file);
        EXPECT_EQ(value("Sales", "Server", file), "(default)");
    }
    EXPECT_EQ(value("Sales", "Server", nullptr), "(default)");
    std::filesystem::current_path(before);
}

TEST(ProfileLookup, AUsersSectionWithoutAPasswordDoesNotTakeTheSystemsPassword) {
    const InstallerHome home{{kUserSources, "[Sales]\nServer=attacker.example\n"},
                             {kSystemSources, "[Sales]\nServer=db.example\nPassword=secret\nUID=app\n"}};
    EXPECT_EQ(value("Sales", "Server"), "attacker.example");
    EXPECT_EQ(value("Sales", "Password"), "(default)");
    EXPECT_EQ(value("sales", "PASSWORD"), "(default)");
    EXPECT_EQ(listed("Sales"), "Server|");
    EXPECT_EQ(recordCount(), 0);
}

TEST(ProfileLookup, ASectionThatOnlyTheSystemHasAnswers) {
    const InstallerHome home{{kUserSources, "[Mine]\nServer=a\n"},
                             {kSystemSources, "[Sales]\nServer=db.example\nPassword=secret\n"}};
    EXPECT_EQ(value("Sales", "Password"), "secret");
    EXPECT_EQ(listed("Sales"), "Server|Password|");
}

TEST(ProfileLookup, AnEmptySectionOfTheUserHidesTheSystems) {
    const InstallerHome home{{kUserSources, "[Sales]\n"}, {kSystemSources, "[Sales]\nServer=db\n"}};
    EXPECT_EQ(value("Sales", "Server"), "(default)");
    EXPECT_EQ(listed("Sales"), "");
}

TEST(ProfileLookup, ListsAreJoinedTheUsersFirstAndNoNameTwice) {
    const InstallerHome home{
        {kUserSources, "[ODBC Data Sources]\nSales=PG\nMine=PG\n[Sales]\nServer=a\n[Mine]\n"},
        {kSystemSources, "[ODBC Data Sources]\nSALES=Other\nStock=Other\n[SALES]\nServer=b\n[Stock]\nServer=c\n"},
        {kUserDrivers, "[ODBC Drivers]\nMine=Installed\n[ODBC Translators]\nT1=Installed\n"},
        {kSystemDrivers, "[ODBC Drivers]\nMINE=Installed\nPG=Installed\n[ODBC Translators]\nT2=Installed\n"}};
    EXPECT_EQ(listed("ODBC Data Sources"), "Sales|Mine|Stock|");
    EXPECT_EQ(listed(nullptr), "ODBC Data Sources|Sales|Mine|Stock|");
    EXPECT_EQ(listed("ODBC Drivers", "odbcinst.ini"), "Mine|PG|");
    EXPECT_EQ(listed("ODBC Translators", "odbcinst.ini"), "T1|T2|");
}

TEST(ProfileLookup, AKeyOfAJoinedListIsLookedUpInTheUsersFileThenInTheSystems) {
    const InstallerHome home{{kUserSources, "[ODBC Data Sources]\nSales=Users\n"},
                             {kSystemSources, "[ODBC Data Sources]\nSales=Systems\nStock=Systems\n"}};
    EXPECT_EQ(value("ODBC Data Sources", "sales"), "Users");
    EXPECT_EQ(value("odbc data sources", "Stock"), "Systems");
    EXPECT_EQ(value("ODBC Data Sources", "Other"), "(default)");
}

TEST(ProfileLookup, TheModeRestrictsDataSourcesToItsScope) {
    const InstallerHome home{{kUserSources, "[Sales]\nServer=users\n"},
                             {kSystemSources, "[Sales]\nServer=systems\n[Stock]\n"},
                             {kUserDrivers, "[PG]\nDriver=users.so\n"},
                             {kSystemDrivers, "[PG]\nDriver=systems.so\n"}};
    struct Row {
        UWORD mode;
        const char* server;
        const char* sections;
    };
    for (const Row& row : {Row{ODBC_BOTH_DSN, "users", "Sales|Stock|"}, Row{ODBC_USER_DSN, "users", "Sales|"},
                           Row{ODBC_SYSTEM_DSN, "systems", "Sales|Stock|"}}) {
        SCOPED_TRACE(row.mode);
        ASSERT_EQ(SQLSetConfigMode(row.mode), TRUE);
        EXPECT_EQ(value("Sales", "Server"), row.server);
        EXPECT_EQ(listed(nullptr), row.sections);
        EXPECT_EQ(value("PG", "Driver", "odbcinst.ini"), "users.so");
    }
}

struct Places {
    const char* variable;
    const char* value;  // "%" stands for the home directory
    const char* file;
    const char* answer;
};

TEST(ProfileLookup, TheEnvironmentSaysWhereTheFilesAreAndCountsAsUnsetWhereItIsNotAbsolute) {
    const InstallerHome home{{kUserSources, "[S]\nk=home\n"},
                             {"mine.ini", "[S]\nk=mine\n"},
                             {kSystemDrivers, "[D]\nk=system\n"},
                             {"system/named.ini", "[D]\nk=named\n"},
                             {"drivers.ini", "[D]\nk=drivers\n"}};
    const Places rows[] = {{"ODBCINI", "%/mine.ini", "odbc.ini", "mine"},
                           {"ODBCINI", "mine.ini", "odbc.ini", "home"},
                           {"ODBCINI", "", "odbc.ini", "home"},
                           {"ODBCINSTINI", "%/drivers.ini", "odbcinst.ini", "drivers"},
                           {"ODBCINSTINI", "named.ini", "odbcinst.ini", "named"},
                           {"ODBCINSTINI", "./named.ini", "odbcinst.ini", "system"},
                           {"ODBCINSTINI", "..", "odbcinst.ini", "system"},
                           {"ODBCINSTINI", "", "odbcinst.ini", "system"}};
    for (const Places& row : rows) {
        SCOPED_TRACE(std::string(row.variable) + "=" + row.value);
        std::string text = row.value;
        if (text.starts_with('%'))
            text.replace(0, 1, home.path());
        const TestVariable variable(row.variable, text);
        EXPECT_EQ(value(*row.file == 'o' && row.file[4] == '.' ? "S" : "D", "k", row.file), row.answer);
    }
}

TEST(ProfileLookup, ARelativeSystemDirectoryCountsAsUnset) {
    const InstallerHome home{{kSystemSources, "[JxOnlyHere]\nk=system\n"}};
    EXPECT_EQ(value("JxOnlyHere", "k"), "system");
    for (const char* directory : {"", "system", "./system"}) {
        SCOPED_TRACE(directory);
        const TestVariable variable("ODBCSYSINI", directory);
        EXPECT_EQ(value("JxOnlyHere", "k"), "(default)");
    }
}

TEST(ProfileLookup, TheEnvironmentIsReadAtEachCall) {
    const InstallerHome home{{"a.ini", "[S]\nk=a\n"}, {"b.ini", "[S]\nk=b\n"}};
    for (int round = 0; round < 3; ++round)
        for (const char* name : {"a", "b"}) {
            const TestVariable variable("ODBCINI", home.file(std::string(name) + ".ini"));
            EXPECT_EQ(value("S", "k"), name);
        }
}

TEST(ProfileLookup, AFileThatChangesIsSeenAtTheNextLookUp) {
    const InstallerHome home{{kUserSources, "[S]\nk=1\n"}};
    EXPECT_EQ(value("S", "k"), "1");
    home.put(kUserSources, "[S]\nk=2\n");
    EXPECT_EQ(value("S", "k"), "2");
    std::filesystem::remove(home.file(kUserSources));
    EXPECT_EQ(value("S", "k"), "(default)");
}

// ---- what comes back ----

TEST(ProfileLookup, OnlyTheResultAndItsEndAreWrittenAtEverySize) {
    const std::string text(70'000, 'x');
    const InstallerHome home{{kUserSources, "[S]\nshort=abc\nlong=" + text + "\n"}};
    for (const int size : {1, 2, 3, 4, 5, 32767, 32768, 65535, 69'999, 70'000, 70'001, 70'002}) {
        for (const char* key : {"short", "long", "absent"}) {
            SCOPED_TRACE(std::string(key) + " in " + std::to_string(size));
            const std::string whole = *key == 's' ? "abc" : *key == 'l' ? text : "";
            const std::string held = whole.substr(0, static_cast<std::size_t>(size) - 1);
            GuardedBuffer buffer(static_cast<std::size_t>(size));
            EXPECT_EQ(SQLGetPrivateProfileString("S", key, nullptr, buffer.data(), size, "odbc.ini"),
                      static_cast<int>(held.size()));
            EXPECT_TRUE(buffer.text() == held);
            EXPECT_EQ(buffer.behind(held.size() + 1),
                      std::string(static_cast<std::size_t>(size) - held.size() - 1, '?'));
            EXPECT_TRUE(buffer.isGuarded());
        }
    }
}

TEST(ProfileLookup, NoBufferAndNoSizeGiveZeroAndWriteNothing) {
    const InstallerHome home{{kUserSources, "[S]\nk=abc\n"}};
    GuardedBuffer buffer(8);
    for (const int size : {0, -1, -32768, -2147483647}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(SQLGetPrivateProfileString("S", "k", "d", buffer.data(), size, "odbc.ini"), 0);
        EXPECT_EQ(SQLGetPrivateProfileString(nullptr, nullptr, "d", buffer.data(), size, "odbc.ini"), 0);
        EXPECT_EQ(SQLGetPrivateProfileStringW(wide(u"S"), wide(u"k"), nullptr,
                                              reinterpret_cast<SQLWCHAR*>(buffer.data()), size, wide(u"odbc.ini")),
                  0);
    }
    EXPECT_EQ(SQLGetPrivateProfileString("S", "k", "d", nullptr, 100, "odbc.ini"), 0);
    EXPECT_EQ(SQLGetPrivateProfileStringW(wide(u"S"), wide(u"k"), nullptr, nullptr, 100, wide(u"odbc.ini")), 0);
    EXPECT_TRUE(buffer.isUntouched());
}

TEST(ProfileLookup, DefaultsComeBackByteForByte) {
    const InstallerHome home;
    for (const char* fallback : {" @@@ ", "  ", "\t", "", "a=b;c", "\xFF\xFE", "\xC3\xA9"}) {
        SCOPED_TRACE(fallback);
        EXPECT_EQ(value("S", "k", "odbc.ini", fallback), fallback);
    }
    EXPECT_EQ(value("S", "k", "odbc.ini", nullptr), "");
    EXPECT_EQ(recordCount(), 0);
}

TEST(ProfileLookup, AListThatDoesNotFitEndsWithTwoNulsAndTheCountIsTheSizeLessTwo) {
    const InstallerHome home{{kUserSources, "[S]\nalpha=1\nbe\xC3\xA9=2\n"}};
    const std::string whole = std::string("alpha\0be\xC3\xA9\0", 11);  // NUL behind each
    struct Row {
        int size;
        std::string held;
        int count;
    };
    const Row rows[] = {{1, "", 0},
                        {2, "", 0},
                        {5, "alp", 3},
                        {8, std::string("alpha\0", 6), 6},
                        {9, std::string("alpha\0b", 7), 7},
                        {10, std::string("alpha\0be", 8), 8},
                        {11, std::string("alpha\0be", 8), 8},  // the two bytes of the last letter are not parted
                        {12, whole, 11},
                        {13, whole, 11}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.size);
        GuardedBuffer buffer(static_cast<std::size_t>(row.size));
        EXPECT_EQ(SQLGetPrivateProfileString("S", nullptr, "d", buffer.data(), row.size, "odbc.ini"), row.count);
        const std::string ended = row.held + std::string(row.held == whole ? 1 : 2, '\0');
        EXPECT_EQ(buffer.all().substr(0, ended.size()), ended.substr(0, static_cast<std::size_t>(row.size)));
        EXPECT_TRUE(buffer.isGuarded());
    }
}

TEST(ProfileLookup, AnAbsentSectionWithANullEntryGivesTheDefaultEndedByTwoNuls) {
    const InstallerHome home;
    GuardedBuffer buffer(10);
    EXPECT_EQ(SQLGetPrivateProfileString("S", nullptr, "none", buffer.data(), 10, "odbc.ini"), 4);
    EXPECT_EQ(buffer.all(), std::string("none\0\0????", 10));
    GuardedBuffer small(5);
    EXPECT_EQ(SQLGetPrivateProfileString("S", nullptr, "none", small.data(), 5, "odbc.ini"), 3);
    EXPECT_EQ(small.all(), std::string("non\0\0", 5));
}

TEST(ProfileLookup, ALongListOfKeysComesWhole) {
    std::string text = "[S]\n";
    for (int key = 0; key < 20'000; ++key)
        text += "key" + std::to_string(key) + "=1\n";
    const InstallerHome home{{kUserSources, text}};
    std::vector<char> room(256'000);
    EXPECT_EQ(SQLGetPrivateProfileString("S", nullptr, "", room.data(), 256'000, "odbc.ini"),
              20'000 * 9 - 10 * 4 - 90 * 3 - 900 * 2 - 9000 * 1);
}

TEST(ProfileLookup, AResultIsNeverCutInsideACharacter) {
    const InstallerHome home{{kUserSources, "[S]\nk=a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z\n"}};
    const char* held[] = {"",
                          "a",
                          "a",
                          "a\xC3\xA9",
                          "a\xC3\xA9",
                          "a\xC3\xA9",
                          "a\xC3\xA9\xE2\x82\xAC",
                          "a\xC3\xA9\xE2\x82\xAC",
                          "a\xC3\xA9\xE2\x82\xAC",
                          "a\xC3\xA9\xE2\x82\xAC",
                          "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80",
                          "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z"};
    for (int size = 1; size <= 12; ++size) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(static_cast<std::size_t>(size));
        SQLGetPrivateProfileString("S", "k", "", buffer.data(), size, "odbc.ini");
        EXPECT_EQ(buffer.text(), held[size - 1]);
    }
}

TEST(ProfileLookup, WCountsUnitsAndNeverPartsAPair) {
    const InstallerHome home{{kUserSources, "[S]\nk=a\xC3\xA9\xF0\x9F\x98\x80z\n"}};
    const char16_t* held[] = {u"", u"a", u"a\u00E9", u"a\u00E9", u"a\u00E9\U0001F600", u"a\u00E9\U0001F600z"};
    for (int size = 1; size <= 6; ++size) {
        SCOPED_TRACE(size);
        std::vector<SQLWCHAR> room(16, 0x7777);
        const int count =
            SQLGetPrivateProfileStringW(wide(u"S"), wide(u"k"), nullptr, room.data(), size, wide(u"odbc.ini"));
        EXPECT_EQ(fromWide(room.data(), static_cast<std::size_t>(count)), held[size - 1]);
        EXPECT_EQ(room[static_cast<std::size_t>(count)], 0);
        for (std::size_t behind = static_cast<std::size_t>(count) + 1; behind < room.size(); ++behind)
            EXPECT_EQ(room[behind], 0x7777);
    }
}

TEST(ProfileLookup, AWDefaultComesBackUnitForUnitAndNoPairIsPartedInIt) {
    const InstallerHome home;
    const char16_t fallback[] = {u'a', 0xD83D, 0xDE00, 0xDC00, u'z', 0};
    const std::u16string whole(fallback);
    for (const std::size_t size : {1U, 2U, 3U, 4U, 5U, 6U, 7U}) {
        SCOPED_TRACE(size);
        SQLWCHAR room[8] = {};
        const int count = SQLGetPrivateProfileStringW(wide(u"S"), wide(u"k"), wide(fallback), room,
                                                      static_cast<int>(size), wide(u"odbc.ini"));
        EXPECT_EQ(fromWide(room, static_cast<std::size_t>(count)), whole.substr(0, size == 3 ? 1 : size - 1));
    }
}

TEST(ProfileLookup, BytesThatAreNotUtf8ComeOutAsTheyAreAndAsMarksInW) {
    const InstallerHome home{{kUserSources, "[S]\nk=a\xFFz\n"}};
    EXPECT_EQ(value("S", "k"), "a\xFFz");
    SQLWCHAR room[8];
    EXPECT_EQ(SQLGetPrivateProfileStringW(wide(u"S"), wide(u"k"), nullptr, room, 8, wide(u"odbc.ini")), 3);
    EXPECT_EQ(fromWide(room, 3), u"a\uFFFDz");
}

TEST(ProfileLookup, TextsThatAreNoTextGiveTheDefaultAndARecord) {
    const InstallerHome home{{kUserSources, "[S]\nk=v\n"}};
    EXPECT_EQ(value("S\xFF", "k"), "(default)");
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_STR});
    EXPECT_EQ(value("S", "k\xC3"), "(default)");
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_STR});
    const char16_t half[] = {u'S', 0xD800, 0};
    SQLWCHAR room[8];
    EXPECT_EQ(SQLGetPrivateProfileStringW(wide(half), wide(u"k"), wide(u"d"), room, 8, wide(u"odbc.ini")), 1);
    EXPECT_EQ(fromWide(room, 1), u"d");
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_STR});
}

TEST(ProfileLookup, NonAsciiNamesAreFoundInBothForms) {
    const InstallerHome home{{kUserSources,
                              "[B\xC3\xBC"
                              "cher]\nOrt=K\xC3\xB6ln\n"}};
    EXPECT_EQ(value("B\xC3\xBC"
                    "cher",
                    "Ort"),
              "K\xC3\xB6ln");
    SQLWCHAR room[16];
    EXPECT_EQ(SQLGetPrivateProfileStringW(wide(u"B\u00FCcher"), wide(u"Ort"), nullptr, room, 16, wide(u"odbc.ini")), 4);
    EXPECT_EQ(fromWide(room, 4), u"K\u00F6ln");
}

// ---- files that cannot be read ----

TEST(ProfileLookup, AUsersFileThatIsThereButCannotBeReadIsNotReplacedByTheSystems) {
    const InstallerHome home{{kSystemSources, "[Sales]\nServer=systems\n[ODBC Data Sources]\nSales=PG\n"}};
    const auto expectRefused = [&](const char* what) {
        SCOPED_TRACE(what);
        EXPECT_EQ(value("Sales", "Server"), "(default)");
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_REQUEST_FAILED});
        EXPECT_NE(record(1).find(home.file(kUserSources)), std::string::npos) << record(1);
        EXPECT_EQ(listed("ODBC Data Sources"), "");
        EXPECT_EQ(recordCount(), 1);
        std::filesystem::remove(home.file(kUserSources));
    };
    ASSERT_EQ(mkfifo(home.file(kUserSources).c_str(), 0600), 0);
    expectRefused("a FIFO");
    std::filesystem::create_directory(home.file(kUserSources));
    expectRefused("a directory");
    std::filesystem::create_symlink(kUserSources, home.file(kUserSources));
    expectRefused("a link to itself");
    EXPECT_EQ(value("Sales", "Server"), "systems");
}

TEST(ProfileLookup, TooManyOpenFilesAreNotAnAbsentFile) {
    const InstallerHome home{{kUserSources, "[Sales]\nServer=users\n"}, {kSystemSources, "[Sales]\nPWD=x\n"}};
    EXPECT_EQ(value("Sales", "Server"), "users");
    home.put(kUserSources, "[Sales]\nServer=another\n");
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const std::string found = value("Sales", "PWD");
    const std::string why = record(1);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(found, "(default)");
    EXPECT_NE(why.find("Too many open files"), std::string::npos) << why;
    EXPECT_EQ(value("Sales", "Server"), "another");
}

TEST(ProfileLookup, WithoutAnyFileThereIsNoRecord) {
    const InstallerHome home;
    EXPECT_EQ(value("Sales", "Server"), "(default)");
    EXPECT_EQ(recordCount(), 0);
}

TEST(ProfileLookup, ALookUpEmptiesTheQueue) {
    const InstallerHome home;
    SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "old");
    EXPECT_EQ(recordCount(), 1);
    value("S", "k");
    EXPECT_EQ(recordCount(), 0);
}

TEST(ProfileLookup, ThreadsLookUpWhileAnotherOneWrites) {
    const InstallerHome home{{kUserSources, "[S]\nk=0\n"}};
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 4; ++reader)
        readers.emplace_back([] {
            for (int round = 0; round < 200; ++round)
                EXPECT_NE(value("S", "k"), "(default)");
        });
    for (int round = 0; round < 50; ++round)
        EXPECT_EQ(SQLWritePrivateProfileString("S", "k", std::to_string(round).c_str(), "odbc.ini"), TRUE);
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(value("S", "k"), "49");
}

}  // namespace
