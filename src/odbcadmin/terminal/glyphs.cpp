// Glyphs of UTF-8 texts.
#include "odbcadmin/terminal/glyphs.h"

#include <algorithm>
#include <cwchar>
#include <iterator>

#include "rules/utf8.h"

namespace jx::terminal {

namespace {

// What cannot be shown as it is has this width.
constexpr int kNotShown = -1;

// Marks that turn the direction of what follows: a name that holds one would rearrange its whole line.
bool turnsDirection(char32_t code) {
    return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

// Characters that are seen only in how a terminal draws their neighbours: joiners, variation selectors, tags, colours
// of skin. No two terminals agree on the width of what comes of it, so they are left out of the picture.
bool isInvisible(char32_t code) {
    struct Range {
        char32_t first, last;
    };
    constexpr Range kRanges[] = {{0x200B, 0x200B}, {0x200D, 0x200F},   {0x2060, 0x2064},  {0xFE00, 0xFE0F},
                                 {0xFEFF, 0xFEFF}, {0xE0000, 0xE01EF}, {0x1F3FB, 0x1F3FF}};
    return std::any_of(std::begin(kRanges), std::end(kRanges),
                       [code](const Range& range) { return code >= range.first && code <= range.last; });
}

// The columns of a code point; 0 for a mark that joins the one before it.
int widthOf(char32_t code, Charset charset) {
    if (code < 32 || (code >= 127 && code < 160) || code == rules::kNoCharacter)
        return kNotShown;
    if (code < 127)
        return 1;
    if (charset == Charset::ascii || turnsDirection(code))
        return kNotShown;
    return std::clamp(wcwidth(static_cast<wchar_t>(code)), kNotShown, 2);
}

Glyph glyphAt(std::string_view text, std::size_t begin, Charset charset) {
    const rules::Character next = rules::characterAt(text, begin);
    const std::size_t end = begin + next.length;
    if (charset == Charset::utf8 && isInvisible(next.code))
        return {begin, end, "", 0};
    const int width = widthOf(next.code, charset);
    if (width == kNotShown)
        return {begin, end, "?", 1};
    return {begin, end, std::string(text.substr(begin, next.length)), width};
}

// The end of the first word of rest that may end a line of this width, in bytes.
std::size_t breakAt(std::string_view rest, int columns, Charset charset) {
    int used = 0;
    std::size_t end = 0;
    std::size_t blank = 0;
    for (const Glyph& glyph : glyphsOf(rest, charset)) {
        if (used + glyph.columns > columns && glyph.shown == " ")
            return glyph.end;
        if (used + glyph.columns > columns)
            return blank > 0 ? blank : end > 0 ? end : glyph.end;
        used += glyph.columns;
        end = glyph.end;
        if (glyph.shown == " ")
            blank = glyph.end;
    }
    return rest.size();
}

void wrapLine(std::vector<std::string>& lines, std::string_view rest, int columns, Charset charset) {
    do {
        const std::size_t end = breakAt(rest, columns, charset);
        std::string line(rest.substr(0, end));
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
        rest.remove_prefix(end);
    } while (!rest.empty());
}

}  // namespace

std::vector<Glyph> glyphsOf(std::string_view text, Charset charset) {
    std::vector<Glyph> glyphs;
    for (std::size_t at = 0; at < text.size();) {
        Glyph glyph = glyphAt(text, at, charset);
        at = glyph.end;
        if (glyph.columns > 0) {
            glyphs.push_back(std::move(glyph));
        } else if (!glyphs.empty()) {
            glyphs.back().shown += glyph.shown;
            glyphs.back().end = glyph.end;
        }
    }
    return glyphs;
}

int columnsOf(std::string_view text, Charset charset) {
    int columns = 0;
    for (const Glyph& glyph : glyphsOf(text, charset))
        columns += glyph.columns;
    return columns;
}

bool fits(std::string_view text, int columns, Charset charset) {
    return columnsOf(text.substr(0, text.find_last_not_of(' ') + 1), charset) <= columns;
}

std::string cutTo(std::string_view text, int columns, Charset charset) {
    // Only as far as it is shown: the text may be long.
    std::size_t end = 0;
    while (end < text.size()) {
        const Glyph glyph = glyphAt(text, end, charset);
        columns -= glyph.columns;
        if (columns < 0)
            break;
        end = glyph.end;
    }
    return std::string(text.substr(0, end));
}

std::vector<std::string> wrapped(std::string_view text, int columns, Charset charset) {
    std::vector<std::string> lines;
    while (true) {
        const std::size_t end = text.find('\n');
        wrapLine(lines, text.substr(0, end), std::max(columns, 1), charset);
        if (end == std::string_view::npos)
            return lines;
        text.remove_prefix(end + 1);
    }
}

}  // namespace jx::terminal
