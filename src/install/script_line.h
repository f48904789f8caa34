// The line that describes one file in an installation script.
#pragma once

#include <string_view>

#include "install/install_record.h"

namespace jx::install {

// How reading a line went.
struct LineResult {
    enum class Outcome { complete, commaMissing, memoryShort } outcome;
    unsigned missingComma;  // counted from 1; only with commaMissing
};

// The commas a line must hold. The last one ends a field that is not read, and is asked for all the same.
inline constexpr unsigned kLineCommas = 20;

// Fills entry (but for its key) from line, field by field from the left. What was stored before a missing comma or a
// lack of memory stays and belongs to entry.
LineResult readLine(std::string_view line, InfEntry& entry);

}  // namespace jx::install
