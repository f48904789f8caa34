// One change of one INI file.
#pragma once

#include <sys/stat.h>

#include <string>

#include "jxutl/ini/ini_location.h"
#include "jxutl/ini/ini_text.h"
#include "jxutl/ini/ini_turn.h"

namespace jx::ini {

// IniChange: edits that reach the file together or not at all.
// Use      begin, apply as often as needed, commit; leaving scope without commit undoes everything.
// Order    the turn is taken in begin, before the file is read: what an edit sees, no other writer changes.
// After    commit's true: readers see the new text, and it survives a power cut. Nothing changed: the file was not
//          touched. False: the file is as it was, except when Failure::afterRename says otherwise.
// Threads  an object belongs to one thread; two objects for one file take turns, so a thread that begins a second one
//          waits for itself in vain.
// Failure  false, noted as the thread's failure; std::bad_alloc may be thrown, by all but commit. Neither leaves
//          NAME.lock or a descriptor behind once the object is gone.
class IniChange {
public:
    // An empty path is a failure with the errno that locate left.
    bool begin(const IniLocation& where);

    // Reads without the turn: apply and text show what a change would do, commit refuses.
    bool preview(const IniLocation& where);

    Edit apply(const char* section, const char* key, const char* value);

    // The file's text with the edits so far.
    const std::string& text() const { return text_.bytes(); }

    bool commit();

    bool holdsTurn() const { return holdsTurn_; }

    // Gives the turn back with the file untouched; false when NAME.lock could not be removed.
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
    bool holdsTurn_ = false;
    bool present_ = false;
    bool changed_ = false;
    struct stat old_ = {};  // of the target, when present_
    IniText text_{std::string()};
    IniTurn turn_;
};

}  // namespace jx::ini
