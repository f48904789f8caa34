// Puts texts into bytes and units.
#include "api3/text_output.h"

#include <algorithm>
#include <cstring>

#include "api3/text_conversion.h"
#include "rules/utf8.h"

namespace jx::api3 {

namespace {

// Bytes behind a cut that tell whether it lies inside a character.
constexpr std::size_t kRestOfCharacter = 3;

std::size_t fillBytes(char* bytes, std::string_view text, std::size_t longest) {
    const std::string_view part = rules::cutAtCharacter(text, longest);
    if (!part.empty())
        std::memmove(bytes, part.data(), part.size());
    return part.size();
}

std::size_t fillUnits(SQLWCHAR* units, std::string_view text, std::size_t longest) {
    std::size_t filled = 0;
    for (std::size_t at = 0; at < text.size();) {
        const rules::Character next = rules::characterAt(text, at);
        const UnitPair pair = unitPairOf(next.code);
        if (pair.count > longest - filled)
            break;
        units[filled] = pair.first;
        if (pair.count == 2)
            units[filled + 1] = pair.second;
        filled += pair.count;
        at += next.length;
    }
    return filled;
}

// As they were given, halves of pairs too; but a pair is not cut in two.
std::size_t copyUnits(SQLWCHAR* units, const SQLWCHAR* from, std::size_t longest) {
    std::size_t count = 0;
    while (count < longest && from[count] != 0)
        ++count;
    if (count > 0 && isFirstOfPair(from[count - 1]) && isSecondOfPair(from[count]))
        --count;
    if (count > 0)
        std::memmove(units, from, count * sizeof *units);
    return count;
}

}  // namespace

std::size_t TextOutput::lengthOf(std::string_view text) const {
    return countsUnits_ ? unitCount(text) : text.size();
}

std::size_t TextOutput::fill(std::string_view text, std::size_t longest) const {
    return countsUnits_ ? fillUnits(units_, text, longest) : fillBytes(bytes_, text, longest);
}

std::size_t TextOutput::fill(const Fallback& fallback, std::size_t longest) const {
    if (countsUnits_ && fallback.units != nullptr)
        return copyUnits(units_, fallback.units, longest);
    if (fallback.text == nullptr)
        return 0;
    return fill({fallback.text, strnlen(fallback.text, longest + kRestOfCharacter)}, longest);
}

void TextOutput::end(std::size_t at, std::size_t nuls) const {
    for (const std::size_t last = std::min(at + nuls, size_); at < last; ++at) {
        if (countsUnits_)
            units_[at] = 0;
        else
            bytes_[at] = 0;
    }
}

Placed TextOutput::place(std::string_view text) const {
    Placed placed;
    if (isThere()) {
        placed.held = fill(text, size_ - 1);
        end(placed.held, 1);
    }
    placed.length = placed.held;
    // A text that ends before the last two places was not cut, and its units need not be counted again.
    if (!countsUnits_ || placed.held + 2 >= size_)
        placed.length = lengthOf(text);
    placed.isCut = placed.held < placed.length;
    return placed;
}

Placed TextOutput::placeList(std::string_view names) const {
    Placed placed;
    placed.length = lengthOf(names);
    if (!isThere()) {
        placed.isCut = true;
    } else if (placed.length < size_) {
        placed.held = fill(names, size_ - 1);
        end(placed.held, names.empty() ? 2 : 1);
    } else {
        placed.isCut = true;
        placed.held = size_ < 2 ? 0 : fill(names, size_ - 2);
        end(placed.held, 2);
    }
    return placed;
}

std::size_t TextOutput::place(const Fallback& fallback, std::size_t nulsAtTheEnd) const {
    if (!isThere())
        return 0;
    const std::size_t held = size_ < nulsAtTheEnd ? 0 : fill(fallback, size_ - nulsAtTheEnd);
    end(held, nulsAtTheEnd);
    return held;
}

}  // namespace jx::api3
