// driver list and show.
#include <odbcinst.h>

#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/file_change.h"
#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/library_state.h"
#include "rules/secrets.h"

namespace jx::admin {

namespace {

Json asJson(const Registered& driver) {
    return {{"name", driver.name},
            {"library", driver.library},
            {"setup", driver.setup},
            {"state", doctor::libraryStateWord(doctor::libraryState(driver.library))},
            {"listed", driver.isListed}};
}

ExitCode listDrivers(const Session& session) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::vector<Registered> drivers = configuration->drivers();
    Json json = Json::array();
    std::vector<std::vector<std::string>> rows;
    for (const Registered& driver : drivers) {
        if (session.json)
            json.push_back(asJson(driver));
        else if (session.quiet)
            rows.push_back({driver.name});
        else
            rows.push_back({driver.name, doctor::libraryStateWord(doctor::libraryState(driver.library)), driver.library,
                            driver.isListed ? "" : "(not listed)"});
    }
    if (session.json)
        session.printJson({{"drivers", json}});
    session.printTable(rows);
    if (drivers.empty())
        session.say("There are no drivers in " + pathOf(INS_ODBCINST_FILENAME));
    return ExitCode::done;
}

Json shownAsJson(const Session& session, const Configuration& configuration, const Registered& driver) {
    Json json = asJson(driver);
    Json keys = Json::object();
    if (const IniSection* section = configuration.driversFile().section(driver.name)) {
        for (const IniEntry& entry : section->entries)
            keys[std::string(entry.key)] =
                session.showSecrets ? std::string(entry.value) : rules::masked(entry.key, entry.value);
        json["line"] = section->line;
    }
    json["file"] = pathOf(INS_ODBCINST_FILENAME);
    json["keys"] = keys;
    json["dataSources"] = configuration.dataSourcesOf(driver.name);
    return json;
}

ExitCode showDriver(const Session& session, const std::string& name) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::optional<Registered> driver = configuration->driver(name);
    if (!driver)
        return noDriver(session, *configuration, name);
    const Json json = shownAsJson(session, *configuration, *driver);
    if (session.json) {
        session.printJson(json);
        return ExitCode::done;
    }
    session.print("[" + printable(driver->name) + "]");
    for (const auto& [key, value] : json["keys"].items())
        session.print(printable(key) + "=" + printable(value.get<std::string>()));
    const std::vector<std::string> users = configuration->dataSourcesOf(driver->name);
    session.say("; library " + json["state"].get<std::string>() + ", used by " +
                (users.empty() ? "no data source" : joined(users)) + ", " + pathOf(INS_ODBCINST_FILENAME));
    return ExitCode::done;
}

}  // namespace

void addDriverReadCommands(CLI::App& app, Session& session) {
    CLI::App& driver = noun(app, "driver");
    onRun(addVerb(driver, "list", "List the drivers and the state of their libraries",
                  "odbcadmin driver list\nodbcadmin driver list --json"),
          session, listDrivers);
    CLI::App& show = addVerb(driver, "show", "Show all keys of a driver", "odbcadmin driver show SQLite3");
    const CLI::Option* name = addOperands(show, "NAME", "Driver", {1, 1, Complete::driver});
    onRun(show, session, [name](Session& run) { return showDriver(run, operand(name, 0)); });
}

}  // namespace jx::admin
