// The keys of one INI section, read into a buffer of their own.
#pragma once

#include <jxprofile.h>

#include <cstddef>
#include <string_view>

#include "config/name_list.h"
#include "config/text_bytes.h"

namespace jx {

// What a look-up answers with when the section or key is not there.
inline constexpr char kNotAvailable[] = "NOT AVAILABLE";

// KeyList: reads the key list at construction and keeps it.
// Limits   as many keys as 1024 bytes hold; the key at that edge is cut, and is the last.
// Failure  a file that cannot be read has no section.
class KeyList {
public:
    // fallback stands for an absent section: kNotAvailable, or an empty text for an empty list.
    KeyList(const unsigned char* section, const char* fallback, const unsigned char* file) {
        jxGetPrivateProfileString(section, nullptr, asBytes(fallback), bytes_, kReadSize, file);
    }

    // Whether the section is absent. Deliberate: so is one whose first key is spelled like the answer for absent ones.
    bool isMissing() const { return textInside(bytes_, sizeof bytes_) == kNotAvailable; }

    NameList names() const { return {bytes_, sizeof bytes_}; }

    // The list as it was read, ended by an empty name.
    const unsigned char* bytes() const { return bytes_; }

private:
    static constexpr int kReadSize = 1024;
    unsigned char bytes_[kReadSize + 2]{};  // a list that is cut inside a name is ended by the bytes behind it
};

}  // namespace jx
