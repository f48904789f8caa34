// Each allocation fails: a write then succeeds or changes nothing, and reports which; nothing is left behind.
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>
#include <thread>

#include <jxini.h>
#include <jxprofile.h>
#include "../change_cases.h"
#include "../watched_files.h"
#include "jxutl/thread/failure.h"
#include "test_home.h"

namespace {

// Allocations of this thread until one fails; 0 for never.
thread_local int allocationsLeft = 0;
thread_local bool allocationFailed = false;

bool allocationFails() {
    if (allocationsLeft == 0 || --allocationsLeft > 0)
        return false;
    allocationFailed = true;
    return true;
}

}  // namespace

// This program's allocator: malloc, which can be made to fail. Never inlined: the compiler would warn of malloc and
// free not matching new and delete.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* block = allocationFails() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocationFails() ? nullptr : std::malloc(size == 0 ? 1 : size);
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace jx::ini::test {
namespace {

// Runs body with its nth allocation failing; returns whether there was one.
template <typename Body>
bool failAllocation(int n, Body body) {
    allocationFailed = false;
    allocationsLeft = n;
    body();
    allocationsLeft = 0;
    return allocationFailed;
}

TEST(AllocationFault, AWriteSucceedsOrChangesNothing) {
    WatchedFiles unflushed;
    const InUse inUse(unflushed);
    int faults = 0;
    for (const ChangeCase& change : possibleChangeCases()) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(std::string(change.name) + ", allocation " + std::to_string(n));
            const CaseHome home(change);
            const std::size_t descriptors = openDescriptors();
            bool written = false;
            const bool failed = failAllocation(n, [&] { written = home.write(); });
            EXPECT_EQ(home.text(), written ? home.after() : home.before());
            EXPECT_EQ(lastFailure().step, written ? JxIniStepNone : JxIniStepMemory);
            EXPECT_EQ(lastFailure().error, written ? 0 : ENOMEM);
            EXPECT_EQ(openDescriptors(), descriptors);
            EXPECT_TRUE(change.lockLeft != nullptr || home.litter().empty());
            if (!failed)
                break;
            ++faults;
            EXPECT_TRUE(home.write());
            EXPECT_EQ(home.text(), home.after());
            EXPECT_EQ(home.litter().size(), 0U);
        }
    }
    RecordProperty("faults", faults);
    std::printf("%d failed allocations\n", faults);
    EXPECT_GT(faults, 50);
}

TEST(AllocationFault, ABatchSucceedsOrChangesNothing) {
    WatchedFiles unflushed;
    const InUse inUse(unflushed);
    const std::string value(1000, 'v');
    for (int n = 1;; ++n) {
        SCOPED_TRACE(n);
        const CaseHome home(kChangeCases[1]);
        const std::size_t descriptors = openDescriptors();
        bool written = false;
        const bool failed = failAllocation(n, [&] {
            JxIniChange* change = jxIniBegin(".odbc.ini");
            const bool set = jxIniSet(change, "A", "k", value.c_str()) == 1 && jxIniSet(change, "B", "k", "3") == 1;
            if (set)
                written = jxIniCommit(change) == 1;
            else
                jxIniDiscard(change);
        });
        const std::string after = "; mine\n[A]\nk=" + value + "\n\n[B]\nk=3\n";
        EXPECT_EQ(home.text(), written ? after : home.before());
        EXPECT_EQ(home.litter().size(), 0U);
        EXPECT_EQ(openDescriptors(), descriptors);
        if (!failed)
            break;
        EXPECT_FALSE(written);
    }
}

TEST(AllocationFault, ATextIsReadOrNullIsReturned) {
    const CaseHome home(kChangeCases[1]);
    for (int n = 1;; ++n) {
        SCOPED_TRACE(n);
        int found = -1;
        std::size_t visits = 0;
        JxIniText* text = nullptr;
        const bool failed = failAllocation(n, [&] {
            text = jxIniRead(".odbc.ini");
            found = jxIniFind(text, "A", "k", nullptr);
            visits = jxIniEach(
                text, "A", [](void*, const JxIniPiece*) { return 1; }, nullptr);
        });
        EXPECT_EQ(found, text == nullptr ? 0 : 1);
        EXPECT_EQ(jxIniLastFailure().step, failed ? JxIniStepMemory : JxIniStepNone);
        EXPECT_TRUE(failed || visits == 1);
        jxIniRelease(text);
        if (!failed)
            break;
    }
}

struct Question {
    const char* section;
    const char* key;
    std::string_view answer;
};

// Two values, so that the tables are made, and both lists.
constexpr Question kQuestions[] = {
    {"A", "k", "1"}, {"A", "l", "2"}, {"A", nullptr, {"k\0l\0", 4}}, {nullptr, nullptr, {"A\0B\0", 4}}};

// Whether the read gave the value; otherwise it must have given the default, because memory was short.
bool answers(const Question& question) {
    std::array<unsigned char, 20> room;
    const auto bytes = [](const char* text) { return reinterpret_cast<const unsigned char*>(text); };
    const int count = jxGetPrivateProfileString(bytes(question.section), bytes(question.key), bytes("none"),
                                                room.data(), int{room.size()}, bytes(".odbc.ini"));
    const std::string_view placed(reinterpret_cast<const char*>(room.data()), static_cast<std::size_t>(count));
    const bool answered = placed == question.answer;
    EXPECT_TRUE(answered || placed == "none");
    EXPECT_EQ(lastFailure().step, answered ? JxIniStepNone : JxIniStepMemory);
    return answered;
}

TEST(AllocationFault, AReadGivesTheValueOrTheDefault) {
    const jx::test::TestHome home{{".odbc.ini", "[A]\nk=1\nl=2\n[B]\n"}};
    bool failed = true;
    for (int n = 1; failed; ++n) {
        SCOPED_TRACE(n);
        std::thread([n, &failed] {  // a new thread has nothing cached
            int answered = 0;
            failed = failAllocation(n, [&answered] {
                for (const Question& question : kQuestions)
                    answered += answers(question) ? 1 : 0;
            });
            EXPECT_GE(answered, failed ? 3 : 4);  // a thread can read without a cache
            for (const Question& question : kQuestions)
                EXPECT_TRUE(answers(question));
        })
            .join();
    }
}

TEST(AllocationFault, ACacheIsMadeOrNullIsReturned) {
    const auto* name = reinterpret_cast<const unsigned char*>("a name that is too long to lie within the object");
    JxIniFileCache* cache = nullptr;
    for (int n = 1; failAllocation(n, [&] { cache = jxPrivateProfileInit(name); }); ++n) {
        EXPECT_EQ(cache, nullptr);
        EXPECT_EQ(lastFailure().step, JxIniStepMemory);
    }
    EXPECT_NE(cache, nullptr);
    jxPrivateProfileTerm(cache);
}

TEST(AllocationFault, TheFailureTextAndThePathCopeWithoutMemory) {
    const CaseHome home(kChangeCases[1]);
    EXPECT_EQ(jxIniRead("/no/such/file/with/a/name/that/is/long/enough/for/the/heap"), nullptr);
    char room[1000];
    EXPECT_TRUE(failAllocation(1, [&] { EXPECT_GT(jxIniFailureText(room, sizeof room), 0U); }));
    EXPECT_STREQ(room, "Too little memory to describe the failure");
    EXPECT_TRUE(failAllocation(1, [&] { EXPECT_EQ(jxIniPath(".odbc.ini", room, sizeof room), 0U); }));
    EXPECT_STREQ(room, "");
}

// Noting never throws: without memory the path is empty.
TEST(AllocationFault, AFailureIsNotedWithoutItsPath) {
    const std::string path(10'000, 'p');
    noteFailure(JxIniStepLook, {}, EACCES);  // the thread's data exists from here on
    EXPECT_TRUE(failAllocation(1, [&path] { noteFailure(JxIniStepOpen, path, EIO); }));
    EXPECT_EQ(lastFailure().step, JxIniStepOpen);
    EXPECT_EQ(lastFailure().error, EIO);
    EXPECT_EQ(lastFailure().path, "");
    noteSuccess();
}

}  // namespace
}  // namespace jx::ini::test
