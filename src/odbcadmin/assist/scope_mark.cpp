// Marking rows, and telling marked ones.
#include "odbcadmin/assist/scope_mark.h"

#include <string_view>

namespace jx::assist {

namespace {

constexpr std::string_view kSystemMark = "  [system] ";
constexpr std::string_view kShadowedMark = "  [system, shadowed] ";

}  // namespace

std::string withSystemMark(const std::string& row, Shadowed shadowed) {
    return row + std::string(shadowed == Shadowed::yes ? kShadowedMark : kSystemMark);
}

std::optional<std::string> withoutSystemMark(const std::string& row) {
    for (const std::string_view mark : {kSystemMark, kShadowedMark})
        if (row.ends_with(mark))
            return row.substr(0, row.size() - mark.size());
    return std::nullopt;
}

std::string shownMark(const std::string& row) {
    const auto without = withoutSystemMark(row);
    return without ? row.substr(without->size(), row.size() - without->size() - 1) : std::string();
}

bool isShadowed(const std::string& row) {
    return row.ends_with(kShadowedMark);
}

}  // namespace jx::assist
