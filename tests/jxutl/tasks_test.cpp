// The depth of tasks, and the slots of per-thread data.
#include <jxtasks.h>

#include <gtest/gtest.h>

#include <thread>

#include <jxerrors.h>
#include "allocations.h"

namespace {

using jx::test::ShortMemory;

// Runs check on a thread that has no data yet.
template <class Check>
void onNewThread(Check check) {
    std::thread(check).join();
}

TEST(Tasks, PairsNest) {
    onNewThread([] {
        EXPECT_EQ(mdsPerTaskInit(), 1);
        EXPECT_EQ(mdsPerTaskInit(), 2);
        EXPECT_EQ(mdsPerTaskTerm(), 1);
        EXPECT_EQ(mdsPerTaskInit(), 2);
        EXPECT_EQ(mdsPerTaskTerm(), 1);
        EXPECT_EQ(mdsPerTaskTerm(), 0);
    });
}

TEST(Tasks, TheDepthNeverFallsBelowZero) {
    onNewThread([] {
        EXPECT_EQ(mdsPerTaskTerm(), 0);
        EXPECT_EQ(mdsPerTaskInit(), 1);
        EXPECT_EQ(mdsPerTaskTerm(), 0);
        EXPECT_EQ(mdsPerTaskTerm(), 0);
        EXPECT_EQ(mdsPerTaskInit(), 1);
        EXPECT_EQ(mdsPerTaskTerm(), 0);
    });
}

TEST(Tasks, EachThreadHasItsOwnDepth) {
    onNewThread([] {
        EXPECT_EQ(mdsPerTaskInit(), 1);
        onNewThread([] { EXPECT_EQ(mdsPerTaskInit(), 1); });
        EXPECT_EQ(mdsPerTaskTerm(), 0);
    });
}

TEST(Tasks, TheErrorListOutlivesATask) {
    onNewThread([] {
        mdsPerTaskInit();
        JxErrorKeeper::add(new JxError(7, nullptr, ErrorTypeError, 0, 0));
        void* list = mdsGetPerThreadData(PerThreadErrors);
        mdsPerTaskTerm();
        EXPECT_EQ(mdsGetPerThreadData(PerThreadErrors), list);
        EXPECT_EQ(JxErrorKeeper::count(), 1UL);
    });
}

TEST(PerThreadData, TheErrorSlotIsTheKeepersList) {
    onNewThread([] {
        void* list = mdsGetPerThreadData(PerThreadErrors);
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(list, JxErrorKeeper::list());
        EXPECT_EQ(list, mdsGetPerThreadData(PerThreadErrors));
    });
}

TEST(PerThreadData, UnknownSlotsAreEmpty) {
    for (const int slot : {-1, 1, 2, 1000})
        EXPECT_EQ(mdsGetPerThreadData(static_cast<PerThreadData>(slot)), nullptr) << slot;
}

TEST(PerThreadData, WithoutMemoryABeginOpensNothing) {
    EXPECT_GE(jx::test::failEachAllocationOfNewThread([](ShortMemory& memory) {
                  memory.begin();
                  const int depth = mdsPerTaskInit();
                  const bool failed = memory.end();
                  EXPECT_EQ(depth, failed ? 0 : 1);
                  EXPECT_EQ(mdsPerTaskInit(), failed ? 1 : 2);
              }),
              1);
}

TEST(PerThreadData, WithoutMemoryASlotIsNullAndComesLater) {
    EXPECT_GE(jx::test::failEachAllocationOfNewThread([](ShortMemory& memory) {
                  memory.begin();
                  const void* list = mdsGetPerThreadData(PerThreadErrors);
                  const bool failed = memory.end();
                  EXPECT_EQ(list == nullptr, failed);
                  EXPECT_NE(mdsGetPerThreadData(PerThreadErrors), nullptr);
              }),
              2);
}

TEST(PerThreadData, EndingATaskAndLookingAtErrorsNeedNoMemory) {
    EXPECT_EQ(jx::test::failEachAllocationOfNewThread([](ShortMemory& memory) {
                  memory.begin();
                  const int depth = mdsPerTaskTerm();
                  const unsigned long count = JxErrorKeeper::count();
                  const JxError* first = JxErrorKeeper::errorAt(0);
                  const JxError* appended = JxErrorKeeper::appendToLastError(nullptr);
                  JxErrorKeeper::clear();
                  memory.end();
                  EXPECT_EQ(depth, 0);
                  EXPECT_EQ(count, 0UL);
                  EXPECT_EQ(first, nullptr);
                  EXPECT_EQ(appended, nullptr);
              }),
              0);
}

}  // namespace
