// A disk that counts its calls, and whose clock and file times a test sets.
#pragma once

#include <fcntl.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>

#include "watched_files.h"

namespace jx::ini::test {

// StampedFiles: makes every call. Results of stat() and fstat() go through adjust first, so that each part of a file's
// state can change alone. Unless a test sets it, all files were last changed an hour ago.
class StampedFiles : public WatchedFiles {
public:
    std::function<void(struct stat&)> adjust;
    std::function<void()> beforeReading;  // called before each read
    std::function<void()> beforeOpening;
    std::size_t mostBytes = 0;  // of one read; 0 for as many as it asks for
    int openError = 0;          // of every open with O_NOATIME

    timespec clock{1'000'003'600, 500'000'000};
    timespec written{1'000'000'000, 123'456'789};
    timespec changed{1'000'000'000, 123'456'789};

    int count(Call call) const {
        const auto found = counts_.find(call);
        return found == counts_.end() ? 0 : found->second;
    }
    int lastFlags() const { return flags_; }
    void forget() { counts_.clear(); }

    // One line: the calls since the last forget, in the order of their names.
    std::string calls() const {
        std::string text;
        for (const auto& [call, count] : counts_)
            text += (text.empty() ? "" : ", ") + std::string(nameOf(call)) + " " + std::to_string(count);
        return text;
    }

    int openFile(int directory, const char* path, int flags, mode_t mode) override {
        return opening(path, flags) ? -1 : WatchedFiles::openFile(directory, path, flags, mode);
    }
    int openWithoutLinks(const char* path, int flags) override {
        return opening(path, flags) ? -1 : WatchedFiles::openWithoutLinks(path, flags);
    }
    ssize_t readSome(int fd, std::span<char> bytes) override {
        if (beforeReading)
            beforeReading();
        return WatchedFiles::readSome(fd, mostBytes == 0 ? bytes : bytes.first(std::min(bytes.size(), mostBytes)));
    }
    int lookAt(const char* path, struct stat* state) override {
        return adjusted(WatchedFiles::lookAt(path, state), *state);
    }
    int lookAtOpen(int fd, struct stat* state) override {
        return adjusted(WatchedFiles::lookAtOpen(fd, state), *state);
    }
    timespec fileClock() override { return clock; }

protected:
    int before(Call call, std::string_view) override {
        ++counts_[call];
        return 0;
    }

private:
    bool opening(const char* path, int flags) {
        flags_ = flags;
        if (beforeOpening)
            beforeOpening();
        if (openError == 0 || (flags & O_NOATIME) == 0)
            return false;
        before(Call::open, path);
        errno = openError;
        return true;
    }

    int adjusted(int result, struct stat& state) {
        if (result != 0)
            return result;
        state.st_mtim = written;
        state.st_ctim = changed;
        if (adjust)
            adjust(state);
        return result;
    }

    std::map<Call, int> counts_;
    int flags_ = 0;
};

}  // namespace jx::ini::test
