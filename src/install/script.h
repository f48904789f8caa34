// Reading an installation script. All reads of scripts go through here.
//
//     const Script script(record.infFile);
//     ProfileValue line;
//     if (script.read(item.name, key, line)) ...
#pragma once

#include <string_view>

#include "config/key_list.h"
#include "config/profile_value.h"
#include "install/capability_keys.h"
#include "install/owned_text.h"

namespace jx::install {

// Script: an installation script, which is an INI file.
// Limits   values and lists of keys are cut at 1024 bytes.
// Failure  a script that cannot be found or read, or has no name (null), has no sections. What was read says in
//          readFailed whether the script is there and could not be read.
class Script {
public:
    explicit Script(const unsigned char* file) : file_(file) {}

    // The keys of a section. The last one may be cut.
    KeyList keys(const unsigned char* section) const { return {section, kNotAvailable, file_}; }

    // The same without a key that does not fit whole.
    KeyList wholeKeys(const unsigned char* section) const { return {section, kNotAvailable, file_, LastKey::whole}; }

    // The keys of a component's files. Deliberate: unlike in the other reads, ".odbc.ini" and ".odbcinst.ini" are here
    // files of that name in the current directory, not the user's.
    KeyList fileKeys(const unsigned char* section) const;

    // Reads a value; true when the key is there.
    bool read(const unsigned char* section, const unsigned char* key, ProfileValue& value) const {
        return value.read(section, key, file_);
    }

    // Reads a driver's capabilities from the section "NAME-Keys": calls take(place, value) for each one there, in the
    // order of kCapabilityKeys. Stops when take returns false. False in that case, when memory was short, and when the
    // script could not be read.
    template <class Take>
    bool readCapabilities(std::string_view driver, Take take) const;

private:
    const unsigned char* file_;
};

// The name in a key that a script writes in double quotes: what follows the first character, up to the next double
// quote. The key is cut there. A key without quotes loses its first character.
unsigned char* quotedName(unsigned char* key);

template <class Take>
bool Script::readCapabilities(std::string_view driver, Take take) const {
    const OwnedText section = joined(driver, "-Keys");
    if (section == nullptr)
        return false;
    const KeyList present = keys(section.get());
    if (!present.isThere())
        return !present.readFailed();
    bool isComplete = true;
    ProfileValue value;
    for (std::size_t place = 0; place < kCapabilityKeys.size(); ++place) {
        if (!read(section.get(), asBytes(kCapabilityKeys[place]), value))
            isComplete = isComplete && !value.readFailed();
        else if (!take(place, value))
            return false;
    }
    return isComplete;
}

}  // namespace jx::install
