// config get, set, unset and list: any section and key of any INI file.
#include <odbcinst.h>

#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/outcome.h"
#include "odbcadmin/cli/text.h"
#include "rules/names.h"
#include "rules/secrets.h"

namespace jx::admin {

namespace {

std::string shownValue(const Session& session, const IniEntry& entry) {
    return session.showSecrets ? std::string(entry.value) : rules::masked(entry.key, entry.value);
}

// A file that is to be read here must be there, but for the user's own two.
std::optional<IniView> readGiven(const Session& session, const std::string& file, ExitCode& code) {
    std::optional<IniView> view = readFile(session, file.c_str(), code);
    if (!view || !view->isAbsent() || file == INS_ODBCINI_FILENAME || file == INS_ODBCINST_FILENAME)
        return view;
    code = session.fail(ExitCode::fileTrouble, "Cannot open " + file + ": No such file or directory",
                        "The user's own files are called .odbc.ini and .odbcinst.ini here.");
    return std::nullopt;
}

std::vector<std::string> sectionNames(const IniView& view) {
    std::vector<std::string> names;
    for (const IniSection& section : view.sections())
        names.emplace_back(section.name);
    return names;
}

ExitCode noSection(const Session& session, const IniView& view, const std::string& file, const std::string& section) {
    return session.fail(ExitCode::notFound, "There is no section " + section + " in " + pathOf(file.c_str()),
                        adviceFor(section, sectionNames(view), "odbcadmin config list FILE shows those there are."));
}

ExitCode getValue(const Session& session, const std::string& file, const std::string& section, const std::string& key) {
    ExitCode code = ExitCode::done;
    const std::optional<IniView> view = readGiven(session, file, code);
    if (!view)
        return code;
    const IniSection* found = view->section(section);
    if (found == nullptr)
        return noSection(session, *view, file, section);
    const IniEntry* entry = found->find(key);
    if (entry == nullptr) {
        std::vector<std::string> keys;
        for (const IniEntry& each : found->entries)
            keys.emplace_back(each.key);
        return session.fail(ExitCode::notFound, "Section " + section + " has no key " + key, adviceFor(key, keys, ""));
    }
    const std::string shown = shownValue(session, *entry);
    if (session.json)
        session.printJson({{"section", found->name}, {"key", entry->key}, {"value", shown}, {"line", entry->line}});
    else
        session.print(shown);
    if (shown != entry->value)
        session.warn("the value is hidden; --show-secrets shows it");
    return ExitCode::done;
}

void printSection(const Session& session, const IniSection& section) {
    session.print("[" + printable(section.name) + "]");
    for (const IniEntry& entry : section.entries)
        session.print(printable(entry.key) + "=" + printable(shownValue(session, entry)));
}

Json asJson(const Session& session, const IniSection& section) {
    Json keys = Json::object();
    for (const IniEntry& entry : section.entries)
        keys[std::string(entry.key)] = shownValue(session, entry);
    return {{"name", section.name}, {"line", section.line}, {"keys", keys}};
}

ExitCode listSections(const Session& session, const std::string& file, const std::string& only) {
    ExitCode code = ExitCode::done;
    const std::optional<IniView> view = readGiven(session, file, code);
    if (!view)
        return code;
    if (!only.empty() && view->section(only) == nullptr)
        return noSection(session, *view, file, only);
    Json json = Json::array();
    for (const IniSection& section : view->sections()) {
        if (!only.empty() && !rules::sameName(rules::trimmed(only), section.name))
            continue;
        if (session.json)
            json.push_back(asJson(session, section));
        else if (session.quiet)
            session.print(printable(section.name));
        else
            printSection(session, section);
    }
    if (session.json)
        session.printJson({{"file", pathOf(file.c_str())}, {"sections", json}});
    return ExitCode::done;
}

ExitCode setValue(const Session& session, const std::string& file, const std::string& section, const std::string& key,
                  const std::string& value) {
    FileChange change(session, file.c_str());
    if (!change.isOpen() || !change.set(section, key, value))
        return change.trouble();
    Outcome outcome;
    const ExitCode code = outcome.finish(change);
    return code != ExitCode::done ? code : outcome.tell(session, "Changed " + pathOf(file.c_str()));
}

ExitCode unsetValue(const Session& session, const std::string& file, const std::string& section,
                    const CLI::Option* key) {
    if (const std::string why = whyNoSection(section); !why.empty())
        return session.fail(ExitCode::invalid, "There is never a section called \"" + section + "\": " + why, "");
    FileChange change(session, file.c_str());
    if (!change.isOpen())
        return change.trouble();
    if (!(isGiven(key) ? change.erase(section, operand(key, 0)) : change.eraseSection(section)))
        return change.trouble();
    Outcome outcome;
    const ExitCode code = outcome.finish(change);
    return code != ExitCode::done ? code : outcome.tell(session, "Changed " + pathOf(file.c_str()));
}

struct Place {
    const CLI::Option* file;
    const CLI::Option* section;
    const CLI::Option* key;
};

Place addPlace(CLI::App& verb, int leastKeys) {
    return {
        addOperands(verb, "FILE", "A path, or .odbc.ini or .odbcinst.ini for the user's own", {1, 1, Complete::files}),
        addOperands(verb, "SECTION", "Section", {1, 1, Complete::sections}),
        addOperands(verb, "KEY", "Key", {leastKeys, 1, Complete::keysOfSection})};
}

}  // namespace

void addConfigCommands(CLI::App& app, Session& session) {
    CLI::App& config = noun(app, "config");
    CLI::App& get = addVerb(config, "get", "Print one value", "odbcadmin config get .odbcinst.ini SQLite3 Driver");
    const Place got = addPlace(get, 1);
    onRun(get, session, [got](Session& run) {
        return getValue(run, operand(got.file, 0), operand(got.section, 0), operand(got.key, 0));
    });

    CLI::App& set = addVerb(config, "set", "Store one value", "odbcadmin config set ./servers.ini Sales Timeout 30");
    const Place stored = addPlace(set, 1);
    const CLI::Option* value = addOperands(set, "VALUE", "Value", {1, 1});
    onRun(set, session, [=](Session& run) {
        return setValue(run, operand(stored.file, 0), operand(stored.section, 0), operand(stored.key, 0),
                        operand(value, 0));
    });

    CLI::App& unset = addVerb(config, "unset", "Remove a key, or a whole section",
                              "odbcadmin config unset ./servers.ini Sales Timeout\n"
                              "odbcadmin config unset ./servers.ini Sales --dry-run");
    const Place removed = addPlace(unset, 0);
    onRun(unset, session, [removed](Session& run) {
        return unsetValue(run, operand(removed.file, 0), operand(removed.section, 0), removed.key);
    });

    CLI::App& list = addVerb(config, "list", "Print sections and keys",
                             "odbcadmin config list .odbc.ini\nodbcadmin config list ./servers.ini Sales");
    const CLI::Option* file =
        addOperands(list, "FILE", "A path, or .odbc.ini or .odbcinst.ini for the user's own", {1, 1, Complete::files});
    const CLI::Option* section = addOperands(list, "SECTION", "Only this section", {0, 1});
    onRun(list, session, [=](Session& run) { return listSections(run, operand(file, 0), operand(section, 0)); });
}

}  // namespace jx::admin
