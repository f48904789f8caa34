// The file that stands where a library should be: what it is, which system it is for, what it needs and offers.
//
//     const LibraryFile file = readLibraryFile("/usr/lib/odbc/libsqlite3odbc.so");
//     if (file.state == LibraryFile::State::library && file.system == thisSystem())
//         ... file.needed, file.functions ...
//
// It is read once, with libelf; nothing of it is run. Any thread.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace jx::doctor {

// The system that an ELF file is for. 0 means unknown.
struct ElfSystem {
    int elfClass = 0;   // 1: 32 bits, 2: 64 bits
    int byteOrder = 0;  // 1: little end first, 2: big
    int machine = 0;

    bool operator==(const ElfSystem&) const = default;
};

// A symbol version that a library wants from another.
struct VersionNeed {
    std::string file;     // "libc.so.6", as in the list of needed libraries
    std::string version;  // "GLIBC_2.34"
    bool weak = false;    // the loader does not insist
};

struct LibraryFile {
    enum class State {
        absent,
        unreadable,  // also what is not a regular file, with the errno that reading it would give
        empty,
        archive,
        linkerScript,
        text,
        other,      // of no kind known here
        cutShort,   // an ELF file that ends before what its header announces
        notShared,  // an ELF file that is not a shared object: a program, an object file
        library,
    };
    State state = State::absent;
    int error = 0;         // errno of absent and unreadable
    std::string pointsTo;  // of a linker script: the first shared library that it names

    std::string path;    // as given
    std::string origin;  // its directory with symbolic links resolved: what $ORIGIN means in it
    ElfSystem system;    // of ELF files

    // What its sections say; of a file whose section headers are gone nothing.
    std::string soname;
    std::optional<std::string> rpath, runpath;
    bool noDefaultDirectories = false;  // linked with -z nodefaultlib
    std::vector<std::string> needed;
    std::vector<VersionNeed> versionsNeeded;
    std::set<std::string> versionsOffered;
    std::set<std::string> functions;  // those that others can call whose names begin with SQL or Config, in any case

    bool isProgram = false;  // also one that can be loaded anywhere, and so has the type of a library

    bool isThere() const { return state != State::absent && state != State::unreadable; }
    bool isForOtherSystem() const;
};

// A FIFO is not waited for. Damaged tables are read as far as they go.
LibraryFile readLibraryFile(const std::string& path);

// The system this program runs as. Read once.
const ElfSystem& thisSystem();

// "64-bit x86-64", "32-bit i386", "64-bit machine 999".
std::string systemText(const ElfSystem& system);

}  // namespace jx::doctor
