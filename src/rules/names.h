// Names of sections and keys: what belongs to them, how they compare, how they are found in tables.
//
//     if (rules::sameName(rules::trimmed(typed), entry.key)) ...
//
// Only ASCII letters have a case, whatever the locale. All of it is inline: a look-up spends its time here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace jx::rules {

constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t';
}

constexpr bool beginsComment(char character) {
    return character == ';' || character == '#';
}

// The text without the blanks around it.
constexpr std::string_view trimmed(std::string_view text) {
    const char* begin = text.data();
    const char* end = begin + text.size();
    while (begin != end && isBlank(*begin))
        ++begin;
    while (begin != end && isBlank(end[-1]))
        --end;
    return {begin, static_cast<std::size_t>(end - begin)};
}

// An argument as the store sees it: trimmed. Null gives a view whose data() is null, an empty text one whose is not.
constexpr std::string_view argument(const char* text) {
    return text == nullptr ? std::string_view() : trimmed(text);
}

// Whether a program can ask for the name, so that lists may hold it.
inline bool canBeAskedFor(std::string_view name) {
    return !name.empty() && name.find('\0') == std::string_view::npos;
}

// Names are compared and hashed eight bytes at a time.
namespace name_words {

inline constexpr std::uint64_t kEveryByte = 0x0101010101010101U;
inline constexpr std::uint64_t kTopBits = 0x80 * kEveryByte;
inline constexpr std::uint64_t kCaseBits = 0x20 * kEveryByte;

// Eight bytes with their ASCII capitals made small. Bit 7 of each byte of atLeastA and aboveZ tells how its lower seven
// bits compare; bytes that are not ASCII stay.
constexpr std::uint64_t folded(std::uint64_t word) {
    const std::uint64_t low = word & ~kTopBits;
    const std::uint64_t atLeastA = low + (0x80U - 'A') * kEveryByte;
    const std::uint64_t aboveZ = low + (0x7FU - 'Z') * kEveryByte;
    const std::uint64_t capitals = (atLeastA ^ aboveZ) & ~word & kTopBits;
    return word | (capitals >> 2U);
}

// Most words are the same as they stand, or differ in more than the bits of case.
constexpr bool isSame(std::uint64_t left, std::uint64_t right) {
    const std::uint64_t difference = left ^ right;
    return difference == 0 || ((difference & ~kCaseBits) == 0 && folded(left) == folded(right));
}

template <class Word>
Word load(const char* bytes) {
    Word word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

inline std::uint64_t wordAt(const char* bytes) {
    return load<std::uint64_t>(bytes);
}

// A name of 0 to 7 bytes; together with their count the word stands for exactly those bytes.
inline std::uint64_t shortName(const char* bytes, std::size_t count) {
    if (count >= 4)
        return load<std::uint32_t>(bytes) | std::uint64_t{load<std::uint32_t>(bytes + count - 4)} << 32U;
    if (count == 0)
        return 0;
    const auto first = static_cast<unsigned char>(bytes[0]);
    const auto middle = static_cast<unsigned char>(bytes[count / 2]);
    const auto last = static_cast<unsigned char>(bytes[count - 1]);
    return first | std::uint64_t{middle} << 8U | std::uint64_t{last} << 16U;
}

// A product takes every bit upwards only, and tables use the lower bits: what it carried up comes down again.
constexpr std::uint64_t mixed(std::uint64_t word) {
    word *= 0x9E3779B97F4A7C15U;
    return word ^ word >> 32U;
}

}  // namespace name_words

// Whether the first bytes of a text are that name. A name of eight bytes or more is compared in words, the last of
// which may overlap the one before; it comes first, since names in one file tend to differ at the end.
inline bool beginsWithName(std::string_view text, std::string_view name) {
    using namespace name_words;
    const std::size_t size = name.size();
    if (text.size() < size)
        return false;
    if (size < 8)
        return isSame(shortName(text.data(), size), shortName(name.data(), size));
    if (!isSame(wordAt(text.data() + size - 8), wordAt(name.data() + size - 8)))
        return false;
    for (std::size_t at = 0; at + 8 < size; at += 8)
        if (!isSame(wordAt(text.data() + at), wordAt(name.data() + at)))
            return false;
    return true;
}

inline bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && beginsWithName(left, right);
}

// The name with its ASCII letters small: equal for names that are the same.
inline std::string foldedName(std::string_view name) {
    std::string folded(name);
    for (char& letter : folded)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return folded;
}

// Equal for names that are the same: it leaves out the bits of case, of letters and all else.
inline std::uint32_t hashName(std::string_view name) {
    using namespace name_words;
    const std::size_t size = name.size();
    if (size < 8)
        return static_cast<std::uint32_t>(mixed(mixed((shortName(name.data(), size) | kCaseBits) + size)));
    std::uint64_t hash = (wordAt(name.data() + size - 8) | kCaseBits) + size;
    for (std::size_t at = 0; at + 8 < size; at += 8)
        hash = mixed(hash) + (wordAt(name.data() + at) | kCaseBits);
    return static_cast<std::uint32_t>(mixed(mixed(hash)));
}

}  // namespace jx::rules
