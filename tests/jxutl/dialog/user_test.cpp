// The user's actions, and the messages the dialog gets.
#include "sample_dialog.h"

using namespace jx::test;

namespace {

class UserActions : public SampleDialog {
protected:
    UserActions() {
        for (const char* row : {"a", "b", "c"})
            JXW_SendDlgItemMessage(dialog, kList, LB_ADDSTRING, 0, reinterpret_cast<uintptr_t>(row));
        received.take();
    }

    HWND item(unsigned short id) const { return JXW_GetDlgItem(dialog, id); }
    int selection() const { return JXW_SendDlgItemMessage(dialog, kList, LB_GETCURSEL, 0, 0); }

    // The ids of the controls that Tab reaches, once around.
    std::string around(int key) const {
        std::string ids;
        const HWND begin = JXW_GetFocus();
        do {
            JXW_UserKey(dialog, key);
            JxwDialogInfo info{};
            JxwControlInfo control{};
            JXW_GetDialogInfo(dialog, &info);
            JXW_GetControlInfo(dialog, info.focus, &control);
            ids += std::to_string(control.id) + " ";
        } while (JXW_GetFocus() != begin && ids.size() < 200);
        return ids;
    }

    HWND dialog = create();
};

TEST_F(UserActions, APressedButtonSendsItsCommandAndTakesTheFocus) {
    EXPECT_EQ(JXW_UserCommand(dialog, kGo), 1);
    EXPECT_EQ(received.take(), Messages{"command 29 0"});
    EXPECT_EQ(JXW_GetFocus(), item(kGo));
}

TEST_F(UserActions, OnlyEnabledButtonsCanBePressed) {
    for (const int id : {int{kGrey}, int{kName}, int{kTrace}, int{kList}, int{kLabel}, 999, 0})
        EXPECT_EQ(JXW_UserCommand(dialog, static_cast<unsigned short>(id)), 0) << id;
    EXPECT_TRUE(received.messages.empty());
}

TEST_F(UserActions, SelectingARowNotifiesTheDialog) {
    EXPECT_EQ(JXW_UserSelect(dialog, kList, 1), 1);
    EXPECT_EQ(selection(), 1);
    EXPECT_EQ(JXW_UserSelect(dialog, kList, 1), 1);
    EXPECT_EQ(JXW_UserSelect(dialog, kList, -1), 1);
    EXPECT_EQ(selection(), -1);
    EXPECT_EQ(received.take(), (Messages{"command 28 1", "command 28 1", "command 28 1"}));
    EXPECT_EQ(JXW_GetFocus(), item(kList));
}

TEST_F(UserActions, SelectingARowThatDoesNotExistDoesNothing) {
    for (const int row : {3, -2, 65535})
        EXPECT_EQ(JXW_UserSelect(dialog, kList, row), 0) << row;
    EXPECT_EQ(JXW_UserSelect(dialog, kGo, 0), 0);
    EXPECT_TRUE(received.messages.empty());
}

TEST_F(UserActions, ADoubleClickSelectsFirst) {
    EXPECT_EQ(JXW_UserDoubleClick(dialog, kList, 2), 1);
    EXPECT_EQ(received.take(), (Messages{"command 28 1", "command 28 2"}));
    EXPECT_EQ(JXW_UserDoubleClick(dialog, kList, 2), 1);
    EXPECT_EQ(received.take(), Messages{"command 28 2"});
    EXPECT_EQ(JXW_UserDoubleClick(dialog, kList, 3), 0);
    EXPECT_EQ(JXW_UserDoubleClick(dialog, kList, -1), 0);
    EXPECT_TRUE(received.messages.empty());
}

TEST_F(UserActions, ADoubleClickStopsWhenItsFirstHalfEndsTheDialog) {
    received.does = [](HWND hwnd, int, int, uintptr_t) { return static_cast<unsigned>(JXW_EndDialog(hwnd, 1)); };
    EXPECT_EQ(JXW_UserDoubleClick(dialog, kList, 0), 1);
    EXPECT_EQ(received.take(), Messages{"command 28 1"});
}

TEST_F(UserActions, AnEditedFieldHoldsTheTextAndNotifiesTheDialog) {
    EXPECT_EQ(JXW_UserEdit(dialog, kSecret, "new"), 1);
    EXPECT_EQ(received.take(), Messages{"command 22 768"});
    char text[8];
    JXW_GetDlgItemText(dialog, kSecret, text, sizeof text);
    EXPECT_STREQ(text, "new");
    EXPECT_EQ(JXW_UserEdit(dialog, kLabel, "new"), 0);
    EXPECT_EQ(JXW_UserEdit(dialog, kSecret, nullptr), 1);
    EXPECT_EQ(JXW_GetDlgItemText(dialog, kSecret, text, sizeof text), 0);
}

TEST_F(UserActions, AClickedBoxChangesItsState) {
    EXPECT_EQ(JXW_UserCheck(dialog, kTrace), 1);
    EXPECT_EQ(JXW_IsDlgButtonChecked(dialog, kTrace), 1);
    EXPECT_EQ(JXW_UserCheck(dialog, kTrace), 1);
    EXPECT_EQ(JXW_IsDlgButtonChecked(dialog, kTrace), 0);
    EXPECT_EQ(received.take(), (Messages{"command 23 0", "command 23 0"}));
    EXPECT_EQ(JXW_UserCheck(dialog, kGo), 0);
}

TEST_F(UserActions, AClickedRadioButtonBecomesItsGroupsCheckedOne) {
    JXW_CheckRadioButton(dialog, 0, 0, kFirst);
    EXPECT_EQ(JXW_UserCheck(dialog, kThird), 1);
    EXPECT_EQ(JXW_IsDlgButtonChecked(dialog, kFirst), 0);
    EXPECT_EQ(JXW_IsDlgButtonChecked(dialog, kThird), 1);
    EXPECT_EQ(received.take(), Messages{"command 26 0"});
}

TEST_F(UserActions, EnterPressesTheDefaultButton) {
    EXPECT_EQ(JXW_UserKey(dialog, JXW_KEY_ENTER), 1);
    EXPECT_EQ(received.take(), Messages{"command 1 0"});
    JXW_UserFocus(dialog, kGo);
    EXPECT_EQ(JXW_UserKey(dialog, JXW_KEY_ENTER), 1);
    EXPECT_EQ(received.take(), Messages{"command 29 0"});
    JXW_UserFocus(dialog, kList);
    JXW_EnableWindow(item(IDOK), 0);
    EXPECT_EQ(JXW_UserKey(dialog, JXW_KEY_ENTER), 0);
    EXPECT_TRUE(received.messages.empty());
}

TEST_F(UserActions, EscapeCancels) {
    for (const int key : {JXW_KEY_ESCAPE, JXW_KEY_CLOSE}) {
        EXPECT_EQ(JXW_UserKey(dialog, key), 1);
        EXPECT_EQ(received.take(), Messages{"command 2 0"});
    }
    JXW_EnableWindow(item(IDCANCEL), 0);
    EXPECT_EQ(JXW_UserKey(dialog, JXW_KEY_ESCAPE), 0);
}

TEST_F(UserActions, EscapePressesTheCloseButtonWhereThereIsNoCancel) {
    const HWND closing = create(kClosing);
    received.take();
    EXPECT_EQ(JXW_UserKey(closing, JXW_KEY_ESCAPE), 1);
    EXPECT_EQ(received.take(), Messages{"command 104 0"});
    const HWND plain = create(kPlain);
    received.take();
    EXPECT_EQ(JXW_UserKey(plain, JXW_KEY_ESCAPE), 1);
    EXPECT_EQ(received.take(), Messages{"command 2 0"});
    EXPECT_EQ(JXW_UserKey(plain, 99), 0);
}

TEST_F(UserActions, TabGoesAroundAndARadioGroupIsOneStop) {
    EXPECT_EQ(around(JXW_KEY_NEXT), "22 23 24 27 28 29 1 2 21 ");
    EXPECT_EQ(around(JXW_KEY_PREVIOUS), "2 1 29 28 27 24 23 22 21 ");
    JXW_CheckRadioButton(dialog, 0, 0, kSecond);
    EXPECT_EQ(around(JXW_KEY_NEXT), "22 23 25 27 28 29 1 2 21 ");
    JXW_UserCheck(dialog, kThird);
    EXPECT_EQ(around(JXW_KEY_NEXT), "27 28 29 1 2 21 22 23 26 ");
}

TEST_F(UserActions, TabStaysWhereThereIsNoOtherStop) {
    const HWND plain = create(kPlain);
    EXPECT_EQ(JXW_UserKey(plain, JXW_KEY_NEXT), 1);
    EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(plain, kGo));
    EXPECT_EQ(JXW_UserKey(create(kEmpty), JXW_KEY_NEXT), 0);
}

TEST_F(UserActions, TheFocusGoesWhereTheUserPutsIt) {
    EXPECT_EQ(JXW_UserFocus(dialog, kList), 1);
    EXPECT_EQ(JXW_GetFocus(), item(kList));
    for (const SampleId id : {kGrey, kLabel, kFrame})
        EXPECT_EQ(JXW_UserFocus(dialog, id), 0) << id;
}

TEST_F(UserActions, AccessKeysActAsTheirControlsDo) {
    EXPECT_EQ(JXW_UserAccessKey(dialog, 'G'), 1);
    EXPECT_EQ(JXW_UserAccessKey(dialog, 't'), 1);
    EXPECT_EQ(JXW_UserAccessKey(dialog, 'e'), 1);
    EXPECT_EQ(received.take(), (Messages{"command 29 0", "command 23 0", "command 25 0"}));
    EXPECT_EQ(JXW_IsDlgButtonChecked(dialog, kSecond), 1);
    EXPECT_EQ(JXW_UserAccessKey(dialog, 'n'), 1);
    EXPECT_EQ(JXW_GetFocus(), item(kName));
    EXPECT_EQ(JXW_UserAccessKey(dialog, 'W'), 1);
    EXPECT_EQ(JXW_GetFocus(), item(kSecond));
    for (const int key : {int{'x'}, int{'o'}, int{'&'}, int{' '}, 0, -1, 300})
        EXPECT_EQ(JXW_UserAccessKey(dialog, key), 0) << key;
    JXW_EnableWindow(item(kGo), 0);
    EXPECT_EQ(JXW_UserAccessKey(dialog, 'g'), 0);
    EXPECT_TRUE(received.messages.empty());
}

TEST_F(UserActions, NothingReachesADialogThatHasEndedOrIsGreyed) {
    const auto everything = [this] {
        return JXW_UserCommand(dialog, kGo) + JXW_UserSelect(dialog, kList, 0) + JXW_UserEdit(dialog, kName, "x") +
               JXW_UserCheck(dialog, kTrace) + JXW_UserCheck(dialog, kFirst) + JXW_UserFocus(dialog, kGo) +
               JXW_UserDoubleClick(dialog, kList, 0) + JXW_UserKey(dialog, JXW_KEY_ENTER) +
               JXW_UserKey(dialog, JXW_KEY_NEXT) + JXW_UserAccessKey(dialog, 'g');
    };
    JXW_EnableWindow(dialog, 0);
    EXPECT_EQ(everything(), 0);
    JXW_EnableWindow(dialog, 1);
    JXW_EndDialog(dialog, 1);
    EXPECT_EQ(everything(), 0);
    EXPECT_TRUE(received.messages.empty());
}

TEST_F(UserActions, ADialogMayBeDestroyedDuringAnyOfThem) {
    struct Row {
        const char* name;
        int (*act)(HWND dialog);
    };
    const Row rows[] = {
        {"command", [](HWND hwnd) { return JXW_UserCommand(hwnd, kGo); }},
        {"double click", [](HWND hwnd) { return JXW_UserDoubleClick(hwnd, kList, 0); }},
        {"edit", [](HWND hwnd) { return JXW_UserEdit(hwnd, kName, "x"); }},
        {"check", [](HWND hwnd) { return JXW_UserCheck(hwnd, kTrace); }},
        {"radio", [](HWND hwnd) { return JXW_UserCheck(hwnd, kSecond); }},
        {"enter", [](HWND hwnd) { return JXW_UserKey(hwnd, JXW_KEY_ENTER); }},
        {"escape", [](HWND hwnd) { return JXW_UserKey(hwnd, JXW_KEY_ESCAPE); }},
        {"access key", [](HWND hwnd) { return JXW_UserAccessKey(hwnd, 't'); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        received.does = nullptr;
        const HWND hwnd = create();
        JXW_SendDlgItemMessage(hwnd, kList, LB_ADDSTRING, 0, reinterpret_cast<uintptr_t>("a"));
        received.does = [](HWND gone, int, int, uintptr_t) { return static_cast<unsigned>(JXW_DestroyDialog(gone)); };
        EXPECT_EQ(row.act(hwnd), 1);
        EXPECT_EQ(JXW_IsWindow(hwnd), 0);
    }
}

}  // namespace
