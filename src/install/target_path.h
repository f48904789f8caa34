// The directory in which a driver is registered.
#pragma once

namespace jx::install {

// Copies the directory of a driver's files into lpszPath, cut to cbPathMax bytes (not 0), and its length into
// pcbPathOut (which may be null). Without a script (lpszInfFile null) it is the directory of the file that the keyword
// list lpszDriver names; with one it is that of the driver lpszDriver as registered so far, or "NOT AVAILABLE". Returns
// 0. Returns 1 and copies nothing when the list's second text names no file (a message box says what is missing), when
// the file's name is too long, and when .odbcinst.ini cannot be read.
unsigned int GetTargetPath(const unsigned char* lpszInfFile, const unsigned char* lpszDriver, unsigned char* lpszPath,
                           unsigned short cbPathMax, unsigned short* pcbPathOut);

}  // namespace jx::install
