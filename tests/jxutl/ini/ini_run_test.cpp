// Several writes of a thread as one: what is seen meanwhile, what is written at the end, and what is left of a failure.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <jxini.h>
#include <jxprofile.h>
#include "change_cases.h"
#include "child_process.h"
#include "deadly_files.h"
#include "disk_check.h"
#include "faulty_files.h"
#include "ini_change_fixture.h"
#include "recording_files.h"
#include "stamped_files.h"

namespace jx::ini::test {
namespace {

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

class IniRunTest : public ::testing::Test {
protected:
    void SetUp() override { noteSuccess(); }
    void TearDown() override { EXPECT_EQ(openDescriptors(), descriptors_); }

    bool put(const char* file, const char* section, const char* key, const char* value) const {
        return jxWritePrivateProfileString(bytes(section), bytes(key), bytes(value), bytes(home_.file(file).c_str())) ==
               1;
    }

    std::string get(const char* file, const char* section, const char* key) const {
        std::array<unsigned char, 200> value;
        const int length = jxGetPrivateProfileString(bytes(section), bytes(key), bytes("(default)"), value.data(),
                                                     value.size(), bytes(home_.file(file).c_str()));
        std::string text(reinterpret_cast<const char*>(value.data()), static_cast<std::size_t>(length));
        std::replace(text.begin(), text.end(), '\0', ' ');
        return text;
    }

    std::string textOfFile(const char* file) const { return textOf(home_.file(file)); }

    const InMemory inMemory_;
    const std::size_t descriptors_ = openDescriptors();
    const jx::test::TestHome home_;
};

TEST_F(IniRunTest, WritesEachFileOnceInTheOrderOfTheirFirstWrites) {
    home_.put("b.ini", "; mine\n[A]\nk=1\n");
    RecordingFiles files;
    const InUse inUse(files);
    JxIniRun* run = jxIniBeginRun();
    for (int n = 0; n < 50; ++n) {
        EXPECT_TRUE(put("b.ini", "A", "k", std::to_string(n).c_str()));
        EXPECT_TRUE(put("a.ini", "B", std::to_string(n).c_str(), "x"));
    }
    EXPECT_EQ(jxIniCommitRun(run), 1);
    std::vector<std::string> placed;
    for (const std::string& call : files.trace())
        if (call.starts_with("flush") || call.starts_with("exchange") || call.starts_with("rename"))
            placed.push_back(call);
    EXPECT_EQ(placed, (std::vector<std::string>{"flush .b.ini.jxnew-N", "exchange .b.ini.jxnew-N b.ini", "flush .",
                                                "flush .a.ini.jxnew-N", "rename .a.ini.jxnew-N a.ini", "flush ."}));
    EXPECT_EQ(textOfFile("b.ini"), "; mine\n[A]\nk=49\n");
    EXPECT_EQ(home_.names(), (Names{"a.ini", "b.ini"}));
}

TEST_F(IniRunTest, TheThreadReadsWhatItHasWritten) {
    home_.put("x.ini", "[A]\nk=1\n[B]\n");
    ASSERT_EQ(::symlink("x.ini", home_.file("link").c_str()), 0);
    JxIniRun* run = jxIniBeginRun();
    EXPECT_EQ(get("x.ini", "A", "k"), "1");
    EXPECT_TRUE(put("x.ini", "A", "k", "2"));
    EXPECT_EQ(get("x.ini", "A", "k"), "2");
    EXPECT_EQ(get("link", "A", "k"), "2") << "another path to the same file";
    EXPECT_TRUE(put("link", "B", nullptr, nullptr));
    EXPECT_EQ(get("x.ini", nullptr, nullptr), "A ");
    for (const char* name : {"x.ini", "link"}) {
        JxIniText* text = jxIniRead(home_.file(name).c_str());
        EXPECT_STREQ(jxIniBytes(text, nullptr), "[A]\nk=2\n");
        jxIniRelease(text);
        JxIniChange* preview = jxIniPreview(home_.file(name).c_str());
        EXPECT_STREQ(jxIniBefore(preview, nullptr), "[A]\nk=2\n");
        EXPECT_EQ(jxIniCommit(preview), 0);
        EXPECT_EQ(lastFailure().error, EPERM);
    }
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=1\n[B]\n");
    EXPECT_EQ(jxIniCommitRun(run), 1);
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=2\n");
    EXPECT_EQ(get("x.ini", "A", "k"), "2");
}

TEST_F(IniRunTest, AReadOfAnotherFileCostsOneStatAsEver) {
    home_.put("x.ini", "[A]\nk=1\n");
    StampedFiles files;
    const InUse inUse(files);
    JxIniRun* run = jxIniBeginRun();
    EXPECT_TRUE(put("y.ini", "A", "k", "2"));
    EXPECT_EQ(get("x.ini", "A", "k"), "1");
    files.forget();
    for (int n = 0; n < 10; ++n)
        EXPECT_EQ(get("x.ini", "A", "k"), "1");
    EXPECT_EQ(files.calls(), "look 10");
    EXPECT_EQ(jxIniCommitRun(run), 1);
}

TEST_F(IniRunTest, AnAbsentFileIsAbsentUntilItIsWritten) {
    JxIniRun* run = jxIniBeginRun();
    EXPECT_TRUE(put("x.ini", "A", nullptr, nullptr)) << "deleting what is not there";
    EXPECT_EQ(get("x.ini", nullptr, nullptr), "(default)");
    EXPECT_EQ(jxIniRead(home_.file("x.ini").c_str()), nullptr);
    EXPECT_TRUE(put("x.ini", "A", "k", "1"));
    EXPECT_EQ(get("x.ini", nullptr, nullptr), "A ");
    EXPECT_EQ(jxIniCommitRun(run), 1);
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=1\n");
}

TEST_F(IniRunTest, OtherThreadsSeeNothingOfItBeforeTheEnd) {
    home_.put("x.ini", "[A]\nk=1\n");
    JxIniRun* run = jxIniBeginRun();
    EXPECT_TRUE(put("x.ini", "A", "k", "2"));
    std::thread([this] {
        EXPECT_EQ(get("x.ini", "A", "k"), "1");
        EXPECT_TRUE(put("other.ini", "A", "k", "1"));
        EXPECT_EQ(textOfFile("other.ini"), "[A]\nk=1\n") << "it is not in the run";
    }).join();
    EXPECT_EQ(jxIniCommitRun(run), 1);
    std::thread([this] { EXPECT_EQ(get("x.ini", "A", "k"), "2"); }).join();
}

// ---- the same texts as one write after the other ----

struct Write {
    const char* file;
    std::string section;
    std::optional<std::string> key;
    std::optional<std::string> value;
};

std::vector<Write> randomWrites(std::mt19937& random) {
    const auto below = [&random](unsigned most) {
        return std::uniform_int_distribution<unsigned>(0, most - 1)(random);
    };
    const char* const names[] = {"A", "b", "B ", "ODBC", "Sales Europe", "", "x=y", "[z"};
    std::vector<Write> writes(1 + below(12));
    for (Write& write : writes) {
        write.file = below(2) == 0 ? "x.ini" : "y.ini";
        write.section = names[below(6)];
        if (below(6) != 0)
            write.key = names[below(8)];
        if (below(4) != 0)
            write.value = std::to_string(below(3));
    }
    return writes;
}

TEST_F(IniRunTest, LeavesTheTextsOfTheWritesOneByOne) {
    const char* const beginnings[] = {"", "; c\r\n[a]\r\nb=1\r\n; of ODBC\r\n[ODBC]\r\n", "[b]\nA=1\n[B]\nx\n\n[A]",
                                      "loose=1\n[unclosed\n[Sales Europe]\n"};
    WatchedFiles unflushed;
    const InUse inUse(unflushed);
    std::mt19937 random(20261122);
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        const std::vector<Write> writes = randomWrites(random);
        const unsigned beginning = static_cast<unsigned>(random() % 5);
        std::vector<std::string> results[2];
        for (const bool inRun : {false, true}) {
            for (const char* file : {"x.ini", "y.ini"}) {
                ::unlink(home_.file(file).c_str());
                if (beginning < 4)
                    home_.put(file, beginnings[beginning]);
            }
            JxIniRun* run = inRun ? jxIniBeginRun() : nullptr;
            for (const Write& write : writes)
                results[inRun ? 1 : 0].push_back(put(write.file, write.section.c_str(),
                                                     write.key ? write.key->c_str() : nullptr,
                                                     write.value ? write.value->c_str() : nullptr)
                                                     ? "1"
                                                     : "0");
            EXPECT_EQ(inRun ? jxIniCommitRun(run) : 1, 1);
            for (const char* file : {"x.ini", "y.ini"})
                results[inRun ? 1 : 0].push_back(textOfFile(file));
        }
        ASSERT_EQ(results[0], results[1]);
    }
}

// ---- giving up ----

TEST_F(IniRunTest, GivingUpLeavesNothing) {
    home_.put("x.ini", "[A]\nk=1\n");
    const Identity before(home_.file("x.ini"));
    JxIniRun* run = jxIniBeginRun();
    EXPECT_TRUE(put("x.ini", "A", "k", "2"));
    EXPECT_TRUE(put("new.ini", "A", "k", "2"));
    jxIniDiscardRun(run);
    EXPECT_EQ(home_.names(), Names{"x.ini"});
    EXPECT_TRUE(before == Identity(home_.file("x.ini")));
    EXPECT_EQ(get("x.ini", "A", "k"), "1");
    EXPECT_TRUE(put("x.ini", "A", "k", "3")) << "the lock is free";
    jxIniDiscardRun(nullptr);
}

TEST_F(IniRunTest, TheEndOfTheThreadGivesUp) {
    home_.put("x.ini", "[A]\nk=1\n");
    std::thread([this] {
        EXPECT_NE(jxIniBeginRun(), nullptr);
        EXPECT_TRUE(put("x.ini", "A", "k", "2"));
    }).join();
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniRunTest, ARunInsideAnotherIsPartOfIt) {
    JxIniRun* outer = jxIniBeginRun();
    JxIniRun* inner = jxIniBeginRun();
    EXPECT_TRUE(put("x.ini", "A", "k", "1"));
    EXPECT_EQ(jxIniCommitRun(inner), 1);
    EXPECT_EQ(home_.names(), Names{".x.ini.jxlock"});
    EXPECT_EQ(jxIniCommitRun(outer), 1);
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=1\n");

    outer = jxIniBeginRun();
    EXPECT_TRUE(put("x.ini", "A", "k", "2"));
    jxIniDiscardRun(jxIniBeginRun());
    EXPECT_EQ(jxIniCommitRun(outer), 0);
    EXPECT_EQ(lastFailure().error, ECANCELED);
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniRunTest, WithoutARunThereIsNothingToCommit) {
    EXPECT_EQ(jxIniCommitRun(nullptr), 0);
    EXPECT_EQ(lastFailure().error, EINVAL);
    JxIniRun* run = jxIniBeginRun();
    EXPECT_EQ(jxIniCommitRun(run), 1) << "a run without writes";
    EXPECT_EQ(jxIniCommitRun(run), 0) << "it has ended";
    jxIniDiscardRun(run);
}

// ---- changes inside a run ----

TEST_F(IniRunTest, AChangeInsideAddsToIt) {
    home_.put("x.ini", "[A]\nk=1\n");
    JxIniRun* run = jxIniBeginRun();
    EXPECT_TRUE(put("x.ini", "A", "l", "2"));
    JxIniChange* change = jxIniBegin(home_.file("x.ini").c_str());
    EXPECT_STREQ(jxIniBefore(change, nullptr), "[A]\nk=1\nl=2\n");
    EXPECT_EQ(jxIniSet(change, "A", "m", "3"), 1);
    EXPECT_EQ(get("x.ini", "A", "m"), "(default)");
    EXPECT_EQ(jxIniCommit(change), 1);
    EXPECT_EQ(get("x.ini", "A", "m"), "3");
    change = jxIniBegin(home_.file("x.ini").c_str());
    EXPECT_EQ(jxIniSet(change, "A", nullptr, nullptr), 1);
    jxIniDiscard(change);
    EXPECT_EQ(jxIniCommitRun(run), 1);
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=1\nl=2\nm=3\n");
}

TEST_F(IniRunTest, AChangeThatOutlivesItOrIsOvertakenIsRefused) {
    JxIniRun* run = jxIniBeginRun();
    JxIniChange* overtaken = jxIniBegin(home_.file("x.ini").c_str());
    JxIniChange* late = jxIniBegin(home_.file("y.ini").c_str());
    EXPECT_EQ(jxIniSet(overtaken, "A", "k", "1"), 1);
    EXPECT_EQ(jxIniSet(late, "A", "k", "1"), 1);
    EXPECT_TRUE(put("x.ini", "A", "l", "2"));
    EXPECT_EQ(jxIniCommit(overtaken), 0);
    EXPECT_EQ(lastFailure().error, ESTALE);
    EXPECT_EQ(jxIniCommitRun(run), 1);
    EXPECT_EQ(jxIniCommit(late), 0);
    EXPECT_EQ(lastFailure().error, EPERM);
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nl=2\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

// ---- failures ----

TEST_F(IniRunTest, AWriteThatFailsMakesNothingOfTheRunArrive) {
    home_.put("x.ini", "[A]\nk=1\n");
    JxIniRun* run = jxIniBeginRun();
    EXPECT_TRUE(put("x.ini", "A", "k", "2"));
    EXPECT_FALSE(put("no/such.ini", "A", "k", "1"));
    EXPECT_TRUE(put("x.ini", "A", "l", "2"));
    EXPECT_EQ(jxIniCommitRun(run), 0);
    expectFailure(JxIniStepLock, ENOENT, home_.file("no/.such.ini.jxlock"));
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniRunTest, ARefusedTextDoesNotHinderTheOthers) {
    JxIniRun* run = jxIniBeginRun();
    EXPECT_FALSE(put("x.ini", "A", "k=", "2"));
    EXPECT_TRUE(put("x.ini", "A", "k", "2"));
    EXPECT_EQ(jxIniCommitRun(run), 1);
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=2\n");
}

// ---- locks taken beforehand ----

TEST_F(IniRunTest, AFileCanBeLockedBeforeItIsWritten) {
    home_.put("y.ini", "[B]\nk=1\n");
    RecordingFiles files;
    const InUse inUse(files);
    EXPECT_EQ(jxIniLockInRun(home_.file("y.ini").c_str()), 0) << "without a run";
    expectFailure(JxIniStepArgument, EPERM, "");
    JxIniRun* run = jxIniBeginRun();
    EXPECT_EQ(jxIniLockInRun(nullptr), 0);
    EXPECT_EQ(jxIniLockInRun(""), 0);
    EXPECT_EQ(jxIniLockInRun(home_.file("y.ini").c_str()), 1);
    EXPECT_TRUE(put("x.ini", "A", "k", "1"));
    EXPECT_EQ(home_.names(), (Names{".x.ini.jxlock", ".y.ini.jxlock", "y.ini"}));
    EXPECT_EQ(jxIniCommitRun(run), 1);
    EXPECT_EQ(home_.names(), (Names{"x.ini", "y.ini"}));
    EXPECT_EQ(textOfFile("y.ini"), "[B]\nk=1\n");
    const std::vector<std::string>& trace = files.trace();
    EXPECT_EQ(std::count_if(trace.begin(), trace.end(), [](const auto& call) { return call.starts_with("flush"); }), 2)
        << "y.ini was not written";
}

TEST_F(IniRunTest, AFileThatCannotBeLockedFailsTheRunOnlyWhenItIsToChange) {
    JxIniRun* run = jxIniBeginRun();
    EXPECT_EQ(jxIniLockInRun(home_.file("no/such.ini").c_str()), 0);
    EXPECT_TRUE(put("no/such.ini", "A", "k", nullptr)) << "deleting what is not there";
    EXPECT_TRUE(put("x.ini", "A", "k", "1"));
    EXPECT_EQ(jxIniCommitRun(run), 1);
    EXPECT_EQ(textOfFile("x.ini"), "[A]\nk=1\n");
}

TEST_F(IniRunTest, AFailedRunLocksNoFurtherFile) {
    JxIniRun* run = jxIniBeginRun();
    EXPECT_FALSE(put("no/such.ini", "A", "k", "1"));
    EXPECT_FALSE(put("x.ini", "A", "k", "1"));
    EXPECT_EQ(home_.names(), Names{});
    EXPECT_EQ(jxIniCommitRun(run), 0);
    expectFailure(JxIniStepLock, ENOENT, home_.file("no/.such.ini.jxlock"));
}

TEST_F(IniRunTest, GivingUpARunInsideKeepsTheReason) {
    JxIniRun* outer = jxIniBeginRun();
    JxIniRun* inner = jxIniBeginRun();
    noteFailure(JxIniStepRead, "some file", EIO);
    jxIniDiscardRun(inner);
    EXPECT_EQ(jxIniCommitRun(outer), 0);
    expectFailure(JxIniStepRead, EIO, "some file");
}

constexpr const char* kFirst = "[A]\nk=1\n";
constexpr const char* kSecond = "[B]\nk=1\n";

bool writeBoth(const std::string& first, const std::string& second) {
    const auto one = [](const std::string& file, const char* section) {
        return jxWritePrivateProfileString(bytes(section), bytes("k"), bytes("2"), bytes(file.c_str())) == 1 &&
               jxWritePrivateProfileString(bytes(section), bytes("l"), bytes("2"), bytes(file.c_str())) == 1;
    };
    JxIniRun* run = jxIniBeginRun();
    const bool all = one(first, "A") && one(second, "B");
    return jxIniCommitRun(run) == 1 && all;
}

TEST_F(IniRunTest, WhateverFailsEachFileIsOldOrNewAndTheSecondNotBeforeTheFirst) {
    int faults = 0;
    for (const Fail style : {Fail::once, Fail::fromThenOn})
        for (int n = 1;; ++n) {
            SCOPED_TRACE(n);
            home_.put("x.ini", kFirst);
            home_.put("y.ini", kSecond);
            FaultyFiles files(n, style, EIO);
            bool written = false;
            {
                const InUse inUse(files);
                written = writeBoth(home_.file("x.ini"), home_.file("y.ini"));
            }
            const std::string first = textOfFile("x.ini");
            const std::string second = textOfFile("y.ini");
            ASSERT_TRUE(first == kFirst || first == "[A]\nk=2\nl=2\n") << first;
            ASSERT_TRUE(second == kSecond || second == "[B]\nk=2\nl=2\n") << second;
            EXPECT_TRUE(first != kFirst || second == kSecond);
            EXPECT_TRUE(!written || second != kSecond);
            EXPECT_EQ(written, lastFailure().step == JxIniStepNone);
            EXPECT_TRUE(put("x.ini", "A", "after", "1") && put("y.ini", "A", "after", "1"));
            EXPECT_EQ(home_.names(), (Names{"x.ini", "y.ini"}));
            EXPECT_EQ(openDescriptors(), descriptors_);
            if (!files.fired())
                break;
            ++faults;
        }
    EXPECT_GT(faults, 100);
}

TEST_F(IniRunTest, WheneverItIsKilledEachFileIsOldOrNew) {
    int kills = 0;
    for (int n = 1;; ++n) {
        SCOPED_TRACE(n);
        home_.put("x.ini", kFirst);
        home_.put("y.ini", kSecond);
        const int status = statusOfChild([&] {
            DeadlyFiles files(n);
            const InUse inUse(files);
            EXPECT_TRUE(writeBoth(home_.file("x.ini"), home_.file("y.ini")));
        });
        const std::string first = textOfFile("x.ini");
        const std::string second = textOfFile("y.ini");
        EXPECT_TRUE(first == kFirst || first == "[A]\nk=2\nl=2\n") << first;
        EXPECT_TRUE(second == kSecond || second == "[B]\nk=2\nl=2\n") << second;
        EXPECT_TRUE(put("x.ini", "A", "after", "1") && put("y.ini", "A", "after", "1"));
        EXPECT_EQ(home_.names(), (Names{"x.ini", "y.ini"}));
        if (!WIFSIGNALED(status))
            break;
        ++kills;
    }
    EXPECT_GT(kills, 50);
}

}  // namespace
}  // namespace jx::ini::test
