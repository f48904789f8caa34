// The file that a change of an INI file really replaces.
#pragma once

#include <string>

namespace jx::ini {

// Follows the symbolic links that path ends in, so that each of them stays a link: target becomes the path of a regular
// file or of no file at all (also where a dangling link points). Every other thing is refused without being opened: a
// directory, a FIFO, a device, more than 40 links one after another. False then, noted as the thread's failure.
bool findTarget(const std::string& path, std::string& target);

// The directory that holds path, "." for a bare name.
std::string directoryOf(const std::string& path);

}  // namespace jx::ini
