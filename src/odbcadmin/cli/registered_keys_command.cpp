// driver set, unset and rename; the same of translators.
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/library_warning.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/registration.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

namespace jx::cli {

namespace {

using model::ChangeResult;
using model::Configuration;
using model::RegisteredKind;

// A path is taken as --lib and --setup take it: from the current directory.
void makePathsAbsolute(model::Pairs& keys, const RegisteredKind& kind) {
    for (auto& [key, value] : keys)
        if ((rules::sameName(key, kind.key) || rules::sameName(key, rules::kSetup)) && !value.empty())
            value = model::absoluteLibrary(value);
}

ExitCode setKeys(const Session& session, const Configuration& configuration, const Line& line,
                 const RegisteredKind& kind) {
    const std::string name = line.text("NAME");
    auto keys = takePairs(session, line.texts("KEY=VALUE"), {});
    if (!keys)
        return ExitCode::wrongUse;
    makePathsAbsolute(*keys, kind);
    const ChangeResult result = model::setRegisteredKeys(configuration, kind, name, *keys, session.way());
    if (result.isDone())
        for (const auto& [key, value] : *keys)
            if (rules::sameName(key, kind.key) || rules::sameName(key, rules::kSetup))
                warnOfLibrary(session, rules::sameName(key, rules::kSetup) ? "setup library" : "library", value);
    return session.report(result, "Changed " + std::string(kind.word) + " " + name);
}

ExitCode unsetKeys(const Session& session, const Configuration& configuration, const Line& line,
                   const RegisteredKind& kind) {
    const std::string name = line.text("NAME");
    return session.report(model::unsetRegisteredKeys(configuration, kind, name, line.texts("KEY"), session.way()),
                          "Changed " + std::string(kind.word) + " " + name);
}

ExitCode rename(const Session& session, const Configuration& configuration, const Line& line,
                const RegisteredKind& kind) {
    const std::string from = line.text("OLD");
    const std::string to = line.text("NEW");
    const auto entry = configuration.find(kind, from);
    const bool isDriver = kind.key == model::kDriverKind.key;
    const std::vector<std::string> users =
        isDriver ? namesOf(configuration.dataSourcesOf(from)) : std::vector<std::string>();
    return session.report(model::renameRegistered(configuration, kind, from, to, session.way()),
                          "Renamed " + std::string(kind.word) + " " + (entry ? entry->name : from) + " to " + to +
                              (users.empty() ? "" : ", also in data source " + model::joined(users)));
}

using Change = ExitCode (*)(const Session&, const Configuration&, const Line&, const RegisteredKind&);

Verb::ReadingAction with(Change change, const RegisteredKind& kind) {
    return [change, &kind](const Session& run, const Configuration& configuration, const Line& line) {
        return change(run, configuration, line, kind);
    };
}

void addDriverKeys(CLI::App& app, Session& session) {
    addVerb(app, session, "driver set", "Set keys of a driver; Driver and Setup are its libraries",
            "odbcadmin driver set SQLite3 FileUsage=1\n"
            "odbcadmin driver set SQLite3 Driver=/opt/sqlite/libsqlite3odbc.so --dry-run")
        .operand("NAME", "Driver", kOne, Complete::driver)
        .operand("KEY=VALUE", "What to store", kSome, Complete::keysOfDriver)
        .onRead(Needs::drivers, with(setKeys, model::kDriverKind));
    addVerb(app, session, "driver unset", "Remove keys of a driver", "odbcadmin driver unset SQLite3 FileUsage Setup")
        .operand("NAME", "Driver", kOne, Complete::driver)
        .operand("KEY", "Keys", kSome, Complete::keysOfDriver)
        .onRead(Needs::drivers, with(unsetKeys, model::kDriverKind));
    addVerb(app, session, "driver rename", "Give a driver another name, also in the data sources that name it",
            "odbcadmin driver rename SQLite3 \"SQLite 3\"")
        .operand("OLD", "Driver", kOne, Complete::driver)
        .operand("NEW", "New name", kOne)
        .onRead(Needs::bothFiles, with(rename, model::kDriverKind));
}

void addTranslatorKeys(CLI::App& app, Session& session) {
    addVerb(app, session, "translator set", "Set keys of a translator; Translator and Setup are its libraries",
            "odbcadmin translator set Latin1 Setup=/usr/lib/odbc/liblatin1.so")
        .operand("NAME", "Translator", kOne, Complete::translator)
        .operand("KEY=VALUE", "What to store", kSome, Complete::keysOfTranslator)
        .onRead(Needs::drivers, with(setKeys, model::kTranslatorKind));
    addVerb(app, session, "translator unset", "Remove keys of a translator", "odbcadmin translator unset Latin1 Setup")
        .operand("NAME", "Translator", kOne, Complete::translator)
        .operand("KEY", "Keys", kSome, Complete::keysOfTranslator)
        .onRead(Needs::drivers, with(unsetKeys, model::kTranslatorKind));
    addVerb(app, session, "translator rename", "Give a translator another name",
            "odbcadmin translator rename Latin1 \"Latin 1\"")
        .operand("OLD", "Translator", kOne, Complete::translator)
        .operand("NEW", "New name", kOne)
        .onRead(Needs::drivers, with(rename, model::kTranslatorKind));
}

}  // namespace

void addRegisteredKeysCommands(CLI::App& app, Session& session) {
    addDriverKeys(app, session);
    addTranslatorKeys(app, session);
}

}  // namespace jx::cli
