// The file with the new text, until it is put in the target's place.
#pragma once

#include <sys/stat.h>

#include <string>

#include <jxini.h>
#include "jxutl/ini/descriptor.h"
#include "jxutl/ini/ini_place.h"

namespace jx::ini {

// IniNewFile: a file beside the target, under a name that only its own writer uses.
// Use      make, fill, replace, then removeOld. In the destructor a file that was not put in place is removed.
// Threads  an object belongs to one thread.
// Failure  false or failed, noted as the thread's failure with the target's path.
class IniNewFile {
public:
    enum class Outcome {
        placed,
        other,  // another file is at the target's name than the one that was read; it is there still
        failed
    };

    // Both must exist as long as this object.
    IniNewFile(const IniPlace& place, const std::string& name) : place_(place), name_(name) {}
    IniNewFile(const IniNewFile&) = delete;
    IniNewFile& operator=(const IniNewFile&) = delete;
    ~IniNewFile();

    // Makes it, for its owner only. A file of that name is one that a killed writer left, and is removed.
    bool make();

    // Gives it the old target's owner, the text and a mode, and flushes it. old is null for a new file, which gets
    // mode.
    bool fill(const std::string& text, const struct stat* old, mode_t mode);

    // Puts it in the target's place if the target is still old, or still absent for null. Old and new change names, and
    // what came out is looked at: a writer that put another file there meanwhile gets its file back.
    Outcome replace(const struct stat* old);

    // Removes what came out; false, with nothing noted, when it is still there under this file's name.
    bool removeOld();

private:
    bool keepOwner(const struct stat* old);
    bool setMode(mode_t mode);
    Outcome exchange(const struct stat& old);
    Outcome exchangeBack(Outcome outcome, int error);
    Outcome renameTo(unsigned flags);
    bool fail(JxIniStep step, int error) const;
    Outcome failed(JxIniStep step, int error) const;

    const IniPlace& place_;
    const std::string& name_;
    Descriptor file_;
    struct stat state_ = {};
    bool isMine_ = false;  // the file of that name may be removed
};

}  // namespace jx::ini
