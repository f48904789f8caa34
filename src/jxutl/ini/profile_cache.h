// The files a thread has read, kept for as long as they have not changed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "file_text.h"
#include "ini_index.h"
#include "ini_location.h"

namespace jx::ini {

// ProfileCache: up to kMostFiles files, the least recently read one making place for another.
// Use      read for each look-up; what it returns is the file's state at that call, as one stat() tells it. Nobody
// needs
//          to tell the cache of a change: while a change could hide in the file's times, it reads again.
// Threads  each thread has its own.
// Failure  read returns null and notes the failure; an absent file is none, and notes success. std::bad_alloc may be
//          thrown and leaves the cache in order.
// Not seen a change that leaves size and times as they were, which only a clock that was set back, a write through mmap
//          that the kernel has not noticed yet, or a network file system brings about.
class ProfileCache {
public:
    static constexpr std::size_t kMostFiles = 12;

    // The index of the file at path; null when there is no regular file to read. Valid until the next read.
    IniIndex* read(const std::string& path);

    // Finds the paths of the files that programs name.
    IniLocator& locator() { return locator_; }

    // The bytes that texts and indexes take.
    std::size_t memory() const;

private:
    struct File {
        std::string path;
        std::uint64_t lastUse = 0;
        FileText text;
        IniIndex index;
    };

    File& fileFor(const std::string& path);
    File& placeForAnother();

    std::vector<std::unique_ptr<File>> files_;
    std::uint64_t uses_ = 0;
    IniLocator locator_;
};

// The calling thread's cache; null when memory is too short for what is kept for a thread. std::bad_alloc may be
// thrown.
ProfileCache* threadCache();

}  // namespace jx::ini
