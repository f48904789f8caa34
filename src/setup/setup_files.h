// The files that a setup routine works on, and what it must know of drivers and names.
//
//     const SetupFiles files = usersFiles();
//     if (addDataSource(files, "SQLite3", request)) ...
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "rules/storable.h"

namespace jx::setup {

enum class NewFile { forItsOwner, forEverybody };

// SetupFile: a file as jxini.h names it, and who may read it when it is made.
struct SetupFile {
    std::string name;
    NewFile whenNew = NewFile::forItsOwner;
};

struct SetupFiles {
    SetupFile dataSources;
    SetupFile drivers;  // whose section "Default" names the driver of the default data source

    // What "Driver" of a data source of that driver says; nothing when it is not installed.
    std::function<std::optional<std::string>(const char* driver)> libraryOf;

    // Why no new data source may be called so; null when it may.
    rules::Why (*whyNoNewName)(std::string_view name);
};

// Those of libodbcinst.so.1: the user's two files, and what the second says of drivers.
SetupFiles usersFiles();

}  // namespace jx::setup
