// Writing, changing and removing one data source in the configuration files.
#pragma once

#include "setup/data_source_request.h"
#include "setup/setup_files.h"

namespace jx::setup {

// Each of these happens as a whole or not at all: the list entry, the section and its keys reach the file of data
// sources in one change, and true means that they would be read back as they were given. The default data source has
// its entry in the file of drivers instead of the list; that entry is written first and put back when the other change
// fails. Threads  any; other writers wait meanwhile. Failure  false and both files as they were; std::bad_alloc
// likewise. Only a removal of the default data source, which stands in both files, may have reached one of them; the
// next call finds it.

// Enters a data source of the installed driver, replacing one of that name with all its keys. The files are then as
// SQLWriteDSNToIni and one write for each attribute would leave them. Fails when the driver has no "Driver" key, or the
// name is none for a new data source.
bool addDataSource(const SetupFiles& files, const char* driver, const DataSourceRequest& request);

// Stores the given attributes; an empty value removes the key, keys that are not named stay. Fails when there is no
// section of that name, or the driver has no "Driver" key.
bool changeDataSource(const SetupFiles& files, const char* driver, const DataSourceRequest& request);

// Makes the changes of a data source's keys; fails as above.
bool changeKeys(const SetupFiles& files, const char* driver, const std::string& name,
                const std::vector<KeyChange>& changes);

// Removes the data source, also one that could not be added today. Fails when there is none of that name.
bool removeDataSource(const SetupFiles& files, const DataSourceRequest& request);

// Whether the driver can be used by a data source: it has a "Driver" key.
bool isInstalled(const SetupFiles& files, const char* driver);

// Whether adding name would replace something.
bool dataSourceExists(const SetupFiles& files, const std::string& name);

// What the section of a data source holds, but for its "Driver" key; nothing when there is no such section.
std::optional<DataSourceRequest> readDataSource(const SetupFiles& files, const std::string& name);

}  // namespace jx::setup
