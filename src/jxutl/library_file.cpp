// Comparing a library's segments with its size.
#include "jxutl/library_file.h"

#include <elf.h>
#include <fcntl.h>
#include <link.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "jxutl/ini/descriptor.h"

namespace jx {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

constexpr int kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

// Linkers put the list of segments right behind the header.
using Beginning = std::array<char, 4096>;

std::size_t readBeginning(int fd, Beginning& bytes) {
    std::size_t length = 0;
    while (length < bytes.size()) {
        const std::span<char> rest(bytes.data() + length, bytes.size() - length);
        const auto count = ini::uninterrupted([&] { return ini::files().readSome(fd, rest); });
        if (count <= 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    return length;
}

bool isCut(const Beginning& bytes, std::size_t length, std::uint64_t size) {
    Header header{};
    if (length < sizeof header)
        return false;
    std::memcpy(&header, bytes.data(), sizeof header);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != kOwnClass ||
        header.e_phentsize != sizeof(Segment) || header.e_phoff > length)
        return false;
    const std::size_t listed = (length - static_cast<std::size_t>(header.e_phoff)) / sizeof(Segment);
    for (std::size_t i = 0; i < header.e_phnum && i < listed; ++i) {
        Segment segment{};
        std::memcpy(&segment, bytes.data() + header.e_phoff + i * sizeof segment, sizeof segment);
        if (segment.p_type == PT_LOAD && (segment.p_offset > size || segment.p_filesz > size - segment.p_offset))
            return true;
    }
    return false;
}

}  // namespace

bool endsBeforeItsSegments(const char* path) {
    ini::FileOps& files = ini::files();
    const ini::Descriptor file(ini::uninterrupted(
        [&] { return files.openFile(AT_FDCWD, path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0); }));
    struct stat state {};
    if (!file || files.lookAtOpen(file.get(), &state) != 0 || !S_ISREG(state.st_mode))
        return false;
    Beginning bytes;
    const std::size_t length = readBeginning(file.get(), bytes);
    return isCut(bytes, length, static_cast<std::uint64_t>(state.st_size));
}

}  // namespace jx
