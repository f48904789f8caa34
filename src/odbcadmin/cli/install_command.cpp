// install: a batch installation from a script, and what it entered.
#include <odbcinst.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/library_state.h"
#include "odbcadmin/model/comparison.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/scratch_files.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

namespace jx::cli {

namespace {

using model::Compared;
using model::Configuration;
using Names = std::vector<std::string>;

struct Request {
    std::string script;
    std::string from;
    Names drivers;
    Names translators = {};  // all of the script
};

Names offered(const model::IniView& script, const char* list) {
    Names names;
    if (const model::IniSection* section = script.section(list))
        for (const std::string& key : section->keys())
            names.push_back(model::withoutQuotes(key));
    std::erase(names, "");
    return names;
}

Names::const_iterator find(const Names& names, const std::string& name) {
    return std::find_if(names.begin(), names.end(),
                        [&](const std::string& each) { return rules::sameName(each, name); });
}

// The drivers asked for as the script spells them; all of the script when none is named.
ExitCode chooseDrivers(const Session& session, const Names& all, Request& request) {
    if (request.drivers.empty())
        request.drivers = all;
    for (std::string& name : request.drivers) {
        const auto found = find(all, name);
        if (found == all.end())
            return session.fail(
                ExitCode::notFound, "There is no driver " + name + " in " + request.script,
                model::adviceFor(name, all, "It offers " + (all.empty() ? "no driver" : model::joined(all))));
        if (found->find('=') != std::string::npos)
            return session.fail(ExitCode::invalid, "The driver " + name + " cannot be installed: its name holds =",
                                "Ask the maker of the script for another one.");
        name = *found;
    }
    return ExitCode::done;
}

// The library's result is always failure: only the files show what was entered.
void installInto(const Session& session, const Request& request) {
    const Waiting waiting(session.quiet, "Installing from " + request.script);
    std::string list;
    for (const std::string& name : request.drivers)
        list.append(name).push_back('\0');
    list.push_back('\0');
    SQLInstallODBC(0, request.script.c_str(), request.from.empty() ? nullptr : request.from.c_str(), list.data());
}

// Report: what the script was asked for, and whatever else is another than before.
class Report {
public:
    Report(const Configuration& before, const Configuration& after) : before_(before), after_(after) {}

    void registered(const model::RegisteredKind& kind, const Names& wanted) {
        Json& list = json_[std::string(kind.word) + "s"] = Json::array();
        for (const Compared& each : model::compareRegistered(kind, before_, after_)) {
            if (each.status == Compared::Status::unchanged && find(wanted, each.name) == wanted.end())
                continue;
            const std::string library = after_.find(kind, each.name)->library.text;
            const char* state = doctor::libraryState(library);
            const char* status = model::statusWord(each.status);
            rows_.push_back({kind.word, each.name, status, library.empty() ? "no library" : library, state});
            list.push_back({{"name", each.name}, {"status", status}, {"library", library}, {"state", state}});
        }
    }

    void dataSources() {
        Json& list = json_["dataSources"] = Json::array();
        for (const Compared& each : model::compareDataSources(before_, after_)) {
            if (each.status == Compared::Status::unchanged)
                continue;
            const std::string driver = after_.dataSource(each.name)->driver;
            const char* status = model::statusWord(each.status);
            rows_.push_back({"data source", each.name, status, driver});
            list.push_back({{"name", each.name}, {"status", status}, {"driver", driver}});
        }
    }

    const Json& json() const { return json_; }
    const std::vector<Names>& rows() const { return rows_; }

private:
    const Configuration& before_;
    const Configuration& after_;
    Json json_ = Json::object();
    std::vector<Names> rows_{};
};

Names notInstalled(const Configuration& after, const Names& wanted) {
    Names names;
    for (const std::string& name : wanted) {
        const auto driver = after.driver(name);
        if (!driver || !driver->listed || !driver->library)
            names.push_back(name);
    }
    return names;
}

ExitCode install(const Session& session, const Configuration& before, const Request& request) {
    const model::ChangeWay way = session.way();
    const model::ScratchFiles files(way);
    if (files.trouble())
        return session.fail(files.trouble());
    installInto(session, request);
    const Configuration after = Configuration::read();
    if (after.trouble())
        return session.fail(after.trouble());
    Report report(before, after);
    report.registered(model::kDriverKind, request.drivers);
    report.registered(model::kTranslatorKind, request.translators);
    report.dataSources();
    if (!session.json && !session.quiet && !session.writesNothing())
        session.printTable(report.rows());
    const ExitCode code = session.report(files.changes(), "Installed from " + request.script, {}, report.json());
    const Names missing = notInstalled(after, request.drivers);
    return missing.empty() ? code
                           : session.fail(ExitCode::failed, "Not installed: " + model::joined(missing),
                                          "Its section in " + request.script +
                                              " must have a line \"Driver\" whose second field names the library.");
}

ExitCode runInstall(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string directory = line.text("--from");
    Request request{model::absolutePath(line.text("FILE")), directory.empty() ? "" : model::absolutePath(directory),
                    line.texts("DRIVER")};
    std::error_code error;
    if (!request.from.empty() && !std::filesystem::is_directory(request.from, error))
        return session.fail(ExitCode::fileTrouble, "There is no directory " + request.from,
                            "Give --from the directory where the libraries lie.");
    const std::optional<model::IniView> script = model::IniView::read(request.script);
    if (!script)
        return session.fail(model::lastFailure());
    if (script->isAbsent())
        return session.fail(ExitCode::fileTrouble, "Cannot open " + request.script + ": No such file or directory",
                            "Give the path of an installation script.");
    if (const ExitCode code = chooseDrivers(session, offered(*script, rules::kDriverList), request);
        code != ExitCode::done)
        return code;
    request.translators = offered(*script, rules::kTranslatorList);
    if (request.drivers.empty() && request.translators.empty())
        return session.fail(ExitCode::notFound, request.script + " offers neither drivers nor translators",
                            "It must list them in sections [ODBC Drivers] and [ODBC Translators].");
    return install(session, configuration, request);
}

}  // namespace

void addInstallCommand(CLI::App& app, Session& session) {
    addVerb(app, session, "install", "Install drivers and translators from a script, as products bring it",
            "odbcadmin install /media/pack/odbc.inf\n"
            "odbcadmin install /media/pack/odbc.inf --from /opt/pack/lib \"Sample Driver\" --dry-run")
        .operand("FILE", "Installation script (.inf)", kOne, Complete::files)
        .operand("DRIVER", "Drivers of the script; all of them without any", kAny, Complete::scriptsDrivers)
        .option("--from", "Where the libraries lie; where the script does, without it", Complete::directories)
        .onRead(Needs::bothFiles, runInstall);
}

}  // namespace jx::cli
