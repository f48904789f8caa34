// The entries a driver's section gets: its two libraries and its further keys.
//
// driverList is the driver's description, or the keyword list that begins with it; lpszInfFile is the script, or null
// for a keyword list. Failed writes are not reported.
#pragma once

namespace jx::install {

// Writes one library entry: the file's name as the list or the script gives it, in directory lpszPath. keyName is the
// key in double quotes, which are cut off in place; the entry "Driver" is written as "Setup" too.
// 1 when written, and for "Setup" also when there is no usable pair for it; 0 when there is none for "Driver".
int WriteTheDriverAndSetupEntryToTheOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList,
                                                const unsigned char* lpszPath, unsigned char* keyName);

// Writes the further keys of the list, or the capability keys of the script. The list's CreateDSN creates data sources
// instead. driverList is cut while it is read and stays so.
void WriteDriverKeysToOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList);

}  // namespace jx::install
