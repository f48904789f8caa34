// install: a batch installation from a script, and what it entered.
#include <jxini.h>
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
#include "odbcadmin/model/script_wishes.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/installer_library.h"
#include "rules/names.h"
#include "rules/storable.h"

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

    // Where the libraries lie.
    std::string directory() const { return from.empty() ? std::filesystem::path(script).parent_path().string() : from; }
};

Names::const_iterator find(const Names& names, const std::string& name) {
    return std::find_if(names.begin(), names.end(),
                        [&](const std::string& each) { return rules::sameName(each, name); });
}

// The installer library would write a section that is read back under another name.
model::Reason whyNotStored(const std::string& name) {
    const rules::Why why =
        rules::whyNotGivenBack(name) != nullptr ? rules::whyNotGivenBack(name) : rules::whyNoSection(name);
    if (why == nullptr)
        return {};
    return {model::Reason::Kind::refused, "\"" + name + "\" of the script cannot be installed: " + why,
            "Ask the maker of the script for another name; nothing was written."};
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
        if (const model::Reason reason = whyNotStored(*found))
            return session.fail(reason);
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
    const auto installOdbc = trial::installerFunction<decltype(&SQLInstallODBC)>("SQLInstallODBC");
    if (installOdbc != nullptr)
        installOdbc(0, request.script.c_str(), request.from.empty() ? nullptr : request.from.c_str(), list.data());
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
            const char* state = doctor::libraryFileState(library);
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

// Why the store refused to write, now that something is missing; the installation itself gives no reason.
model::Reason storesReason(const model::Reason& last) {
    for (const char* file : {rules::kDriverFile, rules::kDataSourceFile}) {
        if (last)
            break;
        const model::ChangeWay way;
        const model::FileChange probe(file, way);
        if (probe.reason())
            return probe.reason();
    }
    return last;
}

std::string textOf(const std::vector<model::Unfulfilled>& missing) {
    std::string text;
    for (const model::Unfulfilled& each : missing)
        text.append(text.empty() ? "" : "; ").append(each.what + " (" + each.why + ")");
    return text;
}

Json jsonOf(const std::vector<model::Unfulfilled>& missing) {
    Json list = Json::array();
    for (const model::Unfulfilled& each : missing)
        list.push_back({{"what", each.what}, {"why", each.why}});
    return list;
}

ExitCode install(const Session& session, const Configuration& before, const model::IniView& script,
                 const Request& request) {
    const model::ChangeWay way = session.way();
    const model::ScratchFiles files(way);
    if (files.trouble())
        return session.fail(files.trouble());
    installInto(session, request);
    if (!trial::installerTrouble().empty())
        return session.fail(ExitCode::failed, "Cannot load the installer library: " + trial::installerTrouble(),
                            "Install odbcadmin again, together with its libraries.");
    const bool hasFailed = jxIniLastFailure().step != JxIniStepNone;
    const model::Reason failure = hasFailed ? model::lastFailure() : model::Reason();
    const Configuration after = Configuration::read();
    if (after.trouble())
        return session.fail(after.trouble());
    const model::ScriptWishes wishes{script, request.directory(), request.drivers, request.translators};
    std::vector<model::Unfulfilled> missing = model::unfulfilled(wishes, after, failure);
    if (!missing.empty())
        missing = model::unfulfilled(wishes, after, storesReason(failure));
    Report report(before, after);
    report.registered(model::kDriverKind, request.drivers);
    report.registered(model::kTranslatorKind, request.translators);
    report.dataSources();
    if (!session.json && !session.quiet && !session.writesNothing())
        session.printTable(report.rows());
    Json json = report.json();
    json["missing"] = jsonOf(missing);
    // What is missing stands in the object, or in the failure, in place of a sentence that all was done.
    const bool tellsOutcome = missing.empty() || session.json || session.writesNothing();
    const ExitCode code =
        tellsOutcome ? session.report(files.changes(), "Installed from " + request.script, {}, json) : ExitCode::done;
    return missing.empty()
               ? code
               : session.fail(ExitCode::failed, "Not installed from " + request.script + ": " + textOf(missing),
                              "Mend what is named and install again; what is entered already stays.");
}

ExitCode runInstall(const Session& session, const Configuration& /*configuration*/, const Line& line) {
    if (session.system)
        return session.fail(ExitCode::wrongUse, "An installation script registers its drivers for this user",
                            "Install without --system, then use odbcadmin driver move NAME --to system.");
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
    if (const ExitCode code = chooseDrivers(session, model::offeredBy(*script, rules::kDriverList), request);
        code != ExitCode::done)
        return code;
    request.translators = model::offeredBy(*script, rules::kTranslatorList);
    for (const std::string& name : request.translators)
        if (const model::Reason reason = whyNotStored(name))
            return session.fail(reason);
    if (request.drivers.empty() && request.translators.empty())
        return session.fail(ExitCode::notFound, request.script + " offers neither drivers nor translators",
                            "It must list them in sections [ODBC Drivers] and [ODBC Translators].");
    return install(session, Configuration::read(), *script, request);
}

}  // namespace

void addInstallCommand(CLI::App& app, Session& session) {
    addVerb(app, session, "install", "Install drivers and translators from a script, as products bring it",
            "odbcadmin install /media/pack/odbc.inf\n"
            "odbcadmin install /media/pack/odbc.inf --from /opt/pack/lib \"Sample Driver\" --dry-run")
        .operand("FILE", "Installation script (.inf)", kOne, Complete::files)
        .operand("DRIVER", "Drivers of the script; all of them without any", kAny, Complete::scriptsDrivers)
        .option("--from", "Where the libraries lie; where the script does, without it", Complete::directories)
        .thisSystemOnly()
        .onRead(Needs::bothFiles, runInstall);
}

}  // namespace jx::cli
