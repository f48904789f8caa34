// Names of sections and keys: trimming and comparing them.
//
//     if (rules::sameName(rules::trimmed(typed), entry.key)) ...
//
// Only ASCII letters have a case, in every locale. Everything is inline: look-ups spend their time here.
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

// An argument as the store uses it: trimmed. data() of the result is null for a null text only.
constexpr std::string_view argument(const char* text) {
    return text == nullptr ? std::string_view() : trimmed(text);
}

// Whether a look-up can find the name, so that lists may hold it.
inline bool canBeAskedFor(std::string_view name) {
    return !name.empty() && name.find('\0') == std::string_view::npos;
}

// Names are compared eight bytes at a time.
namespace name_words {

inline constexpr std::uint64_t kEveryByte = 0x0101010101010101U;
inline constexpr std::uint64_t kTopBits = 0x80 * kEveryByte;
inline constexpr std::uint64_t kCaseBits = 0x20 * kEveryByte;

// Eight bytes with their ASCII capitals made small; other bytes stay. Bit 7 of each byte of atLeastA and aboveZ is the
// result of comparing its lower seven bits.
constexpr std::uint64_t folded(std::uint64_t word) {
    const std::uint64_t low = word & ~kTopBits;
    const std::uint64_t atLeastA = low + (0x80U - 'A') * kEveryByte;
    const std::uint64_t aboveZ = low + (0x7FU - 'Z') * kEveryByte;
    const std::uint64_t capitals = (atLeastA ^ aboveZ) & ~word & kTopBits;
    return word | (capitals >> 2U);
}

// Most words are equal, or differ in more than the bits of case.
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

// A word for a name of 0 to 7 bytes; names of the same length have the same word only when they are equal.
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

}  // namespace name_words

// Whether a text begins with that name. A name of eight bytes or more is compared in words; the last one, which may
// overlap the one before, is compared first, since names in one file tend to differ at the end.
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

// The name with its ASCII capitals made small: equal for names that match.
inline std::string foldedName(std::string_view name) {
    std::string folded(name);
    for (char& letter : folded)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return folded;
}

}  // namespace jx::rules
