// One value or one list of names as read from an INI file.
#pragma once

#include <jxprofile.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace jx::install {

// The bytes a read may fill, NUL included; what is longer is cut there.
inline constexpr std::size_t kProfileTextSize = 1024;

// ProfileText: a buffer for reads. Every read clears it first; reading a null key gives the list of the section's keys.
// A list that was cut inside a name still ends with an empty text.
class ProfileText {
public:
    // True when the section or key is there. Otherwise the buffer holds "NOT AVAILABLE" (or nothing, for a null file):
    // it is absent, or readFailed tells that nobody knows.
    bool read(const unsigned char* section, const unsigned char* key, const unsigned char* file);
    bool read(const unsigned char* section, const unsigned char* key, JxIniFileCache* cache);

    // The same for a section's keys, without the one that does not fit whole: cut, it could be another key.
    bool readWholeKeys(const unsigned char* section, const unsigned char* file);

    // Whether the last read failed: memory was short or the file could not be read. What a program would do for an
    // absent entry must not be done then.
    bool readFailed() const { return readFailed_; }

    unsigned char* text() { return bytes_.data(); }

private:
    template <typename File>
    bool readFrom(const unsigned char* section, const unsigned char* key, File file,
                  std::size_t size = kProfileTextSize);

    std::array<unsigned char, kProfileTextSize + 2> bytes_{};  // the last one is never handed to a read: it ends a list
    bool readFailed_ = false;
};

// The text that follows text in a list; text itself when it is the empty one that ends the list.
unsigned char* textAfter(unsigned char* text);

// How many texts stand before the empty one.
std::uint32_t countTexts(unsigned char* list);

// Cuts text at its first '=' and returns what stands behind it; null when there is none (nothing is changed then).
unsigned char* cutAtEquals(unsigned char* text);

// The name in a script's quoted key: from the second character, whatever the first one is, to the next double quote or
// the end.
std::string_view quotedName(const unsigned char* key);

}  // namespace jx::install
