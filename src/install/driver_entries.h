// The entries a driver's section gets: its two libraries and its further keys.
//
// driverList is the driver's description, or the keyword list that begins with it; lpszInfFile is the script, or null
// for a keyword list. Failed writes are reported by the commit of the thread's run, which is given up when a line of
// the script cannot be read.
#pragma once

namespace jx::install {

// Writes one library entry: the file name from the list or the script, in directory lpszPath. keyName is the key in
// double quotes, which are cut off in place. The entry "Driver" is also written as "Setup".
// Returns 0 when there is no usable file name for "Driver". Without one for "Setup" nothing is written, and the result
// is 1 as in all other cases.
int WriteTheDriverAndSetupEntryToTheOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList,
                                                const unsigned char* lpszPath, unsigned char* keyName);

// Writes the other keys of the list, or the capabilities from the script. The list's CreateDSN is not written: it
// creates data sources. driverList is written into while it is read.
void WriteDriverKeysToOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList);

}  // namespace jx::install
