// A disk that fails.
#pragma once

#include <algorithm>

#include "watched_files.h"

namespace jx::ini::test {

enum class Fail { once, fromThenOn };

// FaultyFiles: the nth call that touches the disk (from 1) fails with an errno, once or from then on.
class FaultyFiles : public WatchedFiles {
public:
    FaultyFiles(int n, Fail style, int error) : n_(n), style_(style), error_(error) {}

    bool fired() const { return fired_; }
    Call failedCall() const { return failed_; }  // the first one
    int faults() const { return faults_; }

protected:
    int before(Call call, std::string_view) override {
        ++calls_;
        if (calls_ < n_ || (calls_ > n_ && style_ == Fail::once))
            return 0;
        ++faults_;
        if (!fired_)
            failed_ = call;
        fired_ = true;
        return error_;
    }

private:
    const int n_;
    const Fail style_;
    const int error_;
    int calls_ = 0;
    int faults_ = 0;
    bool fired_ = false;
    Call failed_ = Call::open;
};

// ShortFiles: every read and write transfers at most so many bytes, and every call but close, which must
// not be made twice, is interrupted so many times before it succeeds.
class ShortFiles : public WatchedFiles {
public:
    ShortFiles(std::size_t mostBytes, int interruptions) : mostBytes_(mostBytes), interruptions_(interruptions) {}

    ssize_t readSome(int fd, std::span<char> bytes) override {
        return WatchedFiles::readSome(fd, bytes.first(std::min(bytes.size(), mostBytes_)));
    }
    ssize_t writeSome(int fd, std::span<const char> bytes) override {
        return WatchedFiles::writeSome(fd, bytes.first(std::min(bytes.size(), mostBytes_)));
    }

protected:
    int before(Call call, std::string_view) override {
        if (call == Call::close || ++calls_ % (interruptions_ + 1) == 0)
            return 0;
        return EINTR;
    }

private:
    const std::size_t mostBytes_;
    const int interruptions_;
    int calls_ = 0;
};

// FullFiles: a disk with room for so many more bytes; a write that does not fit writes what fits, the next one fails.
class FullFiles : public WatchedFiles {
public:
    explicit FullFiles(std::size_t room) : room_(room) {}

    ssize_t writeSome(int fd, std::span<const char> bytes) override {
        if (room_ == 0) {
            errno = ENOSPC;
            return -1;
        }
        const ssize_t count = WatchedFiles::writeSome(fd, bytes.first(std::min(bytes.size(), room_)));
        room_ -= count > 0 ? static_cast<std::size_t>(count) : 0;
        return count;
    }

private:
    std::size_t room_;
};

}  // namespace jx::ini::test
