// Reading dynamic sections through libelf.
#include "odbcadmin/doctor/elf_file.h"

#include <fcntl.h>
#include <gelf.h>

#include <filesystem>
#include <memory>

#include "odbcadmin/doctor/owned_descriptor.h"

namespace jx::doctor {

namespace {

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

    int entries() const {
        return header.sh_entsize == 0 || data == nullptr ? 0 : static_cast<int>(data->d_size / header.sh_entsize);
    }
};

void takeDynamic(const Section& section, ElfFile& file) {
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
                break;
            default:
                break;
        }
    }
}

// The tables of versions are chains of offsets; a damaged one may go in circles, so each walk is bounded by the number
// of entries that the section can hold.
void takeVersionsNeeded(const Section& section, ElfFile& file) {
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

void takeVersionsOffered(const Section& section, ElfFile& file) {
    GElf_Verdef definition;
    int offset = 0;
    std::size_t left = section.data->d_size / sizeof(Elf64_Verdef);
    while (left-- > 0 && gelf_getverdef(section.data, offset, &definition) != nullptr) {
        GElf_Verdaux name;
        const int at = offset + static_cast<int>(definition.vd_aux);
        const bool isFileItself = (definition.vd_flags & VER_FLG_BASE) != 0;
        if (!isFileItself && gelf_getverdaux(section.data, at, &name) != nullptr)
            file.versionsOffered.insert(section.text(name.vda_name));
        if (definition.vd_next == 0)
            return;
        offset += static_cast<int>(definition.vd_next);
    }
}

void takeSymbols(const Section& section, ElfFile& file) {
    GElf_Sym symbol;
    for (int i = 1; i < section.entries() && gelf_getsym(section.data, i, &symbol) != nullptr; ++i) {
        const unsigned visibility = GELF_ST_VISIBILITY(symbol.st_other);
        const bool visible = visibility == STV_DEFAULT || visibility == STV_PROTECTED;
        if (symbol.st_shndx != SHN_UNDEF && visible && GELF_ST_BIND(symbol.st_info) != STB_LOCAL)
            file.defined.insert(section.text(symbol.st_name));
    }
}

void take(const Section& section, ElfFile& file) {
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
            return takeSymbols(section, file);
        default:
            return;
    }
}

std::string originOf(const std::string& path) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(path, error);
    return error ? std::filesystem::path(path).parent_path().string() : real.parent_path().string();
}

}  // namespace

std::optional<ElfFile> readElfFile(const std::string& path) {
    const OwnedDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!descriptor.isOpen() || elf_version(EV_CURRENT) == EV_NONE)
        return std::nullopt;
    const std::unique_ptr<Elf, EndElf> elf(elf_begin(descriptor.get(), ELF_C_READ, nullptr));
    if (elf == nullptr || elf_kind(elf.get()) != ELF_K_ELF)
        return std::nullopt;
    ElfFile file;
    file.path = path;
    file.origin = originOf(path);
    for (Elf_Scn* each = elf_nextscn(elf.get(), nullptr); each != nullptr; each = elf_nextscn(elf.get(), each)) {
        Section section{elf.get(), {}, nullptr};
        if (gelf_getshdr(each, &section.header) == nullptr)
            continue;
        section.data = elf_getdata(each, nullptr);
        take(section, file);
    }
    return file;
}

}  // namespace jx::doctor
