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

// An unsigned number of size bytes at offset, in the file's byte order.
std::uint64_t numberAt(const Bytes& bytes, std::size_t offset, std::size_t size) {
    const bool bigFirst = bytes[EI_DATA] == ELFDATA2MSB;
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = (number << 8U) | bytes[offset + (bigFirst ? i : size - 1 - i)];
    return number;
}

// The end of the program headers, which the loader cannot do without. The multiplication cannot overflow: both factors
// have 16 bits.
std::uint64_t endOfProgramHeaders(const Bytes& bytes) {
    const bool is64 = bytes[EI_CLASS] == ELFCLASS64;
    const std::uint64_t offset =
        is64 ? numberAt(bytes, offsetof(Elf64_Ehdr, e_phoff), 8) : numberAt(bytes, offsetof(Elf32_Ehdr, e_phoff), 4);
    const std::size_t sizeAt = is64 ? offsetof(Elf64_Ehdr, e_phentsize) : offsetof(Elf32_Ehdr, e_phentsize);
    const std::uint64_t end = offset + numberAt(bytes, sizeAt, 2) * numberAt(bytes, sizeAt + 2, 2);
    return end < offset ? UINT64_MAX : end;
}

HeaderState stateOf(const Bytes& bytes, std::size_t length, std::uint64_t fileSize) {
    if (length < SELFMAG || std::memcmp(bytes.data(), ELFMAG, SELFMAG) != 0)
        return HeaderState::notElf;
    const std::size_t headerSize = bytes[EI_CLASS] == ELFCLASS64 ? sizeof(Elf64_Ehdr) : sizeof(Elf32_Ehdr);
    if (length < headerSize || endOfProgramHeaders(bytes) > fileSize)
        return HeaderState::cutShort;
    return numberAt(bytes, EI_NIDENT, 2) == ET_DYN ? HeaderState::readable : HeaderState::notShared;
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

ElfHeader parse(const Bytes& bytes, std::size_t length, std::uint64_t fileSize) {
    ElfHeader header;
    header.state = stateOf(bytes, length, fileSize);
    if (header.state != HeaderState::notElf && length >= EI_NIDENT + 4)
        header.system = {bytes[EI_CLASS], bytes[EI_DATA], static_cast<int>(numberAt(bytes, EI_NIDENT + 2, 2))};
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
    Bytes bytes{};
    const ssize_t length = ::pread(file.get(), bytes.data(), bytes.size(), 0);
    if (length < 0)
        return failed(HeaderState::unreadable, errno);
    return parse(bytes, static_cast<std::size_t>(length), static_cast<std::uint64_t>(status.st_size));
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
