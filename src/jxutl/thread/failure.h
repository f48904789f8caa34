// What failed last in the store, kept per thread.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>

#include <jxini.h>

namespace jx::ini {

// Failure: step, file and errno of a failed call. afterRename: the new text was already in place.
struct Failure {
    JxIniStep step = JxIniStepNone;
    std::string path;
    int error = 0;
    bool afterRename = false;
};

// Keep a failure for the calling thread, or note success. Noting never throws: when memory is short the path is empty.
void noteFailure(JxIniStep step, std::string_view path, int error, bool afterRename = false) noexcept;
void noteFailure(const Failure& failure) noexcept;
void noteSuccess() noexcept;
const Failure& lastFailure() noexcept;

// One English sentence; empty for no failure.
std::string describe(const Failure& failure);

}  // namespace jx::ini
