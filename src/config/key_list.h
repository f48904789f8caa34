// The keys of one section of an INI file.
//
//     KeyList drivers(section, kNotAvailable, file, LastKey::whole);
//     for (unsigned char* name = drivers.next(); name != nullptr; name = drivers.next())
//         addRow(dialog, list, name);
#pragma once

#include <jxprofile.h>
#include <jxtext.h>

#include <cstddef>

#include "config/name_list.h"
#include "config/text_bytes.h"

namespace jx {

// What a read returns for a section or key that does not exist.
inline constexpr char kNotAvailable[] = "NOT AVAILABLE";

// What happens to the last key when the section is longer than the list.
enum class LastKey {
    cut,   // it may be cut
    whole  // it is left out unless it fits: a cut name could be another one's
};

// KeyList: reads a section's keys at construction and keeps them.
// Limits   as many keys as fit into sizeInBytes bytes, at most 1024.
// Failure  a file that cannot be read seems to have no section; readFailed shows the difference.
class KeyList {
public:
    static constexpr int kSize = 1024;

    // fallback stands for a missing section: kNotAvailable, or "" where it does not matter whether the section exists.
    KeyList(const unsigned char* section, const char* fallback, const unsigned char* file,
            LastKey lastKey = LastKey::cut, int sizeInBytes = kSize) {
        read(section, fallback, file, lastKey == LastKey::whole ? sizeInBytes + 1 : sizeInBytes);
        if (lastKey == LastKey::whole)
            dropCutName(static_cast<std::size_t>(sizeInBytes));
    }

    // The same for a file that is open already.
    KeyList(const unsigned char* section, const char* fallback, JxIniFileCache* file) {
        read(section, fallback, file, kSize);
    }

    // Whether the section exists, for lists read with the fallback kNotAvailable. Deliberate: a section whose first key
    // is "NOT AVAILABLE" counts as missing.
    bool isThere() const { return hasFile_ && textInside(bytes_, sizeof bytes_) != kNotAvailable; }

    // Whether the file could not be read, or memory was short. Ask before anything is changed because a section is
    // missing.
    bool readFailed() const { return readFailed_; }

    NameList names() const { return {bytes_, sizeof bytes_}; }

    // The list as it was read. An empty name ends it.
    const unsigned char* bytes() const { return bytes_; }

    // The next key, cut at its first "="; null after the last one.
    unsigned char* next() {
        unsigned char* key = bytes_ + at_;
        if (*key == 0)
            return nullptr;
        at_ += BUTSTLEN(key) + 1;
        if (unsigned char* equals = strFind(key, static_cast<unsigned char>('=')); equals != nullptr)
            *equals = 0;
        return key;
    }

private:
    template <class File>
    void read(const unsigned char* section, const char* fallback, File* file, int sizeInBytes) {
        hasFile_ = file != nullptr;
        if (!hasFile_)
            return;
        jxGetPrivateProfileString(section, nullptr, asBytes(fallback), bytes_, sizeInBytes, file);
        readFailed_ = jxProfileReadFailed() != 0;
    }

    // The list was read with one byte more than size. If its last byte but one is not a NUL, the name there goes on
    // beyond size.
    void dropCutName(std::size_t size) {
        while (size > 0 && bytes_[size - 1] != 0)
            bytes_[--size] = 0;
    }

    unsigned char bytes_[kSize + 2]{};  // the bytes behind the read end a list that was cut inside a name
    std::size_t at_ = 0;
    bool hasFile_ = false;
    bool readFailed_ = false;
};

}  // namespace jx
