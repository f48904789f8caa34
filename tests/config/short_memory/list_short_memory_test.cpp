// The data source list when each allocation fails, once or from then on.
#include <gtest/gtest.h>
#include <jxmemory.h>
#include <odbcins.h>

#include <cstdlib>
#include <cstring>

#include "message_box_script.h"
#include "test_home.h"

namespace {

// Memory: which allocations fail and how many blocks are held.
struct Memory {
    int failAt = 0;  // counted from 1; 0 is never
    bool forEver = false;
    int asked = 0;
    int held = 0;
    bool fired = false;

    bool fails() {
        ++asked;
        const bool fail = failAt != 0 && (asked == failAt || (forEver && asked > failAt));
        fired = fired || fail;
        return fail;
    }
};

Memory memory;

void* counted(void* block) {
    if (block != nullptr)
        ++memory.held;
    return block;
}

}  // namespace

void* ramAlloc(size_t sizeInBytes) {
    return memory.fails() ? nullptr : counted(std::malloc(sizeInBytes + 1));
}

void* ramAllocZ(size_t sizeInBytes) {
    return memory.fails() ? nullptr : counted(std::calloc(sizeInBytes + 1, 1));
}

unsigned char* ramAllocStr(const unsigned char* text) {
    return text == nullptr || memory.fails()
               ? nullptr
               : static_cast<unsigned char*>(counted(strdup(reinterpret_cast<const char*>(text))));
}

void ramFree(void* block) {
    if (block != nullptr)
        --memory.held;
    std::free(block);
}

namespace jx::test {

namespace {

constexpr char kThree[] = "[ODBC Data Sources]\nA=Driver One\nB=Driver Two\nC=Driver Three\n";
constexpr char kDefault[] = "[Default]\nDriver=Driver Four\n";

// Calls step with the first, second, ... allocation failing until a run needs no more of them; after every run the list
// is released and no block may be left.
template <class Step>
int failEveryAllocation(Step step) {
    int failures = 0;
    for (const bool forEver : {false, true}) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(n);
            OdbcIns ins;
            memory = Memory{n, forEver};
            step(ins);
            const bool fired = memory.fired;
            memory.failAt = 0;
            ins.ResetData(ResetAll);
            EXPECT_EQ(memory.held, 0);
            if (!fired)
                break;
            ++failures;
        }
    }
    return failures;
}

}  // namespace

TEST(ListWithoutMemory, NamesAreBuiltWholeOrNotAtAll) {
    const TestHome home{{".odbc.ini", kThree}, {".odbcinst.ini", kDefault}};
    const int failures = failEveryAllocation([](OdbcIns& ins) {
        const unsigned int result = ins.GetDataSourceNames();
        EXPECT_EQ(result, memory.fired ? 1U : 0U);
        EXPECT_EQ(ins.entryCount, memory.fired ? 0U : 4U);
        EXPECT_EQ(ins.GetDriverNames(), 0U);
    });
    // The rows and four names, failing once and from then on; the drivers' failures come on top.
    EXPECT_GE(failures, 10);
}

TEST(ListWithoutMemory, RowsWithoutDriverOrDisplayTextAreNull) {
    const TestHome home{{".odbc.ini", kThree}, {".odbcinst.ini", kDefault}};
    const int failures = failEveryAllocation([](OdbcIns& ins) {
        const int failAt = memory.failAt;
        memory.failAt = 0;
        ASSERT_EQ(ins.GetDataSourceNames(), 0U);
        memory.asked = 0;
        memory.failAt = failAt;
        EXPECT_EQ(ins.GetDriverNames(), 0U);
        EXPECT_EQ(ins.ConcatenateNames(), 0U);
        int nulls = 0;
        for (std::uint32_t row = 0; row < ins.entryCount; ++row) {
            nulls += ins.entries[row].driver == nullptr ? 1 : 0;
            nulls += ins.entries[row].display == nullptr ? 1 : 0;
        }
        EXPECT_EQ(nulls != 0, memory.fired);
    });
    EXPECT_EQ(failures, 16);
}

TEST(ListWithoutMemory, AKnownDataSourceIsThenUnknown) {
    const TestHome home{{".odbc.ini", kThree}};
    const MessageBoxScript boxes;
    const int failures = failEveryAllocation([](OdbcIns& ins) {
        const int known = ins.jxSQLValidDSN("C");
        EXPECT_EQ(known, memory.fired ? 0 : 1);
    });
    EXPECT_EQ(failures, 8);
    EXPECT_EQ(boxes.boxes().size(), 8U);
}

TEST(ListBlocks, AreAllReleasedAlsoWhenDriversWereLookedForTwice) {
    const TestHome home{{".odbc.ini", kThree}, {".odbcinst.ini", kDefault}};
    memory = Memory{};
    OdbcIns ins;
    EXPECT_EQ(ins.GetDataSourceNames(), 0U);
    EXPECT_EQ(ins.GetDriverNames(), 0U);
    EXPECT_EQ(ins.GetDriverNames(), 0U);
    EXPECT_EQ(ins.ConcatenateNames(), 0U);
    EXPECT_EQ(memory.held, 1 + 3 * 4);
    ins.ResetData(ResetAll);
    EXPECT_EQ(memory.held, 0);
}

TEST(ListWithoutMemory, AnOldListIsNotLeftBehindAStaleCount) {
    const TestHome home{{".odbc.ini", kThree}};
    OdbcIns ins;
    memory = Memory{};
    EXPECT_EQ(ins.GetDataSourceNames(), 0U);
    ins.ResetData(ResetAll);
    memory = Memory{1, true};
    EXPECT_EQ(ins.GetDataSourceNames(), 1U);
    EXPECT_EQ(ins.entryCount, 0U);
    ins.GetDriverNames();
    ins.ConcatenateNames();
    ins.ResetData(ResetAll);
    EXPECT_EQ(memory.held, 0);
}

}  // namespace jx::test
