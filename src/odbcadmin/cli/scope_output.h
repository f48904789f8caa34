// The scope of what is listed and shown: whose file it stands in, and what it hides or is hidden by.
#pragma once

#include "odbcadmin/cli/session.h"
#include "odbcadmin/model/configuration.h"

namespace jx::cli {

// Whether any of the rows stands in the system's file. Lists name scopes only then: most machines have one user's files
// and no others.
template <class Rows>
bool holdsSystems(const Rows& rows) {
    for (const auto& row : rows)
        if (row.file->scope == model::Scope::system)
            return true;
    return false;
}

// {"file", "line"}; null when it stands nowhere.
Json placeJson(const model::Located& located);

// "[Sales] of /etc/odbc.ini:3"
std::string sectionText(const model::Located& header);

// "; hides [Sales] of /etc/odbc.ini:3, the system's", or nothing.
template <class Row>
std::string hidesText(const Row& row) {
    return row.hides ? "; hides " + sectionText(row.hides) + ", the system's" : "";
}

// What each entry says of it: "scope", and "shadowed" for one that an earlier file hides.
void addScope(Json& object, const model::ConfigFile& file, bool isShadowed);

}  // namespace jx::cli
