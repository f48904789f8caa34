// Reading an installation script: every read of one goes through here.
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

// Script: names a script, whose sections and keys are those of an INI file.
// Limits   values and lists of keys are cut at 1024 bytes.
// Failure  a script that is not there, or has no name (null), has no sections; readFailed of what was read tells
// whether
//          it is there and could not be read.
class Script {
public:
    explicit Script(const unsigned char* file) : file_(file) {}

    // The keys of a section; the one at the edge of the list may be cut.
    KeyList keys(const unsigned char* section) const { return {section, kNotAvailable, file_}; }

    // The keys that fit whole.
    KeyList wholeKeys(const unsigned char* section) const { return {section, kNotAvailable, file_, LastKey::whole}; }

    // The keys that name the files of a component. Deliberate: the script is opened under its own name for them, so a
    // script called like one of the user's files is not taken for that one.
    KeyList fileKeys(const unsigned char* section) const;

    // Reads a value; true when the key is there.
    bool read(const unsigned char* section, const unsigned char* key, ProfileValue& value) const {
        return value.read(section, key, file_);
    }

    // Reads a driver's capabilities, from the section of its name followed by "-Keys": calls take(place, value) for
    // each that is there, in the order of kCapabilityKeys, until it gives false. False then, and when memory was short
    // or the script could not be read.
    template <class Take>
    bool readCapabilities(std::string_view driver, Take take) const;

private:
    const unsigned char* file_;
};

// Cuts a key that the script writes in double quotes to the name between them, and returns it: from the second
// character, whatever the first one is, to the next double quote or the end. So a key without quotes loses its first
// character.
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
