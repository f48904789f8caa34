// The exported error-list functions.
#include <gtest/gtest.h>
#include <jxerrors.h>
#include <odbcinst.h>

#include <string>
#include <thread>

namespace jx::test {

namespace {

constexpr unsigned short kNoText = 999;

std::string loaded(unsigned short id) {
    unsigned char text[256] = {};
    winGetString(text, id);
    return reinterpret_cast<const char*>(text);
}

std::string textOf(const JxError* error) {
    return error == nullptr ? "(null)" : reinterpret_cast<const char*>(error->text());
}

// Every test begins with an empty list.
class InstallerErrors : public ::testing::Test {
protected:
    InstallerErrors() { JxErrorKeeper::clear(); }
    ~InstallerErrors() override { JxErrorKeeper::clear(); }
};

}  // namespace

TEST_F(InstallerErrors, AreRecordedInOrderWithTheirTexts) {
    JxError* first = addError(50);
    JxError* second = addWarning(51);
    JxError* third = addError(700, reinterpret_cast<const unsigned char*>("given"));
    ASSERT_EQ(JxErrorKeeper::count(), 3U);
    EXPECT_EQ(JxErrorKeeper::errorAt(0), first);
    EXPECT_EQ(JxErrorKeeper::errorAt(1), second);
    EXPECT_EQ(JxErrorKeeper::errorAt(2), third);
    EXPECT_EQ(textOf(first), loaded(50));
    EXPECT_EQ(textOf(second), loaded(51));
    EXPECT_EQ(textOf(third), "given");
    EXPECT_EQ(first->number(), 50);
    EXPECT_EQ(second->number(), 51);
    EXPECT_EQ(third->number(), 700);
    EXPECT_EQ(first->type(), ErrorTypeError);
    EXPECT_EQ(second->type(), ErrorTypeWarning);
    EXPECT_EQ(third->type(), ErrorTypeError);
    for (const JxError* error : {first, second, third}) {
        EXPECT_EQ(error->detail(), 0);
        EXPECT_EQ(error->value(), 0);
    }
}

TEST_F(InstallerErrors, HaveAnEmptyTextForANumberWithoutResource) {
    EXPECT_EQ(textOf(addError(kNoText)), "");
    EXPECT_EQ(textOf(addWarning(kNoText)), "");
    EXPECT_EQ(textOf(addError(kNoText, nullptr)), "");
    EXPECT_EQ(textOf(appendTextToLastError(kNoText)), "");
}

TEST_F(InstallerErrors, KeepACopyOfAGivenText) {
    std::string text(70000, 'x');
    JxError* error = addError(1, reinterpret_cast<const unsigned char*>(text.c_str()));
    text[0] = 'y';
    EXPECT_EQ(textOf(error), std::string(70000, 'x'));
}

TEST_F(InstallerErrors, AppendToTheNewest) {
    addError(50);
    JxError* newest = addError(51);
    EXPECT_EQ(appendTextToLastError(52), newest);
    EXPECT_EQ(textOf(newest), loaded(51) + loaded(52));
    EXPECT_EQ(textOf(JxErrorKeeper::errorAt(0)), loaded(50));
}

TEST_F(InstallerErrors, AppendAtPosition0ToTheOldest) {
    JxError* oldest = addError(50);
    addError(51);
    EXPECT_EQ(appendTextToErrorAtPos(53, 0), oldest);
    EXPECT_EQ(textOf(oldest), loaded(50) + loaded(53));
    EXPECT_EQ(textOf(JxErrorKeeper::errorAt(1)), loaded(51));
}

TEST_F(InstallerErrors, AppendNothingOutsideTheList) {
    EXPECT_EQ(appendTextToLastError(50), nullptr);
    EXPECT_EQ(appendTextToErrorAtPos(50, 0), nullptr);
    addError(50);
    for (const unsigned long position : {1UL, 2UL, 32768UL, 70000UL, ~0UL})
        EXPECT_EQ(appendTextToErrorAtPos(51, position), nullptr);
    EXPECT_EQ(textOf(JxErrorKeeper::errorAt(0)), loaded(50));
}

TEST_F(InstallerErrors, OfOneThreadAreNotThoseOfAnother) {
    addError(50);
    unsigned long there = 99;
    JxError* last = nullptr;
    std::thread([&] {
        last = appendTextToLastError(51);
        addWarning(52);
        there = JxErrorKeeper::count();
    }).join();
    EXPECT_EQ(last, nullptr);
    EXPECT_EQ(there, 1U);
    EXPECT_EQ(JxErrorKeeper::count(), 1U);
    EXPECT_EQ(textOf(JxErrorKeeper::errorAt(0)), loaded(50));
}

}  // namespace jx::test
