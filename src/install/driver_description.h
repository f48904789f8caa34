// What a caller hands to SQLInstallDriver: a description, or a list that begins with one.
#pragma once

#include <array>
#include <cstddef>

namespace jx::install {

// The bytes a description or a keyword list may take, with all its NULs.
inline constexpr std::size_t kDescriptionSize = 1024;

// Where the texts stand in a keyword list.
inline constexpr unsigned kDriverText = 1;
inline constexpr unsigned kSetupText = 2;

// What the caller handed over.
enum class DescriptionForm {
    name,        // one text: the driver's description
    keywordList  // the description, then keyword=value texts, ended by an empty text
};

// The bytes that source takes in that form, NULs included; 0 when its end does not lie within the first
// kDescriptionSize bytes. Reads up to the end or that many bytes, no further.
std::size_t descriptionSize(const unsigned char* source, DescriptionForm form);

// DriverDescription: a working copy, since the steps of an installation cut what they read.
class DriverDescription {
public:
    // Takes a fresh copy; false, and the old copy stays, when source is larger than kDescriptionSize.
    bool take(const unsigned char* source, DescriptionForm form);

    // The copy; as a list it is always ended by an empty text.
    unsigned char* bytes() { return bytes_.data(); }

private:
    std::array<unsigned char, kDescriptionSize + 1> bytes_{};
};

// The text at position (0 is the description); the empty text that ends the list when it is shorter.
unsigned char* keywordText(unsigned char* list, unsigned position);

}  // namespace jx::install
