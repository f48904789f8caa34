// Reading and filling the list boxes of dialogs.
//
//     addRows(dialog, JxDriversList, drivers);
//     if (selectedRow(dialog, JxDriversList) != -1) ...
#pragma once

#include <jxdialog.h>

#include <string>

#include "config/key_list.h"

namespace jx {

// What the rows of a list are, as PopulateLB, FillLB and SaveSelectedLBItem want to know it.
enum RowMode : unsigned long { kDriverRows = 0, kDataSourceRows = 1, kSectionKeyRows = 2 };

// The number of rows and the selected row, as the signed 16 bits they travel in; the row is -1 when none is selected.
short rowCount(HWND dialog, unsigned short listId);
short selectedRow(HWND dialog, unsigned short listId);

// Selects the first row; false when the list is empty.
bool selectFirstRow(HWND dialog, unsigned short listId);

// Copies the text of a row into text, however long it is; false when there is no such list or row, or memory is short.
bool readRow(HWND dialog, unsigned short listId, int row, std::string& text);

void addRow(HWND dialog, unsigned short listId, const unsigned char* text);

// Adds the keys as rows, each up to its first "="; of a key that is more than a name, nameIn cuts out the name.
void addRows(HWND dialog, unsigned short listId, KeyList& keys, unsigned char* (*nameIn)(unsigned char* key) = nullptr);

}  // namespace jx
