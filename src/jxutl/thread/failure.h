// What failed last in the store, kept per thread.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>

#include <jxini.h>

namespace jx::ini {

// Failure: step, file and errno of a failed call. afterRename: the new text was already in place. refused: which text
// could not be stored and why, as the end of a sentence.
struct Failure {
    JxIniStep step = JxIniStepNone;
    std::string path;
    int error = 0;
    bool afterRename = false;
    std::string refused{};
};

// Set the calling thread's failure, or success. When memory is short the path is empty.
void noteFailure(JxIniStep step, std::string_view path, int error, bool afterRename = false) noexcept;
void noteFailure(const Failure& failure) noexcept;

// Sets that a write of these arguments to the file at path was refused.
void noteRefusal(std::string_view path, const char* section, const char* key, const char* value) noexcept;

void noteSuccess() noexcept;
const Failure& lastFailure() noexcept;

// One English sentence; empty for no failure.
std::string describe(const Failure& failure);

}  // namespace jx::ini
