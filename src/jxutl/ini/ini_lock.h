// The lock of one INI file: .NAME.jxlock beside it.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>

#include <jxini.h>
#include "jxutl/ini/descriptor.h"
#include "jxutl/ini/ini_place.h"

namespace jx::ini {

// How often a writer tries while it waits for the lock.
inline constexpr std::int64_t kAskAgainInMilliseconds = 1;

// IniLock: held by one writer at a time among all processes and threads.
// Use      take with a place; withdraw when the change is made or given up.
// Order    the lock file is made or opened, locked, checked to be still the file at its name and to be a lock of the
//          store. A writer that waited may get the lock of a file that was removed meanwhile; the check sees it, and it
//          tries again.
// Trust    A lock of the store is a regular file of mode 0600 with one hard link, of this user (for root: of any user),
//          whose first line is "jxodbc lock"; an empty one's maker was killed. Anything else is refused (EEXIST) and
//          left alone.
// Threads  an object belongs to one thread; two objects for one file exclude each other, also in one thread.
// Failure  false, noted as the thread's failure. Then, and in the destructor, the lock file is removed and unlocked.
class IniLock {
public:
    IniLock() = default;
    IniLock(const IniLock&) = delete;
    IniLock& operator=(const IniLock&) = delete;
    ~IniLock() { discard(); }

    // Waits as long as the thread's data says. The failure is then step Lock with ETIMEDOUT, or with EACCES when the
    // lock file belongs to another user and cannot be opened. What a killed writer left is removed. The place must
    // exist as long as the lock is held.
    bool take(const IniPlace& place);

    // A name beside the target that no other writer uses while this lock is held, even if the lock file is removed by
    // hand: the number of the lock file is part of it.
    const std::string& nameOfNewFile() const { return newName_; }

    // Removes the lock file and unlocks.
    bool withdraw();

    // The same as far as it works; notes no failure.
    void letGo() noexcept;

    // Unlocks; the next writer takes up the lock file, and removes what else is left.
    void leave() { file_.close(); }

    // As letGo, after a failure at any step.
    void discard() noexcept;

private:
    enum class Attempt { taken, again, busy, failed };

    Attempt attempt();
    Attempt open();
    Attempt openExisting();
    Attempt lock();
    Attempt checkName();
    Attempt checkLine();
    Attempt prepare();
    Attempt unlock(Attempt outcome);
    void giveToOwnerOfDirectory();
    int removeOwn() const;
    Attempt fail(int error);
    Attempt refuse();

    const IniPlace* place_ = nullptr;
    std::string name_;
    std::string newName_;
    Descriptor file_;
    struct stat state_ = {};
    bool made_ = false;   // by the latest attempt
    bool known_ = false;  // file_ is the store's and nothing else is left: it may be removed
    int waitError_ = 0;   // the errno when waiting ends in failure
};

}  // namespace jx::ini
