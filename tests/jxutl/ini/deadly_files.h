// The disk of a writer that is killed.
#pragma once

#include <unistd.h>

#include <csignal>
#include <string_view>

#include "watched_files.h"

namespace jx::ini::test {

// DeadlyFiles: kills the process before its nth call.
class DeadlyFiles : public WatchedFiles {
public:
    explicit DeadlyFiles(int n) : n_(n) {}

protected:
    int before(Call, std::string_view) override {
        if (++calls_ == n_)
            ::kill(::getpid(), SIGKILL);
        return 0;
    }

private:
    const int n_;
    int calls_ = 0;
};

}  // namespace jx::ini::test
