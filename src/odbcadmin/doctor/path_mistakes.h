// The commonest mistakes in a value that names a library, and the library that a value means.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/loader_places.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// What stands around a value or behind it and is part of it here.
struct Wrapping {
    const Check* check;
    std::string fact;   // what it is, as the end of a sentence that begins with the value's key
    std::string inner;  // the value without it
};

// Quotes, the braces of connection strings, a comment behind the value.
std::optional<Wrapping> wrappingOf(std::string_view value);

struct PathMistake {
    const Check* check;
    std::string fact;   // what is wrong, as the end of a sentence that begins with the value's key
    std::string meant;  // the value as it should be; empty when that cannot be known

    // What to do where key has the value.
    std::string advice(const std::string& key) const;
};

// Quotes or braces around the value, a directory that only shells fill in, a comment behind it, a path of another kind
// of system.
std::optional<PathMistake> mistakeIn(const std::string& value);

// The library that a value of Driver or Setup means: a value with a slash is a path; else the library of the driver
// that is registered under this name, in any case; else a file of that name in the directories where drivers are
// installed; else the value itself, which the loader looks for.
std::string meantLibrary(const std::string& value, const model::Configuration& configuration,
                         const LoaderPlaces& places);

// The library of a data source: what its section means, or else its driver's. Empty when there is none.
std::string meantLibrary(const model::DataSource& source, const model::Configuration& configuration,
                         const LoaderPlaces& places);

// The file of that name where drivers are installed: directories called odbc beside the loader's own ones, and those
// themselves. Empty when there is none.
std::string inDriverDirectories(const std::string& name, const LoaderPlaces& places);

}  // namespace jx::doctor
