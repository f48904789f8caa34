// What an installation script asks for, held against what the files have afterwards.
//
//     for (const Unfulfilled& each : unfulfilled({*script, "/opt/pack", drivers, translators}, Configuration::read(),
//     failure))
//         ... each.what, each.why ...
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/ini_view.h"
#include "odbcadmin/model/reason.h"

namespace jx::model {

struct ScriptWishes {
    const IniView& script;
    std::string directory;  // where the libraries lie
    std::vector<std::string> drivers, translators;
};

struct Unfulfilled {
    std::string what;  // "driver Small"
    std::string why;   // a clause: "its section in the script has no line ..."
};

// The names of a list of the script, which stand in double quotes there.
std::vector<std::string> offeredBy(const IniView& script, const char* list);

// The drivers and translators that are not registered with the libraries of the script, and the data sources of their
// "CreateDSN" that are not there. failure: the store's last one while it was installed, if there was any.
std::vector<Unfulfilled> unfulfilled(const ScriptWishes& wishes, const Configuration& after, const Reason& failure);

}  // namespace jx::model
