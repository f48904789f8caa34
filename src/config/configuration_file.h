// The two configuration files, for those who read and write single entries in them.
//
//     driverFile().write(driver, asBytes("Setup"), path);
#pragma once

#include <jxprofile.h>
#include <odbcinst.h>

#include "config/key_list.h"
#include "config/text_bytes.h"

namespace jx {

// ConfigurationFile: names one of the files; every entry that the library writes on its own account goes through here.
// Results   those of the store: 0 when the file could not be written and is as it was.
// Threads   any; each call is a whole change of the file.
class ConfigurationFile {
public:
    explicit ConfigurationFile(const char* name) : name_(asBytes(name)) {}

    const unsigned char* name() const { return name_; }

    // Reads a value, empty when there is none, cut at sizeInBytes - 1 bytes; returns its length.
    int read(const unsigned char* section, const unsigned char* key, unsigned char* buffer, int sizeInBytes) const {
        return jxGetPrivateProfileString(section, key, asBytes(""), buffer, sizeInBytes, name_);
    }

    int write(const unsigned char* section, const unsigned char* key, const unsigned char* value) const {
        return jxWritePrivateProfileString(section, key, value, name_);
    }

    // Removing what is not there succeeds.
    int removeKey(const unsigned char* section, const unsigned char* key) const { return write(section, key, nullptr); }
    int removeSection(const unsigned char* section) const { return write(section, nullptr, nullptr); }

    // Writes an entry at the end of its section, wherever it stood before.
    int replace(const unsigned char* section, const unsigned char* key, const unsigned char* value) const {
        removeKey(section, key);
        return write(section, key, value);
    }

    // What comes before the first entry of a list.
    // Deliberate: a list that reads as absent is cleared. Mostly there is nothing to clear; but a list whose first name
    // is "NOT AVAILABLE" goes, and so does one that another program begins in this very moment. A list that cannot be
    // read is left alone.
    void clearAbsentList(const unsigned char* list) const {
        const KeyList names(list, kNotAvailable, name_);
        if (!names.isThere() && !names.readFailed())
            removeSection(list);
    }

private:
    const unsigned char* name_;
};

// The files, under the names that the exported pointers hold at this moment.
inline ConfigurationFile driverFile() {
    return ConfigurationFile(INS_ODBCINST_FILENAME);
}
inline ConfigurationFile dataSourceFile() {
    return ConfigurationFile(INS_ODBCINI_FILENAME);
}

}  // namespace jx
