// The doctor: every check in its order.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/doctor/library_checks.h"
#include "odbcadmin/doctor/records.h"

namespace jx::doctor {

struct ExaminationOptions {
    // Data sources and drivers to look at, which must be in the records; all when empty. A data source brings its
    // driver along.
    std::vector<std::string> names;
    LibraryOptions library;
    // Told before each library is loaded.
    std::function<void(const std::string&)> progress = [](const std::string&) {};
    std::string systemFolder = "/etc";
};

// Files, syntax, names, libraries, environment. Loads libraries in child processes only.
Findings examine(const Records& records, const ExaminationOptions& options);

// The first three alone: nothing is loaded, no library is looked at.
Findings lint(const Records& records, const std::string& systemFolder = "/etc");

// The libraries of the given drivers.
Findings examineDrivers(const std::vector<DriverRecord>& drivers, const ExaminationOptions& options);

// Tracing.
Findings checkEnvironment(const Records& records);

}  // namespace jx::doctor
