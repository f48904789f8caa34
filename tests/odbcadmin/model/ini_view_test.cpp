// One text as sections and keys.
#include "odbcadmin/model/ini_view.h"

#include <gtest/gtest.h>

namespace jx::model {
namespace {

TEST(IniView, JoinsSectionsOfOneNameAndTakesTheFirstOfEqualKeys) {
    const auto view = IniView::parse("x=0\n[A]\nk=1\nK=2\n[b]\n[a]\nk=3\nl=4\nnoValue\n[]\ny=1\n");
    ASSERT_TRUE(view);
    ASSERT_EQ(view->sections().size(), 2U);
    EXPECT_EQ(view->value("a", "K"), "1");
    EXPECT_EQ(view->value(" A ", " l "), "4");
    EXPECT_EQ(view->section("A")->entries.size(), 3U);
    EXPECT_EQ(view->find("A", "noValue")->value, "");
    EXPECT_EQ(view->find("A", "x"), nullptr);
    EXPECT_EQ(view->section("c"), nullptr);
    EXPECT_EQ(view->section("A")->line, 2U);
    EXPECT_EQ(view->find("a", "l")->line, 8U);
}

TEST(IniView, ManyEqualKeysCountOnce) {
    std::string text = "[A]\n";
    for (int i = 0; i < 40; ++i)
        text += (i % 2 == 0 ? "k" : "K") + std::to_string(i / 2) + "=" + std::to_string(i) + "\n";
    const auto view = IniView::parse(text);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->section("A")->entries.size(), 20U);
    EXPECT_EQ(view->value("A", "k3"), "6");
}

TEST(IniView, StaysGoodWhenMoved) {
    auto view = IniView::parse("[A]\nk=1\n");
    ASSERT_TRUE(view);
    const IniView moved = std::move(*view);
    EXPECT_EQ(moved.value("A", "k"), "1");
}

TEST(IniView, GivesTheWholeTextAndTheKeysInOrder) {
    const std::string text = "; top\r\n[A]\r\nb=1\r\na = 2";
    const auto view = IniView::parse(text);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->bytes(), text);
    EXPECT_EQ(view->section("A")->keys(), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(IniView().bytes(), "");
    EXPECT_TRUE(IniView().isAbsent());
    EXPECT_EQ(IniView().section("A"), nullptr);
}

// Whatever the bytes are, look-ups answer as those of the libraries do.
TEST(IniView, TakesAnyBytes) {
    const struct {
        std::string text, section, key, value;
    } rows[] = {
        {"\xEF\xBB\xBF[A]\nk=v\n", "A", "k", "v"},
        {"[A]\rk=v\r\n[B]\r\nk=w", "B", "k", "w"},
        {" [ A ] \n\tk\t=\tv\t\n", "A", "k", "v"},
        {"[A\n[B]\nk=v\n", "B", "k", "v"},
        {"[A]B]\nk=v\n", "A]B", "k", "v"},
        {"[A]\nk=" + std::string("v\0w", 3) + "\n", "A", "k", "v"},
        {"[A]\n" + std::string("k\0", 2) + "=v\n", "A", "k", ""},
        {std::string("[A\0B]\nk=v\n", 10), "A", "k", ""},
        {"[A]\nk=\xFF\xFE\n", "A", "k", "\xFF\xFE"},
        {"k=v\n", "", "k", ""},
        {"[A]\n=v\n", "A", "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const auto view = IniView::parse(row.text);
        ASSERT_TRUE(view);
        EXPECT_EQ(view->value(row.section, row.key), row.value);
    }
    for (const std::size_t size : {0U, 1U, 32767U, 32768U, 65535U, 70000U})
        for (const char byte : {'\0', '[', ']', '=', '\n', ';', 'x'})
            EXPECT_EQ(IniView::parse(std::string(size, byte))->bytes().size(), size);
}

}  // namespace
}  // namespace jx::model
