// The directory in which a driver is registered.
#pragma once

namespace jx::install {

// Finds the directory of a driver's files and hands it to the caller, cut to lpszPath's cbPathMax bytes (not 0): that
// of the file the keyword list lpszDriver names; with a script (lpszInfFile not null) that of the driver lpszDriver as
// registered so far, "NOT AVAILABLE" when there is none. pcbPathOut may be null.
// 0; 1, with nothing handed over, when the list's second text names no file (a message box tells which part is
// missing), the file's name is too long or .odbcinst.ini could not be read.
unsigned int GetTargetPath(const unsigned char* lpszInfFile, const unsigned char* lpszDriver, unsigned char* lpszPath,
                           unsigned short cbPathMax, unsigned short* pcbPathOut);

}  // namespace jx::install
