// Compares a library's segments with its size.
#include "api3/library_file.h"

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <vector>

#include "api3/descriptor.h"

namespace jx::api3 {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

constexpr std::size_t kMostSegments = 4096;
constexpr int kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;

template <class Record>
bool readRecords(int fd, std::uint64_t offset, Record* records, std::size_t count) {
    const std::size_t size = count * sizeof *records;
    return pread(fd, records, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
}

bool isOwnElf(const Header& header) {
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_ident[EI_CLASS] == kOwnClass &&
           header.e_phentsize == sizeof(Segment);
}

bool endsBeforeASegment(int fd, const Header& header, std::uint64_t size) {
    if (header.e_phnum > kMostSegments)
        return true;
    std::vector<Segment> segments(header.e_phnum);
    if (!readRecords(fd, header.e_phoff, segments.data(), segments.size()))
        return true;
    for (const Segment& segment : segments)
        if (segment.p_type == PT_LOAD && (segment.p_offset > size || segment.p_filesz > size - segment.p_offset))
            return true;
    return false;
}

}  // namespace

bool isDamagedLibrary(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat state {};
    if (file.get() < 0 || fstat(file.get(), &state) != 0 || !S_ISREG(state.st_mode))
        return false;
    Header header{};
    if (!readRecords(file.get(), 0, &header, 1) || !isOwnElf(header))
        return false;
    return endsBeforeASegment(file.get(), header, static_cast<std::uint64_t>(state.st_size));
}

}  // namespace jx::api3
