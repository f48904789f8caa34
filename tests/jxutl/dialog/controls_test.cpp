// Properties, texts, enabling and check marks of dialogs and controls.
#include "dialog_dump.h"
#include "sample_dialog.h"

using namespace jx::test;

namespace {

class Controls : public SampleDialog {
protected:
    HWND item(unsigned short id) const { return JXW_GetDlgItem(dialog, id); }

    std::string text(unsigned short id, int size = 100) const {
        std::string buffer(100, '?');
        const int length = JXW_GetDlgItemText(dialog, id, buffer.data(), size);
        EXPECT_EQ(std::string(buffer.c_str()).size(), static_cast<std::size_t>(length));
        return buffer.c_str();
    }

    // The ids of the checked boxes and radio buttons.
    std::string checked() const {
        std::string ids;
        for (const SampleId id : {kTrace, kFirst, kSecond, kThird, kOther})
            ids += JXW_IsDlgButtonChecked(dialog, id) != 0 ? std::to_string(id) + " " : "";
        return ids;
    }

    HWND dialog = create();
};

TEST_F(Controls, KeepValuesUnderNamesPerWindow) {
    EXPECT_EQ(JXW_GetProp(dialog, "Segm"), 0U);
    EXPECT_EQ(JXW_SetProp(dialog, "Segm", ~uintptr_t{0}), 1);
    EXPECT_EQ(JXW_SetProp(dialog, "Offset", 7), 1);
    EXPECT_EQ(JXW_SetProp(item(kGo), "Segm", 3), 1);
    EXPECT_EQ(JXW_GetProp(dialog, "Segm"), ~uintptr_t{0});
    EXPECT_EQ(JXW_GetProp(item(kGo), "Segm"), 3U);
    EXPECT_EQ(JXW_GetProp(item(kName), "Segm"), 0U);
    EXPECT_EQ(JXW_SetProp(dialog, "Segm", 8), 1);
    EXPECT_EQ(JXW_GetProp(dialog, "Segm"), 8U);
    EXPECT_EQ(JXW_GetProp(dialog, "segm"), 0U);
    EXPECT_EQ(JXW_SetProp(dialog, nullptr, 1), 0);
    EXPECT_EQ(JXW_GetProp(dialog, nullptr), 0U);
}

TEST_F(Controls, AreFoundByTheirId) {
    EXPECT_NE(item(kName), 0U);
    EXPECT_NE(item(kName), item(kGo));
    EXPECT_EQ(item(999), 0U);
    EXPECT_EQ(item(0), 0U);
    EXPECT_EQ(JXW_IsWindow(item(kName)), 1);
}

TEST_F(Controls, GiveTheirTextCutToTheBuffer) {
    EXPECT_EQ(text(kName), "Sales & Co");
    EXPECT_EQ(text(kName, 11), "Sales & Co");
    EXPECT_EQ(text(kName, 10), "Sales & C");
    EXPECT_EQ(text(kName, 1), "");
    char untouched[4] = "abc";
    EXPECT_EQ(JXW_GetDlgItemText(dialog, kName, untouched, 0), 0);
    EXPECT_EQ(JXW_GetDlgItemText(dialog, kName, untouched, -1), 0);
    EXPECT_EQ(JXW_GetDlgItemText(dialog, kName, nullptr, 10), 0);
    EXPECT_STREQ(untouched, "abc");
    EXPECT_EQ(text(999), "");
}

TEST_F(Controls, TakeATextOfAnyLength) {
    const std::string longText(70000, 'x');
    EXPECT_EQ(JXW_SetDlgItemText(dialog, kName, longText.c_str()), 1);
    std::string buffer(70001, '?');
    EXPECT_EQ(JXW_GetDlgItemText(dialog, kName, buffer.data(), 70001), 70000);
    EXPECT_EQ(JXW_SetDlgItemText(dialog, kName, nullptr), 1);
    EXPECT_EQ(text(kName), "");
    EXPECT_EQ(JXW_SetDlgItemText(dialog, 999, "a"), 0);
}

TEST_F(Controls, SetTitlesAndTextsByHandle) {
    EXPECT_EQ(JXW_SetWindowText(dialog, "Other title"), 1);
    EXPECT_EQ(JXW_SetWindowText(item(kLabel), "Other"), 1);
    EXPECT_EQ(dumpDialog(dialog).substr(0, 33), "\"Other title\"\n  label 20 \"Other\"\n");
}

TEST_F(Controls, AreEnabledAndGreyed) {
    EXPECT_EQ(JXW_IsWindowEnabled(item(kGrey)), 0);
    EXPECT_EQ(JXW_EnableWindow(item(kGrey), 1), 1);
    EXPECT_EQ(JXW_IsWindowEnabled(item(kGrey)), 1);
    EXPECT_EQ(JXW_EnableWindow(item(kGo), 0), 1);
    EXPECT_EQ(JXW_IsWindowEnabled(item(kGo)), 0);
    EXPECT_EQ(JXW_EnableWindow(dialog, 0), 1);
    EXPECT_EQ(JXW_IsWindowEnabled(dialog), 0);
    EXPECT_EQ(JXW_IsWindowEnabled(item(kGrey)), 1);
}

TEST_F(Controls, PassTheFocusOnWhenTheyAreGreyed) {
    EXPECT_EQ(JXW_GetFocus(), item(kName));
    JXW_EnableWindow(item(kName), 0);
    EXPECT_EQ(JXW_GetFocus(), item(kSecret));
    JXW_EnableWindow(item(kTrace), 0);
    EXPECT_EQ(JXW_GetFocus(), item(kSecret));
}

TEST_F(Controls, TheLastOneGreyedLeavesTheFocusWithTheDialog) {
    const HWND plain = create(kPlain);
    JXW_EnableWindow(JXW_GetDlgItem(plain, kGo), 0);
    EXPECT_EQ(JXW_GetFocus(), plain);
}

TEST_F(Controls, GiveTheFocusBackToTheOneThatHadIt) {
    EXPECT_EQ(JXW_SetFocus(item(kGo)), item(kName));
    EXPECT_EQ(JXW_GetFocus(), item(kGo));
    EXPECT_EQ(JXW_SetFocus(item(kGrey)), 0U);
    EXPECT_EQ(JXW_SetFocus(item(kLabel)), 0U);
    EXPECT_EQ(JXW_SetFocus(item(kFrame)), 0U);
    const HWND plain = create(kPlain);
    EXPECT_EQ(JXW_SetFocus(dialog), JXW_GetDlgItem(plain, kGo));
    EXPECT_EQ(JXW_GetFocus(), item(kGo));
}

TEST_F(Controls, OfADialogThatCannotBeUsedTakeNoFocus) {
    const HWND plain = create(kPlain);
    const HWND before = JXW_GetFocus();
    const std::string picture = dumpDialog(dialog);
    const auto nothingHappens = [&] {
        for (const HWND hwnd : {dialog, item(kGo)})
            EXPECT_EQ(JXW_SetFocus(hwnd), 0U);
        EXPECT_EQ(JXW_GetFocus(), before);
    };
    JXW_EnableWindow(dialog, 0);
    nothingHappens();
    JXW_EnableWindow(dialog, 1);
    EXPECT_EQ(dumpDialog(dialog), picture);
    JXW_EndDialog(dialog, 1);
    nothingHappens();
    EXPECT_EQ(dumpDialog(dialog), picture);
    EXPECT_NE(JXW_SetFocus(plain), 0U);
}

TEST_F(Controls, CheckOneBoxAndNoOther) {
    EXPECT_EQ(JXW_CheckDlgButton(dialog, kTrace, 7), 1);
    EXPECT_EQ(JXW_CheckDlgButton(dialog, kFirst, 1), 1);
    EXPECT_EQ(JXW_CheckDlgButton(dialog, kSecond, -1), 1);
    EXPECT_EQ(checked(), "23 24 25 ");
    EXPECT_EQ(JXW_IsDlgButtonChecked(dialog, kTrace), 1);
    EXPECT_EQ(JXW_CheckDlgButton(dialog, kTrace, 0), 1);
    EXPECT_EQ(checked(), "24 25 ");
    EXPECT_EQ(JXW_CheckDlgButton(dialog, kGo, 1), 0);
    EXPECT_EQ(JXW_CheckDlgButton(dialog, 999, 1), 0);
    EXPECT_EQ(JXW_IsDlgButtonChecked(dialog, kGo), 0);
}

TEST_F(Controls, AnswerCheckMessages) {
    EXPECT_EQ(BM_GETCHECK, 1024);
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, kTrace, BM_SETCHECK, 1, 0), 0);
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, kTrace, BM_GETCHECK, 0, 0), 1);
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, kTrace, BM_SETCHECK, 0, 0), 0);
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, kTrace, BM_GETCHECK, 0, 0), 0);
    EXPECT_EQ(JXW_SendDlgItemMessage(dialog, kTrace, 1026, 0, 0), 0);
}

TEST_F(Controls, ARadioButtonClearsItsGroup) {
    JXW_CheckRadioButton(dialog, 0, 0, kOther);
    for (const SampleId id : {kFirst, kThird, kSecond}) {
        EXPECT_EQ(JXW_CheckRadioButton(dialog, 0, 0, id), 1);
        EXPECT_EQ(checked(), std::to_string(id) + " 27 ");
    }
    EXPECT_EQ(JXW_CheckRadioButton(dialog, 0, 0, kTrace), 0);
    EXPECT_EQ(JXW_CheckRadioButton(dialog, 0, 0, 999), 0);
}

TEST_F(Controls, ARadioButtonClearsTheRangeItIsGiven) {
    JXW_CheckDlgButton(dialog, kFirst, 1);
    JXW_CheckDlgButton(dialog, kOther, 1);
    EXPECT_EQ(JXW_CheckRadioButton(dialog, kSecond, kOther, kThird), 1);
    EXPECT_EQ(checked(), "24 26 ");
}

TEST_F(Controls, RememberThatTheDialogIsToBeCentered) {
    EXPECT_EQ(winCenterBox(dialog), 1);
    EXPECT_EQ(dumpDialog(dialog).substr(0, 18), "\"Sample\" centered\n");
    EXPECT_EQ(winCenterBox(item(kGo)), 0);
}

TEST_F(Controls, CanBeReadInTabOrder) {
    JxwDialogInfo info{};
    ASSERT_EQ(JXW_GetDialogInfo(dialog, &info), 1);
    EXPECT_STREQ(info.module, kSampleModule);
    EXPECT_EQ(info.templateId, kSample);
    EXPECT_EQ(info.width, 184);
    EXPECT_EQ(info.height, 160);
    EXPECT_EQ(info.controlCount, 14);
    EXPECT_EQ(info.focus, 1);
    EXPECT_EQ(info.active, 1);
    EXPECT_EQ(info.enabled, 1);
    JxwControlInfo control{};
    ASSERT_EQ(JXW_GetControlInfo(dialog, 10, &control), 1);
    EXPECT_EQ(control.control, item(kGo));
    EXPECT_EQ(control.kind, JXW_BUTTON);
    EXPECT_EQ(control.id, kGo);
    EXPECT_EQ(control.x, 6);
    EXPECT_EQ(control.y, 140);
    EXPECT_EQ(control.width, 40);
    EXPECT_EQ(control.height, 14);
    EXPECT_EQ(control.accessKey, 'g');
    EXPECT_EQ(control.selection, -1);
    for (const int index : {-1, 14})
        EXPECT_EQ(JXW_GetControlInfo(dialog, index, &control), 0);
    EXPECT_EQ(JXW_GetDialogInfo(dialog, nullptr), 0);
    EXPECT_EQ(JXW_GetControlInfo(dialog, 0, nullptr), 0);
}

TEST_F(Controls, AnEditFieldsTextHasNoAccessKey) {
    JXW_SetDlgItemText(dialog, kName, "&x");
    JxwControlInfo control{};
    JXW_GetControlInfo(dialog, 1, &control);
    EXPECT_EQ(control.accessKey, 0);
}

// A label that shows data.
constexpr JxwControl kDataControls[] = {
    {JXW_LABEL, kLabel, 0, 0, 40, 8, "R&D", JXW_PLAIN}, {JXW_EDIT, kName, 0, 8, 40, 8, nullptr, 0},
    {JXW_EDIT, kSecret, 0, 16, 40, 8, nullptr, 0},      {JXW_LABEL, 0, 0, 24, 40, 8, "&Door:", 0},
    {JXW_BUTTON, kGo, 0, 32, 40, 8, "Go", 0},           {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};
constexpr JxwTemplate kDataTemplates[] = {{1, "Data", 40, 40, kDataControls}, {0, nullptr, 0, 0, nullptr}};

TEST_F(Controls, APlainLabelsTextHasNoAccessKey) {
    ASSERT_EQ(JXW_RegisterModule("data", nullptr, kDataTemplates), 1);
    const HWND data = JXW_CreateDialog("data", 1, 0, logMessage, &received);
    JxwControlInfo control{};
    ASSERT_EQ(JXW_GetControlInfo(data, 0, &control), 1);
    EXPECT_EQ(control.accessKey, 0);
    EXPECT_EQ(control.flags, unsigned{JXW_PLAIN});
    EXPECT_STREQ(control.text, "R&D");
    EXPECT_EQ(JXW_UserAccessKey(data, 'd'), 1);
    EXPECT_EQ(JXW_GetFocus(), JXW_GetDlgItem(data, kGo));
    JXW_SetDlgItemText(data, kLabel, "Any &Ace");
    EXPECT_EQ(JXW_UserAccessKey(data, 'a'), 0);
}

}  // namespace
