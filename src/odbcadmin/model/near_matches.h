// Names that are nearly the one that was not found.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace jx::model {

// The fewest insertions, deletions, replacements and swaps of neighbours that make one of the other, without regard to
// the case of ASCII letters; limit + 1 for anything above limit.
std::size_t editDistance(std::string_view left, std::string_view right, std::size_t limit);

// At most three of candidates, the nearest first: those that differ in a third of their letters at most, or begin with
// the name.
std::vector<std::string> nearMatches(std::string_view name, const std::vector<std::string>& candidates);

// "Did you mean Sales or Sales2?", or otherwise when nothing is near.
std::string adviceFor(std::string_view name, const std::vector<std::string>& candidates, std::string_view otherwise);

}  // namespace jx::model
