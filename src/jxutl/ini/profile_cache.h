// The files a thread has read, kept for as long as they have not changed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "jxutl/ini/file_text.h"
#include "jxutl/ini/ini_index.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/thread/failure.h"
#include "jxutl/thread/thread_data.h"

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

    // With the place where the thread's failure is kept, success is noted only where that is something new.
    explicit ProfileCache(const Failure* kept = nullptr) : kept_(kept) {}

    // The index of the file at path; null when there is no regular file to read. Valid until the next read. A number
    // that is not 0 stands for that path at every read, and spares comparing it.
    IniIndex* read(const std::string& path, std::uint64_t number = 0);

    // Finds the paths of the files that programs name.
    IniLocator& locator() { return locator_; }

    // The bytes that texts and indexes take.
    std::size_t memory() const;

private:
    struct File {
        std::string path;
        std::uint64_t number = 0;  // under which it was read last
        std::uint64_t lastUse = 0;
        FileText text;
        IniIndex index;
    };

    File& fileFor(const std::string& path, std::uint64_t number);
    File* fileNumbered(std::uint64_t number);
    File& fileAt(const std::string& path);
    File& placeForAnother();

    std::vector<std::unique_ptr<File>> files_;
    std::uint64_t uses_ = 0;
    IniLocator locator_;
    const Failure* kept_;
};

// A cache for a thread that has none; as for threadCache.
ProfileCache* newThreadCache();

// The calling thread's cache; null when memory is too short for what is kept for a thread. std::bad_alloc may be
// thrown.
inline ProfileCache* threadCache() {
    const ThreadData* data = existingThreadData();
    return data != nullptr && data->profiles != nullptr ? data->profiles.get() : newThreadCache();
}

}  // namespace jx::ini
