// Glyphs of UTF-8 texts.
#include "odbcadmin/terminal/glyphs.h"

#include <algorithm>
#include <cwchar>

namespace jx::terminal {

namespace {

// What cannot be shown as it is has this width.
constexpr int kNotShown = -1;

// The columns of a code point; 0 for a mark that joins the one before it.
int widthOf(long code, Charset charset) {
    if (code < 32 || code == 127 || (code >= 128 && code < 160))
        return kNotShown;
    if (code < 127)
        return 1;
    if (charset == Charset::ascii)
        return kNotShown;
    return std::clamp(wcwidth(static_cast<wchar_t>(code)), kNotShown, 2);
}

Glyph glyphAt(std::string_view text, std::size_t begin, Charset charset) {
    std::size_t length = 1;
    const long code = decodeUtf8(text.substr(begin), length);
    const int width = widthOf(code, charset);
    if (width == kNotShown)
        return {begin, begin + length, "?", 1};
    return {begin, begin + length, std::string(text.substr(begin, length)), width};
}

// The end of the first word of rest that may end a line of this width, in bytes.
std::size_t breakAt(std::string_view rest, int columns, Charset charset) {
    int used = 0;
    std::size_t end = 0;
    std::size_t blank = 0;
    for (const Glyph& glyph : glyphsOf(rest, charset)) {
        if (used + glyph.columns > columns)
            return blank > 0 ? blank : std::max(end, std::size_t{1});
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
        if (end < rest.size())
            line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
        rest.remove_prefix(end);
    } while (!rest.empty());
}

}  // namespace

std::size_t utf8Length(unsigned char byte) {
    if (byte >= 0xF0 && byte < 0xF5)
        return 4;
    if (byte >= 0xE0 && byte < 0xF0)
        return 3;
    return byte >= 0xC2 && byte < 0xE0 ? 2 : 1;
}

long decodeUtf8(std::string_view text, std::size_t& length) {
    const auto first = static_cast<unsigned char>(text[0]);
    length = utf8Length(first);
    if (length == 1)
        return first < 0x80 ? first : -1;
    constexpr unsigned char kDataBits[] = {0, 0, 0x1F, 0x0F, 0x07};
    constexpr long kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    long code = first & kDataBits[length];
    for (std::size_t at = 1; at < length; ++at) {
        if (at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) {
            length = 1;
            return -1;
        }
        code = (code << 6) | (static_cast<unsigned char>(text[at]) & 0x3F);
    }
    const bool isCharacter = code >= kLeast[length] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    if (!isCharacter)
        length = 1;
    return isCharacter ? code : -1;
}

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

std::string cutTo(std::string_view text, int columns, Charset charset) {
    std::size_t end = 0;
    for (const Glyph& glyph : glyphsOf(text, charset)) {
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
