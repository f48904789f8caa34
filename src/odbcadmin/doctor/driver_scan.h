// Finding ODBC drivers on the disk.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/doctor/loader_places.h"
#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/driver_template.h"

namespace jx::doctor {

struct FoundDriver {
    std::string name;  // that its template or what is known of it gives it; else made of the file's name
    std::string path;
    std::string setup;       // its own path, or a setup library that its template names or that lies beside it, or none
    model::Pairs keys = {};  // that its template has besides
};

// What these functions find for the places of an image are paths as the image has them.

// The library that a value of a template means: a path stays, a file name is looked for where the prefix of the
// template has libraries, then where drivers are installed. Empty when there is none.
std::string libraryOfTemplate(const std::string& templatePath, const std::string& value, const LoaderPlaces& places);

// The drivers of a template with the paths of their libraries; a setup library that is nowhere is left out, and so are
// drivers whose library is nowhere, whose names go into missing.
std::vector<model::Registration> placedDrivers(const model::DriverTemplate& file, const LoaderPlaces& places,
                                               std::vector<std::string>& missing);

// The registered driver with that library; nothing when none has it. root: of the image in which both lie.
std::optional<model::Registered> registeredWith(const model::Configuration& configuration, const std::string& library,
                                                const std::string& root = {});

// Where drivers usually lie: the loader's directories, those called "odbc" in them, local ones and those of products
// below /opt. Only directories that are there; those of an image as this system has them, since they are read.
std::vector<std::string> usualDriverDirectories(const LoaderPlaces& places);

// Which libraries are looked into. A directory of the loader holds a thousand and more: those whose name says that they
// could be a driver take a tenth of the time.
enum class Candidates { all, likely };

// The drivers among the shared libraries of the directories, not of those below them, for this system; sorted by path.
// A library with several names is found once. Their templates are looked for in the data folder of their prefix.
// Nothing is loaded. progress is told before each directory is read, and waiting called before each file.
std::vector<FoundDriver> scanForDrivers(
    const std::vector<std::string>& directories,
    const std::function<void(const std::string&)>& progress = [](const std::string&) {},
    const std::function<void()>& waiting = [] {}, Candidates candidates = Candidates::all,
    const LoaderPlaces& places = loaderPlaces());

}  // namespace jx::doctor
