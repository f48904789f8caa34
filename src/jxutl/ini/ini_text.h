// The text of one INI file and the edits a write makes in it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <jxini.h>
#include "jxutl/ini/section_map.h"

namespace jx::ini {

// What an edit did. refused: a read could not give the arguments back from the file.
enum class Edit { unchanged, changed, refused };

using Setting = JxIniSetting;

// IniText: the bytes of a file. An edit changes only the lines it is about; all others stay byte for byte.
// Use      construct with a file's bytes (any bytes), apply edits, read bytes().
// Failure  a refused edit changes nothing; std::bad_alloc may be thrown and leaves the text as it was.
class IniText {
public:
    explicit IniText(std::string bytes) : bytes_(std::move(bytes)) {}

    const std::string& bytes() const { return bytes_; }

    // As a profile write: a null value deletes the key, a null key the section; arguments are trimmed.
    Edit apply(const char* section, const char* key, const char* value);

    // As apply for each setting in order, but all of them or none; the text is gone over once, not once for each. Only
    // a key that is set again makes it begin anew.
    Edit applyAll(std::span<const Setting> settings);

private:
    std::string bytes_;
    SectionMap sections_;
    bool hasBeenSearched_ = false;
};

}  // namespace jx::ini
