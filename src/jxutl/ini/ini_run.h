// The changes of several writes of one thread, pending until they are committed together.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jxutl/ini/ini_change.h"
#include "jxutl/ini/ini_index.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/thread/failure.h"

namespace jx::ini {

// IniRun: one pending change for each file that the thread writes while the run lives.
// Use      open, then the thread's writes and reads go through it; commit, or give it up.
// Order    a file is locked by its first write and stays locked; commit writes the files in the order of their first
//          writes, each once.
// Failure  a file that cannot be locked or read, or too little memory for a write, fails the whole run: commit then
//          writes nothing. A refused text does not: it was never going to be stored.
// Threads  a run belongs to its thread.
class IniRun {
public:
    // The pending change of the file, begun now if necessary; null, with the failure noted, when it cannot be begun. A
    // run that has failed begins none.
    std::shared_ptr<IniChange> changeOf(const IniLocation& where);

    // The pending change of the file that path leads to; null when the run has not written it. The path is followed
    // once.
    std::shared_ptr<IniChange> pending(const std::string& path);

    // Its text for look-ups, valid until the next write of the run.
    IniIndex* index(const IniChange& change);

    // Fails the run with the thread's last failure, unless it has failed already.
    void fail();

    // A run that begins inside this one is part of it; leave tells which of them ends.
    enum class Level { outer, inner };
    void enter() { ++depth_; }
    Level leave() { return --depth_ == 0 ? Level::outer : Level::inner; }

    // Writes the files. False, with the failure noted, when the run or the writing of a file failed: the files from
    // that one on are as they were.
    bool commit();

private:
    struct File {
        std::vector<std::string> paths;  // known to lead to it
        std::shared_ptr<IniChange> change;
        IniIndex index;
        std::string indexed;  // the text of the index, and its version
        std::optional<std::uint64_t> indexedVersion;
    };

    File* fileAt(const std::string& path);

    std::vector<std::unique_ptr<File>> files_;
    std::vector<std::string> elsewhere_;  // paths known to lead to none of them
    Failure failure_;
    int depth_ = 0;
};

// The calling thread's run; null when it has none.
IniRun* currentRun();

// Begins a run of the calling thread, or one inside it; null, or std::bad_alloc, when memory is short.
IniRun* beginRun();

// Ends it, and gives up what was not committed.
void endRun() noexcept;

}  // namespace jx::ini
