// Adding, changing and removing data sources: by the driver's setup library, or directly.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/file_change.h"
#include "odbcadmin/cli/outcome.h"
#include "odbcadmin/cli/session.h"

namespace jx::admin {

struct DataSourceWish {
    std::string name;
    std::string driver;
    Pairs attributes;
};

// What happens to keys of the section that the wish does not name.
enum class OtherKeys { keep, remove };

// Whether there may be a data source of that name already.
enum class Existing { allowed, refused };

// Tells and gives 5 when no data source may be called so.
ExitCode checkDataSourceName(const Session& session, const std::string& name);

// Sets list entry, section, Driver and attributes in .odbc.ini. library is the driver's registered one. False when
// something was refused, which was told. The default data source has no list entry.
bool composeDataSource(FileChange& change, const DataSourceWish& wish, const std::string& library, OtherKeys others);

// Removes list entry and section.
bool composeRemoval(FileChange& change, const std::string& name);

// Writes one data source directly, the default one into both files; the driver must be registered.
ExitCode writeDataSource(const Session& session, const Configuration& configuration, const DataSourceWish& wish,
                         OtherKeys others, Existing existing, Outcome& outcome);

// Tells that there is a data source of that name; gives 4.
ExitCode dataSourceExists(const Session& session, const std::string& name);

// Removes data sources directly, all in one change.
ExitCode removeDataSources(const Session& session, const std::vector<std::string>& names, Outcome& outcome);

}  // namespace jx::admin
