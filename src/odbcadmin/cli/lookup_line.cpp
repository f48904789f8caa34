// Taking a line of the log apart at its tabs.
#include "odbcadmin/cli/lookup_line.h"

#include <nlohmann/json.hpp>
#include <vector>

#include "odbcadmin/cli/session.h"

namespace jx::cli {

namespace {

std::vector<std::string_view> fieldsOf(std::string_view line) {
    std::vector<std::string_view> fields;
    for (std::size_t tab = line.find('\t'); tab != std::string_view::npos; tab = line.find('\t')) {
        fields.push_back(line.substr(0, tab));
        line.remove_prefix(tab + 1);
    }
    fields.push_back(line);
    return fields;
}

}  // namespace

std::string lookupJson(std::string_view line) {
    constexpr const char* kNames[] = {"time", "process", "asked", "section", "key", "answer", "value"};
    const std::vector<std::string_view> fields = fieldsOf(line);
    Json object;
    if (fields.size() != std::size(kNames))
        object["text"] = line;
    else
        for (std::size_t i = 0; i < std::size(kNames); ++i)
            object[kNames[i]] = fields[i];
    return object.dump(-1, ' ', /*ensure_ascii=*/false, Json::error_handler_t::replace);
}

}  // namespace jx::cli
