// The files a thread has read, kept until they change.
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

class IniChange;
class IniRun;

// ProfileCache: up to kMostFiles files, which take up to kMostBytes besides the one read last; beyond that the least
// recently read are let go. A file that is gone is let go at the next read of it, and any file that is gone or changed
// when another one is read for the first time.
// Use      read for each look-up; it makes one stat() and gives the file's state at that call. It reads the file again
//          as long as its times are too new to show every change.
// Threads  each thread has its own.
// Failure  read returns null and notes the failure; an absent file is not a failure. std::bad_alloc may be thrown and
//          leaves the cache in order.
// Not seen changes that leave size and times as they were: after a clock was set back, by a write through mmap that the
//          kernel has not noticed yet, or on a network file system.
class ProfileCache {
public:
    static constexpr std::size_t kMostFiles = 12;
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

    // kept is the thread's failure, or null; with it, success is noted only after a failure.
    explicit ProfileCache(const Failure* kept = nullptr) : kept_(kept) {}

    // The index of the file at path, valid until the next read; null when there is no regular file to read. A number
    // that is not 0 always means the same path, so paths are not compared.
    IniIndex* read(const std::string& path, std::uint64_t number = 0);

    // From now on files that this run has written are read from it; null ends that.
    void readThrough(IniRun* run) { run_ = run; }

    // Finds the paths for file names.
    IniLocator& locator() { return locator_; }

    // The bytes that texts and indexes take.
    std::size_t memory() const;

private:
    struct File {
        std::string path;
        std::uint64_t number = 0;  // under which it was read last
        std::uint64_t lastUse = 0;
        std::size_t counted = 0;  // the bytes of it that are in bytes_
        FileText text;
        IniIndex index;
    };

    IniIndex* readPending(const IniChange& change);
    File& fileFor(const std::string& path, std::uint64_t number);
    File* fileNumbered(std::uint64_t number);
    File& fileAt(const std::string& path);
    File& placeForAnother();
    void letGo(const File* file);
    void letGoOfPath(const std::string& path);
    void letGoOfStale();
    File* leastRecentlyRead() const;
    void use(File& file);
    void count(File& file);
    void keepWithinBounds();

    std::vector<std::unique_ptr<File>> files_;
    File* latest_ = nullptr;
    std::size_t bytes_ = 0;  // of all files, as counted last
    std::uint64_t uses_ = 0;
    IniLocator locator_;
    const Failure* kept_;
    IniRun* run_ = nullptr;
};

// Makes the calling thread's cache; failure as below.
ProfileCache* newThreadCache();

// The calling thread's cache; null when there is no memory for the thread's data. std::bad_alloc may be thrown.
inline ProfileCache* threadCache() {
    const ThreadData* data = existingThreadData();
    return data != nullptr && data->profiles != nullptr ? data->profiles.get() : newThreadCache();
}

}  // namespace jx::ini
