// The first bytes of a library file, read without any library.
#pragma once

#include <string>

namespace jx::doctor {

// What an ELF header says of the system it is for. 0 means unknown.
struct ElfSystem {
    int elfClass = 0;   // 1: 32 bits, 2: 64 bits
    int byteOrder = 0;  // 1: little end first, 2: big
    int machine = 0;

    bool operator==(const ElfSystem&) const = default;
};

enum class HeaderState { absent, unreadable, notElf, cutShort, notShared, readable };

struct ElfHeader {
    HeaderState state = HeaderState::absent;
    int error = 0;  // errno of absent and unreadable
    ElfSystem system;
};

// Reads the header of a regular file. Other kinds of files are unreadable, with the errno that reading them would give;
// a FIFO is not waited for. notShared is an ELF file that is no shared object, such as an object file; cutShort one
// that ends before what its header announces.
ElfHeader readElfHeader(const std::string& path);

// The system this program runs as. Read once.
const ElfSystem& thisSystem();

// "64-bit x86-64", "32-bit i386", "64-bit machine 999".
std::string systemText(const ElfSystem& system);

}  // namespace jx::doctor
