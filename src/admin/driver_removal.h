// Removing an installed driver: its files, its entries, the data sources that use it.
#pragma once

class OdbcIns;

namespace jx::admin {

// How many bytes of a list of drivers or data sources the ODBC Drivers dialog reads.
inline constexpr int kShortListSize = 999;

// Deletes one file of a driver; null or empty is none. Unless quiet, a file that could not be deleted is shown with the
// system's reason. A path that fills the buffer it was read into may be another file's and is not deleted. Returns 0.
int DeleteTheDriver(unsigned int hwnd, unsigned char* path, short quiet);

// Removes every data source whose driver's name holds driverName.
void FixODBCINIFile(unsigned int hwnd, const unsigned char* driverName, OdbcIns* ins);

// Deletes the driver's library and setup library, its entries and its data sources, whatever of that fails.
void removeDriver(unsigned int hwnd, const unsigned char* driverName, OdbcIns& ins);

}  // namespace jx::admin
