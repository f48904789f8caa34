// The data source that a row stands for.
#pragma once

#include <jxscreen.h>

#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"

namespace jx::assist {

struct ChosenSource {
    std::string name;
    std::string driver;
    model::Scope scope = model::Scope::user;  // whose file it stands in
};

// "Sales (SQLite3)", as lists show a data source; the system's have a mark behind that (scope_mark.h).
std::string rowOf(const model::DataSource& source);

// The other way: the driver is what the last parentheses hold, which may have further ones in pairs. Nothing when a row
// is not of that form; a marked row is always taken for one of the system's.
std::optional<ChosenSource> sourceInRow(const std::string& row);

// The rows of a list.
std::vector<std::string> rowsIn(HWND dialog, unsigned short list);

// The selected row of a list; empty when there is none.
std::string selectedRow(HWND dialog, unsigned short list);

// What is selected in a dialog that lists data sources, the library's or our own; nothing in others.
std::optional<ChosenSource> chosenSource(HWND dialog);

// Selects the row of that data source as the user would, if it is shown.
void chooseSource(HWND dialog, const std::string& name, model::Scope scope);

// The list of data sources in that dialog: its id; 0 when there is none.
unsigned short sourceList(HWND dialog);

}  // namespace jx::assist
