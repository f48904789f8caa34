// Profile writes, and what they leave in the file.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <jxprofile.h>
#include "child_process.h"
#include "disk_check.h"
#include "faulty_files.h"
#include "jxutl/thread/failure.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;
using Names = std::vector<std::string>;

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

int write(const char* section, const char* key, const char* value, const char* file = ".odbc.ini") {
    return jxWritePrivateProfileString(bytes(section), bytes(key), bytes(value), bytes(file));
}

TEST(ProfileWrite, StoresChangesAndDeletes) {
    const TestHome home;
    EXPECT_EQ(write("A", "k", "1"), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1\n");
    EXPECT_EQ(write("A", "l", "2"), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1\nl=2\n");
    EXPECT_EQ(write("a", "K", "3"), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=3\nl=2\n");
    EXPECT_EQ(write("B", "m", "4"), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=3\nl=2\n\n[B]\nm=4\n");
    EXPECT_EQ(write("A", "k", nullptr), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nl=2\n\n[B]\nm=4\n");
    EXPECT_EQ(write("A", nullptr, nullptr), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[B]\nm=4\n");
    EXPECT_EQ(home.names(), Names{".odbc.ini"});
}

TEST(ProfileWrite, KeepsCommentsAndLineEnds) {
    const TestHome home{{".odbc.ini", "; mine\r\n[A]\r\nx = 1\r\n\r\n# theirs\r\n[B]\r\n"}};
    EXPECT_EQ(write("A", "y", "2"), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "; mine\r\n[A]\r\nx = 1\r\ny=2\r\n\r\n# theirs\r\n[B]\r\n");
}

TEST(ProfileWrite, KnowsTheTwoFilesAndTakesOtherNamesAsSpelled) {
    const TestHome home;
    EXPECT_EQ(write("A", "k", "1", ".odbcinst.ini"), 1);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[A]\nk=1\n");
    EXPECT_EQ(write("A", "k", "2", home.file("other.ini").c_str()), 1);
    EXPECT_EQ(home.text("other.ini"), "[A]\nk=2\n");
    setenv("ODBCINI", home.file("named.ini").c_str(), 1);
    EXPECT_EQ(write("A", "k", "3"), 1);
    EXPECT_EQ(home.text("named.ini"), "[A]\nk=3\n");
    EXPECT_EQ(home.names(), (Names{".odbcinst.ini", "named.ini", "other.ini"}));
}

TEST(ProfileWrite, OnlyANewFileAtTheSharedPlaceIsReadableByAll) {
    const Umask set(0022);
    const TestHome home;
    EXPECT_EQ(write("A", "k", "1", ".odbcinst.ini"), 1);
    EXPECT_EQ(modeOf(home.file(".odbcinst.ini")), 0600U);
    setenv("ODBCINSTINI", home.file("drivers.ini").c_str(), 1);
    EXPECT_EQ(write("A", "k", "1", ".odbcinst.ini"), 1);
    EXPECT_EQ(modeOf(home.file("drivers.ini")), 0644U);
    EXPECT_EQ(write("A", "k", "1", home.file("spelled.ini").c_str()), 1);
    EXPECT_EQ(modeOf(home.file("spelled.ini")), 0600U);
    setenv("ODBCINI", home.file("sources.ini").c_str(), 1);
    EXPECT_EQ(write("A", "k", "1"), 1);
    EXPECT_EQ(modeOf(home.file("sources.ini")), 0600U);
}

TEST(ProfileWrite, RefusesWhatTheFileCouldNotGiveBack) {
    struct Row {
        const char* section;
        const char* key;
        const char* value;
    };
    constexpr Row kRows[] = {
        {"A\n", "k", "1"}, {"A\r[B]", "k", "1"},        {"A", "k\nl", "1"},    {"A", "k\r", "1"},   {"A", "k", "1\n2"},
        {"A", "k", "1\r"}, {"A", "k=l", "1"},           {"A", "=", "1"},       {"A", "[k", "1"},    {"A", ";k", "1"},
        {"A", "#k", "1"},  {"A", " [k", "1"},           {"A", "\t;k", "1"},    {nullptr, "k", "1"}, {"", "k", "1"},
        {" \t", "k", "1"}, {nullptr, nullptr, nullptr}, {"", nullptr, nullptr}};
    const TestHome home{{".odbc.ini", "[A]\nk=0\n"}};
    const Identity before(home.file(".odbc.ini"));
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::string(row.section != nullptr ? row.section : "(null)") + "|" +
                     (row.key != nullptr ? row.key : "(null)"));
        noteSuccess();
        EXPECT_EQ(write(row.section, row.key, row.value), 0);
        EXPECT_EQ(lastFailure().step, JxIniStepArgument);
        EXPECT_EQ(lastFailure().error, EINVAL);
        EXPECT_TRUE(before == Identity(home.file(".odbc.ini")));
        EXPECT_EQ(home.names(), Names{".odbc.ini"});
    }
}

// Programs rely on this.
TEST(ProfileWrite, AnEmptyKeyStoresNothingSucceedsAndLeavesTheFileAlone) {
    const TestHome home{{".odbc.ini", "[A]\nk=0\n"}};
    const Identity before(home.file(".odbc.ini"));
    for (const char* key : {"", " ", "\t "})
        for (const char* value : {static_cast<const char*>(nullptr), "", "1"}) {
            EXPECT_EQ(write("A", key, value), 1);
            EXPECT_EQ(write("No", key, value), 1);
            EXPECT_EQ(lastFailure().step, JxIniStepNone);
        }
    EXPECT_TRUE(before == Identity(home.file(".odbc.ini")));
    EXPECT_EQ(write("A", "", "", ".odbcinst.ini"), 1);
    EXPECT_EQ(write("A\n", "", ""), 0) << "a section that is refused stays refused";
    EXPECT_EQ(home.names(), Names{".odbc.ini"});
}

TEST(ProfileWrite, NeitherARefusalNorAnEmptyKeyTouchesTheDisk) {
    const TestHome home{{".odbc.ini", "[A]\nk=0\n"}};
    FaultyFiles files(1, Fail::fromThenOn, EIO);
    const InUse inUse(files);
    EXPECT_EQ(write("A", "k=", "1"), 0);
    EXPECT_EQ(write("A", "", ""), 1);
    EXPECT_FALSE(files.fired());
}

TEST(ProfileWrite, ANullOrEmptyFileNameGivesZero) {
    const TestHome home;
    EXPECT_EQ(write("A", "k", "1", nullptr), 0);
    EXPECT_EQ(lastFailure().step, JxIniStepLocate);
    EXPECT_EQ(write("A", "k", "1", ""), 0);
    EXPECT_EQ(write("A", "", "", nullptr), 0);
    EXPECT_EQ(home.names(), Names{});
}

TEST(ProfileWrite, TrimsItsArgumentsAndStoresAnEmptyValue) {
    const TestHome home;
    EXPECT_EQ(write(" A ", "\tk ", "  1 2  "), 1);
    EXPECT_EQ(write("A", "l", "  "), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1 2\nl=\n");
}

TEST(ProfileWrite, StoresLongNamesAndValues) {
    for (const std::size_t size : {1U, 255U, 1024U, 32767U, 32768U, 65535U, 70000U}) {
        SCOPED_TRACE(size);
        const TestHome home;
        const std::string section(size, 's');
        const std::string key(size, 'k');
        const std::string value(size, 'v');
        EXPECT_EQ(write(section.c_str(), key.c_str(), value.c_str()), 1);
        EXPECT_EQ(home.text(".odbc.ini"), "[" + section + "]\n" + key + "=" + value + "\n");
    }
}

TEST(ProfileWrite, ReportsItsFailureAndForgetsItOnSuccess) {
    const TestHome home;
    const std::string file = home.file("no/x.ini");
    EXPECT_EQ(write("A", "k", "1", file.c_str()), 0);
    EXPECT_EQ(lastFailure().step, JxIniStepLock);
    EXPECT_EQ(lastFailure().error, ENOENT);
    EXPECT_EQ(lastFailure().path, home.file("no/.x.ini.jxlock"));
    EXPECT_EQ(write("A", "k", "1"), 1);
    EXPECT_EQ(lastFailure().step, JxIniStepNone);
}

TEST(ProfileWrite, IsMadeAgainWhenTheFileWasReplacedMeanwhile) {
    const TestHome home{{"x.ini", "[A]\nk=1\n"}};
    class Saving : public WatchedFiles {
    public:
        explicit Saving(const TestHome& home) : home_(home) {}

    protected:
        int before(Call call, std::string_view) override {
            if (call == Call::rename && !std::exchange(saved_, true)) {
                home_.put("saved", "[A]\nk=1\nsaved=1\n");
                EXPECT_EQ(::rename(home_.file("saved").c_str(), home_.file("x.ini").c_str()), 0);
            }
            return 0;
        }

    private:
        const TestHome& home_;
        bool saved_ = false;
    };
    Saving files(home);
    const InUse inUse(files);
    EXPECT_EQ(write("A", "k", "2", home.file("x.ini").c_str()), 1);
    EXPECT_EQ(home.text("x.ini"), "[A]\nk=2\nsaved=1\n");
}

TEST(ProfileWrite, AFileThatCannotBeWrittenGivesZero) {
    const TestHome home{{".odbc.ini", "[A]\nk=0\n"}};
    ASSERT_EQ(::chmod(home.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(home.file(".odbc.ini").c_str(), 0644), 0);
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file that this user has no right to";
    EXPECT_TRUE(passesAsNobody([] {
        EXPECT_EQ(write("A", "k", "1"), 0);
        EXPECT_EQ(lastFailure().error, EACCES);
    }));
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=0\n");
    EXPECT_EQ(home.names(), Names{".odbc.ini"});
}

TEST(ProfileWrite, StoringWhatIsStoredNeedsNoRightToWrite) {
    const TestHome home{{".odbc.ini", "[A]\nk=0\n"}};
    EXPECT_EQ(write("A", "k", nullptr, home.file("no/x.ini").c_str()), 1);
    EXPECT_EQ(write("A", "k", nullptr, home.file(".odbc.ini/x.ini").c_str()), 1);
    EXPECT_EQ(lastFailure().step, JxIniStepNone);
    ASSERT_EQ(::chmod(home.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(home.file(".odbc.ini").c_str(), 0644), 0);
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file that this user has no right to";
    EXPECT_TRUE(passesAsNobody([] {
        EXPECT_EQ(write("A", "k", "0"), 1);
        EXPECT_EQ(write("A", "l", nullptr), 1);
        EXPECT_EQ(write("B", nullptr, nullptr), 1);
        EXPECT_EQ(lastFailure().step, JxIniStepNone);
        EXPECT_EQ(write("A", "k", nullptr), 0);
        EXPECT_EQ(lastFailure().step, JxIniStepLock);
        EXPECT_EQ(lastFailure().error, EACCES);
    }));
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=0\n");
    EXPECT_EQ(home.names(), Names{".odbc.ini"});
}

// NoLockFiles: opening a lock file fails with that error.
class NoLockFiles : public WatchedFiles {
public:
    explicit NoLockFiles(int error) : error_(error) {}

protected:
    int before(Call call, std::string_view path) override {
        return call == Call::open && path.ends_with(".jxlock") ? error_ : 0;
    }

private:
    int error_;
};

TEST(ProfileWrite, StoringWhatIsStoredNeedsNoLockThatTheDiskRefuses) {
    const TestHome home{{".odbc.ini", "[A]\nk=0\n"}};
    struct Row {
        int error;
        int result;
    };
    for (const auto& [error, result] : {Row{ENOSPC, 1}, Row{EDQUOT, 1}, Row{EPERM, 1}, Row{EROFS, 1}, Row{EIO, 0}}) {
        SCOPED_TRACE(error);
        NoLockFiles files(error);
        const InUse inUse(files);
        EXPECT_EQ(write("A", "k", "0"), result);
        EXPECT_EQ(write("A", "l", nullptr), result);
        EXPECT_EQ(lastFailure().error, result == 1 ? 0 : error);
        EXPECT_EQ(write("A", "k", "1"), 0);
        EXPECT_EQ(lastFailure().step, JxIniStepLock);
        EXPECT_EQ(lastFailure().error, error);
    }
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=0\n");
    EXPECT_EQ(home.names(), Names{".odbc.ini"});
}

TEST(ProfileWrite, ThroughTheCacheIsFinalWhenItReturns) {
    const TestHome home;
    const std::string name = home.file("cached.ini");
    JxIniFileCache* cache = jxPrivateProfileInit(bytes(name.c_str()));
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes("1"), cache), 1);
    EXPECT_EQ(home.text("cached.ini"), "[A]\nk=1\n");
    EXPECT_EQ(jxWritePrivateProfileString(bytes("A"), bytes("k="), bytes("1"), cache), 0);
    EXPECT_EQ(jxWritePrivateProfileString(bytes("A"), bytes("k"), nullptr, cache), 1);
    EXPECT_EQ(home.text("cached.ini"), "[A]\n");
    const Identity before(name);
    jxPrivateProfileTerm(cache);
    EXPECT_TRUE(before == Identity(name));
    EXPECT_EQ(jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes("1"), static_cast<JxIniFileCache*>(nullptr)),
              0);
}

TEST(ProfileWrite, NoNameIsSpecialToTheCache) {
    const TestHome home;
    EXPECT_TRUE(passesInChild([&home] {
        ASSERT_EQ(::mkdir(home.file("here").c_str(), 0700), 0);
        ASSERT_EQ(::chdir(home.file("here").c_str()), 0);
        JxIniFileCache* cache = jxPrivateProfileInit(bytes(".odbc.ini"));
        EXPECT_EQ(jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes("1"), cache), 1);
        jxPrivateProfileTerm(cache);
    }));
    EXPECT_EQ(home.text("here/.odbc.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home.names(), Names{"here"});
}

}  // namespace
}  // namespace jx::ini::test
