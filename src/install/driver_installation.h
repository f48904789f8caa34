// Registering one driver in .odbcinst.ini.
#pragma once

#include <cstddef>

namespace jx::install {

// Registers a driver from a keyword list (infFile null) or from a script; the work behind SQLInstallDriver, whose
// comment tells what it does. 1 or 0.
int installDriver(const unsigned char* infFile, const unsigned char* driver, unsigned char* path,
                  unsigned short pathSize, unsigned short* pathLength);

// Finds the directory the driver's files live in and hands it to the caller, cut to lpszPath's cbPathMax bytes (not 0):
// that of the file the list names, or with a script that of the driver as registered so far. pcbPathOut may be null.
// 0, or 1 when the list's second text names no file, the file's name is too long or .odbcinst.ini could not be read;
// nothing is handed over then.
unsigned int GetTargetPath(const unsigned char* lpszInfFile, const unsigned char* lpszDriver, unsigned char* lpszPath,
                           unsigned short cbPathMax, unsigned short* pcbPathOut);

// Writes one library entry of the driver whose description driverList begins with: the file's name as the list or the
// script gives it, in directory lpszPath. keyName is the key in double quotes, which are cut off in place; the entry
// "Driver" is written as "Setup" too. driverList is cut and restored while it is read.
// 1 when written, and for "Setup" also when there is no usable pair for it; 0 when there is none for "Driver".
int WriteTheDriverAndSetupEntryToTheOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList,
                                                const unsigned char* lpszPath, unsigned char* keyName);

// Writes the further keys of the list, or the capability keys of the script, into the driver's section. The list's
// CreateDSN creates data sources instead. driverList is cut while it is read and stays so.
void WriteDriverKeysToOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList);

}  // namespace jx::install
