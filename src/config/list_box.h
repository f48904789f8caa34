// Reading and filling the list boxes of dialogs.
//
//     addRows(dialog, JxDriversList, drivers);
//     if (selectedRow(dialog, JxDriversList) != -1) ...
#pragma once

#include <jxdialog.h>

#include <string>

#include "config/key_list.h"

namespace jx {

// What a list's rows are: the modes of PopulateLB, FillLB and SaveSelectedLBItem.
enum RowMode : unsigned long { kDriverRows = 0, kDataSourceRows = 1, kSectionKeyRows = 2 };

// The number of rows, and the selected row (-1: none). Both are sent as signed 16-bit numbers.
short rowCount(HWND dialog, unsigned short listId);
short selectedRow(HWND dialog, unsigned short listId);

// Selects the first row; false when the list is empty.
bool selectFirstRow(HWND dialog, unsigned short listId);

// Copies the whole text of a row into text; false when there is no such list or row, or memory is short.
bool readRow(HWND dialog, unsigned short listId, int row, std::string& text);

void addRow(HWND dialog, unsigned short listId, const unsigned char* text);

// Adds the keys as rows, each up to its first "=". If keys are more than names, nameIn returns the name in a key.
void addRows(HWND dialog, unsigned short listId, KeyList& keys, unsigned char* (*nameIn)(unsigned char* key) = nullptr);

}  // namespace jx
