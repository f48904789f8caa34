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

// What a read gives for a section or key that is not there.
inline constexpr char kNotAvailable[] = "NOT AVAILABLE";

// What becomes of the last key when the section is longer than the list.
enum class LastKey {
    cut,   // it is cut where the list ends
    whole  // it is left out: cut, it could be the name of something else
};

// KeyList: reads a section's keys at construction and keeps them.
// Limits   as many keys as 1024 bytes hold, or as few as sizeInBytes says.
// Failure  a file that cannot be read has no section; readFailed tells the two apart.
class KeyList {
public:
    static constexpr int kSize = 1024;

    // fallback stands for an absent section: kNotAvailable, or an empty text where nobody asks whether it is there.
    KeyList(const unsigned char* section, const char* fallback, const unsigned char* file,
            LastKey lastKey = LastKey::cut, int sizeInBytes = kSize) {
        read(section, fallback, file, lastKey == LastKey::whole ? sizeInBytes + 1 : sizeInBytes);
        if (lastKey == LastKey::whole)
            dropCutName(static_cast<std::size_t>(sizeInBytes));
    }

    // The same of a file that is open under the name a caller spelled.
    KeyList(const unsigned char* section, const char* fallback, JxIniFileCache* file) {
        read(section, fallback, file, kSize);
    }

    // Whether the section is there; only a list whose fallback is kNotAvailable knows. Deliberate: a section whose
    // first key is spelled like that is taken for an absent one.
    bool isThere() const { return wasRead_ && textInside(bytes_, sizeof bytes_) != kNotAvailable; }

    // Whether the file could not be read, or memory was short. What is done for an absent section must not be done
    // then.
    bool readFailed() const { return readFailed_; }

    NameList names() const { return {bytes_, sizeof bytes_}; }

    // The list as it was read, ended by an empty name.
    const unsigned char* bytes() const { return bytes_; }

    // The next key, cut at its first "=" in this list; null behind the last one.
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
        if (file == nullptr)
            return;
        jxGetPrivateProfileString(section, nullptr, asBytes(fallback), bytes_, sizeInBytes, file);
        readFailed_ = jxProfileReadFailed() != 0;
        wasRead_ = !readFailed_;
    }

    // The list was read with one byte more than size: where the byte before the last does not end a name, that name
    // goes on beyond the list.
    void dropCutName(std::size_t size) {
        while (size > 0 && bytes_[size - 1] != 0)
            bytes_[--size] = 0;
    }

    unsigned char bytes_[kSize + 2]{};  // a list that is cut inside a name is ended by the bytes behind it
    std::size_t at_ = 0;
    bool wasRead_ = false;
    bool readFailed_ = false;
};

}  // namespace jx
