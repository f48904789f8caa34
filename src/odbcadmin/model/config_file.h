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

// Whose file it is: this user's own, or the one that all users share.
enum class Scope { user, system };

// "user", "system"
const char* scopeWord(Scope scope);

struct ConfigFile {
    enum class State { absent, read, unreadable };

    FileKind kind = FileKind::dataSources;
    Scope scope = Scope::user;
    std::string name;  // what the store calls it
    std::string path;
    State state = State::absent;
    Reason trouble;  // unreadable: why
    IniView view;    // empty unless it was read
};

// Reads one of the four files.
ConfigFile readConfigFile(FileKind kind, Scope scope = Scope::user);

// How a command begins that changes this file: "odbcadmin", for the system's "odbcadmin --system".
std::string commandOn(const ConfigFile& file);

// ".odbc.ini" or ".odbcinst.ini", by which the store knows the user's file of that kind and FileChange that of any
// scope.
const char* nameOf(FileKind kind);

// What the store calls the file of that scope: the user's two go by their names, the system's by their paths. Any other
// file stays what it is.
std::string storeName(const std::string& file, Scope scope);

// The path that a file name of jxini.h stands for at this moment; empty when there is none (no home directory). Of
// ".odbc.ini" and ".odbcinst.ini" that of the scope's file.
std::string pathOf(const std::string& file, Scope scope = Scope::user);

}  // namespace jx::model
