// The rows that lists show for the entries of the system's files, behind those of the user's.
#pragma once

#include <jxdialog.h>

#include <string>
#include <vector>

namespace jx::assist {

// In the order of the file, each with its mark (scope_mark.h). None when the user has the same file.
std::vector<std::string> systemSourceRows();
std::vector<std::string> systemDriverRows();

// Sees that a list has these marked rows at its end and no others. Rows that are there already stay, with the
// selection. If the list had no row before, the first one is selected.
void putSystemRows(HWND dialog, unsigned short list, const std::vector<std::string>& rows);

}  // namespace jx::assist
