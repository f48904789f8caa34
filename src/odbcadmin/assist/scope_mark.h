// The mark of rows that stand for entries of the system's files.
#pragma once

#include <optional>
#include <string>

namespace jx::assist {

// Whether a section of the user's, of the same name, answers in its place.
enum class Shadowed { no, yes };

// "Sales (SQLite3)  [system] ". The mark ends with a blank, which no row of the user's does: whatever an entry is
// called, its row is not taken for one of the other scope.
std::string withSystemMark(const std::string& row, Shadowed shadowed);

// The row without its mark; nothing when it has none.
std::optional<std::string> withoutSystemMark(const std::string& row);

// "  [system]", as a screen shows the mark; empty when the row has none.
std::string shownMark(const std::string& row);

// Whether the row has the mark of a shadowed one.
bool isShadowed(const std::string& row);

}  // namespace jx::assist
