// Removing an installed driver: its files, its entries, and the data sources that use it.
#pragma once

class OdbcIns;

namespace jx::admin {

// The size of a list of drivers or data sources in the ODBC Drivers dialog, in bytes.
inline constexpr int kShortListSize = 999;

// Deletes a file of a driver; a null or empty path is skipped. When quiet is 0, a message box says which file could
// not be deleted, and why. A path that fills the buffer it was read into may have been cut and is not deleted. Returns
// 0.
int DeleteTheDriver(unsigned int hwnd, unsigned char* path, short quiet);

// Removes every data source whose driver's name contains driverName.
void FixODBCINIFile(unsigned int hwnd, const unsigned char* driverName, OdbcIns* ins);

// Deletes the driver's library and setup library, its entries and its data sources. A failure does not end it.
void removeDriver(unsigned int hwnd, const unsigned char* driverName, OdbcIns& ins);

}  // namespace jx::admin
