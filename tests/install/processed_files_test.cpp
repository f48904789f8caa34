// The files a run has processed.
#include "install/processed_files.h"

#include <gtest/gtest.h>

#include <string>

#include "record_text.h"

namespace {

using namespace jx::install;
using namespace jx::test;

TEST(NameFilter, AcceptsEveryNotedNameAndFewOthers) {
    NameFilter filter;
    ASSERT_TRUE(filter.isThere());
    EXPECT_FALSE(filter.mayHold(""));
    int others = 0;
    for (int number = 0; number < 4000; ++number) {
        const std::string name = "libsample" + std::to_string(number) + ".so";
        others += filter.mayHold(name) ? 1 : 0;
        filter.note(name);
        EXPECT_TRUE(filter.mayHold(name));
    }
    EXPECT_LT(others, 100);
}

TEST(ProcessedFiles, AreComparedExactlyAndAppendedWithoutATest) {
    TestRecord record;
    record.item(CoreItem, "A").file("x", "a.so").file("x", "A.so").file("x", "a.so2").file("x", nullptr);
    EXPECT_EQ(HasFileBeenProcessed(record.get(), 0, 0), 0U);
    EXPECT_EQ(AddFileToProcessedList(record.get(), 0, 0), 1U);
    EXPECT_EQ(HasFileBeenProcessed(record.get(), 0, 0), 1U);
    EXPECT_EQ(HasFileBeenProcessed(record.get(), 0, 1), 0U);
    EXPECT_EQ(HasFileBeenProcessed(record.get(), 0, 2), 0U);
    EXPECT_EQ(HasFileBeenProcessed(record.get(), 0, 3), 0U);
    EXPECT_EQ(AddFileToProcessedList(record.get(), 0, 0), 1U);
    EXPECT_EQ(AddFileToProcessedList(record.get(), 0, 1), 1U);
    EXPECT_EQ(dumpProcessed(*record.get()), "\"a.so\"\"a.so\"\"A.so\"");
    EXPECT_EQ(HasFileBeenProcessed(record.get(), 0, 1), 1U);
}

}  // namespace
