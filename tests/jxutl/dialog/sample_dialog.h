// A dialog with one control of each kind, and a procedure that records its messages.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <jxscreen.h>
#include <jxwindow.h>

namespace jx::test {

constexpr char kSampleModule[] = "sample";
constexpr unsigned short kSample = 10;   // everything
constexpr unsigned short kPlain = 11;    // one button, no Cancel
constexpr unsigned short kClosing = 12;  // a Close button, no Cancel
constexpr unsigned short kEmpty = 13;    // nothing

enum SampleId : unsigned short {
    kLabel = 20,
    kName = 21,
    kSecret = 22,
    kTrace = 23,
    kFirst = 24,
    kSecond = 25,
    kThird = 26,
    kOther = 27,
    kList = 28,
    kGo = 29,
    kGrey = 30,
    kFrame = 31
};

inline constexpr JxwControl kSampleControls[] = {{JXW_LABEL, kLabel, 6, 6, 40, 8, "&Name:", 0},
                                                 {JXW_EDIT, kName, 50, 6, 80, 12, "Sales & Co", 0},
                                                 {JXW_EDIT, kSecret, 50, 20, 80, 12, "secret", JXW_PASSWORD},
                                                 {JXW_CHECKBOX, kTrace, 6, 34, 60, 10, "&Trace", 0},
                                                 {JXW_GROUPBOX, kFrame, 6, 46, 60, 44, "&When", 0},
                                                 {JXW_RADIO, kFirst, 10, 56, 50, 10, "A&lways", 0},
                                                 {JXW_RADIO, kSecond, 10, 66, 50, 10, "N&ever", 0},
                                                 {JXW_RADIO, kThird, 10, 76, 50, 10, "&Ask", 0},
                                                 {JXW_RADIO, kOther, 70, 56, 50, 10, "Alone", JXW_GROUP},
                                                 {JXW_LISTBOX, kList, 6, 96, 100, 40, nullptr, 0},
                                                 {JXW_BUTTON, kGo, 6, 140, 40, 14, "&Go && run", 0},
                                                 {JXW_BUTTON, kGrey, 50, 140, 40, 14, "&Later", JXW_GREY},
                                                 {JXW_BUTTON, IDOK, 94, 140, 40, 14, "OK", JXW_DEFAULT},
                                                 {JXW_BUTTON, IDCANCEL, 138, 140, 40, 14, "Cancel", 0},
                                                 {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};

inline constexpr JxwControl kPlainControls[] = {{JXW_BUTTON, kGo, 6, 6, 40, 14, "&Go", 0},
                                                {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};

inline constexpr JxwControl kClosingControls[] = {{JXW_BUTTON, kGo, 6, 6, 40, 14, "&Go", 0},
                                                  {JXW_BUTTON, 104, 50, 6, 40, 14, "Close", JXW_CLOSE},
                                                  {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};

inline constexpr JxwTemplate kSampleTemplates[] = {{kSample, "Sample", 184, 160, kSampleControls},
                                                   {kPlain, "Plain", 60, 30, kPlainControls},
                                                   {kClosing, "Closing", 100, 30, kClosingControls},
                                                   {kEmpty, "Empty", 60, 30, nullptr},
                                                   {0, nullptr, 0, 0, nullptr}};

// The messages a procedure got, and what it does on each.
struct MessageLog {
    std::vector<std::string> messages;  // "message wparam lparam"; WM_COMMAND as "command id notification"
    std::function<unsigned int(HWND, int, int, uintptr_t)> does;

    std::vector<std::string> take() { return std::exchange(messages, {}); }
};

// The procedure of a dialog whose record is a MessageLog.
inline unsigned int logMessage(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG)
        JXW_SetProp(dialog, "MessageLog", lparam);
    auto& received = *reinterpret_cast<MessageLog*>(JXW_GetProp(dialog, "MessageLog"));
    if (message == WM_COMMAND)
        received.messages.push_back("command " + std::to_string(wparam) + " " +
                                    std::to_string((lparam >> 16) & 0xFFFF));
    else if (message == WM_INITDIALOG)
        received.messages.emplace_back("init");
    else
        received.messages.push_back(std::to_string(message) + " " + std::to_string(wparam) + " " +
                                    std::to_string(lparam));
    return received.does ? received.does(dialog, message, wparam, lparam) : 0;
}

using Messages = std::vector<std::string>;

// SampleDialog: a test with the sample templates registered and no dialog left behind.
class SampleDialog : public testing::Test {
protected:
    SampleDialog() { EXPECT_EQ(JXW_RegisterModule(kSampleModule, nullptr, kSampleTemplates), 1); }
    ~SampleDialog() override {
        while (const HWND left = JXW_NextDialog(0))
            JXW_DestroyDialog(left);
        JXW_SetScreen(nullptr);
    }

    HWND create(unsigned short templateId = kSample, HWND owner = 0) {
        return JXW_CreateDialog(kSampleModule, templateId, owner, logMessage, &received);
    }

    int run(unsigned short templateId = kSample, HWND owner = 0) {
        return JXW_DialogBox(kSampleModule, templateId, owner, logMessage, &received);
    }

    MessageLog received;
};

}  // namespace jx::test
