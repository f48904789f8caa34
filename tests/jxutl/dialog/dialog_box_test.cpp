// Modal dialogs on a screen, one inside another.
#include <algorithm>
#include <stdexcept>

#include "sample_dialog.h"
#include "scripted_user.h"

using namespace jx::test;

namespace {

using Titles = std::vector<std::string>;

class ModalDialogs : public SampleDialog {
protected:
    ModalDialogs() { endsOn({IDOK, IDCANCEL, 104}); }

    // Ends with the pressed button's id as the result; anything else goes to then.
    void endsOn(std::initializer_list<int> buttons) {
        received.does = [this, ends = std::vector<int>(buttons)](HWND hwnd, int message, int wparam, uintptr_t lparam) {
            if (message == WM_COMMAND && std::find(ends.begin(), ends.end(), wparam) != ends.end())
                return static_cast<unsigned>(JXW_EndDialog(hwnd, wparam));
            return then ? then(hwnd, message, wparam, lparam) : 0U;
        };
    }

    std::function<unsigned(HWND, int, int, uintptr_t)> then;
};

TEST_F(ModalDialogs, ReturnMinusOneWithoutAScreen) {
    EXPECT_EQ(run(), -1);
    const JxwScreen mute{};
    JXW_SetScreen(&mute);
    EXPECT_EQ(run(), -1);
    EXPECT_TRUE(received.messages.empty());
}

TEST_F(ModalDialogs, ReturnMinusOneWithoutATemplate) {
    const ScriptedUser user;
    EXPECT_EQ(run(99), -1);
}

TEST_F(ModalDialogs, RunUntilTheyEnd) {
    ScriptedUser user{press(kGo), type(kName, "x"), press(IDOK), press(kGo)};
    EXPECT_EQ(run(), IDOK);
    EXPECT_EQ(user.actionsLeft(), 1U);
    EXPECT_EQ(received.take(), (Messages{"init", "command 29 0", "command 21 768", "command 1 0"}));
    EXPECT_EQ(user.appearances, (Titles{"+Sample", "-Sample"}));
    EXPECT_EQ(JXW_NextDialog(0), 0U);
}

TEST_F(ModalDialogs, CloseWhenTheUserHasGone) {
    ScriptedUser user;
    EXPECT_EQ(run(), IDCANCEL);
    EXPECT_EQ(run(kClosing), 104);
    endsOn({});
    EXPECT_EQ(run(), -1);
    EXPECT_EQ(JXW_NextDialog(0), 0U);
}

TEST_F(ModalDialogs, DeliverWhatIsPostedBeforeTheUserActs) {
    then = [](HWND hwnd, int message, int, uintptr_t) {
        if (message == WM_INITDIALOG) {
            JXW_PostMessage(hwnd, 1100, 0, 0);
            JXW_PostMessage(hwnd, WM_COMMAND, IDCANCEL, 0);
        }
        return 1U;
    };
    ScriptedUser user{press(IDOK)};
    EXPECT_EQ(run(), IDCANCEL);
    EXPECT_EQ(user.actionsLeft(), 1U);
    EXPECT_EQ(received.take(), (Messages{"init", "1100 0 0", "command 2 0"}));
}

TEST_F(ModalDialogs, ThatEndInTheirFirstMessageAreNeverShown) {
    received.does = [](HWND hwnd, int, int, uintptr_t) { return static_cast<unsigned>(JXW_EndDialog(hwnd, 7)); };
    ScriptedUser user{press(IDOK)};
    EXPECT_EQ(run(), 7);
    EXPECT_TRUE(user.appearances.empty());
    EXPECT_EQ(user.actionsLeft(), 1U);
}

TEST_F(ModalDialogs, ThatAreDestroyedReturnMinusOne) {
    then = [](HWND hwnd, int message, int, uintptr_t) {
        return message == WM_COMMAND ? static_cast<unsigned>(JXW_DestroyDialog(hwnd)) : 0U;
    };
    ScriptedUser user{press(kGo)};
    EXPECT_EQ(run(), -1);
    EXPECT_EQ(user.appearances, (Titles{"+Sample", "-Sample"}));
}

TEST_F(ModalDialogs, DisableTheirOwnerAndEnableItAgain) {
    HWND owner = 0;
    int inner = 0;
    then = [&](HWND hwnd, int message, int wparam, uintptr_t) {
        if (message == WM_COMMAND && wparam == kGo) {
            owner = hwnd;
            inner = run(kClosing, hwnd);
            EXPECT_EQ(JXW_IsWindowEnabled(hwnd), 1);
            EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(hwnd, kGo));
        }
        return 0U;
    };
    ScriptedUser user{press(kGo), call([&](HWND front) {
                          EXPECT_NE(front, owner);
                          EXPECT_EQ(JXW_IsWindowEnabled(owner), 0);
                          EXPECT_EQ(JXW_UserCommand(owner, IDOK), 0);
                          EXPECT_EQ(JXW_UserKey(owner, JXW_KEY_ESCAPE), 0);
                          EXPECT_EQ(JXW_SetFocus(owner), 0U);
                          EXPECT_EQ(JXW_SetFocus(JXW_GetDlgItem(owner, kName)), 0U);
                          EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(front, kGo));
                      }),
                      press(104), press(IDOK)};
    EXPECT_EQ(run(), IDOK);
    EXPECT_EQ(inner, 104);
    EXPECT_EQ(user.appearances, (Titles{"+Sample", "+Closing", "-Closing", "-Sample"}));
}

TEST_F(ModalDialogs, AnOwnerThatWasGreyedStaysGreyed) {
    const HWND owner = create();
    JXW_EnableWindow(owner, 0);
    ScriptedUser user{press(104)};
    EXPECT_EQ(run(kClosing, owner), 104);
    EXPECT_EQ(JXW_IsWindowEnabled(owner), 0);
}

TEST_F(ModalDialogs, DeliverWhatIsPostedToTheirOwner) {
    const HWND owner = create(kPlain);
    received.take();
    JXW_PostMessage(owner, 1100, 0, 0);
    ScriptedUser user{press(104)};
    EXPECT_EQ(run(kClosing, owner), 104);
    EXPECT_EQ(received.take(), (Messages{"init", "1100 0 0", "command 104 0"}));
}

TEST_F(ModalDialogs, AreDestroyedWithTheirOwner) {
    HWND outer = 0;
    then = [&](HWND hwnd, int message, int wparam, uintptr_t) {
        if (message == WM_COMMAND && wparam == kGo) {
            outer = hwnd;
            EXPECT_EQ(run(kClosing, hwnd), -1);
        }
        return 0U;
    };
    ScriptedUser user{press(kGo), call([&](HWND) { JXW_DestroyDialog(outer); })};
    EXPECT_EQ(run(), -1);
    EXPECT_EQ(user.appearances, (Titles{"+Sample", "+Closing", "-Closing", "-Sample"}));
}

TEST_F(ModalDialogs, AnOwnerThatEndedMeanwhileEndsAfterThem) {
    then = [&](HWND hwnd, int message, int wparam, uintptr_t) {
        if (message == WM_COMMAND && wparam == kGo) {
            JXW_EndDialog(hwnd, 5);
            EXPECT_EQ(run(kClosing, hwnd), 104);
        }
        return 0U;
    };
    ScriptedUser user{press(kGo), press(104)};
    EXPECT_EQ(run(), 5);
}

TEST_F(ModalDialogs, AnExceptionPassesWithTheOwnerEnabledAndTheDialogGone) {
    const HWND owner = create();
    then = [](HWND, int message, int wparam, uintptr_t) -> unsigned {
        if (message == WM_COMMAND && wparam == kGo)
            throw std::runtime_error("setup");
        return 0;
    };
    ScriptedUser user{press(kGo)};
    EXPECT_THROW(run(kClosing, owner), std::runtime_error);
    EXPECT_EQ(user.appearances, (Titles{"+Closing", "-Closing"}));
    EXPECT_EQ(JXW_IsWindowEnabled(owner), 1);
    EXPECT_EQ(JXW_NextDialog(0), owner);
    EXPECT_EQ(JXW_NextDialog(owner), 0U);
}

TEST_F(ModalDialogs, AnExceptionOfTheFirstMessageLeavesTheOwnerEnabled) {
    const HWND owner = create();
    then = [](HWND, int, int, uintptr_t) -> unsigned { throw std::runtime_error("setup"); };
    ScriptedUser user;
    EXPECT_THROW(run(kClosing, owner), std::runtime_error);
    EXPECT_EQ(JXW_IsWindowEnabled(owner), 1);
    EXPECT_EQ(JXW_NextDialog(owner), 0U);
}

TEST_F(ModalDialogs, CallTheScreensChangedForEachChange) {
    then = [](HWND hwnd, int message, int wparam, uintptr_t) {
        if (message == WM_COMMAND && wparam == kGo) {
            JXW_SetDlgItemText(hwnd, kLabel, "new");
            JXW_SendDlgItemMessage(hwnd, kList, LB_ADDSTRING, 0, reinterpret_cast<uintptr_t>("row"));
            JXW_SendDlgItemMessage(hwnd, kList, LB_GETCOUNT, 0, 0);
            JXW_EnableWindow(JXW_GetDlgItem(hwnd, kGrey), 1);
            JXW_EnableWindow(JXW_GetDlgItem(hwnd, kGrey), 1);
            JXW_CheckDlgButton(hwnd, kTrace, 1);
            JXW_SetWindowText(hwnd, "Sample");
        }
        return 0U;
    };
    ScriptedUser user{press(kGo), press(IDOK)};
    user.notesChanges = true;
    run();
    EXPECT_EQ(user.changes, (Titles{"Sample 0", "Sample 0", "Sample 20", "Sample 28", "Sample 30", "Sample 23",
                                    "Sample 0", "Sample 0"}));
}

TEST_F(ModalDialogs, MessageBoxesAppearOnTheScreen) {
    then = [](HWND hwnd, int message, int wparam, uintptr_t) {
        if (message == WM_COMMAND && wparam == kGo) {
            EXPECT_EQ(guiMessageBox(hwnd, reinterpret_cast<const unsigned char*>("Sure?"),
                                    reinterpret_cast<const unsigned char*>("Ask"), MB_YESNO),
                      unsigned{IDYES});
            EXPECT_EQ(JXW_IsWindowEnabled(hwnd), 1);
        }
        return 0U;
    };
    ScriptedUser user({press(kGo), press(IDOK)}, {IDYES});
    EXPECT_EQ(run(), IDOK);
    EXPECT_EQ(user.boxes, Titles{"Ask|Sure?|4"});
}

TEST_F(ModalDialogs, AMessageBoxGoesToTheHandlerBeforeTheScreenAndDisablesItsOwner) {
    const HWND owner = create();
    ScriptedUser user;
    struct Seen {
        HWND owner;
        int enabled;
    } seen{0, -1};
    JXW_SetMessageBoxHandler(
        [](void* context, HWND asked, const char*, const char*, unsigned int) {
            *static_cast<Seen*>(context) = {asked, JXW_IsWindowEnabled(asked)};
            return 3U;
        },
        &seen);
    EXPECT_EQ(guiMessageBox(owner, nullptr, nullptr, 0), 3U);
    JXW_SetMessageBoxHandler(nullptr, nullptr);
    EXPECT_EQ(seen.owner, owner);
    EXPECT_EQ(seen.enabled, 0);
    EXPECT_EQ(JXW_IsWindowEnabled(owner), 1);
    EXPECT_TRUE(user.boxes.empty());
}

TEST_F(ModalDialogs, TheCursorReachesTheScreen) {
    static unsigned int shown;
    shown = 0;
    JxwScreen screen{};
    screen.cursor = [](void*, unsigned int cursor) { shown = cursor; };
    JXW_SetScreen(&screen);
    EXPECT_EQ(JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor)), unsigned{kJxwArrowCursor});
    EXPECT_EQ(shown, unsigned{kJxwWaitCursor});
    EXPECT_EQ(JXW_GetCursor(), unsigned{kJxwWaitCursor});
    EXPECT_EQ(JXW_SetCursor(JXW_LoadCursor(0, kJxwArrowCursor)), unsigned{kJxwWaitCursor});
    JXW_SetScreen(nullptr);
    JXW_SetCursor(JXW_LoadCursor(0, kJxwArrowCursor));
}

TEST_F(ModalDialogs, AScreenFindsTheDialogsThatAreOpenAlready) {
    const HWND first = create();
    const HWND second = create(kPlain);
    EXPECT_EQ(JXW_NextDialog(0), first);
    EXPECT_EQ(JXW_NextDialog(first), second);
    EXPECT_EQ(JXW_NextDialog(second), 0U);
}

// A screen that destroys the dialog once more in its closed callback.
TEST_F(ModalDialogs, CallTheScreensClosedOnce) {
    static int calls;
    calls = 0;
    JxwScreen screen{};
    screen.closed = [](void*, HWND gone) {
        if (++calls < 5)
            JXW_DestroyDialog(gone);
    };
    JXW_SetScreen(&screen);
    const HWND dialog = create();
    EXPECT_EQ(JXW_DestroyDialog(dialog), 1);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(JXW_NextDialog(0), 0U);
}

}  // namespace
