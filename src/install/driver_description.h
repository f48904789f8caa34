// What a caller passes to SQLInstallDriver: a driver's description, or a keyword list that begins with it.
#pragma once

#include <array>
#include <cstddef>

namespace jx::install {

// The longest description or keyword list, in bytes with all its NULs.
inline constexpr std::size_t kDescriptionSize = 1024;

// The positions of these texts in a keyword list.
inline constexpr unsigned kDriverText = 1;
inline constexpr unsigned kSetupText = 2;

// What the caller passed.
enum class DescriptionForm {
    name,        // one text: the driver's description
    keywordList  // the description, then keyword=value texts, ended by an empty text
};

// The size of source in bytes, NULs included; 0 when it does not end within kDescriptionSize bytes. No byte behind its
// end or that limit is read.
std::size_t descriptionSize(const unsigned char* source, DescriptionForm form);

// DriverDescription: a working copy for the steps of an installation, which write into what they read.
class DriverDescription {
public:
    // Copies source, once; false when it is larger than kDescriptionSize.
    bool take(const unsigned char* source, DescriptionForm form);

    // The copy, always ended by an empty text.
    unsigned char* bytes() { return bytes_.data(); }

private:
    std::array<unsigned char, kDescriptionSize + 1> bytes_{};
};

// The text at position (0 is the description); in a shorter list, the empty text at its end.
unsigned char* keywordText(unsigned char* list, unsigned position);

}  // namespace jx::install
