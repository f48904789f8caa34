// A line of the look-up log as JSON.
#pragma once

#include <string>
#include <string_view>

namespace jx::cli {

// One line without its end, as an object of one line; anything else as {"text"}.
std::string lookupJson(std::string_view line);

}  // namespace jx::cli
