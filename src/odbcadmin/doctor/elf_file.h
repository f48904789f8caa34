// What a shared library needs and offers, as its dynamic sections tell.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace jx::doctor {

// A symbol version that a library wants from another.
struct VersionNeed {
    std::string file;     // "libc.so.6", as in the list of needed libraries
    std::string version;  // "GLIBC_2.34"
    bool weak = false;    // the loader does not insist

    bool operator==(const VersionNeed&) const = default;
};

struct ElfFile {
    std::string path;    // as given
    std::string origin;  // its directory with symbolic links resolved: what $ORIGIN means in it
    std::string soname;
    std::optional<std::string> rpath, runpath;
    bool noDefaultDirectories = false;  // linked with -z nodefaultlib
    std::vector<std::string> needed;
    std::vector<VersionNeed> versionsNeeded;
    std::set<std::string> versionsOffered;
    std::set<std::string> defined;  // functions and data that others can call
};

// Reads a library with libelf; nothing of it is run. Nothing when it cannot be opened or is no ELF file. A file whose
// section headers were cut off gives an ElfFile without content. Damaged tables are read as far as they go. Any thread.
std::optional<ElfFile> readElfFile(const std::string& path);

}  // namespace jx::doctor
