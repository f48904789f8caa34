// The About dialog, driven by every path.
#include <jxmemory.h>
#include <jxwindow.h>

#include "admin/about_dialog.h"
#include "dialog_fixture.h"

namespace jx::test {

namespace {

class AboutDialog : public DialogTest {
protected:
    static unsigned char* heap(const char* text) { return ramAllocStr(reinterpret_cast<const unsigned char*>(text)); }
};

TEST_F(AboutDialog, ShowsItsTextsAndReleasesThemOnItsButton) {
    admin::AboutRecord record{{heap("One"), nullptr, heap("Three"), nullptr, nullptr, nullptr, nullptr, heap("Eight")}};
    unsigned char* const first = record.texts[0];
    ScriptedUser user{look(), press(IDOK)};
    EXPECT_EQ(jxDllDialog(0, JxAboutDialog, AboutDlgProc, &record), 1);
    EXPECT_EQ(user.dumps[0],
              "\"About\" centered\n  group \"About\"\n  label 146 \"One\"\n  label 147 \"Not Available\"\n"
              "  label 148 \"Three\"\n  label 149 \"Not Available\"\n  label 150 \"Not Available\"\n"
              "  label 151 \"Not Available\"\n  label 152 \"Not Available\"\n  label 153 \"Eight\"\n"
              "  button 1 \"OK\" default focus\n");
    EXPECT_EQ(record.texts[0], first);  // released, and the address is left as it was
}

TEST_F(AboutDialog, ShowsEightTimesThatThereIsNothing) {
    admin::AboutRecord record{};
    ScriptedUser user{look(), key(JXW_KEY_ESCAPE)};
    EXPECT_EQ(jxDllDialog(0, JxAboutDialog, AboutDlgProc, &record), 1);
    std::size_t count = 0;
    for (std::size_t at = 0; (at = user.dumps[0].find("Not Available", at)) != std::string::npos; ++at)
        ++count;
    EXPECT_EQ(count, 8U);
}

TEST_F(AboutDialog, OnlyItsButtonCloses) {
    admin::AboutRecord record{};
    ScriptedUser user{call([](HWND open) {
        for (const int id : {0, 2, 10, 146, 999})
            EXPECT_EQ(JXW_SendMessage(open, WM_COMMAND, id, 0), 0) << id;
        EXPECT_EQ(JXW_IsDialogEnded(open, nullptr), 0);
    })};
    jxDllDialog(0, JxAboutDialog, AboutDlgProc, &record);
}

// Sanitizers would report a second release.
TEST_F(AboutDialog, ReleasesItsTextsOnceHoweverOftenItsButtonIsPressed) {
    admin::AboutRecord record{{heap("One"), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, heap("Eight")}};
    ScriptedUser user{call([&](HWND open) {
        JXW_SendMessage(open, WM_COMMAND, IDOK, 0);
        record.texts[0] = heap("kept");
        JXW_SendMessage(open, WM_COMMAND, IDOK, 0);
        EXPECT_STREQ(reinterpret_cast<char*>(record.texts[0]), "kept");
        ramFree(record.texts[0]);
    })};
    jxDllDialog(0, JxAboutDialog, AboutDlgProc, &record);
}

TEST_F(AboutDialog, LeavesTheTextsToItsCallerWhenItIsClosedOtherwise) {
    admin::AboutRecord record{{heap("One"), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr}};
    ScriptedUser user{call([](HWND open) { JXW_EndDialog(open, 1); })};
    jxDllDialog(0, JxAboutDialog, AboutDlgProc, &record);
    EXPECT_STREQ(reinterpret_cast<char*>(record.texts[0]), "One");
    ramFree(record.texts[0]);
}

}  // namespace

}  // namespace jx::test
