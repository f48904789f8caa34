// Mending a file's text where there is only one way to do it.
//
//     const MovedLibraries libraries(configuration, loaderPlaces());
//     const Mending mending = mend(text, Holds::dataSources, libraries);
//     ... mending.text instead of text; mending.fixes says what is another in it ...
//
// Mended are: a byte order mark, carriage returns at line ends, quotes around the path of a library, and the path of a
// library that lies elsewhere now. Every other byte stays.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/doctor/loader_places.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// MovedLibraries: where a library may lie that is not at its place any more: where drivers usually lie, and beside the
// libraries of registered drivers.
class MovedLibraries {
public:
    MovedLibraries(const model::Configuration& configuration, const LoaderPlaces& places);

    // For a full path that leads to nothing: the file of the same name, if there is exactly one, by whatever number of
    // paths. Empty otherwise, and for a path that leads somewhere or cannot be looked at.
    std::string placeOf(const std::string& path) const;

    // The same for the path in the section of a data source: first the library of its registered driver, if it is
    // there.
    std::string placeOf(const std::string& path, const std::string& dataSource) const;

private:
    std::string root_;  // of an image, or none; the directories lie below it
    std::vector<std::string> directories_;
    std::map<std::string, std::string> ofDataSources_;  // by folded name: the library of its driver
};

struct Fix {
    std::size_t line;  // 0: of the whole file
    std::string what;  // "the quotes around the value of Driver"
};

struct Mending {
    std::string text;
    std::vector<Fix> fixes;
};

// What a file holds: whether its sections are data sources.
enum class Holds { dataSources, other };

// Any text. Without fixes the text is the one that was given.
Mending mend(std::string_view text, Holds holds, const MovedLibraries& libraries);

}  // namespace jx::doctor
