// Splitting file names, and finding the files that match a pattern.
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <jxfiles.h>
#include "allocations.h"
#include "test_home.h"
#include "unprivileged.h"

extern "C" {
struct dirent64;
dirent64* __real_readdir64(DIR* directory);
dirent64* __wrap_readdir64(DIR* directory);
}

namespace {

constinit int readsUntilFailure = 0;  // 0 is never

}  // namespace

// Makes reading a directory fail in the middle.
dirent64* __wrap_readdir64(DIR* directory) {
    if (readsUntilFailure == 0 || --readsUntilFailure > 0)
        return __real_readdir64(directory);
    errno = EIO;
    return nullptr;
}

namespace {

namespace fs = std::filesystem;
using jx::test::ShortMemory;
using jx::test::TestHome;
using Names = std::vector<std::string>;

const unsigned char* bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.c_str());
}

// The three parts as one text, "directory|base|extension", or "refused" when nothing was changed.
std::string parts(const std::string& path) {
    std::vector<unsigned char> buffer(path.begin(), path.end());
    buffer.push_back(0);
    unsigned char base[kBosBaseNameSize];
    unsigned char extension[kBosExtensionSize];
    std::memset(base, '#', sizeof base);
    std::memset(extension, '#', sizeof extension);
    if (bosParseName(buffer.data(), base, extension, 0) == 1)
        return std::string(reinterpret_cast<char*>(buffer.data())) + "|" + reinterpret_cast<char*>(base) + "|" +
               reinterpret_cast<char*>(extension);
    EXPECT_EQ(reinterpret_cast<char*>(buffer.data()), path);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(base), sizeof base), std::string(sizeof base, '#'));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(extension), sizeof extension), std::string(sizeof extension, '#'));
    return "refused";
}

struct Row {
    std::string path;
    std::string parts;
};

TEST(ParseName, SplitsDirectoryBaseNameAndExtension) {
    const std::string base131(131, 'b');
    const std::string base132(132, 'b');
    const Row rows[] = {
        {"", "||"},
        {"x", "|x|"},
        {"x.so", "|x|so"},
        {"/usr/lib/libdrv.so", "/usr/lib|libdrv|so"},
        {"odbc.inf", "|odbc|inf"},
        {"a.b.c", "|a.b|c"},
        {"libdrv.so.1", "|libdrv.so|1"},
        {"dir.d/file", "dir.d|file|"},
        {"./file", ".|file|"},
        {"../a.b", "..|a|b"},
        {"file.", "|file|"},
        {".", "||"},
        {"..", "|.|"},
        {".so", "||so"},
        {"/", "/||"},
        {"//", "/||"},
        {"/x", "/|x|"},
        {"//x", "/|x|"},
        {"///x.y", "/|x|y"},
        {"x/", "x||"},
        {"x//", "x||"},
        {"a//x", "a|x|"},
        {"/a//b//x.so", "/a//b|x|so"},
        {"a b/c d.e f", "a b|c d|e f"},
        {"\xff/\x80.\x81", "\xff|\x80|\x81"},
        {"x.123", "|x|123"},
        {"x.1234", "refused"},
        {".hidden", "refused"},
        {"dir/.profile", "refused"},
        {base131, "|" + base131 + "|"},
        {base132, "refused"},
        {"/d/" + base131 + ".123", "/d|" + base131 + "|123"},
        {"/d/" + base132 + ".so", "refused"},
        {"/d/" + base131 + ".1234", "refused"},
        {std::string(70000, 'd') + "/x.so", std::string(70000, 'd') + "|x|so"},
        {std::string(70000, '/') + "x", "/|x|"},
        {std::string(70000, 'b'), "refused"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path.substr(0, 200));
        EXPECT_EQ(parts(row.path), row.parts);
    }
}

TEST(ParseName, RefusesNullAndChangesNothing) {
    unsigned char path[] = "/a/b.c";
    unsigned char base[kBosBaseNameSize] = "base";
    unsigned char extension[kBosExtensionSize] = "ext";
    EXPECT_EQ(bosParseName(nullptr, base, extension, 0), 0);
    EXPECT_EQ(bosParseName(path, nullptr, extension, 0), 0);
    EXPECT_EQ(bosParseName(path, base, nullptr, 0), 0);
    EXPECT_STREQ(reinterpret_cast<char*>(path), "/a/b.c");
    EXPECT_STREQ(reinterpret_cast<char*>(base), "base");
    EXPECT_STREQ(reinterpret_cast<char*>(extension), "ext");
}

// The whole walk; the cursor must be null again at its end.
Names found(const std::string& pattern) {
    Names names;
    void* cursor = nullptr;
    while (const unsigned char* path = bosFindFiles(&cursor, bytes(pattern)))
        names.emplace_back(reinterpret_cast<const char*>(path));
    EXPECT_EQ(cursor, nullptr);
    return names;
}

// The names found in a test's directory, without that directory.
Names foundIn(const TestHome& home, const std::string& pattern) {
    Names names = found(home.file(pattern));
    for (std::string& name : names) {
        EXPECT_EQ(name.substr(0, home.path().size() + 1), home.path() + "/");
        name.erase(0, home.path().size() + 1);
    }
    return names;
}

TEST(FindFiles, MatchesNamesWithStarsAndQuestionMarks) {
    const TestHome home{{"odbc.inf", ""}, {"odbc.ini", ""}, {"odbc", ""}, {"b", ""},
                        {"aab", ""},      {"a*b", ""},      {"[x]", ""}};
    const struct {
        const char* pattern;
        Names names;
    } rows[] = {
        {"odbc.inf", {"odbc.inf"}},
        {"ODBC.INF", {}},
        {"odbc.in?", {"odbc.inf", "odbc.ini"}},
        {"odbc.*", {"odbc.inf", "odbc.ini"}},
        {"*", {"[x]", "a*b", "aab", "b", "odbc", "odbc.inf", "odbc.ini"}},
        {"**", {"[x]", "a*b", "aab", "b", "odbc", "odbc.inf", "odbc.ini"}},
        {"*b", {"a*b", "aab", "b"}},
        {"a*b", {"a*b", "aab"}},
        {"*a*b*", {"a*b", "aab"}},
        {"?", {"b"}},
        {"???", {"[x]", "a*b", "aab"}},
        {"????", {"odbc"}},
        {"?*", {"[x]", "a*b", "aab", "b", "odbc", "odbc.inf", "odbc.ini"}},
        {"*i*", {"odbc.inf", "odbc.ini"}},
        {"*.i*n*", {"odbc.inf", "odbc.ini"}},
        {"*?.in?", {"odbc.inf", "odbc.ini"}},
        {"[x]", {"[x]"}},
        {"[o]*", {}},
        {"\\o*", {}},
        {"c*", {}},
        {"", {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.pattern);
        EXPECT_EQ(foundIn(home, row.pattern), row.names);
    }
}

TEST(FindFiles, OrdersByBytesWhateverOrderTheFilesWereMadeIn) {
    const TestHome home{{"b", ""}, {"\xff", ""}, {"a", ""}, {"B", ""}, {"a.1", ""}, {"\xc3\xa9", ""}};
    EXPECT_EQ(foundIn(home, "*"), (Names{"B", "a", "a.1", "b", "\xc3\xa9", "\xff"}));
}

TEST(FindFiles, ALeadingDotIsMatchedByADotOnly) {
    const TestHome home{{".odbc.ini", ""}, {"x.ini", ""}};
    EXPECT_EQ(foundIn(home, "*.ini"), Names{"x.ini"});
    EXPECT_EQ(foundIn(home, "?odbc.ini"), Names{});
    EXPECT_EQ(foundIn(home, ".*"), Names{".odbc.ini"});
    EXPECT_EQ(foundIn(home, ".odbc.ini"), Names{".odbc.ini"});
}

TEST(FindFiles, OnlyRegularFilesAndLinksToThemCount) {
    const TestHome home{{"file", ""}};
    fs::create_directory(home.file("directory"));
    fs::create_symlink("file", home.file("to-file"));
    fs::create_symlink("directory", home.file("to-directory"));
    fs::create_symlink("nowhere", home.file("to-nowhere"));
    ASSERT_EQ(mkfifo(home.file("fifo").c_str(), 0600), 0);
    EXPECT_EQ(foundIn(home, "*"), (Names{"file", "to-file"}));
    for (const char* name : {"directory", "fifo", "to-directory", "to-nowhere", "absent", "file/", "directory/"})
        EXPECT_EQ(foundIn(home, name), Names{}) << name;
    EXPECT_EQ(found("/dev/null"), Names{});
}

TEST(FindFiles, KeepsTheDirectoryAsSpelled) {
    const TestHome home{{"one", ""}};
    EXPECT_EQ(found(home.path() + "//o*"), Names{home.path() + "//one"});
    const fs::path before = fs::current_path();
    fs::current_path(home.path());
    EXPECT_EQ(found("o*"), Names{"one"});
    EXPECT_EQ(found("one"), Names{"one"});
    EXPECT_EQ(found("./o*"), Names{"./one"});
    fs::current_path(before);
}

TEST(FindFiles, WildcardsInTheDirectoryAreLettersThere) {
    const TestHome home;
    fs::create_directory(home.file("d*"));
    fs::create_directory(home.file("dx"));
    home.put("d*/f", "");
    home.put("dx/f", "");
    EXPECT_EQ(foundIn(home, "d*/?"), Names{"d*/f"});
    EXPECT_EQ(foundIn(home, "d?/?"), Names{});
}

TEST(FindFiles, AnAbsentDirectoryHasNoFiles) {
    EXPECT_EQ(found("/nowhere/*"), Names{});
    const TestHome home{{"file", ""}};
    EXPECT_EQ(foundIn(home, "file/*"), Names{});
}

TEST(FindFiles, AnUnreadableDirectoryHasNoFilesButGivesAPlainName) {
    const TestHome home;
    fs::permissions(home.path(), fs::perms(0755));
    fs::create_directory(home.file("closed"));
    home.put("closed/f", "");
    fs::permissions(home.file("closed"), fs::perms(0111));
    EXPECT_EQ(jx::test::asNobody([&home] {
                  const bool starFails = found(home.file("closed/*")).empty();
                  const bool nameFound = found(home.file("closed/f")).size() == 1;
                  return starFails && nameFound ? 0 : 1;
              }),
              0);
    fs::permissions(home.file("closed"), fs::perms(0700));
}

TEST(FindFiles, ADirectoryThatFailsInTheMiddleHasNoFiles) {
    const TestHome home{{"a", ""}, {"b", ""}};
    readsUntilFailure = 4;  // "." and "..", one file
    EXPECT_EQ(foundIn(home, "*"), Names{});
    EXPECT_EQ(readsUntilFailure, 0);
    EXPECT_EQ(foundIn(home, "*").size(), 2U);
}

TEST(FindFiles, LeavesThePatternAlone) {
    const TestHome home{{"odbc.inf", ""}};
    std::string pattern = home.file("*.inf");
    const std::string before = pattern;
    EXPECT_EQ(found(pattern).size(), 1U);
    EXPECT_EQ(pattern, before);
}

TEST(FindFiles, TheFilesAreThoseOfTheFirstCall) {
    const TestHome home{{"a", ""}, {"b", ""}};
    void* cursor = nullptr;
    const std::string pattern = home.file("*");
    EXPECT_STREQ(reinterpret_cast<const char*>(bosFindFiles(&cursor, bytes(pattern))), home.file("a").c_str());
    home.put("c", "");
    EXPECT_STREQ(reinterpret_cast<const char*>(bosFindFiles(&cursor, nullptr)), home.file("b").c_str());
    EXPECT_EQ(bosFindFiles(&cursor, nullptr), nullptr);
    EXPECT_EQ(cursor, nullptr);
    EXPECT_EQ(foundIn(home, "*").size(), 3U);
}

TEST(FindFiles, AWalkCanBeGivenUp) {
    const TestHome home{{"a", ""}, {"b", ""}};
    const long before = jx::test::liveBlocks();
    void* cursor = nullptr;
    EXPECT_NE(bosFindFiles(&cursor, bytes(home.file("*"))), nullptr);
    bosEndFind(&cursor);
    EXPECT_EQ(cursor, nullptr);
    bosEndFind(&cursor);
    bosEndFind(nullptr);
    EXPECT_EQ(jx::test::liveBlocks(), before);
}

TEST(FindFiles, TwoWalksDoNotDisturbEachOther) {
    const TestHome home{{"a", ""}, {"b", ""}};
    const std::string pattern = home.file("*");
    void* first = nullptr;
    void* second = nullptr;
    EXPECT_NE(bosFindFiles(&first, bytes(pattern)), nullptr);
    EXPECT_STREQ(reinterpret_cast<const char*>(bosFindFiles(&second, bytes(pattern))), home.file("a").c_str());
    EXPECT_STREQ(reinterpret_cast<const char*>(bosFindFiles(&first, bytes(pattern))), home.file("b").c_str());
    bosEndFind(&first);
    bosEndFind(&second);
}

TEST(FindFiles, NullArgumentsFindNothing) {
    EXPECT_EQ(bosFindFiles(nullptr, bytes("/x")), nullptr);
    void* cursor = nullptr;
    EXPECT_EQ(bosFindFiles(&cursor, nullptr), nullptr);
    EXPECT_EQ(cursor, nullptr);
}

TEST(FindFiles, ManyStarsEndInReasonableTime) {
    const TestHome home{{std::string(250, 'a'), ""}};
    std::string pattern;
    for (int i = 0; i < 60; ++i)
        pattern += "a*";
    EXPECT_EQ(foundIn(home, pattern + "b"), Names{});
    EXPECT_EQ(foundIn(home, pattern), Names{std::string(250, 'a')});
}

TEST(FindFiles, WithoutMemoryTheWalkEndsAtOnce) {
    const TestHome home{{"a-file-name-that-is-too-long-for-a-short-string", ""}, {"b", ""}};
    const std::string pattern = home.file("*");
    const int failures = jx::test::failEachAllocation([&](ShortMemory& memory) {
        void* cursor = nullptr;
        memory.begin();
        const unsigned char* first = bosFindFiles(&cursor, bytes(pattern));
        const int reason = errno;
        const bool failed = memory.end();
        EXPECT_EQ(first == nullptr, failed);
        EXPECT_EQ(cursor == nullptr, failed);
        if (failed) {
            EXPECT_EQ(reason, ENOMEM);
        }
        bosEndFind(&cursor);
    });
    EXPECT_GE(failures, 4);
}

}  // namespace
