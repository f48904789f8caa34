// Taking an attribute list apart, and the rules for data source names.
#include "setup/data_source_request.h"

#include <algorithm>
#include <array>

#include <jxtext.h>
#include "setup/ini_names.h"

namespace jx::setup {

namespace {

constexpr std::size_t kLongestName = 32;  // the ODBC standard's SQL_MAX_DSN_LENGTH
constexpr std::string_view kForbiddenInNames = "[]{}(),;?*=!@\\";

bool equalsIgnoringCase(const std::string& left, const char* right) {
    return strCompareCi(reinterpret_cast<const unsigned char*>(left.c_str()),
                        reinterpret_cast<const unsigned char*>(right)) == 0;
}

bool hasTwins(const std::vector<Attribute>& items) {
    for (auto item = items.begin(); item != items.end(); ++item)
        if (std::any_of(items.begin(), item, [&](const Attribute& earlier) {
                return equalsIgnoringCase(item->keyword, earlier.keyword.c_str());
            }))
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
        if (equalsIgnoringCase(item.keyword, "DSN"))
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

bool isReservedName(std::string_view name) {
    const std::array reserved{kSettings, kDataSourceList, kDriverList, kTranslatorList};
    const std::string asText(name);
    return std::any_of(reserved.begin(), reserved.end(),
                       [&](const char* section) { return equalsIgnoringCase(asText, section); });
}

bool isDriverKeyword(const std::string& keyword) {
    return equalsIgnoringCase(keyword, kDriver);
}

bool isDefaultName(std::string_view name) {
    return equalsIgnoringCase(std::string(name), kDefault);
}

bool isNameForNewDataSource(std::string_view name) {
    return !name.empty() && name.size() <= kLongestName &&
           name.find_first_of(kForbiddenInNames) == std::string_view::npos && !isReservedName(name);
}

}  // namespace jx::setup
