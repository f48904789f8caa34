// A text that is built up in a buffer of fixed size.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace jx::install {

// BoundedText: kSize bytes including the final NUL, empty at first.
// Failure  append returns false when the text does not fit; what was there before stays.
template <std::size_t kSize>
class BoundedText {
public:
    bool append(std::string_view text) {
        if (text.size() >= kSize - length_)
            return false;
        text.copy(reinterpret_cast<char*>(bytes_.data()) + length_, text.size());
        length_ += text.size();
        bytes_[length_] = 0;
        return true;
    }

    // Replaces the last character; an empty text stays empty.
    void replaceLast(unsigned char character) {
        if (length_ > 0)
            bytes_[length_ - 1] = character;
    }

    unsigned char* text() { return bytes_.data(); }
    std::size_t length() const { return length_; }

private:
    std::array<unsigned char, kSize> bytes_{};
    std::size_t length_ = 0;
};

}  // namespace jx::install
