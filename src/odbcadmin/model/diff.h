// Two texts side by side, as patch reads it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace jx::model {

// A unified diff with three lines around each change, the header lines naming both as path; empty when the texts are
// the same. shown turns each line before it is printed. Texts that differ in more than a thousand lines are given as
// one change from the first that differs to the last.
std::string unifiedDiff(const std::string& path, std::string_view before, std::string_view after,
                        const std::function<std::string(std::string_view)>& shown);

}  // namespace jx::model
