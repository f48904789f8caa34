// What the store is measured by: the least that a call of its kind has to do.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "ini_files.h"

namespace jx::bench {

// HashIndex (S): one stat of the file and one look-up in an index of all its keys that was built before.
class HashIndex {
public:
    HashIndex(std::string path, const IniFile& file);

    // The name that find takes for a key, to be made beforehand.
    static std::string nameOf(const IniEntry& entry) { return entry.section + "\n" + entry.key; }

    // Null when the file or the key is not there.
    const std::string* find(const std::string& name) const;

private:
    std::string path_;
    std::unordered_map<std::string, std::string> values_;
};

// P: opens the file, reads it whole, and passes over it line by line until the key is found. Names match without
// regard to ASCII case and blanks around them do not count, as in the store. False when there is no such key.
bool passOverFile(const std::string& path, std::string_view section, std::string_view key, std::string& value);

// One stat of the file and a copy of bytes that lie ready; false when the file is not there.
bool statAndCopy(const std::string& path, const std::string& bytes, char* target);

// W: bytes written to a file beside, flushed, renamed over path; then its directory flushed. Mode 0600.
bool replaceDurably(const std::string& path, std::string_view bytes);

}  // namespace jx::bench
