// dsn copy and move, driver copy and move: a second one of another name, or one in the other scope.
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/driver_users.h"
#include "odbcadmin/model/scope_transfer.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::Old;
using model::Scope;

std::optional<Scope> targetOf(const Session& session, const Line& line) {
    const std::string to = line.text("--to");
    if (to == "user" || to == "system")
        return to == "user" ? Scope::user : Scope::system;
    session.fail(ExitCode::wrongUse, "--to takes user or system, not " + to, "See odbcadmin paths for their files.");
    return std::nullopt;
}

// "Copied data source Sales to the system"
std::string sentence(const std::string& what, const model::Transfer& transfer) {
    return std::string(transfer.old == Old::keep ? "Copied " : "Moved ") + what + " " + transfer.name + " to the " +
           scopeWord(transfer.to) + (transfer.newName == transfer.name ? "" : " as " + transfer.newName);
}

// A data source of all users is of no use to those who lack its driver.
std::vector<std::string> remarksOn(const model::Transfer& transfer) {
    using model::Seen;
    const Configuration system = Configuration::read({Seen::system, Seen::system});
    const Configuration user = Configuration::read({Seen::user, Seen::user});
    const auto source = user.dataSource(transfer.name);
    if (transfer.to == Scope::user || !source || !source->isListed() || system.driver(source->driver))
        return {};
    return {"its driver " + source->driver + " is not registered for all users: see odbcadmin driver copy --to system"};
}

// Once a driver is this user's own, other users do not have it.
std::vector<std::string> remarksOnDriver(const model::Transfer& transfer) {
    if (transfer.to == Scope::system || transfer.old == Old::keep)
        return {};
    for (const model::DriverUsers& each : model::usersOfDriver(transfer.name, Scope::system))
        if (each.scope == Scope::system)
            return {"other users have it no longer, and these data sources of " + each.path +
                    " use it: " + model::joined(each.names)};
    return {"other users have it no longer; driver copy leaves it to them"};
}

ExitCode transferDataSource(const Session& session, const Line& line, Old old) {
    const auto to = targetOf(session, line);
    if (!to)
        return ExitCode::wrongUse;
    const std::string name = line.text("OLD");
    const std::string newName = line.has("NEW") ? line.text("NEW") : name;
    const model::Transfer transfer{name, newName, *to, old};
    const std::vector<std::string> remarks = remarksOn(transfer);
    return session.report(model::transferDataSource(transfer, session.way()), sentence("data source", transfer),
                          remarks);
}

ExitCode copyDataSource(const Session& session, const Configuration& configuration, const Line& line) {
    if (line.has("--to"))
        return transferDataSource(session, line, Old::keep);
    if (!line.has("NEW"))
        return session.fail(ExitCode::wrongUse, "odbcadmin dsn copy needs a new name, or --to user or system",
                            "See odbcadmin dsn copy --help");
    const std::string from = line.text("OLD");
    const std::string to = line.text("NEW");
    const auto source = configuration.dataSource(from);
    return session.report(model::copyDataSource(configuration, from, to, Old::keep, session.way()),
                          "Copied data source " + (source ? source->name : from) + " to " + to);
}

Verb::Action transferDriver(Old old) {
    return [old](const Session& session, const Line& line) {
        const auto to = targetOf(session, line);
        if (!to)
            return ExitCode::wrongUse;
        const model::Transfer transfer{line.text("NAME"), line.text("NAME"), *to, old};
        const std::vector<std::string> remarks = remarksOnDriver(transfer);
        return session.report(model::transferRegistered(model::kDriverKind, transfer, session.way()),
                              sentence("driver", transfer), remarks);
    };
}

constexpr const char* kTo = "user or system: the files it goes to";

}  // namespace

void addDsnTransferCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "dsn copy", "Make a second data source with the same keys, here or in the other scope",
            "odbcadmin dsn copy Sales SalesTest\nodbcadmin dsn copy Sales --to user")
        .operand("OLD", "Data source", kOne, Complete::dsn)
        .operand("NEW", "New name", kOptional)
        .option("--to", kTo, Complete::scope)
        .onRead(Needs::bothFiles, copyDataSource);
    addVerb(app, session, "dsn move", "Move a data source from the user's file to the system's, or back",
            "odbcadmin dsn move Sales --to system\nodbcadmin dsn move Sales --to user --dry-run")
        .operand("OLD", "Data source", kOne, Complete::dsn)
        .operand("NEW", "New name there", kOptional)
        .requiredOption("--to", kTo, Complete::scope)
        .onRun([](const Session& run, const Line& line) { return transferDataSource(run, line, Old::remove); });
}

void addDriverTransferCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "driver copy", "Register a driver of one scope in the other, too",
            "odbcadmin driver copy SQLite3 --to system")
        .operand("NAME", "Driver", kOne, Complete::driver)
        .requiredOption("--to", kTo, Complete::scope)
        .onRun(transferDriver(Old::keep));
    addVerb(app, session, "driver move", "Move a driver from the user's file to the system's, or back",
            "odbcadmin driver move SQLite3 --to user --dry-run")
        .operand("NAME", "Driver", kOne, Complete::driver)
        .requiredOption("--to", kTo, Complete::scope)
        .onRun(transferDriver(Old::remove));
}

}  // namespace jx::cli
