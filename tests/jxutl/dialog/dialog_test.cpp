// The life of a dialog: made, sent messages, ended, destroyed.
#include <climits>
#include <stdexcept>
#include <thread>

#include "dialog_dump.h"
#include "sample_dialog.h"

using namespace jx::test;

namespace {

class DialogLife : public SampleDialog {};

TEST_F(DialogLife, ShowsItsTemplateAfterTheProcedureSetItUp) {
    const HWND dialog = create();
    EXPECT_EQ(received.take(), Messages{"init"});
    EXPECT_EQ(dumpDialog(dialog),
              "\"Sample\"\n"
              "  label 20 \"&Name:\"\n"
              "  edit 21 \"Sales & Co\" focus\n"
              "  edit 22 \"******\" password\n"
              "  check 23 [ ] \"&Trace\"\n"
              "  group 31 \"&When\"\n"
              "  radio 24 ( ) \"A&lways\"\n"
              "  radio 25 ( ) \"N&ever\"\n"
              "  radio 26 ( ) \"&Ask\"\n"
              "  radio 27 ( ) \"Alone\"\n"
              "  list 28\n"
              "  button 29 \"&Go && run\"\n"
              "  button 30 \"&Later\" grey\n"
              "  button 1 \"OK\" default\n"
              "  button 2 \"Cancel\"\n");
}

TEST_F(DialogLife, GivesTheRecordAndTheFirstControlToTheFirstMessage) {
    int first = 0;
    uintptr_t record = 0;
    received.does = [&](HWND, int, int wparam, uintptr_t lparam) {
        first = wparam;
        record = lparam;
        return 1U;
    };
    const HWND dialog = create();
    EXPECT_EQ(static_cast<HWND>(first), JXW_GetDlgItem(dialog, kName));
    EXPECT_EQ(record, reinterpret_cast<uintptr_t>(&received));
}

TEST_F(DialogLife, NeedsATemplateAndAProcedure) {
    EXPECT_EQ(create(99), 0U);
    EXPECT_EQ(JXW_CreateDialog("nobody", kSample, 0, logMessage, &received), 0U);
    EXPECT_EQ(JXW_CreateDialog(nullptr, kSample, 0, logMessage, &received), 0U);
    EXPECT_EQ(JXW_CreateDialog(kSampleModule, kSample, 0, nullptr, &received), 0U);
    EXPECT_TRUE(received.messages.empty());
    EXPECT_EQ(JXW_NextDialog(0), 0U);
}

TEST_F(DialogLife, KeepsTheFocusThatItsProcedureSet) {
    received.does = [](HWND dialog, int, int, uintptr_t) { return JXW_SetFocus(JXW_GetDlgItem(dialog, kGo)) != 0; };
    const HWND dialog = create();
    EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(dialog, kGo));
}

TEST_F(DialogLife, ADialogWithoutControlsHasTheFocusItself) {
    const HWND dialog = create(kEmpty);
    EXPECT_EQ(JXW_GetFocus(), dialog);
    EXPECT_EQ(dumpDialog(dialog), "\"Empty\"\n");
}

TEST_F(DialogLife, EndsWithAResultAndStaysReadableUntilItIsDestroyed) {
    const HWND dialog = create();
    int result = 5;
    EXPECT_EQ(JXW_IsDialogEnded(dialog, &result), 0);
    EXPECT_EQ(result, 5);
    EXPECT_EQ(JXW_EndDialog(dialog, 3), 1);
    EXPECT_EQ(JXW_EndDialog(dialog, 4), 1);
    EXPECT_EQ(JXW_IsDialogEnded(dialog, &result), 1);
    EXPECT_EQ(result, 4);
    EXPECT_EQ(JXW_IsDialogEnded(dialog, nullptr), 1);
    char text[32];
    EXPECT_EQ(JXW_GetDlgItemText(dialog, kName, text, sizeof text), 10);
    EXPECT_EQ(JXW_DestroyDialog(dialog), 1);
    EXPECT_EQ(JXW_IsDialogEnded(dialog, &result), 0);
    EXPECT_EQ(JXW_DestroyDialog(dialog), 0);
}

TEST_F(DialogLife, CanEndInItsFirstMessageAndIsThenNeverShown) {
    received.does = [](HWND dialog, int, int, uintptr_t) { return static_cast<unsigned>(JXW_EndDialog(dialog, 9)); };
    const HWND dialog = create();
    int result = 0;
    EXPECT_EQ(JXW_IsDialogEnded(dialog, &result), 1);
    EXPECT_EQ(result, 9);
}

TEST_F(DialogLife, CanBeDestroyedInItsFirstMessage) {
    received.does = [](HWND dialog, int, int, uintptr_t) { return static_cast<unsigned>(JXW_DestroyDialog(dialog)); };
    EXPECT_EQ(create(), 0U);
    EXPECT_EQ(JXW_NextDialog(0), 0U);
}

TEST_F(DialogLife, CanBeDestroyedInsideAnyOfItsMessages) {
    const HWND dialog = create();
    int after = -1;
    received.does = [&](HWND hwnd, int, int, uintptr_t) {
        JXW_DestroyDialog(hwnd);
        after = JXW_SetDlgItemText(hwnd, kName, "gone");
        return 77U;
    };
    EXPECT_EQ(JXW_SendMessage(dialog, WM_USER + 7, 0, 0), 77);
    EXPECT_EQ(after, 0);
    EXPECT_EQ(JXW_IsWindow(dialog), 0);
}

TEST_F(DialogLife, OwnedDialogsAreDestroyedBeforeTheirOwner) {
    const HWND owner = create();
    const HWND owned = create(kPlain, JXW_GetDlgItem(owner, kGo));  // a control means its dialog
    const HWND deeper = create(kEmpty, owned);
    EXPECT_EQ(JXW_DestroyDialog(owner), 1);
    EXPECT_EQ(JXW_IsWindow(owned) + JXW_IsWindow(deeper), 0);
}

TEST_F(DialogLife, AnUnknownOwnerIsIgnored) {
    const HWND dialog = create(kPlain, 1);
    JxwDialogInfo info{};
    ASSERT_EQ(JXW_GetDialogInfo(dialog, &info), 1);
    EXPECT_EQ(info.owner, 0U);
}

TEST_F(DialogLife, AnExceptionOfTheFirstMessagePassesAndLeavesNothing) {
    received.does = [](HWND, int, int, uintptr_t) -> unsigned { throw std::runtime_error("setup"); };
    EXPECT_THROW(create(), std::runtime_error);
    EXPECT_EQ(JXW_NextDialog(0), 0U);
    EXPECT_EQ(JXW_GetFocus(), 0U);
}

TEST_F(DialogLife, HandlesAreNeverGivenOutTwice) {
    const HWND dialog = create();
    const HWND control = JXW_GetDlgItem(dialog, IDCANCEL);
    JXW_DestroyDialog(dialog);
    for (int round = 0; round < 100; ++round) {
        const HWND next = create();
        ASSERT_GT(next, control);
        JXW_DestroyDialog(next);
    }
}

TEST_F(DialogLife, StaleAndForeignHandlesAreAnsweredWithZero) {
    const HWND stale = create();
    JXW_DestroyDialog(stale);
    const HWND living = create(kPlain);
    const HWND control = JXW_GetDlgItem(living, kGo);
    for (const HWND hwnd : {HWND{0}, HWND{1}, stale, stale + 1, living + 2, HWND{0x80000000}, HWND{UINT_MAX}}) {
        SCOPED_TRACE(hwnd);
        JxwDialogInfo info{};
        JxwControlInfo item{};
        char text[4] = "abc";
        EXPECT_EQ(JXW_IsWindow(hwnd), 0);
        EXPECT_EQ(JXW_SendMessage(hwnd, WM_COMMAND, 1, 0), 0);
        EXPECT_EQ(JXW_PostMessage(hwnd, WM_COMMAND, 1, 0), 0);
        EXPECT_EQ(JXW_SendDlgItemMessage(hwnd, kGo, LB_ADDSTRING, 0, 0), 0);
        EXPECT_EQ(JXW_EndDialog(hwnd, 1), 0);
        EXPECT_EQ(JXW_IsDialogEnded(hwnd, nullptr), 0);
        EXPECT_EQ(JXW_DestroyDialog(hwnd), 0);
        EXPECT_EQ(JXW_SetProp(hwnd, "a", 1), 0);
        EXPECT_EQ(JXW_GetProp(hwnd, "a"), 0U);
        EXPECT_EQ(JXW_SetWindowText(hwnd, "a"), 0);
        EXPECT_EQ(winCenterBox(hwnd), 0);
        EXPECT_EQ(JXW_GetDlgItem(hwnd, kGo), 0U);
        EXPECT_EQ(JXW_EnableWindow(hwnd, 1), 0);
        EXPECT_EQ(JXW_IsWindowEnabled(hwnd), 0);
        EXPECT_EQ(JXW_SetDlgItemText(hwnd, kGo, "a"), 0);
        EXPECT_EQ(JXW_GetDlgItemText(hwnd, kGo, text, sizeof text), 0);
        EXPECT_STREQ(text, "");
        EXPECT_EQ(JXW_CheckDlgButton(hwnd, kGo, 1), 0);
        EXPECT_EQ(JXW_IsDlgButtonChecked(hwnd, kGo), 0);
        EXPECT_EQ(JXW_CheckRadioButton(hwnd, 0, 0, kFirst), 0);
        EXPECT_EQ(JXW_SetFocus(hwnd), 0U);
        EXPECT_EQ(JXW_UserCommand(hwnd, kGo), 0);
        EXPECT_EQ(JXW_UserSelect(hwnd, kList, 0), 0);
        EXPECT_EQ(JXW_UserDoubleClick(hwnd, kList, 0), 0);
        EXPECT_EQ(JXW_UserEdit(hwnd, kName, "a"), 0);
        EXPECT_EQ(JXW_UserCheck(hwnd, kTrace), 0);
        EXPECT_EQ(JXW_UserFocus(hwnd, kGo), 0);
        EXPECT_EQ(JXW_UserKey(hwnd, JXW_KEY_ENTER), 0);
        EXPECT_EQ(JXW_UserAccessKey(hwnd, 'g'), 0);
        EXPECT_EQ(JXW_GetDialogInfo(hwnd, &info), 0);
        EXPECT_EQ(JXW_GetControlInfo(hwnd, 0, &item), 0);
        EXPECT_EQ(JXW_GetRow(hwnd, 0, 0), nullptr);
    }
    EXPECT_EQ(JXW_IsWindow(control), 1);
    EXPECT_EQ(received.take(), (Messages{"init", "init"}));
}

TEST_F(DialogLife, AControlIsNotADialog) {
    const HWND control = JXW_GetDlgItem(create(), kGo);
    JxwDialogInfo info{};
    EXPECT_EQ(JXW_EndDialog(control, 1), 0);
    EXPECT_EQ(JXW_DestroyDialog(control), 0);
    EXPECT_EQ(JXW_GetDlgItem(control, kGo), 0U);
    EXPECT_EQ(JXW_DispatchMessages(control), 0);
    EXPECT_EQ(JXW_UserCommand(control, kGo), 0);
    EXPECT_EQ(JXW_GetDialogInfo(control, &info), 0);
}

TEST_F(DialogLife, AHandleUsedOnAnotherThreadNamesNothing) {
    const HWND dialog = create();
    int answers = -1;
    HWND own = 0;
    std::thread([&] {
        answers = JXW_IsWindow(dialog) + JXW_PostMessage(dialog, 1, 0, 0) + JXW_SendMessage(dialog, 1, 0, 0) +
                  JXW_EndDialog(dialog, 1) + JXW_DestroyDialog(dialog) + static_cast<int>(JXW_SetFocus(dialog));
        MessageLog other;
        own = JXW_CreateDialog(kSampleModule, kPlain, dialog, logMessage, &other);
    }).join();  // the thread's dialog is destroyed with it
    EXPECT_EQ(answers, 0);
    EXPECT_GT(own, dialog);
    EXPECT_EQ(JXW_IsWindow(own), 0);
    EXPECT_EQ(JXW_IsWindow(dialog), 1);
    EXPECT_EQ(received.take(), Messages{"init"});
}

TEST_F(DialogLife, PassesTheFocusToItsOwnerWhenItIsDestroyed) {
    const HWND owner = create();
    const HWND beside = create(kPlain);
    const HWND owned = create(kClosing, owner);
    EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(owned, kGo));
    JXW_DestroyDialog(owned);
    EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(owner, kName));
    JXW_DestroyDialog(owner);
    EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(beside, kGo));
    JXW_DestroyDialog(beside);
    EXPECT_EQ(JXW_GetFocus(), 0U);
}

TEST_F(DialogLife, LivesOnFromATemplateThatWasReplaced) {
    const HWND dialog = create(kPlain);
    EXPECT_EQ(JXW_RegisterModule(kSampleModule, nullptr, nullptr), 1);
    EXPECT_EQ(create(kPlain), 0U);
    EXPECT_EQ(dumpDialog(dialog), "\"Plain\"\n  button 29 \"&Go\" focus\n");
}

TEST_F(DialogLife, CopiesTheTablesOfItsModule) {
    std::string title = "Made";
    std::string caption = "&Go";
    std::vector<JxwControl> controls{{JXW_BUTTON, 5, 0, 0, 1, 1, caption.c_str(), JXW_DEFAULT},
                                     {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};
    std::vector<JxwTemplate> templates{{1, title.c_str(), 10, 10, controls.data()},
                                       {1, "second of this id", 10, 10, nullptr},
                                       {0, nullptr, 0, 0, nullptr}};
    ASSERT_EQ(JXW_RegisterModule("made", nullptr, templates.data()), 1);
    title.assign("xxxx");
    caption.assign("xxx");
    controls.clear();
    templates.clear();
    EXPECT_EQ(dumpDialog(JXW_CreateDialog("made", 1, 0, logMessage, &received)),
              "\"Made\"\n  button 5 \"&Go\" default focus\n");
}

}  // namespace
