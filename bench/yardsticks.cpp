// The minimal ways to read a key, to search a changed file and to replace a file durably.
#include "yardsticks.h"

#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "api3/descriptor.h"

namespace jx::bench {

namespace {

using api3::Descriptor;

std::string_view trimmed(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool isSame(std::string_view one, std::string_view other) {
    return one.size() == other.size() && strncasecmp(one.data(), other.data(), one.size()) == 0;
}

bool isHeaderOf(std::string_view line, std::string_view section) {
    const std::size_t end = line.rfind(']');
    return end != std::string_view::npos && isSame(trimmed(line.substr(1, end - 1)), section);
}

bool takeValue(std::string_view line, std::string_view key, std::string& value) {
    const std::size_t equals = line.find('=');
    if (!isSame(trimmed(line.substr(0, equals)), key))
        return false;
    value = equals == std::string_view::npos ? std::string_view() : trimmed(line.substr(equals + 1));
    return true;
}

bool findInLines(std::string_view text, std::string_view section, std::string_view key, std::string& value) {
    bool inside = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty() || line.front() == '#' || line.front() == ';')
            continue;
        if (line.front() == '[')
            inside = isHeaderOf(line, section);
        else if (inside && takeValue(line, key, value))
            return true;
    }
    return false;
}

bool writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(fd, bytes.data(), bytes.size());
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

}  // namespace

HashIndex::HashIndex(std::string path, const IniFile& file) : path_(std::move(path)) {
    for (const IniEntry& entry : file.entries)
        values_.emplace(nameOf(entry), entry.value);
}

const std::string* HashIndex::find(const std::string& name) const {
    struct stat state;
    if (stat(path_.c_str(), &state) != 0)
        return nullptr;
    const auto found = values_.find(name);
    return found == values_.end() ? nullptr : &found->second;
}

bool passOverFile(const std::string& path, std::string_view section, std::string_view key, std::string& value) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat state;
    if (file.get() < 0 || fstat(file.get(), &state) != 0)
        return false;
    const auto size = static_cast<std::size_t>(state.st_size);
    const auto bytes = std::make_unique_for_overwrite<char[]>(size);
    std::size_t filled = 0;
    while (filled < size) {
        const ssize_t count = read(file.get(), bytes.get() + filled, size - filled);
        if (count <= 0)
            return false;
        filled += static_cast<std::size_t>(count);
    }
    return findInLines({bytes.get(), size}, section, key, value);
}

bool statAndCopy(const std::string& path, const std::string& bytes, char* target) {
    struct stat state;
    if (stat(path.c_str(), &state) != 0)
        return false;
    std::memcpy(target, bytes.data(), bytes.size());
    return true;
}

bool replaceDurably(const std::string& path, std::string_view bytes) {
    const std::string beside = path + ".new";
    {
        const Descriptor file(open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
        if (file.get() < 0 || !writeAll(file.get(), bytes) || fsync(file.get()) != 0)
            return false;
    }
    if (rename(beside.c_str(), path.c_str()) != 0)
        return false;
    const Descriptor directory(open(path.substr(0, path.rfind('/')).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return directory.get() >= 0 && fsync(directory.get()) == 0;
}

}  // namespace jx::bench
