// Copying the files, letting the library see the copies, comparing.
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

void keepForHandler(const std::string& directory, const std::vector<ConfigFile>& files) {
    std::vector<std::string> paths{directory};
    for (const ConfigFile& file : files)
        for (const char* suffix : {"", ".lock"})
            paths.push_back(directory + "/" + file.name + suffix);
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

ScratchFiles::ScratchFiles(const ChangeWay& way) : way_(way) {
    files_.push_back(readConfigFile(FileKind::drivers));
    files_.push_back(readConfigFile(FileKind::dataSources));
    if (way.writing == ChangeWay::Writing::never)
        copyAll();
}

void ScratchFiles::copyAll() {
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
    keepForHandler(directory_, files_);
    for (const ConfigFile& file : files_) {
        const std::string copyPath = directory_ + "/" + file.name;
        if (!copy(file, copyPath)) {
            trouble_ = {Reason::Kind::fileTrouble, "Cannot write " + copyPath, "Make room for temporary files."};
            return;
        }
        const char* variable = variableOf(file.kind);
        if (const char* old = std::getenv(variable))
            oldVariables_.emplace_back(variable, old);
        setenv(variable, copyPath.c_str(), 1);
    }
}

bool ScratchFiles::copy(const ConfigFile& file, const std::string& path) {
    if (file.state == ConfigFile::State::absent)
        return true;
    // They may hold passwords.
    const mode_t before = ::umask(S_IRWXG | S_IRWXO);
    std::ofstream out(path, std::ios::binary);
    ::umask(before);
    out << file.view.bytes() << std::flush;
    return out.good();
}

ScratchFiles::~ScratchFiles() {
    if (directory_.empty())
        return;
    for (const ConfigFile& file : files_)
        unsetenv(variableOf(file.kind));
    for (const auto& [name, value] : oldVariables_)
        setenv(name.c_str(), value.c_str(), 1);
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
    forgetHandler();
}

ChangeResult ScratchFiles::changes() const {
    ChangeResult result;
    for (const ConfigFile& file : files_) {
        const ConfigFile now = readConfigFile(file.kind);
        if (now.view.bytes() == file.view.bytes())
            continue;
        result.files.push_back({file.path, {}});
        if (way_.writing == ChangeWay::Writing::never)
            result.files.back().difference = differenceOf(file.path, file.view.bytes(), now.view.bytes(), way_.secrets);
    }
    return result;
}

}  // namespace jx::model
