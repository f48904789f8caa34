// All bytes of a file: reading and writing them.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <span>
#include <string>

#include "jxutl/ini/ini_place.h"

namespace jx::ini {

// The store reads and writes files below this size.
inline constexpr std::size_t kTooManyBytes = std::size_t{1} << 30;

enum class Whole { read, absent, failed };

// Reads the regular file of a place, and its state. It never waits: a FIFO or device is refused before anything is
// read. failed is noted as the thread's failure; std::bad_alloc may be thrown.
Whole readWhole(const IniPlace& place, std::string& bytes, struct stat& state);

// Writes all bytes; false with errno set. SIGXFSZ is held off: a limit of the file size is a failure like others.
bool writeAll(int fd, std::span<const char> bytes);

}  // namespace jx::ini
