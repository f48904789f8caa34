// Sections and their keys as results: as lines of an INI file, as JSON, as one value.
#pragma once

#include "odbcadmin/cli/session.h"
#include "odbcadmin/model/ini_view.h"

namespace jx::cli {

// "[NAME]", or the keys of a section line by line; secrets are masked and control characters shown as "?". No section
// has no keys.
void printHeader(const Session& session, std::string_view name);
void printKeys(const Session& session, const model::IniSection* section);

// An object of the keys and their values, with secrets masked.
Json keysJson(const Session& session, const model::IniSection* section);

// The value of a key, or that it is not there: fact says so, otherwise is the advice where no key is nearly it. member
// and name begin the JSON object.
ExitCode printValue(const Session& session, const model::IniSection* section, const std::string& key,
                    const std::string& fact, const std::string& otherwise, const Json& object);

}  // namespace jx::cli
