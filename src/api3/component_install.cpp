// Enters drivers and translators.
#include "api3/component_install.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "api3/call.h"
#include "api3/directories.h"
#include "api3/keyword_list.h"
#include "api3/quoted.h"
#include "api3/thread_state.h"
#include "rules/storable.h"

namespace jx::api3 {

namespace {

// Without slashes at its end; the root keeps its own.
std::string withoutSlashes(std::string_view directory) {
    while (directory.size() > 1 && directory.ends_with('/'))
        directory.remove_suffix(1);
    return std::string(directory);
}

std::string directoryOf(std::string_view path) {
    return withoutSlashes(path.substr(0, path.rfind('/') + 1));
}

bool isAbsolute(std::string_view path) {
    return path.starts_with('/');
}

std::string inDirectory(const std::string& directory, const std::string& file) {
    if (file.empty() || isAbsolute(file))
        return file;
    return directory + (directory.ends_with('/') ? "" : "/") + file;
}

// A file's name without a directory, or an absolute path: anything else would depend on where it is read.
bool isFileName(const std::string& file) {
    return isAbsolute(file) || file.find('/') == std::string::npos;
}

bool isTakenList(const ComponentKind& kind, const KeywordList& list) {
    if (!list.fault.empty())
        return refuse(list.code, std::string(kind.noun) + " was not installed: " + list.fault + ".");
    if (isFileName(list.library) && isFileName(list.setup.value_or("")))
        return true;
    return refuse(ODBC_ERROR_INVALID_KEYWORD_VALUE,
                  subjectOf(kind, list.name) +
                      " was not installed: a library is neither a file's name nor an absolute "
                      "path.");
}

// The directory that a file's name stands for; nothing, with a record, when it is none.
std::optional<std::string> chosenDirectory(const char* pathIn) {
    if (pathIn == nullptr || *pathIn == '\0')
        return driverDirectory();
    if (isAbsolute(pathIn) && !rules::holdsLineBreak(pathIn))
        return withoutSlashes(pathIn);
    refuse(ODBC_ERROR_INVALID_PATH, quoted(pathIn) + " is not an absolute path.");
    return std::nullopt;
}

// Where the component is, or will be, by what the system's file says of it.
std::string directoryFor(const ComponentKind& kind, const KeywordList& list, const FileText& text,
                         const std::string& chosen) {
    if (isAbsolute(list.library))
        return directoryOf(list.library);
    const std::optional<std::string> earlier = text.value(list.name, kind.libraryKey);
    return earlier && isAbsolute(*earlier) ? directoryOf(*earlier) : chosen;
}

bool write(FileChange& change, const ComponentKind& kind, const KeywordList& list, const std::string& directory,
           std::uint32_t count) {
    const char* name = list.name.c_str();
    if (!change.set(kind.list, name, rules::kInstalled) ||
        !change.set(list.name, kind.libraryKey, inDirectory(directory, list.library).c_str()))
        return false;
    if (list.setup && !change.set(list.name, rules::kSetup, inDirectory(directory, *list.setup).c_str()))
        return false;
    return std::all_of(list.others.begin(), list.others.end(),
                       [&](const KeywordValue& pair) {
                           return change.set(list.name, pair.keyword.c_str(), pair.value.c_str());
                       }) &&
           setCount(change, list.name, count);
}

// What the call tells.
struct Told {
    std::string directory;
    std::uint32_t count = 0;
};

// An inquiry without a buffer asks how large it must be.
bool fits(const InstallRequest& request, const std::string& directory) {
    if (request.request == ODBC_INSTALL_INQUIRY && !request.output.isThere())
        return true;
    return request.output.lengthOf(directory) < request.output.size() ||
           refuse(ODBC_ERROR_INVALID_BUFF_LEN, "The path " + directory + " does not fit the buffer.");
}

// Every check comes before the first edit, and that of the path is one.
bool edit(FileChange& change, const ComponentKind& kind, const KeywordList& list, const std::string& chosen,
          const InstallRequest& request, Told& told) {
    const FileText text = change.before();
    const bool wasInstalled = isInstalled(kind, text, list.name);
    const std::optional<std::uint32_t> count = wasInstalled ? countOf(text, list.name) : std::nullopt;
    told.directory = directoryFor(kind, list, text, chosen);
    if (!fits(request, told.directory))
        return false;
    if (request.request == ODBC_INSTALL_INQUIRY) {
        told.count = count.value_or(wasInstalled ? 1 : 0);
        return true;
    }
    told.count = countOneMore(count, wasInstalled);
    return write(change, kind, list, told.directory, told.count);
}

void tellPath(const InstallRequest& request, const std::string& directory) {
    const Placed placed = request.output.place(directory);
    if (request.pathLength != nullptr)
        *request.pathLength = static_cast<WORD>(std::min<std::size_t>(placed.length, UINT16_MAX));
}

bool isKnownRequest(WORD request) {
    return request == ODBC_INSTALL_INQUIRY || request == ODBC_INSTALL_COMPLETE ||
           refuse(ODBC_ERROR_INVALID_REQUEST_TYPE, "There is no installation request " + std::to_string(request) + ".");
}

}  // namespace

bool installComponent(ThreadState& state, const ComponentKind& kind, const InstallRequest& request) {
    if (!isKnownRequest(request.request))
        return false;
    const KeywordList list = parseKeywordList(request.list, kind.libraryKey);
    const std::optional<std::string> chosen = isTakenList(kind, list) ? chosenDirectory(request.pathIn) : std::nullopt;
    if (!chosen)
        return false;
    const Place& file = state.places.find(Scope::system, FileKind::drivers, readEnvironment());
    Told told;
    const bool done = changeFile(file, {subjectOf(kind, list.name), ODBC_ERROR_USAGE_UPDATE_FAILED},
                                 [&](FileChange& change) { return edit(change, kind, list, *chosen, request, told); });
    if (!told.directory.empty())
        tellPath(request, told.directory);
    if (done && request.count != nullptr)
        *request.count = told.count;
    return done;
}

}  // namespace jx::api3
