// KEY=VALUE operands.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/model/file_change.h"

namespace jx::cli {

// Takes KEY=VALUE operands apart, each at its first "="; keys in reserved are refused. Nothing after it said what is
// wrong with one: that is wrong use.
std::optional<model::Pairs> takePairs(const Session& session, const std::vector<std::string>& texts,
                                      const std::vector<std::string_view>& reserved);

}  // namespace jx::cli
