// The loader's directories, cache and rules.
#include "odbcadmin/doctor/loader_places.h"

#include <dlfcn.h>
#include <sys/utsname.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "odbcadmin/doctor/directory.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kCacheMagic = "glibc-ld.so.cache1.1";
constexpr std::string_view kOldCacheMagic = "ld.so-1.7.0";
constexpr std::size_t kCacheHeader = 48;
constexpr std::size_t kCacheEntry = 24;
constexpr std::size_t kKeyAt = 4;
constexpr std::size_t kValueAt = 8;

std::uint32_t wordAt(std::string_view bytes, std::size_t offset) {
    std::uint32_t word = 0;
    if (offset + sizeof word <= bytes.size())
        std::memcpy(&word, bytes.data() + offset, sizeof word);
    return word;
}

std::string textAt(std::string_view bytes, std::size_t offset) {
    if (offset >= bytes.size())
        return {};
    const std::string_view rest = bytes.substr(offset);
    const std::size_t end = rest.find('\0');
    return end == std::string_view::npos ? std::string() : std::string(rest.substr(0, end));
}

std::vector<std::string> elements(std::string_view list, std::string_view separators) {
    std::vector<std::string> found;
    while (true) {
        const std::size_t end = list.find_first_of(separators);
        found.emplace_back(list.substr(0, end));
        if (end == std::string_view::npos)
            return found;
        list.remove_prefix(end + 1);
    }
}

// The tuple of the system's own directories: Debian's and its kin's. Where there is none, $LIB is "lib64" or "lib".
std::string multiarch() {
    utsname system{};
    ::uname(&system);
    const std::string tuple = std::string(system.machine) + "-linux-gnu";
    std::error_code ignored;
    return fs::is_directory("/usr/lib/" + tuple, ignored) ? tuple : std::string();
}

std::string libraryWord() {
    const std::string tuple = multiarch();
    if (!tuple.empty())
        return "lib/" + tuple;
    std::error_code ignored;
    return fs::is_directory("/usr/lib64", ignored) ? "lib64" : "lib";
}

void replaceAll(std::string& text, std::string_view word, const std::string& with) {
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + with.size()))
        text.replace(at, word.size(), with);
}

std::string expanded(std::string directory, const std::string& origin) {
    if (directory.find('$') == std::string::npos)
        return directory;
    utsname system{};
    ::uname(&system);
    const std::pair<const char*, std::string> words[] = {
        {"ORIGIN", origin}, {"LIB", libraryWord()}, {"PLATFORM", system.machine}};
    for (const auto& [name, value] : words) {
        replaceAll(directory, std::string("${") + name + "}", value);
        replaceAll(directory, std::string("$") + name, value);
    }
    return directory;
}

// One look-up in progress.
class Search {
public:
    Search(const std::string& name, LookUp& result) : name_(name), result_(result) {}

    bool inFile(const std::string& path) {
        result_.file = readLibraryFile(path);
        if (!result_.file.isThere())
            return false;
        if (!result_.file.isForOtherSystem())
            return true;
        result_.otherSystem.push_back(std::move(result_.file));
        result_.file = {};
        return false;
    }

    bool inDirectories(const std::vector<std::string>& directories, const std::string& origin) {
        return std::any_of(directories.begin(), directories.end(), [&](const std::string& each) {
            const std::string directory = each.empty() ? "." : expanded(each, origin);
            result_.directories.push_back(directory);
            return inFile(directory + "/" + name_) || inProcessorsOwn(directory);
        });
    }

    // Libraries built for newer processors lie below the directory; which of them this one has is the loader's to know.
    bool inProcessorsOwn(const std::string& directory) {
        const std::vector<fs::path> levels = entriesOf(directory + "/glibc-hwcaps");
        return std::any_of(levels.begin(), levels.end(),
                           [&](const fs::path& level) { return inFile((level / name_).string()); });
    }

    bool inPath(const std::string& path, const LibraryFile& owner) {
        return inDirectories(elements(path, ":"), owner.origin);
    }

    // Deliberate: a library with RUNPATH has no RPATH, and what it needs is not looked for in those of its requesters.
    bool inRpaths(const Requester* requester) {
        if (requester != nullptr && requester->file->runpath)
            return false;
        for (const Requester* each = requester; each != nullptr; each = each->askedBy) {
            if (each->file->rpath && !each->file->runpath && inPath(*each->file->rpath, *each->file))
                return true;
        }
        return false;
    }

    bool inCache(const LoaderCache& cache) {
        const auto found = cache.find(name_);
        return found != cache.end() && std::any_of(found->second.begin(), found->second.end(),
                                                   [&](const std::string& path) { return inFile(path); });
    }

private:
    const std::string& name_;
    LookUp& result_;
};

// "libodbc" of "libodbc.so.2.0" and "libfoo" of "libfoo-1.2.so": what names of one library have in common.
std::string stem(const std::string& name) {
    const std::string base = name.substr(0, name.find(".so"));
    const std::size_t end = base.find_last_not_of("0123456789.-_");
    return end == std::string::npos ? base : base.substr(0, end + 1);
}

bool isOtherVersion(const std::string& candidate, const std::string& name, const std::string& wanted) {
    return candidate != name && candidate.find(".so") != std::string::npos && stem(candidate) == wanted;
}

}  // namespace

LoaderCache parseLoaderCache(std::string_view bytes) {
    // Some systems put the table of today behind one of an older format.
    const bool isOld = bytes.substr(0, kOldCacheMagic.size()) == kOldCacheMagic;
    const std::size_t begin = isOld ? bytes.find(kCacheMagic) : 0;
    if (begin == std::string_view::npos || bytes.substr(begin, kCacheMagic.size()) != kCacheMagic)
        return {};
    bytes.remove_prefix(begin);
    const std::size_t room = bytes.size() < kCacheHeader ? 0 : (bytes.size() - kCacheHeader) / kCacheEntry;
    const std::size_t count = std::min<std::size_t>(wordAt(bytes, kCacheMagic.size()), room);
    LoaderCache cache;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = kCacheHeader + i * kCacheEntry;
        const std::string name = textAt(bytes, wordAt(bytes, entry + kKeyAt));
        const std::string path = textAt(bytes, wordAt(bytes, entry + kValueAt));
        if (!name.empty() && !path.empty())
            cache[name].push_back(path);
    }
    return cache;
}

LoaderPlaces loaderPlaces() {
    LoaderPlaces places;
    const char* variable = std::getenv("LD_LIBRARY_PATH");
    if (variable != nullptr && *variable != '\0')
        places.environment = elements(variable, ":;");
    std::ifstream file("/etc/ld.so.cache", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    places.cache = parseLoaderCache(bytes);
    const std::string library = libraryWord();
    places.defaults = {"/" + library, "/usr/" + library};
    if (library != "lib")
        places.defaults.insert(places.defaults.end(), {"/lib", "/usr/lib"});
    return places;
}

LoaderPlaces imagePlaces(const std::string& root) {
    LoaderPlaces places;
    places.root = root;
    const std::string library = libraryWord();
    // /lib may be a link to /usr/lib, and templates lie below /usr.
    for (const char* prefix : {"/usr/", "/"}) {
        places.defaults.push_back(prefix + library);
        if (library != "lib")
            places.defaults.push_back(std::string(prefix) + "lib");
    }
    return places;
}

LookUp lookUp(const std::string& name, const Requester* requester, const LoaderPlaces& places) {
    LookUp result;
    Search search(name, result);
    if (name.find('/') != std::string::npos) {
        const std::string path = expanded(name, requester != nullptr ? requester->file->origin : "");
        search.inFile(path);
        return result;
    }
    const LibraryFile* file = requester != nullptr ? requester->file : nullptr;
    const bool found = search.inRpaths(requester) || search.inDirectories(places.environment, "") ||
                       (file != nullptr && file->runpath && search.inPath(*file->runpath, *file));
    if (!found && (file == nullptr || !file->noDefaultDirectories) && !search.inCache(places.cache))
        search.inDirectories(places.defaults, "");
    return result;
}

std::vector<std::string> otherVersions(const std::string& name, const std::vector<std::string>& directories,
                                       const LoaderCache& cache) {
    const std::string wanted = stem(name.substr(name.rfind('/') + 1));
    const auto isOlder = [](const std::string& left, const std::string& right) {
        const int order = ::strverscmp(left.substr(left.rfind('/') + 1).c_str(), right.c_str() + right.rfind('/') + 1);
        return order != 0 ? order < 0 : left < right;
    };
    std::set<std::string, decltype(isOlder)> found(isOlder);
    for (const std::string& directory : directories)
        for (const fs::path& path : entriesOf(directory))
            if (isOtherVersion(path.filename().string(), name, wanted))
                found.insert(path.string());
    for (const auto& [other, paths] : cache) {
        if (isOtherVersion(other, name, wanted))
            found.insert(paths.begin(), paths.end());
    }
    return {found.begin(), found.end()};
}

}  // namespace jx::doctor
