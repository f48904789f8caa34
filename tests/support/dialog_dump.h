// A dialog as text.
#pragma once

#include <jxtypes.h>

#include <string>

namespace jx::test {

// The dialog's title and a line for each of its controls, in the order of the Tab key:
//
//   "Sample" centered
//     label "&Name:"
//     edit 201 "Sales" focus
//     check 202 [x] "&Trace"
//     radio 203 (o) "&Always"
//     list 204
//         First
//       > Second
//     button 1 "OK" default grey
//
// A password field shows its stars, as on a screen. "grey" is a disabled control (after the title: the dialog waits
// behind one of its own), ">" the selected row.
// "(no dialog)" when the handle names none on this thread.
std::string dumpDialog(HWND dialog);

}  // namespace jx::test
