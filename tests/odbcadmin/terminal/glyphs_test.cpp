// What of a text reaches the terminal, and how many columns it takes.
#include "odbcadmin/terminal/glyphs.h"

#include <gtest/gtest.h>

#include <clocale>

namespace jx::test {
namespace {

using terminal::Charset;
using terminal::Glyph;

class Glyphs : public testing::Test {
protected:
    Glyphs() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    static std::string shown(std::string_view text, Charset charset) {
        std::string all;
        for (const Glyph& glyph : glyphsOf(text, charset))
            all += glyph.shown;
        return all;
    }
};

TEST_F(Glyphs, AreWhatATerminalShowsInItsCells) {
    const struct {
        std::string_view text;
        const char* shown;
        int columns;
    } rows[] = {
        {"plain", "plain", 5},
        {"ä表", "ä表", 3},
        {"e\u0301x", "e\u0301x", 2},
        {"\u0301x", "x", 1},
        {"שלום", "שלום", 4},
        {"a\x1b[2Jb", "a?[2Jb", 6},
        {"\u0085\u009b", "??", 2},
        {"a\xff\xc3", "a??", 3},
        {"a\u202eb\u2066c", "a?b?c", 5},
        {"\U0001F469\u200D\U0001F467", "\U0001F469\U0001F467", 4},
        {"\u2764\uFE0Fx", "\u2764x", 2},
        {"\U0001F44D\U0001F3FD", "\U0001F44D", 2},
        {"a\u200bb\ufeffc", "abc", 3},
        {"", "", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(shown(row.text, Charset::utf8), row.shown);
        EXPECT_EQ(columnsOf(row.text, Charset::utf8), row.columns);
    }
}

TEST_F(Glyphs, EveryByteOfTheTextBelongsToOneGlyph) {
    const std::string text = "a\u200be\u0301\U0001F44D\U0001F3FD\xff\u202e";
    std::size_t end = 0;
    for (const Glyph& glyph : glyphsOf(text, Charset::utf8)) {
        EXPECT_EQ(glyph.begin, end);
        end = glyph.end;
    }
    EXPECT_EQ(end, text.size());
}

TEST_F(Glyphs, InAsciiEverythingElseIsAQuestionMark) {
    EXPECT_EQ(shown("aä表\u200b\x1b", Charset::ascii), "a????");
}

TEST_F(Glyphs, LinesAreBrokenBetweenWordsAndNoEarlierThanNeeded) {
    using Lines = std::vector<std::string>;
    const struct {
        const char* text;
        int columns;
        Lines lines;
    } rows[] = {{"it cannot be", 12, {"it cannot be"}},
                {"it cannot be undone", 12, {"it cannot be", "undone"}},
                {"it cannot be undone", 11, {"it cannot", "be undone"}},
                {"a\n\nb", 5, {"a", "", "b"}},
                {"abcdefg hi", 3, {"abc", "def", "g", "hi"}},
                {"ab ", 2, {"ab"}},
                {"", 5, {""}},
                {"表表", 1, {"表", "表"}},
                {"ab", 0, {"a", "b"}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(terminal::wrapped(row.text, row.columns, Charset::utf8), row.lines);
    }
}

TEST_F(Glyphs, ACutTextFitsAndKeepsItsMarks) {
    EXPECT_EQ(terminal::cutTo("e\u0301e\u0301e", 2, Charset::utf8), "e\u0301e\u0301");
    EXPECT_EQ(terminal::cutTo("a表b", 2, Charset::utf8), "a");
    EXPECT_EQ(terminal::cutTo("abc", 0, Charset::utf8), "");
    EXPECT_EQ(terminal::cutTo("abc", -1, Charset::utf8), "");
    EXPECT_EQ(terminal::cutTo(std::string(70000, 'x'), 3, Charset::utf8), "xxx");
}

}  // namespace
}  // namespace jx::test
