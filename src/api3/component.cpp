// Finds components and counts them.
#include "api3/component.h"

#include <charconv>
#include <string_view>

#include "api3/quoted.h"

namespace jx::api3 {

std::string subjectOf(const ComponentKind& kind, const std::string& name) {
    return std::string(kind.noun) + " " + quoted(name);
}

bool isInstalled(const ComponentKind& kind, const FileText& text, const std::string& name) {
    return text.value(kind.list, name.c_str()) || text.value(name, kind.libraryKey);
}

std::optional<std::uint32_t> countOf(const FileText& text, const std::string& section) {
    const std::optional<std::string> value = text.value(section, rules::kUsageCount);
    if (!value)
        return std::nullopt;
    std::uint32_t count = 0;
    const char* end = value->data() + value->size();
    const auto [stop, error] = std::from_chars(value->data(), end, count);
    return error == std::errc() && stop == end ? std::optional(count) : std::nullopt;
}

std::uint32_t countOneMore(std::optional<std::uint32_t> count, bool wasInstalled) {
    if (!count)
        return wasInstalled ? 2 : 1;
    return *count == UINT32_MAX ? UINT32_MAX : *count + 1;
}

std::uint32_t countOneLess(std::optional<std::uint32_t> count) {
    return count.value_or(1) == 0 ? 0 : count.value_or(1) - 1;
}

bool setCount(FileChange& change, const std::string& section, std::uint32_t count) {
    return change.set(section, rules::kUsageCount, std::to_string(count).c_str());
}

}  // namespace jx::api3
