// The text of one INI file and the edits a write makes in it.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace jx::ini {

// What an edit did. refused: the arguments could not be stored so that a read gives them back as the same place.
enum class Edit { unchanged, changed, refused };

// IniText: the bytes of a file, edited by spans: whatever an edit does not address stays byte for byte.
// Use      construct with a file's bytes (any bytes), apply edits, take bytes().
// Failure  an edit that is refused changes nothing; std::bad_alloc may be thrown and leaves the text as it was.
class IniText {
public:
    explicit IniText(std::string bytes) : bytes_(std::move(bytes)) {}

    const std::string& bytes() const { return bytes_; }

    // The meaning of a profile write: null value deletes the key, null key the section; arguments are trimmed.
    Edit apply(const char* section, const char* key, const char* value);

private:
    std::string bytes_;
};

}  // namespace jx::ini
