// The process's cursor.
#include <gtest/gtest.h>
#include <jxdialog.h>

#include <thread>

TEST(Cursor, HandlesAreTheirNumbers) {
    EXPECT_EQ(JXW_LoadCursor(0, kJxwWaitCursor), unsigned{kJxwWaitCursor});
    EXPECT_EQ(JXW_LoadCursor(77, 5), 5U);
}

TEST(Cursor, IsTheArrowUntilAnotherIsSetAndSettingReturnsTheOneBefore) {
    EXPECT_EQ(JXW_GetCursor(), unsigned{kJxwArrowCursor});
    EXPECT_EQ(JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor)), unsigned{kJxwArrowCursor});
    EXPECT_EQ(JXW_GetCursor(), unsigned{kJxwWaitCursor});
    EXPECT_EQ(JXW_SetCursor(JXW_LoadCursor(0, kJxwArrowCursor)), unsigned{kJxwWaitCursor});
}

TEST(Cursor, IsOneForAllThreads) {
    std::thread([] { JXW_SetCursor(kJxwWaitCursor); }).join();
    EXPECT_EQ(JXW_SetCursor(kJxwArrowCursor), unsigned{kJxwWaitCursor});
}
