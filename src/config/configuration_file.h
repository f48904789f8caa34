// Reading and writing single entries of the two configuration files.
//
//     driverFile().write(driver, asBytes("Setup"), path);
#pragma once

#include <jxini.h>
#include <jxprofile.h>
#include <odbcinst.h>

#include <cerrno>

#include "config/key_list.h"
#include "config/text_bytes.h"

namespace jx {

// Whether the thread's last read may have missed something, since the file could not be read. A directory or a FIFO in
// its place holds nothing.
inline bool readMayHaveMissed() {
    const int error = jxProfileReadFailed() != 0 ? jxIniLastFailure().error : EISDIR;
    return error != EISDIR && error != ENOTSUP;
}

// ConfigurationFile: one of the two files. Every entry that the library writes for itself goes through here.
// Results   as the store returns them: 0 when the file could not be written and is unchanged.
// Threads   any; each call is a change of its own, or a part of the thread's run (configuration_run.h).
class ConfigurationFile {
public:
    explicit ConfigurationFile(const char* name) : name_(asBytes(name)) {}

    const unsigned char* name() const { return name_; }

    // Reads a value, cut at sizeInBytes - 1 bytes, and returns its length. A missing one is empty.
    int read(const unsigned char* section, const unsigned char* key, unsigned char* buffer, int sizeInBytes) const {
        return jxGetPrivateProfileString(section, key, asBytes(""), buffer, sizeInBytes, name_);
    }

    int write(const unsigned char* section, const unsigned char* key, const unsigned char* value) const {
        return jxWritePrivateProfileString(section, key, value, name_);
    }

    // Removing what is not there succeeds.
    int removeKey(const unsigned char* section, const unsigned char* key) const { return write(section, key, nullptr); }
    int removeSection(const unsigned char* section) const { return write(section, nullptr, nullptr); }

    // Writes an entry at the end of its section; an older one of that key is removed.
    int replace(const unsigned char* section, const unsigned char* key, const unsigned char* value) const {
        removeKey(section, key);
        return write(section, key, value);
    }

    // Called before an entry is added to a list.
    // Deliberate: a list that seems absent is cleared. Usually there is nothing to clear, but a list whose first name
    // is "NOT AVAILABLE" is lost. In a run nobody else begins a list meanwhile; outside one, a list that another
    // program begins at the same time is lost, too. A list that cannot be read is left unchanged.
    void clearAbsentList(const unsigned char* list) const {
        lockInRun();
        const KeyList names(list, kNotAvailable, name_);
        if (!names.isThere() && !names.readFailed())
            removeSection(list);
    }

    // Locks the file for the thread's run before its first write, where another file could be locked first. A run that
    // cannot lock it goes on; false then.
    bool lockInRun() const { return jxIniLockInRun(asChars(name_)) != 0; }

private:
    const unsigned char* name_;
};

// The files under their current names, to which the exported pointers point.
inline ConfigurationFile driverFile() {
    return ConfigurationFile(INS_ODBCINST_FILENAME);
}
inline ConfigurationFile dataSourceFile() {
    return ConfigurationFile(INS_ODBCINI_FILENAME);
}

}  // namespace jx
