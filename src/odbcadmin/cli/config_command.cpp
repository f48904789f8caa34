// config get, set, unset and list: any section and key of any INI file.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/sections.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

namespace jx::cli {

namespace {

using model::IniSection;
using model::IniView;

// The file that is to be read, which must be there, but for the user's own two.
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

ExitCode noSection(const Session& session, const IniView& view, const Line& line) {
    const std::string name = line.text("SECTION");
    std::vector<std::string> names;
    for (const IniSection& section : view.sections())
        names.emplace_back(section.name);
    return session.fail(ExitCode::notFound, "There is no section " + name + " in " + model::pathOf(line.text("FILE")),
                        model::adviceFor(name, names, "See odbcadmin config list FILE."));
}

ExitCode getKey(const Session& session, const Line& line) {
    ExitCode code = ExitCode::done;
    const std::optional<IniView> view = readGiven(session, line.text("FILE"), code);
    if (!view)
        return code;
    const IniSection* section = view->section(line.text("SECTION"));
    if (section == nullptr)
        return noSection(session, *view, line);
    const std::string key = line.text("KEY");
    return printValue(session, section, key, "Section " + line.text("SECTION") + " has no key " + key, "",
                      {{"section", section->name}});
}

ExitCode listSections(const Session& session, const Line& line) {
    const std::string only = line.text("SECTION");
    ExitCode code = ExitCode::done;
    const std::optional<IniView> view = readGiven(session, line.text("FILE"), code);
    if (!view)
        return code;
    if (!only.empty() && view->section(only) == nullptr)
        return noSection(session, *view, line);
    Json json = Json::array();
    for (const IniSection& section : view->sections()) {
        if (!only.empty() && !rules::sameName(rules::trimmed(only), section.name))
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
        session.printJson({{"file", model::pathOf(line.text("FILE"))}, {"sections", json}});
    return ExitCode::done;
}

// compose is what the verb does to the file.
Verb::Action changeWith(const std::function<void(model::FileChange&, const Line&)>& compose) {
    return [compose](const Session& session, const Line& line) {
        const model::ChangeWay way = session.way();
        model::FileChange change(line.text("FILE"), way);
        compose(change, line);
        return session.report(change.finish(), "Changed " + model::pathOf(line.text("FILE")));
    };
}

void setValue(model::FileChange& change, const Line& line) {
    if (model::Reason reason = model::whyHidden(line.text("KEY"), line.text("VALUE")))
        change.fail(std::move(reason));
    change.set(line.text("SECTION"), line.text("KEY"), line.text("VALUE"));
}

void unsetValue(model::FileChange& change, const Line& line) {
    if (line.has("KEY"))
        change.erase(line.text("SECTION"), line.text("KEY"));
    else
        change.eraseSection(line.text("SECTION"));
}

constexpr const char* kFile = "A path, or .odbc.ini or .odbcinst.ini for the user's own";

}  // namespace

void addConfigCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "config get", "Print one value", "odbcadmin config get .odbcinst.ini SQLite3 Driver")
        .operand("FILE", kFile, kOne, Complete::files)
        .operand("SECTION", "Section", kOne, Complete::sections)
        .operand("KEY", "Key", kOne, Complete::keysOfSection)
        .onRun(getKey);
    addVerb(app, session, "config set", "Store one value", "odbcadmin config set ./servers.ini Sales Timeout 30")
        .operand("FILE", kFile, kOne, Complete::files)
        .operand("SECTION", "Section", kOne, Complete::sections)
        .operand("KEY", "Key", kOne, Complete::keysOfSection)
        .operand("VALUE", "Value", kOne)
        .onRun(changeWith(setValue));
    addVerb(app, session, "config unset", "Remove a key, or a whole section",
            "odbcadmin config unset ./servers.ini Sales Timeout\n"
            "odbcadmin config unset ./servers.ini Sales --dry-run")
        .operand("FILE", kFile, kOne, Complete::files)
        .operand("SECTION", "Section", kOne, Complete::sections)
        .operand("KEY", "Key", kOptional, Complete::keysOfSection)
        .onRun(changeWith(unsetValue));
    addVerb(app, session, "config list", "Print sections and keys",
            "odbcadmin config list .odbc.ini\nodbcadmin config list ./servers.ini Sales")
        .operand("FILE", kFile, kOne, Complete::files)
        .operand("SECTION", "Only this section", kOptional)
        .onRun(listSections);
}

}  // namespace jx::cli
