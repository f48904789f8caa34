// install: a batch installation from a script, and what it entered.
#include <jxini.h>
#include <odbcinst.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/outcome.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/scratch_files.h"
#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/library_state.h"
#include "rules/names.h"

namespace jx::admin {

namespace {

struct Request {
    std::string script;
    std::string from;
    std::vector<std::string> drivers;
};

std::vector<std::string> offered(const IniView& script, const char* list) {
    std::vector<std::string> names;
    if (const IniSection* section = script.section(list))
        for (const IniEntry& entry : section->entries)
            names.push_back(withoutQuotes(entry.key));
    std::erase(names, "");
    return names;
}

// The drivers asked for as the script spells them; all of the script when none is named.
ExitCode chooseDrivers(const Session& session, const std::vector<std::string>& all, Request& request) {
    if (request.drivers.empty())
        request.drivers = all;
    for (std::string& name : request.drivers) {
        const auto found =
            std::find_if(all.begin(), all.end(), [&](const std::string& each) { return rules::sameName(each, name); });
        if (found == all.end())
            return session.fail(ExitCode::notFound, "There is no driver " + name + " in " + request.script,
                                adviceFor(name, all, "It offers " + (all.empty() ? "no driver" : joined(all))));
        if (found->find('=') != std::string::npos)
            return session.fail(ExitCode::invalid, "The driver " + name + " cannot be installed: its name holds =",
                                "Ask the maker of the script for another one.");
        name = *found;
    }
    return ExitCode::done;
}

// The library's own word on success is always no: the files tell.
void installInto(const Session& session, const Request& request) {
    const Waiting waiting(session.quiet, "Installing from " + request.script);
    std::string list;
    for (const std::string& name : request.drivers)
        list.append(name).push_back('\0');
    list.push_back('\0');
    SQLInstallODBC(0, request.script.c_str(), request.from.empty() ? nullptr : request.from.c_str(), list.data());
}

// A list's line and a section as one text, to be compared.
std::string entryText(const IniView& file, const char* list, const std::string& name) {
    const IniEntry* line = file.find(list, name);
    std::string text = line == nullptr ? "-" : "+" + std::string(line->value);
    if (const IniSection* section = file.section(name))
        for (const IniEntry& entry : section->entries)
            text.append("\n").append(entry.key).append("=").append(entry.value);
    return text;
}

std::string statusOf(const IniView& before, const IniView& after, const char* list, const std::string& name) {
    const std::string old = entryText(before, list, name);
    return old == entryText(after, list, name) ? "unchanged" : old == "-" ? "added" : "changed";
}

bool isNamed(const std::vector<std::string>& names, const std::string& name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& each) { return rules::sameName(each, name); });
}

// Report: what the script was asked for, and whatever else is another than before.
class Report {
public:
    Report(const Configuration& before, const Configuration& after) : before_(before), after_(after) {}

    void drivers(const std::vector<std::string>& wanted) {
        registered("driver", "drivers", INS_ODBCINI_DRIVERS, after_.drivers(), wanted);
    }

    void translators(const std::vector<std::string>& wanted) {
        registered("translator", "translators", INS_ODBCINST_TRANSLATORS, after_.translators(), wanted);
    }

    void dataSources() {
        json_["dataSources"] = Json::array();
        for (const DataSource& source : after_.dataSources()) {
            const std::string status =
                statusOf(before_.sourcesFile(), after_.sourcesFile(), INS_ODBCINI_DS, source.name);
            if (status == "unchanged")
                continue;
            rows_.push_back({"data source", source.name, status, source.driver});
            json_["dataSources"].push_back({{"name", source.name}, {"status", status}, {"driver", source.driver}});
        }
    }

    const Json& json() const { return json_; }
    const std::vector<std::vector<std::string>>& rows() const { return rows_; }

private:
    void registered(const char* word, const char* member, const char* list, const std::vector<Registered>& all,
                    const std::vector<std::string>& wanted) {
        json_[member] = Json::array();
        for (const Registered& each : all) {
            const std::string status = statusOf(before_.driversFile(), after_.driversFile(), list, each.name);
            if (status == "unchanged" && !isNamed(wanted, each.name))
                continue;
            const char* state = doctor::libraryStateWord(doctor::libraryState(each.library));
            rows_.push_back({word, each.name, status, each.library.empty() ? "no library" : each.library, state});
            json_[member].push_back(
                {{"name", each.name}, {"status", status}, {"library", each.library}, {"state", state}});
        }
    }

    const Configuration& before_;
    const Configuration& after_;
    Json json_ = Json::object();
    std::vector<std::vector<std::string>> rows_{};
};

std::vector<std::string> notInstalled(const Configuration& after, const std::vector<std::string>& wanted) {
    std::vector<std::string> names;
    for (const std::string& name : wanted) {
        const std::optional<Registered> driver = after.driver(name);
        if (!driver || !driver->isListed || driver->library.empty())
            names.push_back(name);
    }
    return names;
}

ExitCode install(const Session& session, const Request& request, const std::vector<std::string>& translators) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> before = Configuration::read(session, code);
    if (!before)
        return code;
    Outcome outcome;
    std::optional<Configuration> after;
    {
        ScratchFiles files(session);
        if (files.trouble() != ExitCode::done)
            return files.trouble();
        installInto(session, request);
        after = Configuration::read(session, code);
        if (!after)
            return code;
        files.noteChanges(session, outcome);
    }
    Report report(*before, *after);
    report.drivers(request.drivers);
    report.translators(translators);
    report.dataSources();
    if (!session.json && !session.quiet && !session.writesNothing())
        session.printTable(report.rows());
    code = outcome.tell(session, "Installed from " + request.script, report.json());
    const std::vector<std::string> missing = notInstalled(*after, request.drivers);
    return missing.empty() ? code
                           : session.fail(ExitCode::failed, "Not installed: " + joined(missing),
                                          "Its section in " + request.script +
                                              " must have a line \"Driver\" whose second field names the library.");
}

ExitCode runInstall(const Session& session, Request request) {
    std::error_code error;
    if (!request.from.empty() && !std::filesystem::is_directory(request.from, error))
        return session.fail(ExitCode::fileTrouble, "There is no directory " + request.from,
                            "Give --from the directory where the libraries lie.");
    ExitCode code = ExitCode::done;
    const std::optional<IniView> script = readFile(session, request.script.c_str(), code);
    if (!script)
        return code;
    if (script->isAbsent())
        return session.fail(ExitCode::fileTrouble, "Cannot open " + request.script + ": No such file or directory",
                            "Give the path of an installation script.");
    if (code = chooseDrivers(session, offered(*script, INS_ODBCINI_DRIVERS), request); code != ExitCode::done)
        return code;
    const std::vector<std::string> translators = offered(*script, INS_ODBCINST_TRANSLATORS);
    if (request.drivers.empty() && translators.empty())
        return session.fail(ExitCode::notFound, request.script + " offers neither drivers nor translators",
                            "It must list them in sections [ODBC Drivers] and [ODBC Translators].");
    return install(session, request, translators);
}

}  // namespace

void addInstallCommand(CLI::App& app, Session& session) {
    CLI::App& verb = addVerb(app, "install", "Install drivers and translators from a script, as products bring it",
                             "odbcadmin install /media/pack/odbc.inf\n"
                             "odbcadmin install /media/pack/odbc.inf --from /opt/pack/lib \"Sample Driver\" --dry-run");
    const CLI::Option* script = addOperands(verb, "FILE", "Installation script (.inf)", {1, 1, Complete::files});
    const CLI::Option* drivers = addOperands(verb, "DRIVER", "Drivers of the script; all of them without any",
                                             {0, -1, Complete::scriptsDrivers});
    const CLI::Option* from = addValueOption(
        verb, "--from", "Where the libraries lie; where the script does, without it", Complete::directories);
    onRun(verb, session, [=](Session& run) {
        const std::string directory = operand(from, 0);
        return runInstall(run, {absolutePath(operand(script, 0)), directory.empty() ? "" : absolutePath(directory),
                                operands(drivers)});
    });
}

}  // namespace jx::admin
