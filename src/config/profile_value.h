// One value of an INI file.
//
//     ProfileValue library;
//     if (library.read(driver, key, file)) ...
#pragma once

#include <jxprofile.h>

#include <cstddef>
#include <cstring>
#include <string_view>

#include "config/key_list.h"
#include "config/text_bytes.h"

namespace jx {

// ProfileValue: a buffer for reads, each of which clears it first.
// Limits   1023 bytes; a longer value is cut there.
class ProfileValue {
public:
    static constexpr std::size_t kSize = 1024;

    // True when the key exists. Else the buffer holds kNotAvailable (nothing for a null file), and readFailed shows
    // whether the file could not be read.
    bool read(const unsigned char* section, const unsigned char* key, const unsigned char* file) {
        std::memset(bytes_, 0, sizeof bytes_);
        readFailed_ = false;
        if (file == nullptr)
            return false;
        jxGetPrivateProfileString(section, key, asBytes(kNotAvailable), bytes_, static_cast<int>(kSize), file);
        readFailed_ = jxProfileReadFailed() != 0;
        return view() != kNotAvailable;
    }

    // Whether the last read could not read the file, or memory was short.
    bool readFailed() const { return readFailed_; }

    unsigned char* text() { return bytes_; }
    std::string_view view() const { return textInside(bytes_, sizeof bytes_); }

private:
    unsigned char bytes_[kSize]{};
    bool readFailed_ = false;
};

}  // namespace jx
