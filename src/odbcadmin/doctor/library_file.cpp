// Telling files apart by how they begin, and reading ELF files through libelf.
#include "odbcadmin/doctor/library_file.h"

#include <fcntl.h>
#include <gelf.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string_view>

#include "odbcadmin/trial/owned_descriptor.h"
#include "rules/names.h"

namespace jx::doctor {

namespace {

using State = LibraryFile::State;

constexpr std::size_t kLooksAt = 4096;

bool isText(std::string_view bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return code >= ' ' || (code >= '\t' && code <= '\r') || byte == '\x1b';
    });
}

// The commands of the linker that stand in the files with which development packages replace libraries.
bool isLinkerScript(std::string_view text) {
    constexpr std::string_view kMarks[] = {"GNU ld script", "OUTPUT_FORMAT", "GROUP (", "GROUP(", "INPUT (", "INPUT("};
    return std::any_of(std::begin(kMarks), std::end(kMarks),
                       [text](std::string_view mark) { return text.find(mark) != std::string_view::npos; });
}

std::string firstSharedLibrary(std::string_view script) {
    constexpr std::string_view kBetween = " \t\r\n(),";
    while (!script.empty()) {
        const std::size_t end = script.find_first_of(kBetween);
        const std::string_view word = script.substr(0, end);
        if (word.find(".so") != std::string_view::npos)
            return std::string(word);
        script.remove_prefix(end == std::string_view::npos ? script.size() : end + 1);
    }
    return {};
}

// Of a file that is not an ELF file.
State kindOf(std::string_view bytes) {
    if (bytes.empty())
        return State::empty;
    if (bytes.substr(0, 8) == "!<arch>\n" || bytes.substr(0, 8) == "!<thin>\n")
        return State::archive;
    if (!isText(bytes))
        return State::other;
    return isLinkerScript(bytes) ? State::linkerScript : State::text;
}

struct EndElf {
    void operator()(Elf* elf) const { elf_end(elf); }
};

// One section of a file that is being read, with the string table that it names.
struct Section {
    Elf* elf = nullptr;
    GElf_Shdr header{};
    Elf_Data* data = nullptr;

    std::string text(std::size_t offset) const {
        const char* found = elf_strptr(elf, header.sh_link, offset);
        return found != nullptr ? found : "";
    }

    int entries() const { return header.sh_entsize == 0 ? 0 : static_cast<int>(data->d_size / header.sh_entsize); }
};

void takeDynamic(const Section& section, LibraryFile& file) {
    GElf_Dyn entry;
    for (int i = 0; i < section.entries() && gelf_getdyn(section.data, i, &entry) != nullptr; ++i) {
        const std::size_t value = entry.d_un.d_val;
        switch (entry.d_tag) {
            case DT_NEEDED:
                file.needed.push_back(section.text(value));
                break;
            case DT_SONAME:
                file.soname = section.text(value);
                break;
            case DT_RPATH:
                file.rpath = section.text(value);
                break;
            case DT_RUNPATH:
                file.runpath = section.text(value);
                break;
            case DT_FLAGS_1:
                file.noDefaultDirectories = (value & DF_1_NODEFLIB) != 0;
                file.isProgram = (value & DF_1_PIE) != 0;
                break;
            default:
                break;
        }
    }
}

// The tables of versions are chains of offsets; a damaged one may go in circles, so each walk is bounded by the number
// of entries that the section can hold.
void takeVersionsNeeded(const Section& section, LibraryFile& file) {
    GElf_Verneed need;
    int offset = 0;
    std::size_t left = section.data->d_size / sizeof(Elf64_Verneed);
    while (left-- > 0 && gelf_getverneed(section.data, offset, &need) != nullptr) {
        GElf_Vernaux version;
        int at = offset + static_cast<int>(need.vn_aux);
        for (int i = 0; i < need.vn_cnt && gelf_getvernaux(section.data, at, &version) != nullptr; ++i) {
            const bool weak = (version.vna_flags & VER_FLG_WEAK) != 0;
            file.versionsNeeded.push_back({section.text(need.vn_file), section.text(version.vna_name), weak});
            at += static_cast<int>(version.vna_next);
        }
        if (need.vn_next == 0)
            return;
        offset += static_cast<int>(need.vn_next);
    }
}

void takeVersionsOffered(const Section& section, LibraryFile& file) {
    GElf_Verdef definition;
    int offset = 0;
    for (std::size_t left = section.data->d_size / sizeof(Elf64_Verdef); left > 0; --left) {
        GElf_Verdaux name;
        if (gelf_getverdef(section.data, offset, &definition) == nullptr)
            return;
        const bool isFileItself = (definition.vd_flags & VER_FLG_BASE) != 0;
        const int at = offset + static_cast<int>(definition.vd_aux);
        if (!isFileItself && gelf_getverdaux(section.data, at, &name) != nullptr)
            file.versionsOffered.insert(section.text(name.vda_name));
        if (definition.vd_next == 0)
            return;
        offset += static_cast<int>(definition.vd_next);
    }
}

void takeFunctions(const Section& section, LibraryFile& file) {
    GElf_Sym symbol;
    for (int i = 1; i < section.entries() && gelf_getsym(section.data, i, &symbol) != nullptr; ++i) {
        const unsigned visibility = GELF_ST_VISIBILITY(symbol.st_other);
        const bool visible = visibility == STV_DEFAULT || visibility == STV_PROTECTED;
        if (symbol.st_shndx == SHN_UNDEF || !visible || GELF_ST_BIND(symbol.st_info) == STB_LOCAL)
            continue;
        const std::string name = section.text(symbol.st_name);
        if (rules::beginsWithName(name, "SQL") || rules::beginsWithName(name, "Config"))
            file.functions.insert(name);
    }
}

void take(const Section& section, LibraryFile& file) {
    if (section.data == nullptr || section.data->d_buf == nullptr)
        return;
    switch (section.header.sh_type) {
        case SHT_DYNAMIC:
            return takeDynamic(section, file);
        case SHT_GNU_verneed:
            return takeVersionsNeeded(section, file);
        case SHT_GNU_verdef:
            return takeVersionsOffered(section, file);
        case SHT_DYNSYM:
            return takeFunctions(section, file);
        default:
            return;
    }
}

void takeSections(Elf* elf, LibraryFile& file) {
    for (Elf_Scn* each = elf_nextscn(elf, nullptr); each != nullptr; each = elf_nextscn(elf, each)) {
        Section section{elf, {}, nullptr};
        if (gelf_getshdr(each, &section.header) == nullptr)
            continue;
        section.data = elf_getdata(each, nullptr);
        take(section, file);
    }
}

bool fits(std::uint64_t offset, std::uint64_t size, std::uint64_t fileSize) {
    return offset <= fileSize && size <= fileSize - offset;
}

// Whether every part that the loader maps is there; where one is not, the first touch of it ends the program.
bool hasItsSegments(Elf* elf, const GElf_Ehdr& header, std::uint64_t fileSize) {
    if (!fits(header.e_phoff, std::uint64_t{header.e_phentsize} * header.e_phnum, fileSize))
        return false;
    GElf_Phdr segment;
    for (int i = 0; i < header.e_phnum; ++i)
        if (gelf_getphdr(elf, i, &segment) == nullptr ||
            (segment.p_type == PT_LOAD && !fits(segment.p_offset, segment.p_filesz, fileSize)))
            return false;
    return true;
}

// A file that is too short for its own header is one that libelf does not take either.
void readElf(int descriptor, std::uint64_t fileSize, LibraryFile& file) {
    elf_version(EV_CURRENT);
    const std::unique_ptr<Elf, EndElf> elf(elf_begin(descriptor, ELF_C_READ, nullptr));
    GElf_Ehdr header;
    if (elf == nullptr || gelf_getehdr(elf.get(), &header) == nullptr) {
        file.state = fileSize < sizeof(Elf64_Ehdr) ? State::cutShort : State::other;
        return;
    }
    file.system = {header.e_ident[EI_CLASS], header.e_ident[EI_DATA], header.e_machine};
    file.state = !hasItsSegments(elf.get(), header, fileSize) ? State::cutShort
                 : header.e_type == ET_DYN                    ? State::library
                                                              : State::notShared;
    takeSections(elf.get(), file);
    file.isProgram = file.isProgram || header.e_type == ET_EXEC;
    if (file.state == State::library && file.isProgram)
        file.state = State::notShared;
}

std::string originOf(const std::string& path) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? std::filesystem::path(path).parent_path().string() : real.parent_path().string();
}

State stateOf(int error) {
    return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG ? State::absent
                                                                                          : State::unreadable;
}

}  // namespace

bool LibraryFile::isForOtherSystem() const {
    return system.machine != 0 && !(system == thisSystem());
}

LibraryFile readLibraryFile(const std::string& path) {
    LibraryFile file;
    file.path = path;
    const trial::OwnedDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    std::string bytes(kLooksAt, '\0');
    if (!descriptor.isOpen() || ::fstat(descriptor.get(), &status) != 0)
        file.error = errno;
    else if (!S_ISREG(status.st_mode))
        file.error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    const ssize_t length = file.error == 0 ? ::pread(descriptor.get(), bytes.data(), bytes.size(), 0) : 0;
    if (length < 0)
        file.error = errno;
    if (file.error != 0) {
        file.state = stateOf(file.error);
        return file;
    }
    file.origin = originOf(path);
    bytes.resize(static_cast<std::size_t>(length));
    if (bytes.starts_with(ELFMAG)) {
        readElf(descriptor.get(), static_cast<std::uint64_t>(status.st_size), file);
        return file;
    }
    file.state = kindOf(bytes);
    if (file.state == State::linkerScript)
        file.pointsTo = firstSharedLibrary(bytes);
    return file;
}

const ElfSystem& thisSystem() {
    static const ElfSystem system = [] {
        const LibraryFile own = readLibraryFile("/proc/self/exe");
        return own.system.machine != 0 ? own.system
                                       : ElfSystem{sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32, ELFDATA2LSB, 0};
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
