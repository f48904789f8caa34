// Profile reads: what they return, where it is cut, what they leave untouched.
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

#include <jxprofile.h>
#include "child_process.h"
#include "guarded_buffer.h"
#include "jxutl/thread/failure.h"
#include "stamped_files.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using namespace std::string_literals;
using jx::test::GuardedBuffer;
using jx::test::listBytes;
using jx::test::TestHome;

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

// Placed: what a read returned and left in a buffer of that size.
struct Placed {
    int count;
    GuardedBuffer buffer;

    // The bytes counted by the result.
    std::string text() const { return buffer.all().substr(0, static_cast<std::size_t>(count)); }

    // A NUL follows them, and nothing else was written.
    bool isEnded() const {
        const std::string rest = buffer.behind(static_cast<std::size_t>(count));
        return buffer.isGuarded() && rest == "\0"s + std::string(rest.size() - 1, '?');
    }
};

Placed read(const char* section, const char* key, const char* fallback, std::size_t size,
            const char* file = ".odbc.ini") {
    Placed placed{0, GuardedBuffer(size)};
    placed.count = jxGetPrivateProfileString(bytes(section), bytes(key), bytes(fallback), placed.buffer.bytes(),
                                             static_cast<int>(size), bytes(file));
    return placed;
}

std::string value(const char* section, const char* key, const char* file = ".odbc.ini") {
    const Placed placed = read(section, key, "(none)", 200, file);
    EXPECT_TRUE(placed.isEnded());
    return placed.text();
}

TEST(ProfileRead, FindsAValueByTrimmedNamesWithoutRegardToCase) {
    const TestHome home{{".odbc.ini", "[ Sales ]\n\tDriver = /x \r\n"}, {".odbcinst.ini", "[Sales]\nDriver=/y\n"}};
    EXPECT_EQ(value("Sales", "Driver"), "/x");
    EXPECT_EQ(value(" sales\t", " DRIVER "), "/x");
    EXPECT_EQ(value("Sales", "Driver", ".odbcinst.ini"), "/y");
    EXPECT_EQ(value("Sales", "Setup"), "(none)");
    EXPECT_EQ(value("Orders", "Driver"), "(none)");
    EXPECT_EQ(value("", "Driver"), "(none)");
    EXPECT_EQ(value("Sales", ""), "(none)");
    EXPECT_EQ(value("Sales", " \t"), "(none)");
}

TEST(ProfileRead, AValueIsCutAtTheSizeLessOne) {
    const TestHome home{{".odbc.ini", "[A]\nk=value\n"}};
    const struct {
        std::size_t size;
        const char* text;
    } rows[] = {{1, ""}, {2, "v"}, {4, "val"}, {6, "value"}, {7, "value"}, {100, "value"}};
    for (const auto& row : rows) {
        const Placed placed = read("A", "k", "none", row.size);
        EXPECT_EQ(placed.text(), row.text) << row.size;
        EXPECT_TRUE(placed.isEnded()) << row.size;
    }
}

TEST(ProfileRead, LongValuesComeWhole) {
    for (const std::size_t length : {32766U, 32767U, 32768U, 65534U, 65535U, 70000U}) {
        const std::string text(length, 'v');
        const TestHome home{{".odbc.ini", "[A]\nk=" + text + "\n"}};
        for (const std::size_t size : {std::size_t{1}, length, length + 1, length + 2}) {
            const Placed placed = read("A", "k", "none", size);
            EXPECT_EQ(placed.text(), text.substr(0, size - 1)) << length << " " << size;
            EXPECT_TRUE(placed.isEnded());
        }
    }
}

TEST(ProfileRead, AListEndsWithASecondNulAndACutOneWithOne) {
    const TestHome home{{".odbc.ini", "[A]\nkey\n[Bc]\n[D]\n"}};
    const std::string list = listBytes({"A", "Bc", "D"});
    ASSERT_EQ(list.size(), 7U);
    for (std::size_t size = 1; size < 12; ++size) {
        SCOPED_TRACE(size);
        const Placed placed = read(nullptr, nullptr, "none", size);
        EXPECT_EQ(placed.text(), list.substr(0, size - 1));
        EXPECT_TRUE(placed.isEnded());
    }
    EXPECT_EQ(read(nullptr, "key", "none", 20).text(), list) << "without a section the key plays no part";
}

TEST(ProfileRead, KeysOfASectionAreListedInTheFilesSpellingAndOrder) {
    const TestHome home{{".odbc.ini", "[A]\nOne=1\n;two=2\nTHREE\none=4\n[B]\nx=1\n[a]\nfour = 4\n"}};
    EXPECT_EQ(read("a", nullptr, "none", 50).text(), listBytes({"One", "THREE", "four"}));
    EXPECT_EQ(read(nullptr, nullptr, "none", 50).text(), listBytes({"A", "B"}));
}

TEST(ProfileRead, AnEmptySectionGivesAnEmptyListAndAnAbsentOneTheDefault) {
    const TestHome home{{".odbc.ini", "[A]\n"}, {"none.ini", "; nothing\n"}};
    const std::string file = home.file("none.ini");
    EXPECT_EQ(read("A", nullptr, "none", 20).count, 0);
    EXPECT_TRUE(read("A", nullptr, "none", 20).isEnded());
    EXPECT_EQ(read("B", nullptr, "none", 20).text(), "none");
    EXPECT_EQ(read("", nullptr, "none", 20).text(), "none");
    EXPECT_EQ(read(nullptr, nullptr, "none", 20, file.c_str()).count, 0) << "a file without sections is not absent";
    EXPECT_EQ(read(nullptr, nullptr, "none", 20, home.file("gone").c_str()).text(), "none");
}

TEST(ProfileRead, AnAbsentEntryIsNotAFailureAndADirectoryIs) {
    const TestHome home{{"a.ini", "[A]\nk=1\n"}};
    struct Row {
        std::string file;
        const char* section;
        const char* key;
        int failed;
    };
    const Row rows[] = {{home.file("a.ini"), "A", "k", 0},    {home.path(), "A", "k", 1},
                        {home.file("a.ini"), "A", "none", 0}, {"", "A", "k", 1},
                        {home.file("none"), "A", "k", 0},     {home.path(), nullptr, nullptr, 1},
                        {home.file("a.ini"), "B", nullptr, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.file);
        read(row.section, row.key, "none", 20, row.file.c_str());
        EXPECT_EQ(jxProfileReadFailed(), row.failed);
    }
}

TEST(ProfileRead, TheDefaultIsCutLikeAValue) {
    const TestHome home;
    for (const std::size_t size : {1U, 2U, 4U, 5U, 6U}) {
        const Placed placed = read("A", "k", "none", size);
        EXPECT_EQ(placed.text(), std::string("none").substr(0, size - 1));
        EXPECT_TRUE(placed.isEnded());
    }
    EXPECT_EQ(read("A", "k", " as it is ", 20).text(), " as it is ");
    EXPECT_EQ(read("A", "k", nullptr, 20).count, 0);
    EXPECT_TRUE(read("A", "k", nullptr, 20).isEnded());
}

TEST(ProfileRead, ASizeOfZeroOrLessTouchesNothing) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    for (const int size : {0, -1, -32768, -70000, INT32_MIN}) {
        GuardedBuffer buffer(4);
        EXPECT_EQ(
            jxGetPrivateProfileString(bytes("A"), bytes("k"), bytes("none"), buffer.bytes(), size, bytes(".odbc.ini")),
            0);
        EXPECT_TRUE(buffer.isUntouched()) << size;
    }
    EXPECT_EQ(jxGetPrivateProfileString(bytes("A"), bytes("k"), bytes("none"), nullptr, 100, bytes(".odbc.ini")), 0);
}

TEST(ProfileRead, ANullFileTouchesNothing) {
    GuardedBuffer buffer(4);
    const unsigned char* noFile = nullptr;
    JxIniFileCache* noCache = nullptr;
    EXPECT_EQ(jxGetPrivateProfileString(bytes("A"), bytes("k"), bytes("none"), buffer.bytes(), 4, noFile), 0);
    EXPECT_EQ(jxGetPrivateProfileString(bytes("A"), bytes("k"), bytes("none"), buffer.bytes(), 4, noCache), 0);
    EXPECT_TRUE(buffer.isUntouched());
}

TEST(ProfileRead, AnEmptyFileNameGivesTheDefaultAndIsAFailure) {
    EXPECT_EQ(read("A", "k", "none", 20, "").text(), "none");
    EXPECT_EQ(lastFailure().step, JxIniStepLocate);
    EXPECT_EQ(lastFailure().error, EINVAL);
}

TEST(ProfileRead, AValueThatHoldsANulEndsThere) {
    const TestHome home{{".odbc.ini", "[A]\nk=ab\0cd\nl=\0\n"s}};
    EXPECT_EQ(read("A", "k", "none", 20).text(), "ab");
    EXPECT_TRUE(read("A", "k", "none", 20).isEnded());
    EXPECT_EQ(read("A", "k", "none", 2).text(), "a");
    EXPECT_EQ(read("A", "l", "none", 20).count, 0);
}

TEST(ProfileRead, OddFilesAreRead) {
    const struct {
        const char* name;
        std::string text;
    } rows[] = {
        {"CRLF", "[A]\r\nk=1\r\n"},
        {"no final line end", "[A]\nk=1"},
        {"half a line end", "[A]\nk=1\r"},
        {"a byte order mark", "\xEF\xBB\xBF[A]\nk=1\n"},
        {"a long comment", ";" + std::string(70000, 'x') + "\n[A]\nk=1\n"},
        {"a long key before", "[A]\n" + std::string(70000, 'k') + "=2\nk=1\n"},
        {"stray bytes", "\x80\xFF\x01\n[A]\n\xFE=\x02\nk=1\n\x00\n"s},
        {"NULs first", std::string(5000, '\0') + "\n[A]\nk=1\n"},
        {"brackets in values", "[B]\nx=[A]\n x=1 [A]\n[A]\nk=1\n"},
        {"a header that is never closed before", "[A\nk=2\n[A]\nk=1\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const TestHome home{{".odbc.ini", row.text}};
        EXPECT_EQ(value("A", "k"), "1");
    }
}

TEST(ProfileRead, WhatIsNotARegularFileGivesTheDefaultWithoutWaiting) {
    const TestHome home;
    ASSERT_EQ(::mkfifo(home.file("fifo").c_str(), 0600), 0);
    for (const std::string& path : {home.file("fifo"), home.path(), "/dev/zero"s, "/dev/null"s}) {
        for (const char* key : {"k", static_cast<const char*>(nullptr)}) {
            EXPECT_EQ(read("A", key, "none", 20, path.c_str()).text(), "none") << path;
            EXPECT_EQ(lastFailure().step, JxIniStepOpen);
            EXPECT_EQ(lastFailure().path, path);
        }
        EXPECT_EQ(read(nullptr, nullptr, "none", 20, path.c_str()).text(), "none") << path;
    }
}

TEST(ProfileRead, AFileThatMayNotBeReadGivesTheDefaultAndIsAFailure) {
    const TestHome home{{".odbc.ini", "[A]\nk=secret\n"}};
    ASSERT_EQ(::chmod(home.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(home.file(".odbc.ini").c_str(), 0), 0);
    EXPECT_TRUE(passesAsNobody([&] {
        EXPECT_EQ(read("A", "k", "none", 20).text(), "none");
        EXPECT_EQ(lastFailure().step, JxIniStepOpen);
        EXPECT_EQ(lastFailure().error, EACCES);
        EXPECT_EQ(lastFailure().path, home.file(".odbc.ini"));
    }));
}

TEST(ProfileRead, AnAbsentFileGivesTheDefaultAndIsNotAFailure) {
    const TestHome home;
    noteFailure(JxIniStepRead, "earlier", EIO);
    EXPECT_EQ(read("A", "k", "none", 20).text(), "none");
    EXPECT_EQ(lastFailure().step, JxIniStepNone);
    EXPECT_TRUE(home.names().empty()) << "a read makes no file";
}

TEST(ProfileRead, ASuccessForgetsAnEarlierFailure) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    EXPECT_EQ(value("A", "k", home.path().c_str()), "(none)");
    EXPECT_NE(lastFailure().step, JxIniStepNone);
    EXPECT_EQ(value("A", "none"), "(none)");
    EXPECT_EQ(lastFailure().step, JxIniStepNone);
}

TEST(ProfileRead, WithoutAHomeDirectoryGivesTheDefaultAndIsAFailure) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become an account that does not exist";
    EXPECT_TRUE(passesInChild([] {
        ASSERT_EQ(::setuid(54321), 0);
        ::unsetenv("HOME");
        ::unsetenv("ODBCINI");
        EXPECT_EQ(read("A", "k", "none", 20).text(), "none");
        EXPECT_EQ(lastFailure().step, JxIniStepLocate);
        EXPECT_EQ(lastFailure().error, ENOENT);
    }));
}

TEST(ProfileRead, TheEnvironmentIsReadAtEachCall) {
    const TestHome home{{".odbc.ini", "[A]\nk=home\n"}, {"own.ini", "[A]\nk=own\n"}};
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(value("A", "k"), "home");
        ::setenv("ODBCINI", home.file("own.ini").c_str(), 1);
        EXPECT_EQ(value("A", "k"), "own");
        ::unsetenv("ODBCINI");
    }
}

TEST(ProfileRead, AnUnchangedFileCostsOneStat) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}, {".odbcinst.ini", "[B]\nl=2\n"}};
    StampedFiles disk;
    const InUse inUse(disk);
    EXPECT_EQ(value("A", "k"), "1");
    EXPECT_EQ(value("B", "l", ".odbcinst.ini"), "2");
    disk.forget();
    for (int round = 0; round < 10; ++round) {
        EXPECT_EQ(value("A", "k"), "1");
        EXPECT_EQ(value("B", "l", ".odbcinst.ini"), "2");
        EXPECT_EQ(read("A", nullptr, "none", 20).text(), listBytes({"k"}));
        EXPECT_EQ(read(nullptr, nullptr, "none", 20).text(), listBytes({"A"}));
        EXPECT_EQ(value("A", "none"), "(none)");
    }
    EXPECT_EQ(disk.calls(), "look 50");
}

// A program may have used up the keys for per-thread data before the library could take one.
TEST(ProfileRead, WorksWithoutPerThreadData) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    EXPECT_TRUE(passesInChild([] {
        void* const before = ::pthread_getspecific(0);  // a sanitizer's, perhaps
        pthread_key_t key = 0;
        while (::pthread_key_create(&key, nullptr) == 0) {
        }
        EXPECT_EQ(value("A", "k"), "1");
        EXPECT_EQ(value("A", "none"), "(none)");
        EXPECT_EQ(value("A", "k", "none.ini"), "(none)");
        EXPECT_TRUE(jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes("2"), bytes(".odbc.ini")));
        EXPECT_EQ(value("A", "k"), "2");
        EXPECT_EQ(::pthread_getspecific(0), before) << "another's key was taken";
    }));
}

TEST(ProfileRead, TheDefaultMayLieInTheBuffer) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    GuardedBuffer buffer(20);
    std::string("default").copy(buffer.data(), 7);
    buffer.data()[7] = '\0';
    EXPECT_EQ(
        jxGetPrivateProfileString(bytes("A"), bytes("none"), buffer.bytes(), buffer.bytes(), 5, bytes(".odbc.ini")), 4);
    EXPECT_EQ(buffer.text(), "defa");
    EXPECT_EQ(jxGetPrivateProfileString(bytes("A"), bytes("none"), buffer.bytes() + 1, buffer.bytes(), 20,
                                        bytes(".odbc.ini")),
              3);
    EXPECT_EQ(buffer.text(), "efa");
}

TEST(ProfileRead, TheArgumentsMayLieInTheBuffer) {
    const TestHome home{{".odbc.ini", "[A]\nkey=value\n"}};
    GuardedBuffer buffer(20);
    std::string("key").copy(buffer.data(), 3);
    buffer.data()[3] = '\0';
    EXPECT_EQ(
        jxGetPrivateProfileString(bytes("A"), buffer.bytes(), bytes("none"), buffer.bytes(), 20, bytes(".odbc.ini")),
        5);
    EXPECT_EQ(buffer.text(), "value");
}

// ---- through jxPrivateProfileInit ----

std::string valueThrough(JxIniFileCache* cache, const char* section, const char* key) {
    GuardedBuffer buffer(50);
    const int count = jxGetPrivateProfileString(bytes(section), bytes(key), bytes("(none)"), buffer.bytes(), 50, cache);
    EXPECT_TRUE(buffer.isGuarded());
    return buffer.all().substr(0, static_cast<std::size_t>(count));
}

TEST(ProfileRead, ThroughTheCacheTheFileIsAsNamed) {
    const TestHome home{{".odbc.ini", "[A]\nk=home\n"}, {"other.ini", "[A]\nk=other\n"}};
    JxIniFileCache* cache = jxPrivateProfileInit(bytes(home.file("other.ini").c_str()));
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(valueThrough(cache, "A", "k"), "other");
    EXPECT_EQ(valueThrough(cache, "A", nullptr), listBytes({"k"}));
    EXPECT_EQ(valueThrough(cache, nullptr, nullptr), listBytes({"A"}));
    EXPECT_EQ(valueThrough(cache, "B", nullptr), "(none)");
    home.put("other.ini", "[A]\nk=changed\n");
    EXPECT_EQ(valueThrough(cache, "A", "k"), "changed") << "a text that changed meanwhile is read again";
    jxPrivateProfileTerm(cache);
}

TEST(ProfileRead, ThroughTheCacheNoNameIsSpecial) {
    const TestHome home{{".odbc.ini", "[A]\nk=home\n"}};
    ASSERT_EQ(::mkdir(home.file("work").c_str(), 0700), 0);
    home.put("work/.odbc.ini", "[A]\nk=work\n");
    EXPECT_TRUE(passesInChild([&] {
        ASSERT_EQ(::chdir(home.file("work").c_str()), 0);
        JxIniFileCache* cache = jxPrivateProfileInit(bytes(".odbc.ini"));
        EXPECT_EQ(valueThrough(cache, "A", "k"), "work");
        EXPECT_EQ(value("A", "k"), "home");
        jxPrivateProfileTerm(cache);
    }));
}

TEST(ProfileRead, TheFileOfACacheNeedNotExistAndIsNotMade) {
    const TestHome home;
    JxIniFileCache* cache = jxPrivateProfileInit(bytes(home.file("later.ini").c_str()));
    EXPECT_EQ(valueThrough(cache, "A", "k"), "(none)");
    EXPECT_EQ(lastFailure().step, JxIniStepNone);
    home.put("later.ini", "[A]\nk=1\n");
    EXPECT_EQ(valueThrough(cache, "A", "k"), "1");
    jxPrivateProfileTerm(cache);
    EXPECT_EQ(home.names().size(), 1U);
}

TEST(ProfileRead, ACacheOfNoNameGivesTheDefault) {
    JxIniFileCache* cache = jxPrivateProfileInit(bytes(""));
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(valueThrough(cache, "A", "k"), "(none)");
    EXPECT_EQ(lastFailure().step, JxIniStepLocate);
    jxPrivateProfileTerm(cache);
}

TEST(ProfileRead, InitOfNullIsNullAndTermOfNullDoesNothing) {
    EXPECT_EQ(jxPrivateProfileInit(nullptr), nullptr);
    jxPrivateProfileTerm(nullptr);
}

}  // namespace
}  // namespace jx::ini::test
