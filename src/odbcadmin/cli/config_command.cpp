// config get, set, unset and list: any section and key of any INI file.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/sections.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

namespace jx::cli {

namespace {

using model::IniSection;
using model::IniView;

struct Place {
    std::string file, section;
};

// The file that is to be read, which must be there, but for the user's own two; then the section, which may be null.
std::optional<IniView> readGiven(const Session& session, const std::string& file, ExitCode& code) {
    std::optional<IniView> view = IniView::read(file);
    if (!view) {
        code = session.fail(model::lastFailure());
        return view;
    }
    if (!view->isAbsent() || file == rules::kDataSourceFile || file == rules::kDriverFile)
        return view;
    code = session.fail(ExitCode::fileTrouble, "Cannot open " + file + ": No such file or directory",
                        "The user's own files are called .odbc.ini and .odbcinst.ini here.");
    return std::nullopt;
}

ExitCode noSection(const Session& session, const IniView& view, const Place& place) {
    std::vector<std::string> names;
    for (const IniSection& section : view.sections())
        names.emplace_back(section.name);
    return session.fail(ExitCode::notFound, "There is no section " + place.section + " in " + model::pathOf(place.file),
                        model::adviceFor(place.section, names, "odbcadmin config list FILE shows those there are."));
}

ExitCode getValue(const Session& session, const Place& place, const std::string& key) {
    ExitCode code = ExitCode::done;
    const std::optional<IniView> view = readGiven(session, place.file, code);
    if (!view)
        return code;
    const IniSection* section = view->section(place.section);
    if (section == nullptr)
        return noSection(session, *view, place);
    return printValue(session, section, key, "Section " + place.section + " has no key " + key, "",
                      {{"section", section->name}});
}

ExitCode listSections(const Session& session, const Place& place) {
    ExitCode code = ExitCode::done;
    const std::optional<IniView> view = readGiven(session, place.file, code);
    if (!view)
        return code;
    if (!place.section.empty() && view->section(place.section) == nullptr)
        return noSection(session, *view, place);
    Json json = Json::array();
    for (const IniSection& section : view->sections()) {
        if (!place.section.empty() && !rules::sameName(rules::trimmed(place.section), section.name))
            continue;
        if (session.json) {
            json.push_back({{"name", section.name}, {"line", section.line}, {"keys", keysJson(session, &section)}});
        } else if (session.quiet) {
            session.print(model::printable(section.name));
        } else {
            printHeader(session, section.name);
            printKeys(session, &section);
        }
    }
    if (session.json)
        session.printJson({{"file", model::pathOf(place.file)}, {"sections", json}});
    return ExitCode::done;
}

struct PlaceOperands {
    const CLI::Option* file;
    const CLI::Option* section;

    Place place() const { return {operand(file, 0), operand(section, 0)}; }
};

PlaceOperands addPlace(CLI::App& verb, const std::string& section, OperandRule sectionRule) {
    return {
        addOperands(verb, "FILE", "A path, or .odbc.ini or .odbcinst.ini for the user's own", {1, 1, Complete::files}),
        addOperands(verb, "SECTION", section, sectionRule)};
}

const CLI::Option* addKey(CLI::App& verb, int least) {
    return addOperands(verb, "KEY", "Key", {least, 1, Complete::keysOfSection});
}

// compose is what the verb does to the section.
void onChange(CLI::App& verb, Session& session, const PlaceOperands& operands,
              const std::function<void(model::FileChange&, const std::string& section)>& compose) {
    onRun(verb, session, [=](Session& run) {
        const Place place = operands.place();
        const model::ChangeWay way = run.way();
        model::FileChange change(place.file, way);
        compose(change, place.section);
        return run.report(change.finish(), "Changed " + model::pathOf(place.file));
    });
}

}  // namespace

void addConfigCommands(CLI::App& app, Session& session) {
    CLI::App& config = noun(app, "config");
    const OperandRule oneSection{1, 1, Complete::sections};
    CLI::App& get = addVerb(config, "get", "Print one value", "odbcadmin config get .odbcinst.ini SQLite3 Driver");
    const PlaceOperands got = addPlace(get, "Section", oneSection);
    const CLI::Option* gotKey = addKey(get, 1);
    onRun(get, session, [=](Session& run) { return getValue(run, got.place(), operand(gotKey, 0)); });

    CLI::App& set = addVerb(config, "set", "Store one value", "odbcadmin config set ./servers.ini Sales Timeout 30");
    const PlaceOperands stored = addPlace(set, "Section", oneSection);
    const CLI::Option* storedKey = addKey(set, 1);
    const CLI::Option* value = addOperands(set, "VALUE", "Value", {1, 1});
    onChange(set, session, stored, [=](model::FileChange& change, const std::string& section) {
        change.set(section, operand(storedKey, 0), operand(value, 0));
    });

    CLI::App& unset = addVerb(config, "unset", "Remove a key, or a whole section",
                              "odbcadmin config unset ./servers.ini Sales Timeout\n"
                              "odbcadmin config unset ./servers.ini Sales --dry-run");
    const PlaceOperands removed = addPlace(unset, "Section", oneSection);
    const CLI::Option* removedKey = addKey(unset, 0);
    onChange(unset, session, removed, [=](model::FileChange& change, const std::string& section) {
        if (isGiven(removedKey))
            change.erase(section, operand(removedKey, 0));
        else
            change.eraseSection(section);
    });

    CLI::App& list = addVerb(config, "list", "Print sections and keys",
                             "odbcadmin config list .odbc.ini\nodbcadmin config list ./servers.ini Sales");
    const PlaceOperands listed = addPlace(list, "Only this section", {0, 1});
    onRun(list, session, [=](Session& run) { return listSections(run, listed.place()); });
}

}  // namespace jx::cli
