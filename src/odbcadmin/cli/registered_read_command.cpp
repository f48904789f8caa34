// driver list and show, and translator list.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/scope_output.h"
#include "odbcadmin/cli/sections.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/library_state.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::Registered;

// In an image a library lies below its root; one without a path is found by the image's own loader.
std::string stateOf(const Session& session, const Registered& driver, const Configuration& configuration) {
    const std::string& library = driver.library.text;
    if (!session.root.empty() && !library.starts_with('/'))
        return library.empty() ? "missing" : "not looked for";
    return doctor::libraryState(session.imageRoot() + library, doctor::LibraryRole::driver, configuration.paths());
}

// The state of its library is shown for drivers only.
Json entryJson(const Session& session, const Registered& entry, const model::RegisteredKind& kind,
               const Configuration& configuration, bool isShadowed) {
    Json json{{"name", entry.name}, {"library", entry.library.text}, {"setup", entry.setup.text}};
    if (kind.key == model::kDriverKind.key)
        json["state"] = stateOf(session, entry, configuration);
    json["listed"] = static_cast<bool>(entry.listed);
    addScope(json, *entry.file, isShadowed);
    return json;
}

// The rows of a list; those that are shadowed come last.
struct RegisteredRows {
    std::vector<Registered> answering, shadowed;

    bool nameScopes() const { return holdsSystems(answering) || holdsSystems(shadowed); }
};

std::vector<std::string> rowOf(const Session& session, const Registered& entry, bool namesScope,
                               const model::RegisteredKind& kind, const Configuration& configuration, bool isShadowed) {
    std::vector<std::string> row{entry.name};
    if (kind.key == model::kDriverKind.key)
        row.emplace_back(stateOf(session, entry, configuration));
    row.push_back(entry.library.text);
    if (namesScope)
        row.emplace_back(scopeWord(entry.file->scope));
    row.emplace_back(isShadowed ? "(shadowed)" : entry.listed ? "" : "(not listed)");
    return row;
}

void printList(const Session& session, const Configuration& configuration, const model::RegisteredKind& kind,
               const RegisteredRows& rows) {
    std::vector<std::vector<std::string>> table;
    const bool namesScopes = rows.nameScopes();
    for (const Registered& entry : rows.answering)
        table.push_back(session.quiet ? std::vector<std::string>{entry.name}
                                      : rowOf(session, entry, namesScopes, kind, configuration, /*isShadowed=*/false));
    if (!session.quiet)
        for (const Registered& entry : rows.shadowed)
            table.push_back(rowOf(session, entry, namesScopes, kind, configuration, /*isShadowed=*/true));
    session.printTable(table);
}

ExitCode list(const Session& session, const Configuration& configuration, const model::RegisteredKind& kind) {
    const std::string plural = std::string(kind.word) + "s";
    const RegisteredRows rows{configuration.all(kind), configuration.hidden(kind)};
    if (!session.json) {
        printList(session, configuration, kind, rows);
        if (rows.answering.empty())
            session.say("There are no " + plural + " in " + lookedAt(configuration, model::FileKind::drivers));
        return ExitCode::done;
    }
    Json json = Json::array();
    for (const Registered& entry : rows.answering)
        json.push_back(entryJson(session, entry, kind, configuration, /*isShadowed=*/false));
    for (const Registered& entry : rows.shadowed)
        json.push_back(entryJson(session, entry, kind, configuration, /*isShadowed=*/true));
    session.printJson({{plural, json}});
    return ExitCode::done;
}

ExitCode showDriver(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const auto& driver = configuration.driver(name);
    if (!driver)
        return session.fail(model::noneRegistered(configuration, model::kDriverKind, name));
    const std::vector<std::string> users = namesOf(configuration.dataSourcesOf(driver->name));
    if (session.json) {
        Json json = entryJson(session, *driver, model::kDriverKind, configuration, /*isShadowed=*/false);
        if (driver->header)
            json["line"] = driver->header.line;
        json["file"] = driver->file->path;
        json["hides"] = placeJson(driver->hides);
        json["keys"] = keysJson(session, driver->section);
        json["dataSources"] = users;
        session.printJson(json);
        return ExitCode::done;
    }
    printHeader(session, driver->name);
    printKeys(session, driver->section);
    session.say("; library " + stateOf(session, *driver, configuration) + ", used by " +
                (users.empty() ? "no data source" : model::joined(users)) + ", " + driver->file->path +
                hidesText(*driver));
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
