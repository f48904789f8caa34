// One change of one INI file.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "jxutl/ini/ini_location.h"
#include "jxutl/ini/ini_lock.h"
#include "jxutl/ini/ini_new_file.h"
#include "jxutl/ini/ini_place.h"
#include "jxutl/ini/ini_text.h"

namespace jx::ini {

// IniChange: edits that reach the file together or not at all.
// Use      begin, apply as often as needed, commit; leaving scope without commit undoes everything.
// Order    begin locks, then reads: no other writer changes what an edit sees.
// After    commit gave true: readers see the new text, and it survives a power cut; if nothing changed, the file was
//          not touched. It gave false: the file is as it was, unless Failure::afterRename is set.
// Threads  an object belongs to one thread; two objects for one file exclude each other, so a thread that begins a
//          second one waits for itself until the time is over.
// Failure  false, noted as the thread's failure; std::bad_alloc may be thrown; the file is then as it was. Neither
// leaves
//          a file or a descriptor behind once the object is destroyed. Step Rename with ESTALE: another text was put in
//          place without the lock between begin and commit, and stays.
class IniChange {
public:
    // An empty path is a failure with the errno that locate left.
    bool begin(const IniLocation& where);

    // Reads without the lock: apply and text show what a change would do, commit refuses.
    bool preview(const IniLocation& where);

    // Begins on the text of another change, to look at it only.
    void look(const IniChange& other);

    // The same, and commits to the other change instead of to the file. The other may end before: then commit fails.
    void join(const std::shared_ptr<IniChange>& outer);

    Edit apply(const char* section, const char* key, const char* value);

    // IniText::applyAll.
    Edit applyAll(std::span<const Setting> settings);

    // Makes these bytes the file's text.
    void replaceText(std::string bytes);

    // The file's text as it was read, and with the edits so far.
    const std::string& before() const { return before_; }
    const std::string& text() const { return text_.bytes(); }

    // Another number whenever the text has changed.
    std::uint64_t version() const { return version_; }

    // Edits that undid each other change nothing, but may have made a file that was absent: one at a time they would.
    enum class Undone { changesNothing, makesTheFile };

    bool commit(Undone undone = Undone::changesNothing);

    bool holdsLock() const { return holdsLock_; }

    // Whether the file is absent and no edit has changed that.
    bool isAbsent() const { return !present_ && !changed_; }

    // Whether this is the change of the file at that place.
    bool isAt(const IniPlace& place) const;

    // Unlocks and leaves the file untouched; false when the lock file could not be removed.
    bool discard();

private:
    bool find(const IniLocation& where);
    bool readTarget();
    IniNewFile::Outcome replace();
    bool beginAgain(std::int64_t end);
    bool commitToOuter();
    bool fail(JxIniStep step, const std::string& path, int error);

    IniPlace place_;
    bool shared_ = false;
    bool holdsLock_ = false;
    bool present_ = false;
    bool changed_ = false;
    std::uint64_t version_ = 0;
    struct stat old_ = {};  // of the target, when present_
    std::string before_;
    IniText text_{std::string()};
    IniLock lock_;
    bool joined_ = false;
    std::weak_ptr<IniChange> outer_;
};

}  // namespace jx::ini
