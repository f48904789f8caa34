// The texts of the library by number.
#include <gtest/gtest.h>
#include <jxdialog.h>
#include <odbcinst.h>

#include <string>

#include "guarded_buffer.h"

namespace jx::test {

namespace {

constexpr unsigned short kTexts[] = {50, 51, 52, 53, 54, 55, 56, 57, 58, 167, 168, 169, 170, 171};

}  // namespace

TEST(WinGetString, LoadsEveryTextOfTheLibrary) {
    for (const unsigned short id : kTexts) {
        SCOPED_TRACE(id);
        GuardedBuffer buffer(256);
        const unsigned short length = winGetString(buffer.bytes(), id);
        EXPECT_GT(length, 0);
        EXPECT_EQ(length, buffer.text().size());
        EXPECT_TRUE(buffer.isGuarded());
    }
}

TEST(WinGetString, TouchesNothingForAnUnknownNumber) {
    GuardedBuffer buffer(256);
    constexpr unsigned short kUnknown[] = {0, 49, 59, 166, 172, 65535};
    for (const unsigned short id : kUnknown)
        EXPECT_EQ(winGetString(buffer.bytes(), id), 0);
    EXPECT_TRUE(buffer.isUntouched());
    EXPECT_EQ(winGetString(nullptr, 50), 0);
}

TEST(WinGetString, FillsAtMost256Bytes) {
    const std::string longText(300, 'x');
    const JxwString texts[] = {{1, longText.c_str()}, {0, nullptr}};
    ASSERT_EQ(JXW_RegisterModule("long", texts, nullptr), 1);
    const char* own = BJXHINST;
    BJXHINST = "long";
    GuardedBuffer buffer(256);
    EXPECT_EQ(winGetString(buffer.bytes(), 1), 255);
    BJXHINST = own;
    EXPECT_EQ(buffer.text(), std::string(255, 'x'));
    EXPECT_TRUE(buffer.isGuarded());
}

}  // namespace jx::test
