// What is in a directory.
#pragma once

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace jx::doctor {

// Full paths, sorted; as many as can be read.
inline std::vector<std::filesystem::path> entriesOf(const std::filesystem::path& directory) {
    std::vector<std::filesystem::path> entries;
    std::error_code error;
    for (std::filesystem::directory_iterator each(directory, error), end; !error && each != end; each.increment(error))
        entries.push_back(each->path());
    std::sort(entries.begin(), entries.end());
    return entries;
}

}  // namespace jx::doctor
