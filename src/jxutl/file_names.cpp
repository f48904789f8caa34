// File names: splitting one into its parts, and finding the files that match a pattern.
#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <jxfiles.h>
#include "jxutl/ini/file_ops.h"
#include "jxutl/thread/no_cancellation.h"

namespace {

std::string_view view(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

void put(unsigned char* target, std::string_view text) {
    target[text.copy(reinterpret_cast<char*>(target), text.size())] = 0;
}

// The directory part of a path whose last slash is at slash: without trailing slashes, but "/" stays.
std::size_t directoryLength(std::string_view path, std::size_t slash) {
    while (slash > 0 && path[slash - 1] == '/')
        --slash;
    return slash > 0 ? slash : 1;
}

// Each star takes as few bytes as it can and is widened only when the rest does not match.
bool matches(std::string_view name, std::string_view pattern) {
    std::size_t at = 0;
    std::size_t wanted = 0;
    std::size_t star = std::string_view::npos;
    std::size_t starEnd = 0;
    while (at < name.size()) {
        if (wanted < pattern.size() && pattern[wanted] == '*') {
            star = wanted++;
            starEnd = at;
        } else if (wanted < pattern.size() && (pattern[wanted] == '?' || pattern[wanted] == name[at])) {
            ++wanted;
            ++at;
        } else if (star != std::string_view::npos) {
            wanted = star + 1;
            at = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', wanted) == std::string_view::npos;
}

bool offered(std::string_view name, std::string_view pattern) {
    const bool hidden = !name.empty() && name.front() == '.';
    return (!hidden || pattern.front() == '.') && matches(name, pattern);
}

bool isRegularFile(const std::string& path) {
    struct stat state {};
    return jx::ini::files().lookAt(path.c_str(), &state) == 0 && S_ISREG(state.st_mode);
}

// The names in a directory that pattern matches; none when the directory cannot be read to its end.
std::vector<std::string> matchingNames(const char* directory, std::string_view pattern) {
    const std::unique_ptr<DIR, int (*)(DIR*)> open(opendir(directory), closedir);
    std::vector<std::string> names;
    if (open == nullptr)
        return names;
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(open.get());
        if (entry == nullptr)
            return errno == 0 ? names : std::vector<std::string>();
        if (offered(entry->d_name, pattern))
            names.emplace_back(entry->d_name);
    }
}

std::vector<std::string> matchingFiles(std::string_view pattern) {
    const std::size_t slash = pattern.rfind('/');
    const std::size_t nameAt = slash == std::string_view::npos ? 0 : slash + 1;
    const std::string directory(pattern.substr(0, nameAt));
    const std::string_view name = pattern.substr(nameAt);
    std::vector<std::string> names;
    // A plain name is found without reading the directory, which may be unreadable.
    if (name.find_first_of("*?") == std::string_view::npos)
        names.emplace_back(name);
    else
        names = matchingNames(directory.empty() ? "." : directory.c_str(), name);
    std::sort(names.begin(), names.end());
    for (std::string& found : names)
        found.insert(0, directory);
    std::erase_if(names, [](const std::string& path) { return !isRegularFile(path); });
    return names;
}

// What a walk's cursor points to.
struct Walk {
    std::vector<std::string> paths;
    std::size_t next = 0;
};

Walk* begin(const unsigned char* pattern) {
    if (pattern == nullptr)
        return nullptr;
    try {
        return new Walk{matchingFiles(view(pattern))};
    } catch (const std::bad_alloc&) {
        errno = ENOMEM;
        return nullptr;
    }
}

}  // namespace

int bosParseName(unsigned char* path, unsigned char* baseName, unsigned char* extension, unsigned int /*flag*/) {
    if (path == nullptr || baseName == nullptr || extension == nullptr)
        return 0;
    const std::string_view whole = view(path);
    const std::size_t slash = whole.rfind('/');
    const std::string_view name = slash == std::string_view::npos ? whole : whole.substr(slash + 1);
    const std::size_t dot = name.rfind('.');
    const std::string_view before = name.substr(0, dot);
    const std::string_view after = dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
    if (before.size() >= kBosBaseNameSize || after.size() >= kBosExtensionSize)
        return 0;
    put(baseName, before);
    put(extension, after);
    path[slash == std::string_view::npos ? 0 : directoryLength(whole, slash)] = 0;
    return 1;
}

const unsigned char* bosFindFiles(void** cursor, const unsigned char* pattern) {
    if (cursor == nullptr)
        return nullptr;
    if (*cursor == nullptr) {
        const jx::NoCancellation reading;
        *cursor = begin(pattern);
    }
    auto* walk = static_cast<Walk*>(*cursor);
    if (walk == nullptr)
        return nullptr;
    if (walk->next == walk->paths.size()) {
        bosEndFind(cursor);
        return nullptr;
    }
    return reinterpret_cast<const unsigned char*>(walk->paths[walk->next++].c_str());
}

void bosEndFind(void** cursor) {
    if (cursor == nullptr)
        return;
    delete static_cast<Walk*>(*cursor);
    *cursor = nullptr;
}
