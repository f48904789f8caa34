// The sections that list what is there, and so can be nothing else.
#pragma once

namespace jx::install {

// Whether the store would take name for one of the lists "ODBC Data Sources", "ODBC Drivers" and "ODBC Translators": in
// any case, with or without blanks around. A null name is none.
bool isListSection(const unsigned char* name);

}  // namespace jx::install
