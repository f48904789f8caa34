// Line editing: what each key does to a text and its caret.
#include "odbcadmin/terminal/edit_text.h"

#include <gtest/gtest.h>

#include <clocale>

namespace jx::test {
namespace {

using terminal::Charset;
using terminal::editText;
using terminal::Input;
using terminal::Key;

// "|" is the caret.
std::string edited(const std::string& before, Key key, const std::string& typed = "") {
    std::size_t caret = before.find('|');
    std::string text = before;
    text.erase(caret, 1);
    Input input;
    input.key = key;
    input.text = typed;
    if (!editText(text, caret, input, Charset::utf8))
        return "(not taken)";
    return text.insert(caret, "|");
}

class EditText : public testing::Test {
protected:
    EditText() { std::setlocale(LC_CTYPE, "C.UTF-8"); }
};

TEST_F(EditText, KeysDoWhatTheyDoInAShell) {
    const struct {
        const char* before;
        Key key;
        const char* after;
    } rows[] = {
        {"one two|", Key::home, "|one two"},
        {"|one two", Key::end, "one two|"},
        {"one| two", Key::eraseToEnd, "one|"},
        {"one| two", Key::eraseToBegin, "| two"},
        {"one two|", Key::eraseWord, "one |"},
        {"one two  |", Key::eraseWord, "one |"},
        {"one tw|o", Key::eraseWord, "one |o"},
        {"|one", Key::eraseWord, "|one"},
        {"one two|", Key::wordLeft, "one |two"},
        {"one |two", Key::wordLeft, "|one two"},
        {"|one two", Key::wordRight, "one| two"},
        {"one| two", Key::wordRight, "one two|"},
        {"one|", Key::wordRight, "one|"},
        {"on|e", Key::left, "o|ne"},
        {"|one", Key::left, "|one"},
        {"on|e", Key::right, "one|"},
        {"one|", Key::right, "one|"},
        {"on|e", Key::backspace, "o|e"},
        {"|one", Key::backspace, "|one"},
        {"on|e", Key::erase, "on|"},
        {"one|", Key::erase, "one|"},
        {"|", Key::eraseToEnd, "|"},
        {"one|", Key::up, "(not taken)"},
        {"one|", Key::enter, "(not taken)"},
        {"one|", Key::f1, "(not taken)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.before << " key " << static_cast<int>(row.key));
        EXPECT_EQ(edited(row.before, row.key), row.after);
    }
}

TEST_F(EditText, WideCharactersMarksAndStrayBytesAreSteppedOverWhole) {
    const struct {
        const char* before;
        Key key;
        const char* after;
    } rows[] = {
        {"aä|b", Key::left, "a|äb"},
        {"a|äb", Key::right, "aä|b"},
        {"a表|b", Key::backspace, "a|b"},
        {"a|表b", Key::erase, "a|b"},
        {"ae\u0301|b", Key::left, "a|e\u0301b"},
        {"a|e\u0301b", Key::erase, "a|b"},
        {"a\xff|b", Key::backspace, "a|b"},
        {"a|\xc3", Key::erase, "a|"},
        {"\u0301|a", Key::left, "|\u0301a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before);
        EXPECT_EQ(edited(row.before, row.key), row.after);
    }
}

TEST_F(EditText, APasteIsOneLineWithoutControlCharacters) {
    EXPECT_EQ(edited("a|b", Key::paste, "1\t2\r\n3\x1b[A\n\n"), "a1 2  3[A|b");
    EXPECT_EQ(edited("a|b", Key::paste, "\n"), "a|b");
}

TEST_F(EditText, InALongTextTheNeighbourOfTheCaretIsTheSame) {
    for (const std::size_t length : {255U, 256U, 257U, 8000U, 70000U}) {
        SCOPED_TRACE(length);
        std::string text;
        while (text.size() < length)
            text += "ä表e\u0301x";
        const std::size_t end = text.size();
        EXPECT_EQ(terminal::caretBefore(text, end, Charset::utf8), end - 1);
        EXPECT_EQ(terminal::caretBefore(text, end - 1, Charset::utf8), end - 4);
        EXPECT_EQ(terminal::caretBehind(text, 0, Charset::utf8), 2U);
        EXPECT_EQ(terminal::caretBehind(text, 5, Charset::utf8), 8U);
    }
}

}  // namespace
}  // namespace jx::test
