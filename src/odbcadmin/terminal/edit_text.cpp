// Carets, and what keys do to a text.
#include "odbcadmin/terminal/edit_text.h"

namespace jx::terminal {

namespace {

std::size_t before(const std::string& text, std::size_t caret, Charset charset) {
    std::size_t place = 0;
    for (const Glyph& glyph : glyphsOf(text, charset))
        if (glyph.begin < caret)
            place = glyph.begin;
    return place;
}

std::size_t behind(const std::string& text, std::size_t caret, Charset charset) {
    for (const Glyph& glyph : glyphsOf(text, charset))
        if (glyph.end > caret)
            return glyph.end;
    return text.size();
}

void eraseBetween(std::string& text, std::size_t& caret, std::size_t begin, std::size_t end) {
    text.erase(begin, end - begin);
    caret = begin;
}

// Where the word before the caret begins, with the blanks behind it.
std::size_t wordBefore(const std::string& text, std::size_t caret) {
    while (caret > 0 && text[caret - 1] == ' ')
        --caret;
    while (caret > 0 && text[caret - 1] != ' ')
        --caret;
    return caret;
}

// A field is one line: a line break inside becomes a blank, one at the end is not meant. Other control characters go.
std::string inOneLine(std::string_view pasted) {
    while (!pasted.empty() && (pasted.back() == '\r' || pasted.back() == '\n'))
        pasted.remove_suffix(1);
    std::string line;
    for (const char each : pasted) {
        if (each == '\n' || each == '\r' || each == '\t')
            line.push_back(' ');
        else if (static_cast<unsigned char>(each) >= ' ' && each != '\x7f')
            line.push_back(each);
    }
    return line;
}

void insert(std::string& text, std::size_t& caret, const std::string& more) {
    text.insert(caret, more);
    caret += more.size();
}

}  // namespace

bool editText(std::string& text, std::size_t& caret, const Input& input, Charset charset) {
    caret = std::min(caret, text.size());
    switch (input.key) {
        case Key::character:
            if (input.alt)
                return false;
            insert(text, caret, input.text);
            return true;
        case Key::paste:
            insert(text, caret, inOneLine(input.text));
            return true;
        case Key::eraseWord:
            eraseBetween(text, caret, wordBefore(text, caret), caret);
            return true;
        case Key::eraseToBegin:
            eraseBetween(text, caret, 0, caret);
            return true;
        case Key::eraseToEnd:
            eraseBetween(text, caret, caret, text.size());
            return true;
        case Key::backspace:
            eraseBetween(text, caret, before(text, caret, charset), caret);
            return true;
        case Key::erase:
            eraseBetween(text, caret, caret, behind(text, caret, charset));
            return true;
        case Key::left:
            caret = before(text, caret, charset);
            return true;
        case Key::right:
            caret = behind(text, caret, charset);
            return true;
        case Key::home:
            caret = 0;
            return true;
        case Key::end:
            caret = text.size();
            return true;
        default:
            return false;
    }
}

std::size_t caretAt(const std::string& text, int column, Charset charset) {
    std::size_t caret = 0;
    for (const Glyph& glyph : glyphsOf(text, charset)) {
        column -= glyph.columns;
        if (column < 0)
            break;
        caret = glyph.end;
    }
    return caret;
}

}  // namespace jx::terminal
