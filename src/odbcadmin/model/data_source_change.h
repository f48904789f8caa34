// Adding, changing, renaming, copying and removing data sources, as the installer's own writer leaves them.
//
//     const ChangeResult result = addDataSource(configuration, {"Sales", "SQLite3", {{"Database", "/srv/s.db"}}}, way);
//
// A new name obeys the standard's rules; what is there already is changed and removed under any name that a file holds.
// The drivers' setup libraries have no part in any of this.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"

namespace jx::model {

struct DataSourceWish {
    std::string name;
    std::string driver;  // of an existing data source: empty leaves it as it is
    Pairs attributes;    // with a Driver among them, this path is stored instead of the driver's library
};

// What happens to keys of the section that a wish does not name.
enum class OtherKeys { keep, remove };

// What happens to a data source that is copied.
enum class Old { keep, remove };

// Whatever speaks against adding it: its name, a key or value that cannot be stored, one of that name that is there
// already, a driver that is not registered or has no library.
Reason whyNotAdd(const Configuration& configuration, const DataSourceWish& wish);

// Whatever speaks against storing these keys in any data source: one that a file could not give back, a secret that is
// hidden.
Reason whyNotStored(const Pairs& attributes);

// Whatever speaks against storing these keys in a data source that is there.
Reason whyNotSet(const Configuration& configuration, const std::string& name, const Pairs& attributes);

// Why no data source can be called so, unless one is called so already.
Reason whyNoDataSourceName(const Configuration& configuration, const std::string& name);

// Why there is no data source of that name to change or remove: it is not there, or nothing can be called so.
Reason whyNotThere(const Configuration& configuration, const std::string& name);

// Enters it in the list, with a section that holds Driver and the attributes.
ChangeResult addDataSource(const Configuration& configuration, const DataSourceWish& wish, const ChangeWay& way);

// Sees that it is there with that driver and these attributes; adds or changes what is needed.
ChangeResult ensureDataSource(const Configuration& configuration, const DataSourceWish& wish, OtherKeys others,
                              const ChangeWay& way);

ChangeResult setKeys(const Configuration& configuration, const std::string& name, const Pairs& attributes,
                     const ChangeWay& way);

// Keys that are not there are passed over; Driver cannot be removed.
ChangeResult unsetKeys(const Configuration& configuration, const std::string& name,
                       const std::vector<std::string>& keys, const ChangeWay& way);

// Gives all its keys to one of another name, or renames it. Comments inside its section stay behind. A new name may
// differ in capitals only. The default data source is neither copied nor made so.
ChangeResult copyDataSource(const Configuration& configuration, const std::string& from, const std::string& to, Old old,
                            const ChangeWay& way);

// Removes list entries and sections, all in one change; names that are not there are passed over.
ChangeResult removeDataSources(const std::vector<std::string>& names, const ChangeWay& way);

// Makes the default data source one with the keys of another. It stands in two files, which are written one after the
// other: the driver's name first, since a default that has a driver and no section can be repaired.
ChangeResult makeDefault(const Configuration& configuration, const std::string& name, const ChangeWay& way);

// The name of the data source that the default one is the same as; empty when there is none.
std::string twinOfDefault(const Configuration& configuration);

// For changes that hold more than one data source: sets list entry, section, Driver and attributes. library is the
// driver's; the default data source has no list entry.
void composeDataSource(FileChange& change, const DataSourceWish& wish, const std::string& library, OtherKeys others);

// Likewise: removes list entry and section.
void composeRemoval(FileChange& change, const std::string& name);

}  // namespace jx::model
