// Copying the files, letting the library see the copies, writing what became of them.
#include "odbcadmin/model/scratch_files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "odbcadmin/model/config_places.h"

namespace jx::model {

namespace {

// A process that is ended meanwhile takes the copies along, which may hold passwords. What the handler needs stands in
// arrays, since it may run at any moment.
constexpr int kEnds[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};
constexpr std::size_t kMostPaths = 5;
char leftPaths[kMostPaths][PATH_MAX];

void removeAndEnd(int number) {
    for (const char* path : leftPaths)
        ::unlink(path);
    ::rmdir(leftPaths[0]);
    ::signal(number, SIG_DFL);
    ::raise(number);
}

void keepForHandler(const std::string& directory) {
    std::vector<std::string> paths{directory};
    for (const FileKind kind : {FileKind::drivers, FileKind::dataSources})
        for (const char* suffix : {"", ".jxlock"})
            paths.push_back(directory + "/" + nameOf(kind) + suffix);
    for (std::size_t i = 0; i < paths.size() && i < kMostPaths; ++i)
        std::snprintf(leftPaths[i], PATH_MAX, "%s", paths[i].c_str());
    for (const int number : kEnds)
        ::signal(number, removeAndEnd);
}

void forgetHandler() {
    for (const int number : kEnds)
        ::signal(number, SIG_DFL);
}

// Memory where there is such a place: nothing of the copies has to outlast a power failure.
std::filesystem::path placeForCopies(std::error_code& error) {
    constexpr const char* kMemory = "/dev/shm";
    if (std::getenv("TMPDIR") == nullptr && ::access(kMemory, W_OK | X_OK) == 0)
        return kMemory;
    return std::filesystem::temp_directory_path(error);
}

}  // namespace

ScratchFiles::ScratchFiles(std::vector<Original> originals) : originals_(std::move(originals)) {
    std::error_code error;
    std::string made = (placeForCopies(error) / "odbcadmin-XXXXXX").string();
    if (!error && mkdtemp(made.data()) == nullptr)
        error.assign(errno, std::generic_category());
    if (error) {
        trouble_ = {Reason::Kind::fileTrouble, "Cannot make a directory for temporary files: " + error.message(),
                    "Name a directory for them in TMPDIR."};
        return;
    }
    directory_ = made;
    keepForHandler(directory_);
    for (const Original& original : originals_) {
        if (!copy(original)) {
            trouble_ = {Reason::Kind::fileTrouble, "Cannot write " + pathOf(original.kind),
                        "Make room for temporary files."};
            return;
        }
        const char* variable = variableOf(original.kind);
        if (const char* old = std::getenv(variable))
            oldVariables_.emplace_back(variable, old);
        setenv(variable, pathOf(original.kind).c_str(), 1);
    }
}

std::string ScratchFiles::pathOf(FileKind kind) const {
    return directory_ + "/" + nameOf(kind);
}

bool ScratchFiles::copy(const Original& original) const {
    if (original.text.empty())
        return true;
    // They may hold passwords.
    const mode_t before = ::umask(S_IRWXG | S_IRWXO);
    std::ofstream out(pathOf(original.kind), std::ios::binary);
    ::umask(before);
    out << original.text << std::flush;
    return out.good();
}

ScratchFiles::~ScratchFiles() {
    if (directory_.empty())
        return;
    for (const Original& original : originals_)
        unsetenv(variableOf(original.kind));
    for (const auto& [name, value] : oldVariables_)
        setenv(name.c_str(), value.c_str(), 1);
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
    forgetHandler();
}

void ScratchFiles::takeInto(FileChange& change, FileKind kind) const {
    if (const std::optional<IniView> copy = IniView::read(pathOf(kind)))
        change.replace(copy->bytes());
    else
        change.fail(lastFailure());
}

std::string ScratchFiles::inWordsOfOriginals(std::string sentence) const {
    for (const Original& original : originals_) {
        const std::string copy = pathOf(original.kind);
        for (std::size_t at = sentence.find(copy); at != std::string::npos;
             at = sentence.find(copy, at + original.path.size()))
            sentence.replace(at, copy.size(), original.path);
    }
    return sentence;
}

// Not as one change: that would keep back the writes of the libraries, too.
ChangeResult changeByCopies(const ChangeWay& way, const std::function<void(const ScratchFiles& copies)>& work) {
    const std::string driversPath = pathOf(nameOf(FileKind::drivers), way.scope);
    const std::string sourcesPath = pathOf(nameOf(FileKind::dataSources), way.scope);
    std::error_code ignored;
    if (driversPath == sourcesPath || std::filesystem::equivalent(driversPath, sourcesPath, ignored))
        return {{Reason::Kind::refused, "Drivers and data sources have the same file here: " + driversPath,
                 "odbcadmin paths shows which variable makes it so."}};
    FileChange drivers(nameOf(FileKind::drivers), way);
    FileChange sources(nameOf(FileKind::dataSources), way);
    for (const FileChange* change : {&drivers, &sources})
        if (change->reason())
            return {change->reason()};
    {
        const ScratchFiles copies({{FileKind::drivers, driversPath, std::string(drivers.before().bytes())},
                                   {FileKind::dataSources, sourcesPath, std::string(sources.before().bytes())}});
        if (copies.trouble())
            return {copies.trouble()};
        work(copies);
        copies.takeInto(drivers, FileKind::drivers);
        copies.takeInto(sources, FileKind::dataSources);
    }
    if (sources.reason())
        return {sources.reason()};
    ChangeResult result = drivers.finish();
    return result.isDone() ? result.add(sources.finish()) : result;
}

}  // namespace jx::model
