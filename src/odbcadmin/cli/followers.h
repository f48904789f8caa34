// The data sources that follow a driver when it gets another name or goes, and what is said of those that do not.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/model/driver_users.h"

namespace jx::cli {

struct Followers {
    std::vector<model::DriverUsers> changed;  // of files that this user may change
    std::vector<model::DriverUsers> left;     // of the others, and with --user those of the system's

    // Their scopes.
    std::vector<model::Scope> scopes() const;
};

// driver: one of the scope that changes go to.
Followers followersOf(const Session& session, const std::string& driver);

// "Sales, Stock (system)": those of the other scope than the one that changes go to are marked.
std::string namesIn(const Session& session, const std::vector<model::DriverUsers>& users);

// A remark on each file whose data sources stay as they are, and on the other users' files, which nobody sees. command:
// what changes one of them, behind "odbcadmin"; preparation: what those of the system's need before, or nothing.
std::vector<std::string> remarksOnLeft(const Session& session, const Followers& followers, const std::string& command,
                                       const std::string& preparation = {});

}  // namespace jx::cli
