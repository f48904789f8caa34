// The changes that the fault and crash tests make.
#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <jxprofile.h>
#include "child_process.h"
#include "disk_check.h"
#include "jxutl/thread/failure.h"
#include "test_home.h"
#include "watched_files.h"

namespace jx::ini::test {

// ChangeCase: a file, one profile write, and what a reader may find afterwards: before or after, nothing else.
struct ChangeCase {
    const char* name;
    const char* before;  // null: no file
    const char* section;
    const char* key;
    const char* value;
    const char* after;
    bool shared = false;             // the file of ODBCINSTINI, else .odbc.ini
    bool linked = false;             // .odbc.ini is a symbolic link to deep/real.ini
    mode_t mode = 0600;              // of the file before
    bool foreign = false;            // it belongs to another user; for root only
    const char* lockLeft = nullptr;  // what a killed writer left in the lock file
    const char* newLeft = nullptr;   // and in its new file
    mode_t newLeftMode = 0600;
};

inline constexpr ChangeCase kChangeCases[] = {
    {.name = "new file", .before = nullptr, .section = "A", .key = "k", .value = "1", .after = "[A]\nk=1\n"},
    {.name = "changed value",
     .before = "; mine\n[A]\nk=1\n",
     .section = "A",
     .key = "k",
     .value = "2",
     .after = "; mine\n[A]\nk=2\n"},
    {.name = "new key",
     .before = "[A]\r\nk=1\r\n[B]\r\n",
     .section = "A",
     .key = "l",
     .value = "2",
     .after = "[A]\r\nk=1\r\nl=2\r\n[B]\r\n"},
    {.name = "deleted key",
     .before = "[A]\nk=1\nl=2\n",
     .section = "A",
     .key = "k",
     .value = nullptr,
     .after = "[A]\nl=2\n"},
    {.name = "deleted section",
     .before = "[A]\nk=1\n; of B\n[B]\nl=2\n",
     .section = "A",
     .key = nullptr,
     .value = nullptr,
     .after = "; of B\n[B]\nl=2\n"},
    {.name = "unchanged", .before = "[A]\nk=1\n", .section = "A", .key = "k", .value = "1", .after = "[A]\nk=1\n"},
    {.name = "symbolic link",
     .before = "[A]\nk=1\n",
     .section = "A",
     .key = "k",
     .value = "2",
     .after = "[A]\nk=2\n",
     .linked = true},
    {.name = "new shared file",
     .before = nullptr,
     .section = "A",
     .key = "k",
     .value = "1",
     .after = "[A]\nk=1\n",
     .shared = true},
    {.name = "other mode",
     .before = "[A]\nk=1\n",
     .section = "A",
     .key = "k",
     .value = "2",
     .after = "[A]\nk=2\n",
     .mode = 0644},
    {.name = "read-only file",
     .before = "[A]\nk=1\n",
     .section = "A",
     .key = "k",
     .value = "2",
     .after = "[A]\nk=2\n",
     .mode = 0444},
    {.name = "other owner",
     .before = "[A]\nk=1\n",
     .section = "A",
     .key = "k",
     .value = "2",
     .after = "[A]\nk=2\n",
     .mode = 0640,
     .foreign = true},
    {.name = "lock left by a killed writer",
     .before = "[A]\nk=1\n",
     .section = "A",
     .key = "k",
     .value = "2",
     .after = "[A]\nk=2\n",
     .lockLeft = ""},
    {.name = "new file left by a killed writer",
     .before = "[A]\nk=1\n",
     .section = "A",
     .key = "k",
     .value = "2",
     .after = "[A]\nk=2\n",
     .lockLeft = "jxodbc lock\n",
     .newLeft = "[A]\nk="},
    {.name = "old text left by a killed writer",
     .before = "[A]\nk=1\n",
     .section = "A",
     .key = "k",
     .value = "2",
     .after = "[A]\nk=2\n",
     .lockLeft = "jxodbc lock\n",
     .newLeft = "[A]\nk=0\n",
     .newLeftMode = 0444},
};

// InMemory: while it exists, temporary directories are made in memory if possible. These tests make thousands of small
// files, and do not depend on the disk.
class InMemory {
public:
    InMemory() {
        constexpr const char* kMemory = "/dev/shm";
        if (std::getenv("TMPDIR") == nullptr && ::access(kMemory, R_OK | W_OK | X_OK) == 0)
            set_ = setenv("TMPDIR", kMemory, 1) == 0;
    }
    InMemory(const InMemory&) = delete;
    InMemory& operator=(const InMemory&) = delete;
    ~InMemory() {
        if (set_)
            unsetenv("TMPDIR");
    }

private:
    bool set_ = false;
};

// CaseHome: a home directory set up for one case.
class CaseHome {
public:
    explicit CaseHome(const ChangeCase& change) : change_(change) {
        std::filesystem::create_directory(home_.file("deep"));
        setenv("ODBCINSTINI", home_.file("drivers.ini").c_str(), 1);
        int failed = change.linked ? ::symlink("deep/real.ini", home_.file(".odbc.ini").c_str()) : 0;
        if (change.before != nullptr)
            putText(target(), change.before, change.mode);
        if (change.foreign)
            failed |= ::chown(target().c_str(), kNobody, kNobody);
        EXPECT_EQ(failed, 0);
        if (change.lockLeft != nullptr)
            putText(lock(), change.lockLeft);
        if (change.newLeft != nullptr)
            putText(newFile(), change.newLeft, change.newLeftMode);
    }

    // The file that links lead to, and its lock file.
    std::string target() const {
        if (change_.linked)
            return home_.file("deep/real.ini");
        return home_.file(change_.shared ? "drivers.ini" : ".odbc.ini");
    }
    std::string lock() const { return besideTarget(".jxlock"); }
    // The name that the writer who holds the lock file there uses for its new file.
    std::string newFile() const {
        std::ostringstream number;
        number << std::hex << stateOf(lock()).st_ino;
        return besideTarget(".jxnew-" + number.str());
    }
    std::string directory() const { return change_.linked ? home_.file("deep") : home_.path(); }

    bool write() const {
        const auto bytes = [](const char* text) { return reinterpret_cast<const unsigned char*>(text); };
        return jxWritePrivateProfileString(bytes(change_.section), bytes(change_.key), bytes(change_.value),
                                           bytes(change_.shared ? ".odbcinst.ini" : ".odbc.ini")) == 1;
    }

    std::string text() const { return textOf(target()); }
    std::string before() const { return change_.before == nullptr ? "(absent)" : change_.before; }
    std::string after() const { return change_.after; }

    // Stray files: all but the file, its link and the empty directory.
    std::vector<std::string> litter() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home_.path()))
            if (entry.path() != target() && entry.path() != home_.file("deep") &&
                !(change_.linked && entry.path() == home_.file(".odbc.ini")))
                found.push_back(entry.path().filename().string());
        return found;
    }

private:
    std::string besideTarget(const std::string& end) const {
        const std::string name = std::filesystem::path(target()).filename();
        return directory() + "/" + (name.starts_with('.') ? "" : ".") + name + end;
    }

    const ChangeCase& change_;
    const InMemory inMemory_;
    const jx::test::TestHome home_;
};

// The cases that this user can set up.
inline bool canSetUp(const ChangeCase& change) {
    return !change.foreign || ::geteuid() == 0;
}
inline std::vector<ChangeCase> possibleChangeCases() {
    std::vector<ChangeCase> cases;
    std::copy_if(std::begin(kChangeCases), std::end(kChangeCases), std::back_inserter(cases), canSetUp);
    return cases;
}

// Whatever a writer left, the next one succeeds and leaves no stray file.
inline void expectNextWriteSucceeds(const CaseHome& home) {
    WatchedFiles working;
    const InUse inUse(working);
    EXPECT_TRUE(home.write()) << describe(lastFailure());
    EXPECT_EQ(home.text(), home.after());
    EXPECT_EQ(home.litter(), std::vector<std::string>{});
}

}  // namespace jx::ini::test
