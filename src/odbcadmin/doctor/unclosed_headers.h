// Section headers that lack their closing bracket, and the lines that were meant to stand in those sections.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// UnclosedHeader: what stands below it belongs to the section above it. What was meant cannot be known, so nothing
// should be advised because of that: no other finding about the name or these lines is of use.
struct UnclosedHeader {
    std::string path;
    std::string name;  // that was meant; ends before a comment
    std::size_t line = 0;
    std::size_t last = 0;  // the last line before the next header

    std::string where() const { return path + ":" + std::to_string(line); }
    bool means(std::string_view other) const;
};

// Those of all files that can be read, in order.
std::vector<UnclosedHeader> unclosedHeaders(const model::Configuration& configuration);

}  // namespace jx::doctor
