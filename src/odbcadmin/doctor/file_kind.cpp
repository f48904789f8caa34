// Telling files apart by how they begin.
#include "odbcadmin/doctor/file_kind.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "odbcadmin/doctor/owned_descriptor.h"

namespace jx::doctor {

namespace {

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

FileContent contentOf(std::string_view bytes) {
    if (bytes.empty())
        return {FileKind::empty, {}};
    if (bytes.substr(0, 4) == "\177ELF")
        return {FileKind::elf, {}};
    if (bytes.substr(0, 8) == "!<arch>\n" || bytes.substr(0, 8) == "!<thin>\n")
        return {FileKind::archive, {}};
    if (!isText(bytes))
        return {FileKind::other, {}};
    if (isLinkerScript(bytes))
        return {FileKind::linkerScript, firstSharedLibrary(bytes)};
    return {FileKind::text, {}};
}

}  // namespace

FileContent fileContent(const std::string& path) {
    const OwnedDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    std::string bytes(kLooksAt, '\0');
    const ssize_t length = ::pread(file.get(), bytes.data(), bytes.size(), 0);
    if (length < 0)
        return {};
    bytes.resize(static_cast<std::size_t>(length));
    return contentOf(bytes);
}

}  // namespace jx::doctor
