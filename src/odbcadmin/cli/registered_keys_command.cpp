// driver set, unset and rename; the same of translators.
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/followers.h"
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
void makePathsAbsolute(const Session& session, model::Pairs& keys, const RegisteredKind& kind) {
    for (auto& [key, value] : keys)
        if ((rules::sameName(key, kind.key) || rules::sameName(key, rules::kSetup)) && !value.empty())
            value = session.storedPath(value);
}

ExitCode setKeys(const Session& session, const Configuration& configuration, const Line& line,
                 const RegisteredKind& kind) {
    const std::string name = line.text("NAME");
    auto keys = takePairs(session, line.texts("KEY=VALUE"), {});
    if (!keys)
        return ExitCode::wrongUse;
    makePathsAbsolute(session, *keys, kind);
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
    const Followers followers = isDriver && entry ? followersOf(session, entry->name) : Followers();
    const std::string names = namesIn(session, followers.changed);
    const ChangeResult result =
        model::renameRegistered(configuration, kind, from, to, followers.scopes(), session.way());
    std::vector<std::string> remarks;
    // The system's data sources can only use a driver of the system's.
    if (isDriver && !result.files.empty())
        remarks = remarksOnLeft(session, followers, "dsn ensure NAME --driver " + model::shellWord(to),
                                session.system ? "" : "driver copy " + model::shellWord(to) + " --to system");
    return session.report(result,
                          "Renamed " + std::string(kind.word) + " " + (entry ? entry->name : from) + " to " + to +
                              (names.empty() ? "" : ", also in data source " + names),
                          remarks);
}

using Change = ExitCode (*)(const Session&, const Configuration&, const Line&, const RegisteredKind&);

Verb::ReadingAction with(Change change, const RegisteredKind& kind) {
    return [change, &kind](const Session& run, const Configuration& configuration, const Line& line) {
        return change(run, configuration, line, kind);
    };
}

// What the operands of a kind's verbs are.
struct Operands {
    const RegisteredKind& kind;
    const char* what;
    const char* names;  // what completes NAME and OLD
    const char* keys;
};
constexpr Operands kOfDriver{model::kDriverKind, "Driver", Complete::driver, Complete::keysOfDriver};
constexpr Operands kOfTranslator{model::kTranslatorKind, "Translator", Complete::translator,
                                 Complete::keysOfTranslator};

void onSet(Verb verb, const Operands& of) {
    verb.operand("NAME", of.what, kOne, of.names)
        .operand("KEY=VALUE", "What to store", kSome, of.keys)
        .onRead(Needs::drivers, with(setKeys, of.kind));
}

void onUnset(Verb verb, const Operands& of) {
    verb.operand("NAME", of.what, kOne, of.names)
        .operand("KEY", "Keys", kSome, of.keys)
        .onRead(Needs::drivers, with(unsetKeys, of.kind));
}

void onRename(Verb verb, const Operands& of, Needs needs) {
    verb.operand("OLD", of.what, kOne, of.names).operand("NEW", "New name", kOne).onRead(needs, with(rename, of.kind));
}

}  // namespace

void addRegisteredKeysCommands(CLI::App& app, Session& session) {
    onSet(addVerb(app, session, "driver set", "Set keys of a driver; Driver and Setup are its libraries",
                  "odbcadmin driver set SQLite3 FileUsage=1\n"
                  "odbcadmin driver set SQLite3 Driver=/opt/sqlite/libsqlite3odbc.so --dry-run"),
          kOfDriver);
    onUnset(addVerb(app, session, "driver unset", "Remove keys of a driver",
                    "odbcadmin driver unset SQLite3 FileUsage Setup"),
            kOfDriver);
    onRename(addVerb(app, session, "driver rename", "Give a driver another name, also in the data sources that name it",
                     "odbcadmin driver rename SQLite3 \"SQLite 3\""),
             kOfDriver, Needs::bothFiles);
    onSet(addVerb(app, session, "translator set", "Set keys of a translator; Translator and Setup are its libraries",
                  "odbcadmin translator set Latin1 Setup=/usr/lib/odbc/liblatin1.so"),
          kOfTranslator);
    onUnset(addVerb(app, session, "translator unset", "Remove keys of a translator",
                    "odbcadmin translator unset Latin1 Setup"),
            kOfTranslator);
    onRename(addVerb(app, session, "translator rename", "Give a translator another name",
                     "odbcadmin translator rename Latin1 \"Latin 1\""),
             kOfTranslator, Needs::drivers);
}

}  // namespace jx::cli
