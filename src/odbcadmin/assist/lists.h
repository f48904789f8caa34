// Lists of data sources and drivers: read again, and with the rows only that a user wants to see.
#pragma once

#include <jxdialog.h>

#include <string>

#include "odbcadmin/model/configuration.h"

namespace jx::assist {

// Which rows of a list of data sources a user wants to see.
struct Filter {
    std::string text;                       // only rows that contain it, in upper or lower case; empty: all
    model::Seen scope = model::Seen::both;  // whose

    bool hasAll() const { return text.empty() && scope == model::Seen::both; }
};

// Reads the list of a dialog again: of the Data Sources dialog, of our own list of all of them, and of drivers. The
// selection stays with its row. Nothing for other dialogs.
void refillList(HWND dialog);

// Shows only those rows. It stays until the dialog is closed, and covers those that the library's list has no room for.
void filterList(HWND dialog, const Filter& filter);
Filter filterOf(HWND dialog);

// Makes the list of a library's dialog whole again after the library has filled it, which knows the user's entries
// only: adds the rows of the system's behind them, and leaves out what the filter does.
void completeList(HWND dialog);

// Reads the list again if the files were changed since it was filled, and says so if that has changed its rows; empty
// when there is nothing to say.
std::string noticeChange(HWND dialog);

// The list was just filled.
void noteFilled(HWND dialog);

}  // namespace jx::assist
