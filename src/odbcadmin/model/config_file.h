// One configuration file as it was when it was read: where it is, whom it belongs to, whether it could be read.
#pragma once

#include <string>

#include "odbcadmin/model/ini_view.h"
#include "odbcadmin/model/reason.h"

namespace jx::model {

enum class FileKind {
    dataSources,  // .odbc.ini: data sources and settings
    drivers,      // .odbcinst.ini: drivers and translators
};

// Whose file it is.
enum class Scope { user };

struct ConfigFile {
    enum class State { absent, read, unreadable };

    FileKind kind = FileKind::dataSources;
    Scope scope = Scope::user;
    std::string name;  // what the store and FileChange call it
    std::string path;
    State state = State::absent;
    Reason trouble;  // unreadable: why
    IniView view;    // empty unless it was read
};

// Reads one of the user's two files.
ConfigFile readConfigFile(FileKind kind);

// The name by which the store knows the user's file of that kind.
const char* nameOf(FileKind kind);

// The path that a file name of jxini.h stands for at this moment; empty when there is none (no home directory).
std::string pathOf(const std::string& file);

}  // namespace jx::model
