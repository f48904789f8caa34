// What is known of a driver, said to somebody who gives keys to one of its data sources.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"

namespace jx::cli {

// A sentence for each key that the driver with that name never asks for; none when nothing is known of it.
std::vector<std::string> remarksOnKeys(const model::Configuration& configuration, const std::string& driver,
                                       const model::Pairs& attributes);

// That too, and a sentence for keys of a new data source without which the driver is of no use.
std::vector<std::string> remarksOnNew(const model::Configuration& configuration, const std::string& driver,
                                      const model::Pairs& attributes);

}  // namespace jx::cli
