// The file that a change replaces: the one that symbolic links lead to.
#pragma once

#include <string>

namespace jx::ini {

// Follows the symbolic links at the end of path: target becomes the path of a regular file, or of a file that does not
// exist yet (a dangling link's too). False, noted as the thread's failure, for a directory, FIFO or device, none of
// which is opened, and for a chain of more than 40 links.
bool findTarget(const std::string& path, std::string& target);

// The directory that holds path, "." for a bare name.
std::string directoryOf(const std::string& path);

}  // namespace jx::ini
