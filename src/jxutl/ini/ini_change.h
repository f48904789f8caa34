// One change of one INI file.
#pragma once

#include <sys/stat.h>

#include <string>

#include "jxutl/ini/ini_location.h"
#include "jxutl/ini/ini_lock.h"
#include "jxutl/ini/ini_text.h"

namespace jx::ini {

// IniChange: edits that reach the file together or not at all.
// Use      begin, apply as often as needed, commit; leaving scope without commit undoes everything.
// Order    begin locks, then reads: no other writer changes what an edit sees.
// After    commit gave true: readers see the new text, and it survives a power cut; if nothing changed, the file was
//          not touched. It gave false: the file is as it was, unless Failure::afterRename is set.
// Threads  an object belongs to one thread; two objects for one file exclude each other, so a thread that begins a
//          second one waits for itself until the time is over.
// Failure  false, noted as the thread's failure; std::bad_alloc may be thrown, by all but commit. Neither leaves
//          NAME.lock or a descriptor behind once the object is destroyed.
class IniChange {
public:
    // An empty path is a failure with the errno that locate left.
    bool begin(const IniLocation& where);

    // Reads without the lock: apply and text show what a change would do, commit refuses.
    bool preview(const IniLocation& where);

    Edit apply(const char* section, const char* key, const char* value);

    // The file's text with the edits so far.
    const std::string& text() const { return text_.bytes(); }

    bool commit();

    bool holdsLock() const { return holdsLock_; }

    // Unlocks and leaves the file untouched; false when NAME.lock could not be removed.
    bool discard();

private:
    bool find(const IniLocation& where);
    bool readTarget();
    bool writeNewFile();
    bool keepOwner();
    bool keepMode();
    bool fail(JxIniStep step, const std::string& path, int error);

    std::string target_;
    std::string directory_;
    bool shared_ = false;
    bool holdsLock_ = false;
    bool present_ = false;
    bool changed_ = false;
    struct stat old_ = {};  // of the target, when present_
    IniText text_{std::string()};
    IniLock lock_;
};

}  // namespace jx::ini
