// What a user edits of a data source: comparing, showing and checking it.
#include "setup/data_source_form.h"

#include <algorithm>

#include "rules/names.h"
#include "rules/secrets.h"
#include "rules/storable.h"

namespace jx::setup {

std::size_t placeOf(const std::vector<Attribute>& attributes, const std::string& keyword) {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const Attribute& each) { return rules::sameName(each.keyword, keyword); });
    return static_cast<std::size_t>(found - attributes.begin());
}

void overlay(std::vector<Attribute>& attributes, const std::vector<Attribute>& changes) {
    for (const Attribute& change : changes) {
        const std::size_t at = placeOf(attributes, change.keyword);
        if (at == attributes.size() && !change.value.empty())
            attributes.push_back(change);
        else if (at < attributes.size() && change.value.empty())
            attributes.erase(attributes.begin() + static_cast<std::ptrdiff_t>(at));
        else if (at < attributes.size())
            attributes[at].value = change.value;
    }
}

std::vector<KeyChange> changesBetween(const std::vector<Attribute>& before, const std::vector<Attribute>& now) {
    std::vector<KeyChange> changes;
    for (const Attribute& old : before) {
        if (placeOf(now, old.keyword) == now.size())
            changes.push_back({old.keyword, std::nullopt});
    }
    for (const Attribute& item : now) {
        const std::size_t at = placeOf(before, item.keyword);
        if (at == before.size() || before[at].value != item.value)
            changes.push_back({item.keyword, item.value});
    }
    return changes;
}

bool isSecret(const Attribute& attribute) {
    return rules::isSecretKey(attribute.keyword) ||
           rules::masked(attribute.keyword, attribute.value) != attribute.value;
}

std::string rowText(const Attribute& attribute) {
    return attribute.keyword + " = " + rules::masked(attribute.keyword, attribute.value);
}

std::string objectionToName(std::string_view name, const SetupFiles& files) {
    if (name.empty())
        return "Give the data source a name.";
    const rules::Why why = files.whyNoNewName(name);
    return why == nullptr ? "" : std::string("A new data source cannot have this name: ") + why + ".";
}

std::string objectionToKeyword(std::string_view keyword) {
    if (keyword.empty())
        return "Type a key first.";
    if (rules::sameName(keyword, "DSN") || isDriverKeyword(keyword))
        return "DSN and Driver are set by the data source's name and its driver.";
    const rules::Why why = rules::whyNoKey(keyword);
    return why == nullptr ? "" : std::string("This key cannot be stored: ") + why + ".";
}

std::string objectionToValue(std::string_view value) {
    rules::Why why = rules::whyNoValue(value);
    if (why == nullptr)
        why = rules::whyNotGivenBack(value);
    return why == nullptr ? "" : std::string("This value cannot be stored: ") + why + ".";
}

}  // namespace jx::setup
