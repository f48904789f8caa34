// The turn to change one file, and the new file it is taken with.
#pragma once

#include <cstdint>
#include <string>

#include <jxini.h>
#include "jxutl/ini/descriptor.h"

namespace jx::ini {

// How long a writer waits for its turn, and how often it asks meanwhile.
inline constexpr std::int64_t kLongestWaitInMilliseconds = 10'000;
inline constexpr std::int64_t kAskAgainInMilliseconds = 1;

// IniTurn: the right to replace one file, held by one writer at a time among all processes and threads.
// Use      take with the path that findTarget gave; then the open, empty NAME.lock beside the target is ours alone:
//          write the new text into it and call moveOver, or give it up with withdraw.
// Order    made or reused, locked, checked to be still the file at its path, emptied. A writer that waited and got the
//          lock of a file which has become the target meanwhile, or was removed, sees it in the check and tries again.
// Trust    only a file that take has just made, or one that is this user's own, of mode 0600 and without a second
//          name, is written into. Any other regular file there is removed once its lock is held, so that nobody has an
//          open descriptor of what becomes the target; what is no regular file is refused and left alone.
// Threads  an object belongs to one thread; two objects for one file exclude each other, also in one thread.
// Failure  false, noted as the thread's failure. Then, and in the destructor, NAME.lock is removed and given back.
class IniTurn {
public:
    IniTurn() = default;
    IniTurn(const IniTurn&) = delete;
    IniTurn& operator=(const IniTurn&) = delete;
    ~IniTurn() { discard(); }

    // Waits at most kLongestWaitInMilliseconds: then the failure is step Turn with ETIMEDOUT, or EACCES where the file
    // in the way belongs to somebody else and cannot even be opened.
    bool take(const std::string& target);

    int file() const { return file_.get(); }
    const std::string& path() const { return path_; }    // of NAME.lock
    const struct stat& state() const { return state_; }  // of NAME.lock when the turn was taken

    // Puts NAME.lock in the target's place and gives the turn back.
    bool moveOver(const std::string& target);

    // Removes NAME.lock and gives the turn back.
    bool withdraw();

    // The same as far as it goes, without a word: the thread's failure stays the one that was noted before.
    void discard() noexcept;

private:
    enum class Attempt { taken, again, busy, failed };

    Attempt attempt();
    Attempt open();
    Attempt openExisting();
    Attempt lock();
    Attempt checkPath();
    Attempt checkTrust();
    Attempt prepare();
    Attempt letGo(Attempt outcome);
    int lookAgain() const;
    Attempt fail(JxIniStep step, int error);

    std::string path_;
    Descriptor file_;
    struct stat state_ = {};
    bool made_ = false;  // by the latest attempt
    bool writable_ = false;
    int waitError_ = 0;  // what a wait that was too long ends with
};

}  // namespace jx::ini
