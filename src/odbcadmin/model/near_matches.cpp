// Edit distance, and the candidates that are near by it.
#include "odbcadmin/model/near_matches.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "rules/names.h"

namespace jx::model {

namespace {

constexpr std::size_t kMostMatches = 3;
constexpr std::size_t kShortestBeginning = 3;

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
    const std::size_t difference =
        std::max(leftName.size(), rightName.size()) - std::min(leftName.size(), rightName.size());
    if (difference > limit)
        return limit + 1;
    const std::string left = rules::foldedName(leftName);
    const std::string right = rules::foldedName(rightName);
    // What the first letters of left cost against each beginning of right: this row of the table and the two above it.
    std::vector<std::size_t> above2(right.size() + 1), above(right.size() + 1), costs(right.size() + 1);
    std::iota(costs.begin(), costs.end(), std::size_t{0});
    for (std::size_t row = 1; row <= left.size(); ++row) {
        above2.swap(above);
        above.swap(costs);
        costs[0] = row;
        for (std::size_t i = 1; i <= right.size(); ++i) {
            const std::size_t replaced = above[i - 1] + (left[row - 1] == right[i - 1] ? 0 : 1);
            costs[i] = std::min({replaced, above[i] + 1, costs[i - 1] + 1});
            if (row > 1 && i > 1 && left[row - 1] == right[i - 2] && left[row - 2] == right[i - 1])
                costs[i] = std::min(costs[i], above2[i - 2] + 1);
        }
        if (*std::min_element(costs.begin(), costs.end()) > limit)
            return limit + 1;
    }
    return std::min(costs.back(), limit + 1);
}

std::vector<std::string> nearMatches(std::string_view name, const std::vector<std::string>& candidates) {
    // Of a single letter every other letter would be a neighbour.
    const std::size_t limit = name.size() < 2 ? 0 : std::max<std::size_t>(1, name.size() / 3);
    // Once there are enough, only a nearer one counts: among thousands of similar names most are seen not to be at
    // once.
    std::vector<std::pair<std::size_t, std::string_view>> near;
    for (const std::string& candidate : candidates) {
        const bool isFull = near.size() == kMostMatches;
        if (candidate.empty() || (isFull && near.back().first == 0))
            continue;
        const std::size_t distance =
            editDistance(name, candidate, isFull ? std::min(limit, near.back().first - 1) : limit);
        const bool isNear = isFull ? distance < near.back().first : distance <= limit || begins(candidate, name);
        if (!isNear)
            continue;
        if (isFull)
            near.pop_back();
        const auto behind =
            std::find_if(near.begin(), near.end(), [&](const auto& each) { return each.first > distance; });
        near.emplace(behind, distance, candidate);
    }
    std::vector<std::string> nearest;
    nearest.reserve(near.size());
    for (const auto& each : near)
        nearest.emplace_back(each.second);
    return nearest;
}

std::string adviceFor(std::string_view name, const std::vector<std::string>& candidates, std::string_view otherwise) {
    const std::vector<std::string> near = nearMatches(name, candidates);
    return near.empty() ? std::string(otherwise) : "Did you mean " + quoted(near) + "?";
}

}  // namespace jx::model
