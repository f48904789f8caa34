// What the store is compared with: the least that a call of its kind has to do.
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

    // The name of a key for find, to be made before the measurement.
    static std::string nameOf(const IniEntry& entry) { return entry.section + "\n" + entry.key; }

    // Null when the file or key is absent.
    const std::string* find(const std::string& name) const;

private:
    std::string path_;
    std::unordered_map<std::string, std::string> values_;
};

// P: opens the file, reads it whole and goes through it line by line until the key is found. Names match as in the
// store, without regard to ASCII case and blanks around them. False when there is no such key.
bool passOverFile(const std::string& path, std::string_view section, std::string_view key, std::string& value);

// One stat of the file and a copy of bytes in memory; false when the file is absent.
bool statAndCopy(const std::string& path, const std::string& bytes, char* target);

// W: writes bytes to another file in the directory, flushes it, renames it over path and flushes the directory. Mode
// 0600.
bool replaceDurably(const std::string& path, std::string_view bytes);

}  // namespace jx::bench
