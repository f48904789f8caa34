// Reads and writes file data sources.
#include "api3/file_data_source.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "api3/call.h"
#include "api3/file_change.h"
#include "api3/name_list.h"
#include "api3/profile_lookup.h"
#include "api3/quoted.h"
#include "rules/names.h"

namespace jx::api3 {

namespace {

constexpr std::string_view kSuffix = ".dsn";
constexpr std::string_view kDirectory = "/ODBCDataSources";
constexpr std::size_t kLongestValue = 32767;
constexpr mode_t kDirectoryMode = 0755;

bool endsInSuffix(std::string_view name) {
    return name.size() >= kSuffix.size() && rules::sameName(name.substr(name.size() - kSuffix.size()), kSuffix);
}

bool leadsOut(std::string_view name) {
    while (!name.empty()) {
        const std::size_t end = std::min(name.find('/'), name.size());
        if (name.substr(0, end) == "..")
            return true;
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return false;
}

std::string ownDirectory() {
    return std::string(systemDirectory(readEnvironment())).append(kDirectory);
}

std::optional<std::string> pathOr(const char* name) {
    std::optional<std::string> path = fileDataSourcePath(name);
    if (!path)
        refuse(ODBC_ERROR_INVALID_PATH,
               quoted(name == nullptr ? "" : name) + " is not the path of a file data source.");
    return path;
}

std::string nameOf(const FileDataSourceKey& key) {
    return key.section == nullptr ? "The list of sections" : keyOrSection(key.section, key.key);
}

bool give(const std::string& text, const TextOutput& output, WORD* length) {
    const Placed placed = output.place(text);
    if (length != nullptr)
        *length = static_cast<WORD>(std::min<std::size_t>(placed.length, UINT16_MAX));
    return !placed.isCut || refuse(ODBC_ERROR_OUTPUT_STRING_TRUNCATED,
                                   "The text has a length of " + std::to_string(placed.length) + " and was cut.");
}

bool hasSection(const FileDataSourceKey& key) {
    return key.section != nullptr || key.key == nullptr ||
           refuse(ODBC_ERROR_INVALID_REQUEST_TYPE, "The key " + quoted(key.key) + " is asked for without a section.");
}

// The directory of names without one; others stand where somebody has made a directory.
bool makeDirectory(const std::string& path) {
    const std::string directory = ownDirectory();
    if (!path.starts_with(directory + "/") || mkdir(directory.c_str(), kDirectoryMode) == 0 || errno == EEXIST)
        return true;
    const char* words = strerrordesc_np(errno);
    return refuse(ODBC_ERROR_REQUEST_FAILED, "The directory " + directory + " was not made: " +
                                                 (words != nullptr ? words : "the system refuses it") + ".");
}

bool canBeWritten(const FileDataSourceKey& key, const char* value) {
    if (key.section == nullptr)
        return refuse(ODBC_ERROR_INVALID_REQUEST_TYPE, "A file data source is written without a section.");
    return value == nullptr || std::strlen(value) <= kLongestValue ||
           refuse(ODBC_ERROR_INVALID_STR, nameOf(key) + " was not written: its value has more than 32767 bytes.");
}

}  // namespace

std::optional<std::string> fileDataSourcePath(const char* name) {
    if (name == nullptr || *name == '\0')
        return std::nullopt;
    std::string path = name;
    if (!path.starts_with('/')) {
        if (leadsOut(path))
            return std::nullopt;
        path.insert(0, ownDirectory() + "/");
    }
    if (!endsInSuffix(path))
        path += kSuffix;
    return path;
}

bool readFileDataSource(ThreadState& state, const FileDataSourceKey& key, const TextOutput& output, WORD* length) {
    if (!output.isThere())
        return refuse(ODBC_ERROR_INVALID_BUFF_LEN, "There is no buffer for the text.");
    const std::optional<std::string> path = hasSection(key) ? pathOr(key.file) : std::nullopt;
    if (!path)
        return false;
    const Answer answer = lookUpWritten(Sources(state, *path), {key.section, key.key});
    if (answer.outcome == Outcome::notRead)
        return false;
    if (!answer.isFound())
        return refuse(ODBC_ERROR_REQUEST_FAILED, nameOf(key) + " is not in " + *path + ".");
    const bool isList = key.section == nullptr || key.key == nullptr;
    return give(isList ? withSemicolons(answer.text()) : std::string(answer.text()), output, length);
}

bool writeFileDataSource(ThreadState& state, const FileDataSourceKey& key, const char* value) {
    const std::optional<std::string> path = canBeWritten(key, value) ? pathOr(key.file) : std::nullopt;
    if (!path || !makeDirectory(*path))
        return false;
    return changeFile(state.places.find(path->c_str()), {nameOf(key)},
                      [&](FileChange& change) { return change.set(key.section, key.key, value); });
}

}  // namespace jx::api3
