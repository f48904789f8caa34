// Edit distance, and the candidates that are near by it.
#include "odbcadmin/model/near_matches.h"

#include <algorithm>
#include <utility>

#include "rules/names.h"

namespace jx::model {

namespace {

constexpr std::size_t kMostMatches = 3;
constexpr std::size_t kShortestBeginning = 3;

std::size_t difference(std::size_t a, std::size_t b) {
    return a > b ? a - b : b - a;
}

// One row of the table: what the first row letters of left cost against each beginning of right.
std::vector<std::size_t> nextRow(std::string_view left, std::string_view right, std::size_t row,
                                 const std::vector<std::size_t>& above, const std::vector<std::size_t>& above2) {
    std::vector<std::size_t> costs{row};
    for (std::size_t i = 1; i <= right.size(); ++i) {
        const std::size_t replaced = above[i - 1] + (left[row - 1] == right[i - 1] ? 0 : 1);
        std::size_t cost = std::min({replaced, above[i] + 1, costs[i - 1] + 1});
        if (row > 1 && i > 1 && left[row - 1] == right[i - 2] && left[row - 2] == right[i - 1])
            cost = std::min(cost, above2[i - 2] + 1);
        costs.push_back(cost);
    }
    return costs;
}

bool begins(std::string_view text, std::string_view beginning) {
    return beginning.size() >= kShortestBeginning && text.size() >= beginning.size() &&
           rules::sameName(text.substr(0, beginning.size()), beginning);
}

std::string quoted(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text.append(i == 0 ? "" : i + 1 < names.size() ? ", " : " or ").append(names[i]);
    return text;
}

}  // namespace

std::size_t editDistance(std::string_view leftName, std::string_view rightName, std::size_t limit) {
    if (difference(leftName.size(), rightName.size()) > limit)
        return limit + 1;
    const std::string left = rules::foldedName(leftName);
    const std::string right = rules::foldedName(rightName);
    std::vector<std::size_t> above2;
    std::vector<std::size_t> above;
    for (std::size_t i = 0; i <= right.size(); ++i)
        above.push_back(i);
    for (std::size_t row = 1; row <= left.size(); ++row) {
        std::vector<std::size_t> costs = nextRow(left, right, row, above, above2);
        if (*std::min_element(costs.begin(), costs.end()) > limit)
            return limit + 1;
        above2 = std::move(above);
        above = std::move(costs);
    }
    return std::min(above.back(), limit + 1);
}

std::vector<std::string> nearMatches(std::string_view name, const std::vector<std::string>& candidates) {
    // Of a single letter every other letter would be a neighbour.
    const std::size_t limit = name.size() < 2 ? 0 : std::max<std::size_t>(1, name.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = editDistance(name, candidate, limit);
        if (!candidate.empty() && (distance <= limit || begins(candidate, name)))
            near.emplace_back(distance, candidate);
    }
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> nearest;
    for (std::size_t i = 0; i < near.size() && i < kMostMatches; ++i)
        nearest.push_back(near[i].second);
    return nearest;
}

std::string adviceFor(std::string_view name, const std::vector<std::string>& candidates, std::string_view otherwise) {
    const std::vector<std::string> near = nearMatches(name, candidates);
    return near.empty() ? std::string(otherwise) : "Did you mean " + quoted(near) + "?";
}

}  // namespace jx::model
