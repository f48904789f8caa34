// A user swaps links as fast as it goes while root, or another user, writes and reads a file in that user's home: what
// the links lead to next must never be replaced or read.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

#include <jxini.h>
#include <jxprofile.h>
#include "test_home.h"

namespace {

constexpr int kRuns = 5000;
constexpr int kMostRuns = 20 * kRuns;
constexpr uid_t kRoot = 0;
constexpr uid_t kVictim = 1;
constexpr uid_t kAttacker = 65534;

constexpr const char* kSecret = "[A]\nsecret=1\n";
constexpr const char* kBait = "[A]\nbait=1\n";

const unsigned char* bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.c_str());
}

void become(uid_t user) {
    if (user != kRoot && (::setgroups(0, nullptr) != 0 || ::setgid(user) != 0 || ::setuid(user) != 0))
        ::_exit(99);
}

pid_t startAs(uid_t user, const std::function<int()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    become(user);
    const int result = body();
    std::fflush(nullptr);
    ::_exit(result);
}

// Two names change places without end.
[[noreturn]] void swapForEver(const std::string& one, const std::string& other) {
    for (;;)
        ::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, other.c_str(), RENAME_EXCHANGE);
}

struct Tally {
    int written = 0;
    int refused = 0;
    int other = 0;
    int leaked = 0;
};

// Writes and reads the file, until both outcomes were seen; returns 1 when a secret was read or one never came.
int useTheFile(const std::string& file) {
    Tally tally;
    int run = 0;
    for (; run < kRuns || (run < kMostRuns && (tally.written == 0 || tally.refused == 0)); ++run) {
        if (jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes(std::to_string(run)), bytes(file)) == 1)
            ++tally.written;
        else if (jxIniLastFailure().step == JxIniStepLocate && jxIniLastFailure().error == EACCES)
            ++tally.refused;
        else
            ++tally.other;
        unsigned char secret[8];
        jxGetPrivateProfileString(bytes("A"), bytes("secret"), nullptr, secret, sizeof secret, bytes(file));
        tally.leaked += secret[0] != 0 ? 1 : 0;
    }
    std::printf("%d runs: %d written, %d links refused, %d other failures, %d reads of another file\n", run,
                tally.written, tally.refused, tally.other, tally.leaked);
    return tally.leaked == 0 && tally.written > 0 && tally.refused > 0 ? 0 : 1;
}

struct Identity {
    explicit Identity(const std::string& path) { EXPECT_EQ(::lstat(path.c_str(), &state), 0); }
    bool operator==(const Identity& other) const {
        return state.st_ino == other.state.st_ino && state.st_uid == other.state.st_uid &&
               state.st_ctim.tv_sec == other.state.st_ctim.tv_sec &&
               state.st_ctim.tv_nsec == other.state.st_ctim.tv_nsec;
    }
    struct stat state = {};
};

class IniLinkRace : public ::testing::Test {
protected:
    void SetUp() override {
        if (::geteuid() != kRoot)
            GTEST_SKIP() << "only root can become other users";
        ASSERT_EQ(::chmod(home_.path().c_str(), 0755), 0);
    }

    void makeDirectory(const std::string& name, uid_t owner) const {
        std::filesystem::create_directory(home_.file(name));
        ASSERT_EQ(::chown(home_.file(name).c_str(), owner, owner), 0);
    }
    void makeFile(const std::string& name, const char* text, uid_t owner) const {
        home_.put(name, text);
        ASSERT_EQ(::chmod(home_.file(name).c_str(), 0644), 0);
        ASSERT_EQ(::chown(home_.file(name).c_str(), owner, owner), 0);
    }
    void makeLink(const std::string& to, const std::string& name) const {
        ASSERT_EQ(::symlink(to.c_str(), home_.file(name).c_str()), 0);
        ASSERT_EQ(::lchown(home_.file(name).c_str(), kAttacker, kAttacker), 0);
    }

    // The file is used by one user while the attacker swaps two names.
    void race(uid_t user, const char* file, const char* one, const char* other) const {
        const Identity before(home_.file("safe/passwd"));
        const pid_t attacker = startAs(kAttacker, [&]() -> int { swapForEver(home_.file(one), home_.file(other)); });
        const pid_t victim = startAs(user, [&] { return useTheFile(home_.file(file)); });
        int status = -1;
        EXPECT_EQ(::waitpid(victim, &status, 0), victim);
        EXPECT_EQ(status, 0);
        EXPECT_EQ(::kill(attacker, SIGKILL), 0);
        EXPECT_EQ(::waitpid(attacker, nullptr, 0), attacker);
        EXPECT_TRUE(before == Identity(home_.file("safe/passwd")));
        EXPECT_EQ(home_.text("safe/passwd"), kSecret);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home_.file("safe")), {}), 1) << "nothing is left";
    }

    // The user who is attacked has a file of that name elsewhere.
    void prepare(uid_t user) const {
        makeDirectory("safe", user);
        makeFile("safe/passwd", kSecret, user);
        makeDirectory("home", kAttacker);
    }

    // The file, and the directory it is in, may be written by all.
    void raceWithADirectory(uid_t user, uid_t owner, const char* file) const {
        prepare(user);
        makeDirectory("home/d", kAttacker);
        makeFile("home/d/passwd", kBait, owner);
        makeLink("../safe", "home/e");
        makeLink("d/passwd", "home/.odbc.ini");
        ASSERT_EQ(::chmod(home_.file("home/d").c_str(), 0777), 0);
        race(user, file, "home/d", "home/e");
    }

    void raceWithTheFile(uid_t user) const {
        prepare(user);
        ASSERT_EQ(::chmod(home_.file("home").c_str(), 0777), 0);
        makeFile("home/.odbc.ini", kBait, user);
        makeLink("../safe/passwd", "home/e");
        race(user, "home/.odbc.ini", "home/.odbc.ini", "home/e");
    }

    const jx::test::TestHome home_;
};

TEST_F(IniLinkRace, NoSwapOfLinksLeadsRootToAnotherFile) {
    raceWithADirectory(kRoot, kAttacker, "home/.odbc.ini");
}

TEST_F(IniLinkRace, NoSwapOfADirectoryLeadsAUserToAnotherFile) {
    raceWithADirectory(kVictim, kVictim, "home/d/passwd");
}

TEST_F(IniLinkRace, NoSwapOfTheFileItselfLeadsRootToAnotherFile) {
    raceWithTheFile(kRoot);
}

TEST_F(IniLinkRace, NoSwapOfTheFileItselfLeadsAUserToAnotherFile) {
    raceWithTheFile(kVictim);
}

}  // namespace
