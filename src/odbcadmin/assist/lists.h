// Lists of data sources and drivers: read again, and with the rows only that a user wants to see.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// Reads the list of a dialog again: of the Data Sources dialog, of our own list of all of them, and of drivers. The
// selection stays with its row. Nothing for other dialogs.
void refillList(HWND dialog);

// Shows only the data sources whose row contains the text, in upper or lower case; an empty one shows all again. It
// stays until the dialog is closed, and covers those that the library's list has no room for.
void filterList(HWND dialog, const std::string& text);
std::string filterOf(HWND dialog);

// Leaves only those rows in the list again, after the library has filled it.
void applyFilter(HWND dialog);

// Reads the list again if the files were changed since it was filled, and says so if that has changed its rows; empty
// when there is nothing to say.
std::string noticeChange(HWND dialog);

// The list was just filled.
void noteFilled(HWND dialog);

}  // namespace jx::assist
