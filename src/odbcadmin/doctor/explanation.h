// The way from a data source to its library, step by step.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

struct Step {
    bool ok = true;
    std::string what;     // "listed", "section", "Driver", "library"
    std::string subject;  // "data source Sales"
    std::string where;    // "PATH:LINE"; empty for what stands in no file
    std::string value;    // what stands there, or what is missing
    std::string advice;   // only of a broken step; names near matches
};

// The steps of a data source and its driver, or of a driver, up to the state of each library. Empty when there is
// neither of that name. Libraries are loaded, as by libraryState. A driver that is not there is looked for in
// systemFolder's odbcinst.ini. One thread.
std::vector<Step> explain(const model::Configuration& configuration, const std::string& name,
                          const std::string& systemFolder = "/etc");

}  // namespace jx::doctor
