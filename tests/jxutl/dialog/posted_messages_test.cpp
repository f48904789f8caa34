// Messages that are queued and delivered later.
#include "sample_dialog.h"

using namespace jx::test;

namespace {

class PostedMessages : public SampleDialog {};

TEST_F(PostedMessages, ComeInTheOrderInWhichTheyWerePosted) {
    const HWND dialog = create();
    received.take();
    EXPECT_EQ(JXW_PostMessage(dialog, 1100, 1, 2), 1);
    EXPECT_EQ(JXW_PostMessage(dialog, 1101, -3, 4), 1);
    EXPECT_EQ(JXW_PostMessage(dialog, 1100, 5, 6), 1);
    EXPECT_TRUE(received.messages.empty());
    EXPECT_EQ(JXW_DispatchMessages(dialog), 3);
    EXPECT_EQ(received.take(), (Messages{"1100 1 2", "1101 -3 4", "1100 5 6"}));
    EXPECT_EQ(JXW_DispatchMessages(dialog), 0);
}

TEST_F(PostedMessages, GoToTheControlTheyWerePostedTo) {
    const HWND dialog = create();
    EXPECT_EQ(JXW_PostMessage(JXW_GetDlgItem(dialog, kList), LB_ADDSTRING, 0, reinterpret_cast<uintptr_t>("row")), 1);
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, kList, LB_GETCOUNT, 0, 0), 0);
    EXPECT_EQ(JXW_DispatchMessages(dialog), 1);
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, kList, LB_GETCOUNT, 0, 0), 1);
}

TEST_F(PostedMessages, ThatArePostedMeanwhileWaitForTheNextDispatch) {
    const HWND dialog = create();
    received.take();
    received.does = [](HWND hwnd, int message, int, uintptr_t) {
        return static_cast<unsigned>(JXW_PostMessage(hwnd, message + 1, 0, 0));
    };
    JXW_PostMessage(dialog, 1100, 0, 0);
    EXPECT_EQ(JXW_DispatchMessages(dialog), 1);
    EXPECT_EQ(JXW_DispatchMessages(dialog), 1);
    EXPECT_EQ(received.take(), (Messages{"1100 0 0", "1101 0 0"}));
}

TEST_F(PostedMessages, OfOneDialogLeaveThoseOfAnotherInPlace) {
    const HWND first = create();
    const HWND second = create(kPlain);
    received.take();
    JXW_PostMessage(first, 1100, 0, 0);
    JXW_PostMessage(second, 1101, 0, 0);
    JXW_PostMessage(first, 1102, 0, 0);
    EXPECT_EQ(JXW_DispatchMessages(second), 1);
    EXPECT_EQ(received.take(), Messages{"1101 0 0"});
    JXW_PostMessage(second, 1103, 0, 0);
    EXPECT_EQ(JXW_DispatchMessages(0), 3);
    EXPECT_EQ(received.take(), (Messages{"1100 0 0", "1102 0 0", "1103 0 0"}));
}

TEST_F(PostedMessages, AreDroppedWhenTheDialogEndsOrIsDestroyed) {
    const HWND ending = create();
    const HWND going = create();
    received.take();
    JXW_PostMessage(ending, 1100, 0, 0);
    JXW_PostMessage(going, 1101, 0, 0);
    JXW_EndDialog(ending, 1);
    JXW_DestroyDialog(going);
    EXPECT_EQ(JXW_PostMessage(ending, 1102, 0, 0), 0);
    EXPECT_EQ(JXW_DispatchMessages(0), 0);
    EXPECT_TRUE(received.messages.empty());
}

TEST_F(PostedMessages, EndWithTheOneThatEndsTheDialog) {
    const HWND dialog = create();
    received.take();
    received.does = [](HWND hwnd, int, int, uintptr_t) { return static_cast<unsigned>(JXW_EndDialog(hwnd, 1)); };
    JXW_PostMessage(dialog, 1100, 0, 0);
    JXW_PostMessage(dialog, 1101, 0, 0);
    EXPECT_EQ(JXW_DispatchMessages(dialog), 1);
    EXPECT_EQ(received.take(), Messages{"1100 0 0"});
}

TEST_F(PostedMessages, CanBeDeliveredInsideADelivery) {
    const HWND dialog = create();
    received.take();
    received.does = [](HWND hwnd, int message, int, uintptr_t) {
        return message == 1100 ? static_cast<unsigned>(JXW_DispatchMessages(hwnd)) : 0U;
    };
    for (const int message : {1100, 1101, 1102})
        JXW_PostMessage(dialog, message, 0, 0);
    EXPECT_EQ(JXW_DispatchMessages(dialog), 1);
    EXPECT_EQ(received.take(), (Messages{"1100 0 0", "1101 0 0", "1102 0 0"}));
}

TEST_F(PostedMessages, CarryAWholeAddress) {
    const HWND dialog = create();
    const auto highest = ~uintptr_t{0};
    uintptr_t arrived = 0;
    received.does = [&](HWND, int, int, uintptr_t lparam) {
        arrived = lparam;
        return 0U;
    };
    JXW_PostMessage(dialog, 1100, 0, highest);
    JXW_DispatchMessages(dialog);
    EXPECT_EQ(arrived, highest);
}

}  // namespace
