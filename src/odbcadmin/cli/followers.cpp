// Dividing them into those that may be changed and the others.
#include "odbcadmin/cli/followers.h"

#include "odbcadmin/model/text.h"

namespace jx::cli {

using model::Scope;

std::vector<Scope> Followers::scopes() const {
    std::vector<Scope> scopes;
    for (const model::DriverUsers& each : changed)
        scopes.push_back(each.scope);
    return scopes;
}

Followers followersOf(const Session& session, const std::string& driver) {
    Followers followers;
    const Scope scope = session.way().scope;
    for (const model::DriverUsers& each : model::usersOfDriver(driver, scope)) {
        // The file that changes go to gives its own reason when it cannot be changed.
        const bool follows = each.scope == scope || (each.mayChange && !session.user);
        (follows ? followers.changed : followers.left).push_back(each);
    }
    return followers;
}

std::string namesIn(const Session& session, const std::vector<model::DriverUsers>& users) {
    std::vector<std::string> names;
    for (const model::DriverUsers& each : users)
        for (const std::string& name : each.names)
            names.push_back(name + (each.scope == session.way().scope
                                        ? ""
                                        : std::string(" (") + model::scopeWord(each.scope) + ")"));
    return model::joined(names);
}

std::vector<std::string> remarksOnLeft(const Session& session, const Followers& followers, const std::string& command,
                                       const std::string& preparation) {
    std::vector<std::string> remarks;
    for (const model::DriverUsers& each : followers.left) {
        const bool isSystems = each.scope == Scope::system;
        const std::string first = isSystems && !preparation.empty() ? "odbcadmin " + preparation + ", then " : "";
        remarks.push_back("left as they are in " + each.path + ": " + model::joined(each.names) + "; " + first +
                          "for each of them: odbcadmin " + command + (isSystems ? " --system" : " --user"));
    }
    if (session.way().scope == Scope::system)
        remarks.push_back("data sources of other users are not seen here; for each of them: odbcadmin " + command);
    return remarks;
}

}  // namespace jx::cli
