// Names that lead nowhere, and why.
#pragma once

#include <string>
#include <string_view>

#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// Why there is neither a data source nor a driver of that name: a file that cannot be read; one that stands in
// systemFolder's odbc.ini or odbcinst.ini only, with the command that adds it for this user (passwords left out); else
// that there is none, with near matches.
model::Reason whyUnknown(const model::Configuration& configuration, std::string_view name,
                         const std::string& systemFolder = "/etc");

// What to do when there is no driver of that name: near matches, or the command that adds it, with the libraries that
// systemFolder's odbcinst.ini names for it.
std::string adviceForDriver(const model::Configuration& configuration, const std::string& name,
                            const std::string& systemFolder);

}  // namespace jx::doctor
