// The table of invisible characters.
#include "odbcadmin/doctor/invisible.h"

#include <cstdint>
#include <cstdio>

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

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The character of two or three bytes that text begins with; 0 for any other. All invisible ones have that length.
std::uint32_t codeAt(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(text[i])); };
    constexpr unsigned kBits = 6;
    constexpr std::uint32_t kMask = 0x3F;
    if (text.size() >= 2 && byte(0) >> 5U == 6 && isContinuation(text[1]))
        return (byte(0) & 0x1FU) << kBits | (byte(1) & kMask);
    if (text.size() >= 3 && byte(0) >> 4U == 14 && isContinuation(text[1]) && isContinuation(text[2]))
        return (byte(0) & 0x0FU) << 2 * kBits | (byte(1) & kMask) << kBits | (byte(2) & kMask);
    return 0;
}

}  // namespace

std::string firstInvisible(std::string_view text) {
    for (; !text.empty(); text.remove_prefix(1)) {
        const std::uint32_t code = codeAt(text);
        for (const Range& range : kInvisible) {
            if (code < range.first || code > range.last)
                continue;
            char number[16];
            std::snprintf(number, sizeof number, "U+%04X", code);
            return std::string(number) + " (" + range.name + ")";
        }
    }
    return {};
}

}  // namespace jx::doctor
