// At which button of a message box the user begins.
#include "odbcadmin/assist/message_box.h"

#include <gtest/gtest.h>
#include <odbcinst.h>
#include <text_ids.h>

#include "odbcadmin/assist/library_text.h"
#include "odbcadmin/assist/say.h"
#include "scripted_user.h"
#include "test_home.h"

namespace jx::assist::test {
namespace {

constexpr unsigned int kQuestion = MB_YESNO | MB_ICONQUESTION;

unsigned int firstOf(unsigned int style, const std::string& text) {
    const BoxStyle box = boxStyle(style, text);
    return box.buttons[box.first].answer;
}

TEST(BoxStyle, AQuestionBeginsAtNoUnlessItDestroysNothing) {
    EXPECT_EQ(firstOf(kQuestion, "Remove the data source \"Sales\"?"), IDNO);
    EXPECT_EQ(firstOf(kQuestion, "There is no installation script of mine. Delete everything?"), IDNO);
    EXPECT_EQ(firstOf(kQuestion, ""), IDNO);
    EXPECT_EQ(firstOf(MB_OK, "Done."), IDOK);
    SQLValidDSN("x");  // the library and its texts are there
    EXPECT_EQ(firstOf(kQuestion, libraryText(JxTextNoScript)), IDYES);
}

TEST(BoxStyle, AQuestionToGoOnBeginsAtYesWhileItIsAsked) {
    const jx::test::TestHome home;
    unsigned int first = 0;
    JxwScreen screen{};
    screen.context = &first;
    screen.messageBox = [](void* context, HWND, const char* text, const char*, unsigned int style) -> unsigned int {
        *static_cast<unsigned int*>(context) = firstOf(style, std::string(text) + "\n\nThe loader says:");
        return IDYES;
    };
    JXW_SetScreen(&screen);
    EXPECT_TRUE(asksToGoOn(0, "Use it?", "Title"));
    EXPECT_EQ(first, static_cast<unsigned int>(IDYES));
    EXPECT_TRUE(asksToDestroy(0, "Remove it?", "Title"));
    EXPECT_EQ(first, static_cast<unsigned int>(IDNO));
    JXW_SetScreen(nullptr);
    EXPECT_EQ(firstOf(kQuestion, "Use it?"), IDNO);
}

}  // namespace
}  // namespace jx::assist::test
