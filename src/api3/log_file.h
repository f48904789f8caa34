// Where the look-up log goes.
//
//     appendToLog("/tmp/odbc.log", line);   // or "3", a descriptor that the program inherited
#pragma once

#include <string_view>

namespace jx::api3 {

// Appends a line, which ends with a line break, in one write. A new file is 0600. What cannot be written without
// waiting is lost: the program is never disturbed, not by a signal, an errno or a cancellation either. A line that goes
// into a pipe is cut to what a pipe takes whole.
void appendToLog(const char* where, std::string_view line) noexcept;

}  // namespace jx::api3
