// Reading the files.
#include "odbcadmin/model/config_file.h"

#include <jxini.h>

#include <utility>

#include "rules/sections.h"

namespace jx::model {

ConfigFile readConfigFile(FileKind kind) {
    ConfigFile file;
    file.kind = kind;
    file.name = nameOf(kind);
    file.path = pathOf(file.name);
    std::optional<IniView> view = IniView::read(file.name);
    if (!view) {
        file.state = ConfigFile::State::unreadable;
        file.trouble = lastFailure();
        return file;
    }
    file.state = view->isAbsent() ? ConfigFile::State::absent : ConfigFile::State::read;
    file.view = std::move(*view);
    return file;
}

const char* nameOf(FileKind kind) {
    return kind == FileKind::dataSources ? rules::kDataSourceFile : rules::kDriverFile;
}

std::string pathOf(const std::string& file) {
    std::string path(jxIniPath(file.c_str(), nullptr, 0), '\0');
    if (!path.empty())
        jxIniPath(file.c_str(), path.data(), path.size() + 1);
    return path;
}

}  // namespace jx::model
