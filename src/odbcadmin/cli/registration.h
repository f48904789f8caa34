// Entering drivers and translators in .odbcinst.ini and taking them out.
#pragma once

#include <string>

#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/file_change.h"
#include "odbcadmin/cli/session.h"

namespace jx::admin {

// What is registered: names of the list and of the key of its library.
struct RegisteredKind {
    const char* word;  // "driver"
    const char* list;  // "ODBC Drivers"
    const char* key;   // "Driver"
};

const RegisteredKind& driverKind();
const RegisteredKind& translatorKind();

struct RegistrationWish {
    std::string name;
    std::string library;  // as it is to be stored; empty leaves the key as it is
    std::string setup;    // likewise
    Pairs keys;
};

// Tells and gives 5 when nothing may be called so.
ExitCode checkRegisteredName(const Session& session, const RegisteredKind& kind, const std::string& name);

// Sets the list entry, the section and its keys; keys that are not named stay. False when something was refused.
bool composeRegistration(FileChange& change, const RegisteredKind& kind, const RegistrationWish& wish);

// Removes the list entry and the section; no library is touched.
bool composeUnregistration(FileChange& change, const RegisteredKind& kind, const std::string& name);

}  // namespace jx::admin
