// Judging keys by the driver's library.
#include "odbcadmin/cli/key_remarks.h"

#include "odbcadmin/model/known_driver.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

const model::KnownDriver* knownOf(const model::Configuration& configuration, const std::string& driver) {
    const auto& registered = configuration.driver(driver);
    return registered && registered->library ? model::knownDriverOf(registered->library.text) : nullptr;
}

}  // namespace

std::vector<std::string> remarksOnKeys(const model::Configuration& configuration, const std::string& driver,
                                       const model::Pairs& attributes) {
    std::vector<std::string> remarks;
    const model::KnownDriver* known = knownOf(configuration, driver);
    for (const auto& [key, value] : attributes)
        if (const auto mistake = known != nullptr ? mistakeIn(*known, key) : std::nullopt)
            remarks.push_back(mistake->fact + ". " + mistake->advice);
    return remarks;
}

std::vector<std::string> remarksOnNew(const model::Configuration& configuration, const std::string& driver,
                                      const model::Pairs& attributes) {
    std::vector<std::string> remarks = remarksOnKeys(configuration, driver, attributes);
    const model::KnownDriver* known = knownOf(configuration, driver);
    if (known == nullptr)
        return remarks;
    std::vector<std::string> given;
    for (const auto& [key, value] : attributes)
        given.push_back(key);
    if (const std::vector<std::string> missing = missingKeys(*known, given); !missing.empty())
        remarks.push_back(known->name + "'s driver needs " + model::joined(missing) + " as well");
    return remarks;
}

}  // namespace jx::cli
