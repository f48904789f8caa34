// The files a run has processed.
#include "install/processed_files.h"

#include <gtest/gtest.h>

#include <string>

#include "record_text.h"

namespace {

using namespace jx::install;
using namespace jx::test;

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
