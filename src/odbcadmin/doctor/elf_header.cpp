// Reading ELF headers, of either word size and byte order.
#include "odbcadmin/doctor/elf_header.h"

#include <elf.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "odbcadmin/doctor/owned_descriptor.h"

namespace jx::doctor {

namespace {

using Bytes = std::array<unsigned char, sizeof(Elf64_Ehdr)>;

// A structure of a file: its first bytes, and the word size and byte order that the header tells.
struct Reading {
    Bytes bytes{};
    std::size_t length = 0;
    bool is64 = false;
    bool bigFirst = false;

    // An unsigned number of size bytes.
    std::uint64_t number(std::size_t offset, std::size_t size) const {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < size; ++i)
            number = (number << 8U) | bytes[offset + (bigFirst ? i : size - 1 - i)];
        return number;
    }

    // One whose place and width depend on the word size.
    std::uint64_t word(std::size_t offset32, std::size_t offset64) const {
        return is64 ? number(offset64, 8) : number(offset32, 4);
    }
    unsigned half(std::size_t offset32, std::size_t offset64) const {
        return static_cast<unsigned>(number(is64 ? offset64 : offset32, 2));
    }
};

bool readAt(int file, std::uint64_t offset, Reading& reading) {
    reading.bytes.fill(0);
    const ssize_t length = ::pread(file, reading.bytes.data(), reading.bytes.size(), static_cast<off_t>(offset));
    reading.length = length > 0 ? static_cast<std::size_t>(length) : 0;
    return length >= 0;
}

bool fits(std::uint64_t offset, std::uint64_t size, std::uint64_t fileSize) {
    return offset <= fileSize && size <= fileSize - offset;
}

// Whether every part that the loader maps is there; where one is not, the first touch of it ends the program.
bool hasItsSegments(int file, const Reading& header, std::uint64_t fileSize) {
    const std::uint64_t first = header.word(offsetof(Elf32_Ehdr, e_phoff), offsetof(Elf64_Ehdr, e_phoff));
    const unsigned size = header.half(offsetof(Elf32_Ehdr, e_phentsize), offsetof(Elf64_Ehdr, e_phentsize));
    const unsigned count = header.half(offsetof(Elf32_Ehdr, e_phnum), offsetof(Elf64_Ehdr, e_phnum));
    if (!fits(first, std::uint64_t{size} * count, fileSize))
        return false;
    Reading segment = header;
    for (unsigned i = 0; i < count; ++i) {
        if (!readAt(file, first + std::uint64_t{size} * i, segment))
            return false;
        const std::uint64_t begin = segment.word(offsetof(Elf32_Phdr, p_offset), offsetof(Elf64_Phdr, p_offset));
        const std::uint64_t bytes = segment.word(offsetof(Elf32_Phdr, p_filesz), offsetof(Elf64_Phdr, p_filesz));
        if (segment.number(offsetof(Elf64_Phdr, p_type), 4) == PT_LOAD && !fits(begin, bytes, fileSize))
            return false;
    }
    return true;
}

HeaderState stateOf(int file, const Reading& header, std::uint64_t fileSize) {
    if (header.length < SELFMAG || std::memcmp(header.bytes.data(), ELFMAG, SELFMAG) != 0)
        return HeaderState::notElf;
    if (header.length < (header.is64 ? sizeof(Elf64_Ehdr) : sizeof(Elf32_Ehdr)) ||
        !hasItsSegments(file, header, fileSize))
        return HeaderState::cutShort;
    return header.number(EI_NIDENT, 2) == ET_DYN ? HeaderState::readable : HeaderState::notShared;
}

ElfHeader failed(HeaderState state, int error) {
    ElfHeader header;
    header.state = state;
    header.error = error;
    return header;
}

bool isAbsence(int error) {
    return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG;
}

ElfHeader parse(int file, Reading& reading, std::uint64_t fileSize) {
    reading.is64 = reading.bytes[EI_CLASS] == ELFCLASS64;
    reading.bigFirst = reading.bytes[EI_DATA] == ELFDATA2MSB;
    ElfHeader header;
    header.state = stateOf(file, reading, fileSize);
    if (header.state != HeaderState::notElf && reading.length >= EI_NIDENT + 4)
        header.system = {reading.bytes[EI_CLASS], reading.bytes[EI_DATA],
                         static_cast<int>(reading.number(EI_NIDENT + 2, 2))};
    return header;
}

}  // namespace

ElfHeader readElfHeader(const std::string& path) {
    const OwnedDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen())
        return failed(isAbsence(errno) ? HeaderState::absent : HeaderState::unreadable, errno);
    struct stat status {};
    if (::fstat(file.get(), &status) != 0)
        return failed(HeaderState::unreadable, errno);
    if (!S_ISREG(status.st_mode))
        return failed(HeaderState::unreadable, S_ISDIR(status.st_mode) ? EISDIR : EINVAL);
    Reading reading;
    if (!readAt(file.get(), 0, reading))
        return failed(HeaderState::unreadable, errno);
    return parse(file.get(), reading, static_cast<std::uint64_t>(status.st_size));
}

const ElfSystem& thisSystem() {
    static const ElfSystem system = [] {
        const ElfHeader own = readElfHeader("/proc/self/exe");
        if (own.system.machine != 0)
            return own.system;
        return ElfSystem{sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32, ELFDATA2LSB, 0};
    }();
    return system;
}

std::string systemText(const ElfSystem& system) {
    struct Name {
        int machine;
        const char* text;
    };
    static constexpr Name kNames[] = {{EM_386, "i386"},         {EM_X86_64, "x86-64"},   {EM_ARM, "ARM"},
                                      {EM_AARCH64, "AArch64"},  {EM_PPC, "PowerPC"},     {EM_PPC64, "PowerPC64"},
                                      {EM_S390, "s390"},        {EM_RISCV, "RISC-V"},    {EM_MIPS, "MIPS"},
                                      {EM_SPARC, "SPARC"},      {EM_SPARCV9, "SPARC64"}, {EM_IA_64, "Itanium"},
                                      {EM_PARISC, "HP PA-RISC"}};
    const std::string bits = system.elfClass == ELFCLASS64 ? "64-bit " : "32-bit ";
    for (const Name& name : kNames) {
        if (name.machine == system.machine)
            return bits + name.text;
    }
    return bits + "machine " + std::to_string(system.machine);
}

}  // namespace jx::doctor
