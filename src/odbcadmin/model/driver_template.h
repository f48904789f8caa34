// The templates that packages of drivers bring: an INI file with a section for each driver, without a list, often with
// file names for libraries, tabs around "=", and keys without a value.
//
//     if (const auto file = DriverTemplate::read("/usr/share/psqlodbc/odbcinst.ini.template"))
//         for (const Registration& driver : file->drivers) ...
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/model/registration.h"

namespace jx::model {

struct DriverTemplate {
    std::string path;
    // As they stand there, libraries with or without a directory; keys without a value are left out. Sections without
    // a library are not among them.
    std::vector<Registration> drivers;

    // Nothing when it cannot be read: jxIniLastFailure tells why. A file that is not there holds none.
    static std::optional<DriverTemplate> read(const std::string& path);

    // Null when there is none of that name, in any case.
    const Registration* find(std::string_view name) const;
};

// The templates in the folders of a data folder, such as /usr/share, by their names: "odbcinst.ini" and what begins so.
std::vector<DriverTemplate> templatesIn(const std::string& dataFolder);

// Registers drivers whose libraries are full paths by now, in one change. Of one that is registered already the
// libraries are set; of its other keys those that are there stay as they are. One that another file has with the same
// library stays there.
ChangeResult registerFromTemplate(const Configuration& configuration, const std::vector<Registration>& drivers,
                                  const ChangeWay& way);

}  // namespace jx::model
