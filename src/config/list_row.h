// Reading and filling the list boxes of dialogs.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx {

// The number of rows and the selected row, as the signed 16 bits they travel in; the row is -1 when none is selected.
short rowCount(HWND dialog, unsigned short listId);
short selectedRow(HWND dialog, unsigned short listId);

// Makes text the text of a row, however long it is; false when there is no such list or row, or
// memory is short.
bool readRow(HWND dialog, unsigned short listId, int row, std::string& text);

void addRow(HWND dialog, unsigned short listId, const unsigned char* text);

// Adds the texts of a list as rows, each up to its first "=". They are cut in the list, which ends with an empty text.
void addKeyRows(HWND dialog, unsigned short listId, unsigned char* list);

}  // namespace jx
