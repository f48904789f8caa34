// Carets, and what keys do to a text.
#include "odbcadmin/terminal/edit_text.h"

#include "rules/utf8.h"

namespace jx::terminal {

namespace {

// More bytes than any glyph has that a person would type. A neighbour is sought so far and no further: measuring a long
// text whole at each key would be felt.
constexpr std::size_t kLongestGlyph = 256;

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

std::size_t wordBehind(const std::string& text, std::size_t caret) {
    while (caret < text.size() && text[caret] == ' ')
        ++caret;
    while (caret < text.size() && text[caret] != ' ')
        ++caret;
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

std::size_t caretBefore(std::string_view text, std::size_t caret, Charset charset) {
    std::size_t begin = caret - std::min(caret, kLongestGlyph);
    while (begin > 0 && rules::isContinuation(text[begin]))
        --begin;
    const std::vector<Glyph> glyphs = glyphsOf(text.substr(begin, caret - begin), charset);
    return glyphs.empty() ? begin : begin + glyphs.back().begin;
}

std::size_t caretBehind(std::string_view text, std::size_t caret, Charset charset) {
    const std::vector<Glyph> glyphs = glyphsOf(text.substr(caret, kLongestGlyph), charset);
    return glyphs.empty() ? text.size() : caret + glyphs.front().end;
}

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
            eraseBetween(text, caret, caretBefore(text, caret, charset), caret);
            return true;
        case Key::erase:
            eraseBetween(text, caret, caret, caretBehind(text, caret, charset));
            return true;
        case Key::left:
            caret = caretBefore(text, caret, charset);
            return true;
        case Key::right:
            caret = caretBehind(text, caret, charset);
            return true;
        case Key::wordLeft:
            caret = wordBefore(text, caret);
            return true;
        case Key::wordRight:
            caret = wordBehind(text, caret);
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

std::size_t caretAt(std::string_view text, int column, Charset charset) {
    std::size_t caret = 0;
    for (const Glyph& glyph : glyphsOf(text, charset)) {
        column -= glyph.columns;
        if (column < 0)
            break;
        caret = glyph.end;
    }
    return caret;
}

std::size_t caretBehindGlyphs(std::string_view text, int count, Charset charset) {
    const std::vector<Glyph> glyphs = glyphsOf(text, charset);
    const std::size_t most = std::min(glyphs.size(), static_cast<std::size_t>(std::max(count, 0)));
    return most == 0 ? 0 : glyphs[most - 1].end;
}

}  // namespace jx::terminal
