// Parsing an attribute list.
#include "setup/data_source_request.h"

#include <algorithm>

#include "rules/names.h"
#include "rules/sections.h"

namespace jx::setup {

namespace {

bool hasTwins(const std::vector<Attribute>& items) {
    for (auto item = items.begin(); item != items.end(); ++item)
        if (std::any_of(items.begin(), item,
                        [&](const Attribute& earlier) { return rules::sameName(item->keyword, earlier.keyword); }))
            return true;
    return false;
}

std::optional<Attribute> splitItem(std::string_view item) {
    const std::size_t equals = item.find('=');
    if (equals == std::string_view::npos || equals == 0)
        return std::nullopt;
    return Attribute{std::string(item.substr(0, equals)), std::string(item.substr(equals + 1))};
}

std::optional<std::vector<Attribute>> splitList(const char* list) {
    std::vector<Attribute> items;
    while (list != nullptr && *list != '\0') {
        const std::string_view text = list;
        const std::optional<Attribute> item = splitItem(text);
        if (!item)
            return std::nullopt;
        items.push_back(*item);
        list += text.size() + 1;
    }
    return items;
}

}  // namespace

std::optional<DataSourceRequest> parseNamelessRequest(const char* list) {
    const std::optional<std::vector<Attribute>> items = splitList(list);
    if (!items || hasTwins(*items))
        return std::nullopt;
    DataSourceRequest request;
    for (const Attribute& item : *items) {
        if (rules::sameName(item.keyword, "DSN"))
            request.name = item.value;
        else if (!isDriverKeyword(item.keyword))
            request.attributes.push_back(item);
    }
    return request;
}

std::optional<DataSourceRequest> parseRequest(const char* list) {
    std::optional<DataSourceRequest> request = parseNamelessRequest(list);
    if (request && request->name.empty())
        return std::nullopt;
    return request;
}

bool isDriverKeyword(std::string_view keyword) {
    return rules::sameName(keyword, rules::kDriver);
}

}  // namespace jx::setup
