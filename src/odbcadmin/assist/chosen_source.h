// The data source that a row stands for.
#pragma once

#include <jxscreen.h>

#include <optional>
#include <string>

#include "odbcadmin/model/configuration.h"

namespace jx::assist {

struct ChosenSource {
    std::string name;
    std::string driver;
};

// "Sales (SQLite3)", as lists show a data source.
std::string rowOf(const model::DataSource& source);

// The other way: the driver is what the last parentheses hold, which may have further ones in pairs. Nothing when a row
// is not of that form.
std::optional<ChosenSource> sourceInRow(const std::string& row);

// The selected row of a list; empty when there is none.
std::string selectedRow(HWND dialog, unsigned short list);

// What is selected in a dialog that lists data sources, the library's or our own; nothing in others.
std::optional<ChosenSource> chosenSource(HWND dialog);

// Selects the row of that data source as the user would, if it is shown.
void chooseSource(HWND dialog, const std::string& name);

// The list of data sources in that dialog: its id; 0 when there is none.
unsigned short sourceList(HWND dialog);

}  // namespace jx::assist
