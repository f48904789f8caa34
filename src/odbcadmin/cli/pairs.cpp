// Taking operands apart.
#include "odbcadmin/cli/pairs.h"

#include <algorithm>
#include <unordered_set>

#include "rules/names.h"

namespace jx::cli {

std::optional<model::Pairs> takePairs(const Session& session, const std::vector<std::string>& texts,
                                      const std::vector<std::string_view>& reserved) {
    const auto refuse = [&](const std::string& fact, const char* advice) {
        session.fail(ExitCode::wrongUse, fact, advice);
        return std::nullopt;
    };
    model::Pairs pairs;
    std::unordered_set<std::string> seen;
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        const std::string key = text.substr(0, equals);
        if (equals == std::string::npos || rules::trimmed(key).empty())
            return refuse("\"" + text + "\" is not of the form KEY=VALUE",
                          "Put the whole of it in quotes when the value holds blanks.");
        if (std::any_of(reserved.begin(), reserved.end(), [&](auto each) { return rules::sameName(key, each); }))
            return refuse(key + " cannot be given as KEY=VALUE here",
                          "It comes from the name and from the options; see --help.");
        if (!seen.insert(rules::foldedName(key)).second)
            return refuse(key + " is given twice", "Give each key once.");
        pairs.emplace_back(key, text.substr(equals + 1));
    }
    return pairs;
}

}  // namespace jx::cli
