// The paths a batch installation works with.
#include "install/installation_paths.h"

#include <unistd.h>

#include <array>

#include "config/text_bytes.h"
#include "install/owned_text.h"

namespace jx::install {

namespace {

constexpr std::size_t kLongestPath = 1024;

// The directory of path without its trailing slash: "/" for a file in the root, empty for a bare file name.
std::string_view directoryOf(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return {};
    return path.substr(0, slash == 0 ? 1 : slash);
}

// Registered paths must work from any directory, so a relative one is made absolute. Null when memory is short, or when
// the current directory cannot be found out or is too long for a registered path.
OwnedText fullPath(std::string_view directory) {
    if (directory.starts_with('/'))
        return copyOf(directory);
    std::array<char, kLongestPath> current{};
    if (getcwd(current.data(), current.size()) == nullptr)
        return nullptr;
    const std::string_view start(current.data());
    if (directory.empty())
        return copyOf(start);
    const OwnedText withSlash = joined(start, start == "/" ? "" : "/");
    return withSlash == nullptr ? nullptr : joined(viewOf(withSlash.get()), directory);
}

std::string_view withoutTrailingSlashes(std::string_view directory) {
    return directory.substr(0, directory.find_last_not_of('/') + 1);
}

}  // namespace

bool takePaths(_Install& install, const unsigned char* infFile, const unsigned char* sourcePath) {
    const std::string_view given = viewOf(sourcePath);
    OwnedText source = fullPath(given.empty() ? directoryOf(viewOf(infFile)) : given);
    if (source == nullptr)
        return false;
    install.infFile = copyOf(viewOf(infFile)).release();
    install.targetDir = joined(withoutTrailingSlashes(viewOf(source.get())), "/").release();
    install.sourceDir = source.release();
    return install.infFile != nullptr && install.targetDir != nullptr;
}

}  // namespace jx::install
