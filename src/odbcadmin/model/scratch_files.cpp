// Copying the files, letting the library see the copies, comparing.
#include "odbcadmin/model/scratch_files.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "odbcadmin/model/config_places.h"

namespace jx::model {

ScratchFiles::ScratchFiles(const ChangeWay& way) : way_(way) {
    files_.push_back(readConfigFile(FileKind::drivers));
    files_.push_back(readConfigFile(FileKind::dataSources));
    if (way.writing == ChangeWay::Writing::never)
        copyAll();
}

void ScratchFiles::copyAll() {
    std::error_code error;
    std::string made = (std::filesystem::temp_directory_path(error) / "odbcadmin-XXXXXX").string();
    if (!error && mkdtemp(made.data()) == nullptr)
        error.assign(errno, std::generic_category());
    if (error) {
        trouble_ = {Reason::Kind::fileTrouble, "Cannot make a directory for temporary files: " + error.message(),
                    "Name a directory for them in TMPDIR."};
        return;
    }
    directory_ = made;
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
    std::ofstream out(path, std::ios::binary);
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
