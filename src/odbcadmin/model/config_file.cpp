// Reading the files.
#include "odbcadmin/model/config_file.h"

#include <jxini.h>

#include <utility>

#include "odbcadmin/model/system_files.h"
#include "rules/sections.h"

namespace jx::model {

const char* scopeWord(Scope scope) {
    return scope == Scope::user ? "user" : "system";
}

ConfigFile readConfigFile(FileKind kind, Scope scope) {
    ConfigFile file;
    file.kind = kind;
    file.scope = scope;
    file.name = storeName(nameOf(kind), scope);
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

std::string commandOn(const ConfigFile& file) {
    return file.scope == Scope::system ? "odbcadmin --system" : "odbcadmin";
}

const char* nameOf(FileKind kind) {
    return kind == FileKind::dataSources ? rules::kDataSourceFile : rules::kDriverFile;
}

std::string storeName(const std::string& file, Scope scope) {
    if (scope == Scope::system)
        for (const FileKind kind : {FileKind::dataSources, FileKind::drivers})
            if (file == nameOf(kind))
                return systemPath(kind);
    return file;
}

std::string pathOf(const std::string& file, Scope scope) {
    const std::string name = storeName(file, scope);
    std::string path(jxIniPath(name.c_str(), nullptr, 0), '\0');
    if (!path.empty())
        jxIniPath(name.c_str(), path.data(), path.size() + 1);
    return path;
}

}  // namespace jx::model
