// The doctor: every check in its order.
//
//     ExaminationOptions options;
//     options.library.places = loaderPlaces();
//     for (const Finding& finding : examine(Configuration::read(), options)) ...
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/doctor/library_checks.h"
#include "odbcadmin/model/config_places.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

struct ExaminationOptions {
    // Data sources and drivers to look at; all when empty. A data source brings its driver along.
    std::vector<std::string> names;
    LibraryOptions library;
    // Called before each library is loaded.
    std::function<void(const std::string&)> progress = [](const std::string&) {};
    std::string systemFolder = "/etc";
    // Where packages put templates of drivers.
    std::vector<std::string> dataFolders = {"/usr/share", "/usr/local/share"};
};

// Files, syntax, names, libraries, references, environment, and templates when no names are given. Libraries are loaded
// by the helper program only.
Findings examine(const model::Configuration& configuration, const ExaminationOptions& options);

// The first two alone.
Findings checkTexts(const model::Configuration& configuration);

// What lint looks at besides the texts.
struct LintPlaces {
    std::vector<model::ConfigPlace> files = model::configPlaces();
    // Of an image this system's variables say nothing.
    enum class Variables { seen, ignored } variables = Variables::seen;
    std::string systemFolder = "/etc";
};

// The first three alone: nothing is loaded, no library is looked at.
Findings lint(const model::Configuration& configuration, const LintPlaces& places = {});

// The same of the texts that were read, wherever they came from: lines and names, nothing about the files as such.
Findings lintTexts(const model::Configuration& configuration, const std::string& systemFolder = "/etc");

// The libraries of the given drivers, and the keys that name them.
Findings examineDrivers(const std::vector<model::Registered>& drivers, const ExaminationOptions& options);

// Drivers that templates name, whose libraries are there, and that were never registered.
Findings checkTemplates(const model::Configuration& configuration, const ExaminationOptions& options);

// Tracing.
Findings checkEnvironment(const model::Configuration& configuration);

}  // namespace jx::doctor
