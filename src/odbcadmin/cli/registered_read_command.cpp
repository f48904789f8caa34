// driver list and show, and translator list.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/sections.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/library_state.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::Registered;

const char* stateOf(const Registered& driver, const Configuration& configuration) {
    return doctor::libraryState(driver.library.text, doctor::LibraryRole::driver, configuration.paths());
}

// The state of its library is shown for drivers only.
Json entryJson(const Registered& entry, const model::RegisteredKind& kind, const Configuration& configuration) {
    Json json{{"name", entry.name}, {"library", entry.library.text}, {"setup", entry.setup.text}};
    if (kind.key == model::kDriverKind.key)
        json["state"] = stateOf(entry, configuration);
    json["listed"] = static_cast<bool>(entry.listed);
    return json;
}

std::vector<std::string> rowOf(const Session& session, const Registered& entry, const model::RegisteredKind& kind,
                               const Configuration& configuration) {
    if (session.quiet)
        return {entry.name};
    std::vector<std::string> row{entry.name, entry.library.text, entry.listed ? "" : "(not listed)"};
    if (kind.key == model::kDriverKind.key)
        row.insert(row.begin() + 1, stateOf(entry, configuration));
    return row;
}

ExitCode list(const Session& session, const Configuration& configuration, const model::RegisteredKind& kind) {
    const std::string plural = std::string(kind.word) + "s";
    Json json = Json::array();
    std::vector<std::vector<std::string>> rows;
    for (const Registered& entry : configuration.all(kind)) {
        if (session.json)
            json.push_back(entryJson(entry, kind, configuration));
        else
            rows.push_back(rowOf(session, entry, kind, configuration));
    }
    if (session.json)
        session.printJson({{plural, json}});
    session.printTable(rows);
    if (rows.empty())
        session.say("There are no " + plural + " in " + configuration.file(model::FileKind::drivers).path);
    return ExitCode::done;
}

ExitCode showDriver(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const auto driver = configuration.driver(name);
    if (!driver)
        return session.fail(model::noneRegistered(configuration, model::kDriverKind, name));
    const std::vector<std::string> users = namesOf(configuration.dataSourcesOf(driver->name));
    if (session.json) {
        Json json = entryJson(*driver, model::kDriverKind, configuration);
        if (driver->header)
            json["line"] = driver->header.line;
        json["file"] = driver->file->path;
        json["keys"] = keysJson(session, driver->section);
        json["dataSources"] = users;
        session.printJson(json);
        return ExitCode::done;
    }
    printHeader(session, driver->name);
    printKeys(session, driver->section);
    session.say("; library " + std::string(stateOf(*driver, configuration)) + ", used by " +
                (users.empty() ? "no data source" : model::joined(users)) + ", " + driver->file->path);
    return ExitCode::done;
}

void onList(Verb verb, const model::RegisteredKind& kind) {
    verb.onRead(Needs::drivers, [&kind](const Session& run, const Configuration& configuration, const Line& /*line*/) {
        return list(run, configuration, kind);
    });
}

}  // namespace

void addRegisteredReadCommands(CLI::App& app, Session& session) {
    onList(addVerb(app, session, "driver list", "List the drivers and the state of their libraries",
                   "odbcadmin driver list\nodbcadmin driver list --json"),
           model::kDriverKind);
    addVerb(app, session, "driver show", "Show all keys of a driver", "odbcadmin driver show SQLite3")
        .operand("NAME", "Driver", kOne, Complete::driver)
        .onRead(Needs::drivers, showDriver);
    onList(addVerb(app, session, "translator list", "List the translators", "odbcadmin translator list"),
           model::kTranslatorKind);
}

}  // namespace jx::cli
