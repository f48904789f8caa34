// The lock of one INI file: NAME.lock, which is also the new file that replaces it.
#pragma once

#include <cstdint>
#include <string>

#include <jxini.h>
#include "jxutl/ini/descriptor.h"

namespace jx::ini {

// How long a writer waits for the lock, and how often it tries meanwhile.
inline constexpr std::int64_t kLongestWaitInMilliseconds = 10'000;
inline constexpr std::int64_t kAskAgainInMilliseconds = 1;

// IniLock: held by one writer at a time among all processes and threads.
// Use      take with the path that findTarget gave: NAME.lock beside the target is then open, locked and empty. Write
//          the new text into it and call moveOver, or give up with withdraw.
// Order    NAME.lock is made or opened, locked, checked to be still the file at its path, emptied. A writer that waited
//          may get the lock of a file that was renamed or removed meanwhile; the check sees it, and it tries again.
// Trust    take writes only into a NAME.lock that it made, or one that this user owns, of mode 0600 and with no other
//          hard link. It locks and removes any other regular file and makes a new one: another program could have it
//          open. It refuses anything that is not a regular file and leaves it alone.
// Threads  an object belongs to one thread; two objects for one file exclude each other, also in one thread.
// Failure  false, noted as the thread's failure. Then, and in the destructor, NAME.lock is removed and unlocked.
class IniLock {
public:
    IniLock() = default;
    IniLock(const IniLock&) = delete;
    IniLock& operator=(const IniLock&) = delete;
    ~IniLock() { discard(); }

    // Waits at most kLongestWaitInMilliseconds. The failure is then step Lock with ETIMEDOUT, or with EACCES when
    // NAME.lock belongs to another user and cannot be opened.
    bool take(const std::string& target);

    int file() const { return file_.get(); }
    const std::string& path() const { return path_; }    // of NAME.lock
    const struct stat& state() const { return state_; }  // of NAME.lock when it was locked

    // Renames NAME.lock over the target and unlocks.
    bool moveOver(const std::string& target);

    // Removes NAME.lock and unlocks.
    bool withdraw();

    // The same as far as it works; notes no failure.
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
    Attempt unlock(Attempt outcome);
    int lookAgain() const;
    Attempt fail(JxIniStep step, int error);

    std::string path_;
    Descriptor file_;
    struct stat state_ = {};
    bool made_ = false;  // by the latest attempt
    bool writable_ = false;
    int waitError_ = 0;  // the errno when waiting ends in failure
};

}  // namespace jx::ini
