// Writing and reading connection strings.
#include "odbcadmin/model/connection_string.h"

#include <algorithm>
#include <optional>

#include "rules/names.h"

namespace jx::model {

namespace {

// Takes the attributes off the text, one after the other.
class AttributeReader {
public:
    explicit AttributeReader(std::string_view text) : rest_(text) {}

    ConnectionPairs run() {
        for (skipEmpty(); !rest_.empty() && result_.error.empty(); skipEmpty()) {
            ++number_;
            takeAttribute();
        }
        return result_;
    }

private:
    void skipEmpty() {
        while (!rest_.empty() && (rest_.front() == ';' || rules::isBlank(rest_.front())))
            rest_.remove_prefix(1);
    }

    void refuse(std::string_view keyword, const std::string& what) {
        result_.error = "attribute " + std::to_string(number_) +
                        (keyword.empty() ? " " : ", " + std::string(keyword) + ", ") + what;
    }

    void takeAttribute() {
        const std::size_t end = rest_.find_first_of("=;");
        if (end == std::string_view::npos || rest_[end] == ';')
            return refuse({}, "has no =");
        const std::string keyword(rules::trimmed(rest_.substr(0, end)));
        if (keyword.empty())
            return refuse({}, "has no keyword before its =");
        rest_.remove_prefix(end + 1);
        while (!rest_.empty() && rules::isBlank(rest_.front()))
            rest_.remove_prefix(1);
        const auto value = rest_.starts_with('{') ? takeBraced(keyword) : std::optional(takePlain());
        const bool isNew = std::none_of(result_.pairs.begin(), result_.pairs.end(),
                                        [&](const auto& pair) { return rules::sameName(pair.first, keyword); });
        if (value && isNew)
            result_.pairs.emplace_back(keyword, *value);
    }

    std::string takePlain() {
        const std::size_t end = std::min(rest_.find(';'), rest_.size());
        std::string value(rules::trimmed(rest_.substr(0, end)));
        rest_.remove_prefix(end);
        return value;
    }

    std::optional<std::string> takeBraced(const std::string& keyword) {
        std::string value;
        std::size_t at = 1;
        for (; at < rest_.size() && (rest_[at] != '}' || rest_.substr(at).starts_with("}}")); ++at) {
            value.push_back(rest_[at]);
            at += rest_[at] == '}' ? 1 : 0;
        }
        if (at == rest_.size()) {
            refuse(keyword, "has a { that is never closed");
            return std::nullopt;
        }
        rest_.remove_prefix(at + 1);
        const std::size_t next = rest_.find_first_not_of(" \t");
        if (next == std::string_view::npos || rest_[next] == ';')
            return value;
        refuse(keyword, "goes on behind its closing }; a } of the value itself is written }}");
        return std::nullopt;
    }

    std::string_view rest_;
    std::size_t number_ = 0;
    ConnectionPairs result_;
};

}  // namespace

std::string bracedValue(std::string_view value) {
    std::string text = "{";
    for (const char each : value)
        text.append(each == '}' ? 2 : 1, each);
    return text + "}";
}

std::string connectionValue(std::string_view value) {
    const bool needsBraces = value.find(';') != std::string_view::npos || value.starts_with('{') ||
                             rules::trimmed(value).size() != value.size();
    return needsBraces ? bracedValue(value) : std::string(value);
}

std::string joinedAttributes(const Pairs& written) {
    std::string text;
    for (const auto& [keyword, value] : written)
        text.append(keyword).append("=").append(value).append(";");
    return text;
}

const char* whyNoKeyword(std::string_view key) {
    if (key.empty())
        return "it is empty";
    if (key.find_first_of("=;") != std::string_view::npos)
        return "it holds = or ;";
    return rules::trimmed(key).size() != key.size() ? "it begins or ends with a blank" : nullptr;
}

ConnectionPairs readConnectionString(std::string_view text) {
    return AttributeReader(text).run();
}

}  // namespace jx::model
