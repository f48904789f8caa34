// A caller's buffer, which a text or a list is put into.
//
//     const TextOutput output(lpszRetBuffer, size);
//     const Placed placed = output.place(value);
//     if (placed.isCut) ...
#pragma once

#include <cstddef>
#include <string_view>

#include <jxodbc3/odbcinst.h>

namespace jx::api3 {

// Placed: what became of a text. Lengths are in what the buffer counts: bytes or units.
struct Placed {
    std::size_t length = 0;  // of the whole text
    std::size_t held = 0;    // of what the buffer holds of it
    bool isCut = false;      // also when there is no buffer for a text that is not empty
};

// Fallback: the default of a look-up as the caller gave it, in the one form or the other; both null is the empty text.
struct Fallback {
    const char* text = nullptr;
    const SQLWCHAR* units = nullptr;
};

// TextOutput: writes a text and its end into the buffer and nothing behind it. What does not fit is cut, never inside a
// character. Without a buffer (null, or size 0) nothing is written.
class TextOutput {
public:
    TextOutput(char* buffer, std::size_t sizeInBytes)
        : bytes_(buffer), size_(buffer == nullptr ? 0 : sizeInBytes), countsUnits_(false) {}
    TextOutput(SQLWCHAR* buffer, std::size_t sizeInUnits)
        : units_(buffer), size_(buffer == nullptr ? 0 : sizeInUnits), countsUnits_(true) {}

    bool isThere() const { return size_ > 0; }
    std::size_t size() const { return size_; }
    bool countsUnits() const { return countsUnits_; }

    // The length that a text has in this buffer.
    std::size_t lengthOf(std::string_view text) const;

    // Puts a text in, with a NUL.
    Placed place(std::string_view text) const;

    // Puts a list in: each name with its NUL, and a NUL more; an empty one as two NULs where there is room. One that
    // does not fit ends with two NULs.
    Placed placeList(std::string_view names) const;

    // Puts the default in as it was given, with so many NULs where there is room for them; how much of it the buffer
    // holds.
    std::size_t place(const Fallback& fallback, std::size_t nulsAtTheEnd) const;

private:
    std::size_t fill(std::string_view text, std::size_t longest) const;
    std::size_t fill(const Fallback& fallback, std::size_t longest) const;
    void end(std::size_t at, std::size_t nuls) const;

    char* bytes_ = nullptr;
    SQLWCHAR* units_ = nullptr;
    std::size_t size_;
    bool countsUnits_;
};

}  // namespace jx::api3
