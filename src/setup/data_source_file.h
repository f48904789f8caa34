// Writing, changing and removing one data source in the configuration files.
#pragma once

#include "setup/data_source_request.h"
#include "setup/setup_files.h"

namespace jx::setup {

// Each change is made as a whole or not at all: list entry, section and keys reach the file of data sources together,
// and true means that they can be read back as given. The default data source is not in the list; its entry is in the
// file of drivers, which is written first and restored when the other file cannot be changed. Threads  any; other
// writers wait meanwhile. Failure  false, or std::bad_alloc, and both files are unchanged. Only the removal of the
// default data source may leave it in one of the two files; removing it again completes it.

// Adds a data source for the installed driver, in place of one of that name with all its keys. The files are then as
// after SQLWriteDSNToIni and one write for each attribute. Fails when the driver has no "Driver" key, or when a new
// data source cannot have this name.
bool addDataSource(const SetupFiles& files, const char* driver, const DataSourceRequest& request);

// Stores the given attributes; an empty value removes its key, and keys that are not given stay. Fails when the data
// source has no section, or the driver no "Driver" key.
bool changeDataSource(const SetupFiles& files, const char* driver, const DataSourceRequest& request);

// Changes the keys of a data source. Fails as above.
bool changeKeys(const SetupFiles& files, const char* driver, const std::string& name,
                const std::vector<KeyChange>& changes);

// Removes a data source, even one whose name a new one cannot have. Fails when there is none of that name.
bool removeDataSource(const SetupFiles& files, const DataSourceRequest& request);

// Whether a data source can use the driver: it has a "Driver" key.
bool isInstalled(const SetupFiles& files, const char* driver);

// Whether adding a data source of this name would replace something.
bool dataSourceExists(const SetupFiles& files, const std::string& name);

// The keys of a data source, without "Driver"; nothing when it has no section.
std::optional<DataSourceRequest> readDataSource(const SetupFiles& files, const std::string& name);

}  // namespace jx::setup
