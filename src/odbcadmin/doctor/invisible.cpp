// The table of invisible characters.
#include "odbcadmin/doctor/invisible.h"

#include <cstdint>
#include <cstdio>

#include "rules/utf8.h"

namespace jx::doctor {

namespace {

struct Range {
    std::uint32_t first, last;
    const char* name;
};

constexpr Range kInvisible[] = {
    {0x00A0, 0x00A0, "no-break space"},
    {0x00AD, 0x00AD, "soft hyphen"},
    {0x2000, 0x200A, "typographic space"},
    {0x200B, 0x200B, "zero-width space"},
    {0x200C, 0x200D, "zero-width joiner"},
    {0x200E, 0x200F, "direction mark"},
    {0x2028, 0x2029, "line separator"},
    {0x202A, 0x202E, "direction mark"},
    {0x202F, 0x202F, "narrow no-break space"},
    {0x205F, 0x205F, "typographic space"},
    {0x2060, 0x2064, "word joiner"},
    {0x3000, 0x3000, "ideographic space"},
    {0xFEFF, 0xFEFF, "zero-width no-break space"},
};

}  // namespace

std::string firstInvisible(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const rules::Character next = rules::characterAt(text, at);
        for (const Range& range : kInvisible) {
            if (next.code < range.first || next.code > range.last)
                continue;
            char number[16];
            std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(next.code));
            return std::string(number) + " (" + range.name + ")";
        }
        at += next.length;
    }
    return {};
}

}  // namespace jx::doctor
