// A line diff by the greedy search for the shortest edit, and its printing.
#include "odbcadmin/model/diff.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace jx::model {

namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t kContext = 3;
constexpr int kMostEdits = 1000;

// One line of the result: kept in both, removed from the first, or added by the second.
struct Step {
    char kind;
    std::string_view line;
};

// Each line with its line end.
Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t feed = text.find('\n');
        const std::size_t length = feed == std::string_view::npos ? text.size() : feed + 1;
        lines.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return lines;
}

// How far the search got on each diagonal; diagonal k is at place k + limit + 1.
using Reach = std::vector<int>;

// Search: the shortest way from the first lines to the second; forward keeps what each number of edits reached.
class Search {
public:
    Search(const Lines& before, const Lines& after)
        : before_(before),
          after_(after),
          limit_(std::min(kMostEdits, static_cast<int>(before.size() + after.size()))),
          reach_(static_cast<std::size_t>(2 * limit_ + 3), 0) {}

    // False when it takes more edits than we look for.
    bool run() {
        for (int edits = 0; edits <= limit_; ++edits) {
            trace_.push_back(reach_);
            for (int diagonal = -edits; diagonal <= edits; diagonal += 2)
                if (advance(edits, diagonal))
                    return true;
        }
        return false;
    }

    // The steps of the way that run found, from the first line on.
    std::vector<Step> steps() const {
        std::vector<Step> backwards;
        int x = static_cast<int>(before_.size());
        int y = static_cast<int>(after_.size());
        for (int edits = static_cast<int>(trace_.size()) - 1; edits >= 0; --edits)
            walkBack(trace_[static_cast<std::size_t>(edits)], edits, x, y, backwards);
        std::reverse(backwards.begin(), backwards.end());
        return backwards;
    }

private:
    std::size_t place(int diagonal) const {
        return static_cast<std::size_t>(diagonal) + static_cast<std::size_t>(limit_) + 1;
    }

    bool comesDown(const Reach& reach, int edits, int diagonal) const {
        return diagonal == -edits || (diagonal != edits && reach[place(diagonal - 1)] < reach[place(diagonal + 1)]);
    }

    bool advance(int edits, int diagonal) {
        int x = comesDown(reach_, edits, diagonal) ? reach_[place(diagonal + 1)] : reach_[place(diagonal - 1)] + 1;
        int y = x - diagonal;
        const int width = static_cast<int>(before_.size());
        const int height = static_cast<int>(after_.size());
        while (x < width && y < height && y >= 0 &&
               before_[static_cast<std::size_t>(x)] == after_[static_cast<std::size_t>(y)]) {
            ++x;
            ++y;
        }
        reach_[place(diagonal)] = x;
        return x >= width && y >= height;
    }

    void walkBack(const Reach& reach, int edits, int& x, int& y, std::vector<Step>& steps) const {
        const int diagonal = x - y;
        const bool down = comesDown(reach, edits, diagonal);
        const int earlier = down ? diagonal + 1 : diagonal - 1;
        const int earlierX = edits == 0 ? 0 : reach[place(earlier)];
        const int earlierY = edits == 0 ? 0 : earlierX - earlier;
        while (x > earlierX && y > earlierY) {
            --y;
            steps.push_back({' ', before_[static_cast<std::size_t>(--x)]});
        }
        if (edits == 0)
            return;
        steps.push_back(down ? Step{'+', after_[static_cast<std::size_t>(earlierY)]}
                             : Step{'-', before_[static_cast<std::size_t>(earlierX)]});
        x = earlierX;
        y = earlierY;
    }

    const Lines& before_;
    const Lines& after_;
    const int limit_;
    Reach reach_;
    std::vector<Reach> trace_;
};

std::vector<Step> differences(const Lines& before, const Lines& after) {
    Search search(before, after);
    if (search.run())
        return search.steps();
    std::vector<Step> steps;
    for (const std::string_view line : before)
        steps.push_back({'-', line});
    for (const std::string_view line : after)
        steps.push_back({'+', line});
    return steps;
}

// What both texts begin and end with needs no search.
std::vector<Step> allSteps(Lines before, Lines after) {
    std::vector<Step> head;
    std::vector<Step> tail;
    const std::size_t shorter = std::min(before.size(), after.size());
    while (head.size() < shorter && before[head.size()] == after[head.size()])
        head.push_back({' ', before[head.size()]});
    while (tail.size() + head.size() < shorter &&
           before[before.size() - 1 - tail.size()] == after[after.size() - 1 - tail.size()])
        tail.push_back({' ', before[before.size() - 1 - tail.size()]});
    const auto middle = [&](const Lines& lines) {
        return Lines(lines.begin() + static_cast<std::ptrdiff_t>(head.size()),
                     lines.end() - static_cast<std::ptrdiff_t>(tail.size()));
    };
    const std::vector<Step> inner = differences(middle(before), middle(after));
    head.insert(head.end(), inner.begin(), inner.end());
    head.insert(head.end(), tail.rbegin(), tail.rend());
    return head;
}

// Whether a change lies within three lines of each step.
std::vector<bool> nearChanges(const std::vector<Step>& steps) {
    std::vector<bool> near(steps.size());
    for (std::size_t i = 0; i < steps.size(); ++i)
        if (steps[i].kind != ' ')
            for (std::size_t at = i < kContext ? 0 : i - kContext; at < steps.size() && at <= i + kContext; ++at)
                near[at] = true;
    return near;
}

std::string range(std::size_t first, std::size_t count) {
    const std::string start = std::to_string(count == 0 ? first : first + 1);
    return count == 1 ? start : start + "," + std::to_string(count);
}

struct Hunk {
    std::size_t before = 0, after = 0;            // lines above it
    std::size_t beforeCount = 0, afterCount = 0;  // its own
    std::string lines;

    std::string text() const {
        return "@@ -" + range(before, beforeCount) + " +" + range(after, afterCount) + " @@\n" + lines;
    }
};

void addStep(Hunk& hunk, const Step& step, const std::function<std::string(std::string_view)>& shown) {
    hunk.beforeCount += step.kind == '+' ? 0 : 1;
    hunk.afterCount += step.kind == '-' ? 0 : 1;
    const std::string line = shown(step.line);
    hunk.lines.append(1, step.kind).append(line);
    if (line.empty() || line.back() != '\n')
        hunk.lines.append("\n\\ No newline at end of file\n");
}

}  // namespace

// NOLINTNEXTLINE(readability-function-size): the walk over the groups of changes and their lines
std::string unifiedDiff(const std::string& path, std::string_view before, std::string_view after,
                        const std::function<std::string(std::string_view)>& shown) {
    if (before == after)
        return {};
    const std::vector<Step> steps = allSteps(linesOf(before), linesOf(after));
    const std::vector<bool> near = nearChanges(steps);
    std::string text = "--- " + path + "\n+++ " + path + "\n";
    Hunk hunk;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (near[i]) {
            addStep(hunk, steps[i], shown);
            if (i + 1 == steps.size() || !near[i + 1]) {
                text.append(hunk.text());
                hunk = {hunk.before + hunk.beforeCount, hunk.after + hunk.afterCount, 0, 0, {}};
            }
        } else {
            ++hunk.before;
            ++hunk.after;
        }
    }
    return text;
}

}  // namespace jx::model
