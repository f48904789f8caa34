// Hashes of names, which nobody outside the process can foresee.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "rules/names.h"

namespace jx::ini {

// Random numbers, drawn once by each process. Whoever writes a file does not know them, so no file can hold many names
// of one hash, which would make every look-up walk through all of them.
struct NameHashKeys {
    static constexpr std::size_t kBlock = 64;  // bytes hashed with one set of numbers

    std::uint64_t start;
    std::uint64_t size;
    std::uint64_t before[2];
    std::array<std::uint64_t, kBlock / 4> words;
};

// Ready before any other code of the program runs: no lock guards it, so a child forked by another thread finds none.
extern const NameHashKeys nameHashKeys;

namespace name_hash {

// The product of two sums, each of a random number and half a word: of two different blocks, the sums of these products
// are equal in their upper halves with a chance of 1 in 2^32, whatever the blocks.
inline std::uint64_t product(std::uint64_t word, const std::uint64_t* keys) {
    return (keys[0] + (word & 0xFFFFFFFFU)) * (keys[1] + (word >> 32U));
}

inline std::uint64_t wordAt(const char* bytes) {
    return rules::name_words::folded(rules::name_words::wordAt(bytes));
}

// The words of a block of 8 to 64 bytes; the last one may overlap the one before.
inline std::uint64_t block(const char* bytes, std::size_t size) {
    const std::uint64_t* keys = nameHashKeys.words.data();
    std::uint64_t sum = product(wordAt(bytes + size - 8), keys);
    for (std::size_t at = 0; at + 8 < size; at += 8)
        sum += product(wordAt(bytes + at), keys += 2);
    return sum;
}

}  // namespace name_hash

// Equal for names that match. All bits of the result depend on all of the name.
inline std::uint32_t hashName(std::string_view name) {
    using namespace name_hash;
    const char* bytes = name.data();
    std::size_t size = name.size();
    std::uint64_t sum = nameHashKeys.start + nameHashKeys.size * size;
    while (size > NameHashKeys::kBlock) {
        sum += block(bytes, NameHashKeys::kBlock);
        sum = product(sum ^ sum >> 32U, nameHashKeys.before);
        bytes += NameHashKeys::kBlock;
        size -= NameHashKeys::kBlock;
    }
    if (size >= 8)
        sum += block(bytes, size);
    else
        sum += product(rules::name_words::folded(rules::name_words::shortName(bytes, size)), nameHashKeys.words.data());
    auto hash = static_cast<std::uint32_t>(sum >> 32U);
    hash = (hash ^ hash >> 16U) * 0x7FEB352DU;
    return hash ^ hash >> 15U;
}

}  // namespace jx::ini
