// Registering drivers and translators, changing, renaming and removing them: the one way for the command and for the
// screens.
//
//     const Registration wish{"SQLite3", "/usr/lib/odbc/libsqlite3odbc.so", {}, {}};
//     const ChangeResult result = registerEntry(configuration, kDriverKind, wish, WhenPresent::fail, way);
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"

namespace jx::model {

struct Registration {
    std::string name;
    std::string library;                    // as it is to be stored; empty leaves it as it is
    std::optional<std::string> setup = {};  // likewise: nothing leaves it, an empty one removes it
    Pairs keys = {};
};

// What happens when there is one of that name already.
enum class WhenPresent { fail, change };

// Whatever speaks against registering it, apart from what is there already: its name, when it is a new one, or a path
// that the installer could not read back or that would mean another file in every directory.
Reason whyNotRegister(const Configuration& configuration, const RegisteredKind& kind, const Registration& wish);

// Sets the list entry, the section and its keys; keys that are not named stay.
ChangeResult registerEntry(const Configuration& configuration, const RegisteredKind& kind, const Registration& wish,
                           WhenPresent present, const ChangeWay& way);

// The same of several, in one change; their names must differ.
struct Entering {
    Registration wish;
    WhenPresent present = WhenPresent::fail;
};
ChangeResult registerEntries(const Configuration& configuration, const RegisteredKind& kind,
                             const std::vector<Entering>& entries, const ChangeWay& way);

// Removes the list entry and the section; no library is touched.
ChangeResult unregisterEntry(const Configuration& configuration, const RegisteredKind& kind, const std::string& name,
                             const ChangeWay& way);

// Stores keys in the section of one that is there. The paths of its library and setup library are looked at as those of
// a new one are.
ChangeResult setRegisteredKeys(const Configuration& configuration, const RegisteredKind& kind, const std::string& name,
                               const Pairs& keys, const ChangeWay& way);

// Keys that are not there are passed over; the key of its library cannot be removed.
ChangeResult unsetRegisteredKeys(const Configuration& configuration, const RegisteredKind& kind,
                                 const std::string& name, const std::vector<std::string>& keys, const ChangeWay& way);

// Gives it another name, which may differ in capitals only. Comments inside its section are lost. Data sources that
// name the driver follow in the files of the scopes given, listed ones and those that name it in their section, and so
// does the default one; all files are written as one change. usersOfDriver tells which scopes have any.
ChangeResult renameRegistered(const Configuration& configuration, const RegisteredKind& kind, const std::string& from,
                              const std::string& to, const std::vector<Scope>& sources, const ChangeWay& way);

// Why nothing of that kind can be called so, unless it is called so already.
Reason whyNoRegisteredName(const Configuration& configuration, const RegisteredKind& kind, const std::string& name);

// For changes that hold more than one registration.
void composeRegistration(FileChange& change, const RegisteredKind& kind, const Registration& wish);
void composeUnregistration(FileChange& change, const RegisteredKind& kind, const std::string& name);

}  // namespace jx::model
