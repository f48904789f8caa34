// What kind of file stands where a library should be.
#pragma once

#include <string>

namespace jx::doctor {

enum class FileKind { empty, elf, archive, linkerScript, text, other };

struct FileContent {
    FileKind kind = FileKind::other;
    std::string pointsTo;  // linkerScript: the first shared library that it names; else empty
};

// Looks at the first 4 KiB of a regular file that can be read; everything else is "other".
FileContent fileContent(const std::string& path);

}  // namespace jx::doctor
