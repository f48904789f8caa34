// All bytes of a file.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <string>

namespace jx::ini {

// The store reads and writes files below this size.
inline constexpr std::size_t kTooManyBytes = std::size_t{1} << 30;

enum class Whole { read, absent, failed };

// Reads the regular file at path, which must not be a symbolic link, and its state. It never waits: a FIFO or device is
// refused before anything is read. failed is noted as the thread's failure; std::bad_alloc may be thrown.
Whole readWhole(const std::string& path, std::string& bytes, struct stat& state);

}  // namespace jx::ini
