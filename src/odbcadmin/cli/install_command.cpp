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
#include "odbcadmin/model/root_directory.h"
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
    std::string directory;  // where the libraries lie; in an image as that has it
    Names drivers;
    Names translators = {};  // all of the script
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
void callLibrary(const Session& session, const Request& request) {
    const Waiting waiting(session.quiet, "Installing from " + request.script);
    std::string list;
    for (const std::string& name : request.drivers)
        list.append(name).push_back('\0');
    list.push_back('\0');
    const auto installOdbc = trial::installerFunction<decltype(&SQLInstallODBC)>("SQLInstallODBC");
    if (installOdbc != nullptr)
        installOdbc(0, request.script.c_str(), request.directory.c_str(), list.data());
}

// Report: what the script was asked for, and whatever else is another than before.
class Report {
public:
    // root: of the image in which the libraries lie, or none.
    Report(const Configuration& before, const Configuration& after, std::string root)
        : before_(before), after_(after), root_(std::move(root)) {}

    void registered(const model::RegisteredKind& kind, const Names& wanted) {
        Json& list = json_[std::string(kind.word) + "s"] = Json::array();
        for (const Compared& each : model::compareRegistered(kind, before_, after_)) {
            if (each.status == Compared::Status::unchanged && find(wanted, each.name) == wanted.end())
                continue;
            const std::string library = after_.find(kind, each.name)->library.text;
            const char* state = doctor::libraryFileState(library.empty() ? "" : root_ + library);
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
    std::string root_;
    Json json_ = Json::object();
    std::vector<Names> rows_{};
};

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

// What the library made of the copies.
// NOLINTNEXTLINE(bugprone-exception-escape): moving Json throws nothing
struct Outcome {
    model::Reason trouble;  // why nobody knows
    std::vector<model::Unfulfilled> missing;
    std::vector<Names> rows;
    Json json;
};

Outcome installInto(const Session& session, const model::IniView& script, const Request& request,
                    const model::ScratchFiles& copies) {
    const Configuration before = Configuration::read();
    callLibrary(session, request);
    model::Reason failure = jxIniLastFailure().step != JxIniStepNone ? model::lastFailure() : model::Reason();
    failure.fact = copies.inWordsOfOriginals(failure.fact);
    const Configuration after = Configuration::read();
    if (before.trouble() || after.trouble())
        return {before.trouble() ? before.trouble() : after.trouble(), {}, {}, {}};
    const model::ScriptWishes wishes{script, request.directory, request.drivers, request.translators};
    Report report(before, after, session.imageRoot());
    report.registered(model::kDriverKind, request.drivers);
    report.registered(model::kTranslatorKind, request.translators);
    report.dataSources();
    return {{}, model::unfulfilled(wishes, after, failure), report.rows(), report.json()};
}

ExitCode install(const Session& session, const model::IniView& script, const Request& request) {
    Outcome outcome;
    const model::ChangeWay way = session.way();
    const model::ChangeResult result = model::changeByCopies(
        way, [&](const model::ScratchFiles& copies) { outcome = installInto(session, script, request, copies); });
    if (!trial::installerTrouble().empty())
        return session.fail(ExitCode::failed, "Cannot load the installer library: " + trial::installerTrouble(),
                            "Install odbcadmin again, together with its libraries.");
    if (outcome.trouble)
        return session.fail(outcome.trouble);
    if (!result.isDone())
        return session.report(result, {});
    if (!session.json && !session.quiet && !session.writesNothing())
        session.printTable(outcome.rows);
    const std::vector<model::Unfulfilled>& missing = outcome.missing;
    outcome.json["missing"] = jsonOf(missing);
    // What is missing stands in the object, or in the failure, in place of a sentence that all was done.
    const bool tellsOutcome = missing.empty() || session.json || session.writesNothing();
    const ExitCode code =
        tellsOutcome ? session.report(result, "Installed from " + request.script, {}, outcome.json) : ExitCode::done;
    return missing.empty()
               ? code
               : session.fail(ExitCode::failed, "Not installed from " + request.script + ": " + textOf(missing),
                              "Mend what is named and install again; what is entered already stays.");
}

// Where the script's libraries lie; in an image as that has it, since a path of this system leads nowhere there.
ExitCode chooseDirectory(const Session& session, const std::string& from, Request& request) {
    const std::string root = session.imageRoot();
    const std::string scripts = std::filesystem::path(request.script).parent_path().string();
    const std::optional<std::string> beside = model::pathInImage(root, scripts);
    if (from.empty() && !beside)
        return session.fail(ExitCode::wrongUse, request.script + " does not lie in the image " + root,
                            "Give --from the directory of the image where the libraries lie.");
    const std::string given = model::absolutePath(from);
    request.directory = from.empty() ? *beside : model::pathInImage(root, given).value_or(given);
    std::error_code error;
    if (!from.empty() && !std::filesystem::is_directory(root + request.directory, error))
        return session.fail(ExitCode::fileTrouble, "There is no directory " + root + request.directory,
                            "Give --from the directory where the libraries lie.");
    return ExitCode::done;
}

ExitCode runInstall(const Session& session, const Configuration& /*configuration*/, const Line& line) {
    Request request{model::absolutePath(line.text("FILE")), {}, line.texts("DRIVER")};
    if (const ExitCode code = chooseDirectory(session, line.text("--from"), request); code != ExitCode::done)
        return code;
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
    return install(session, *script, request);
}

}  // namespace

void addInstallCommand(CLI::App& app, Session& session) {
    addVerb(app, session, "install", "Install drivers and translators from a script, as products bring it",
            "odbcadmin install /media/pack/odbc.inf\n"
            "odbcadmin install /media/pack/odbc.inf --system --check\n"
            "odbcadmin install /media/pack/odbc.inf --from /opt/pack/lib \"Sample Driver\" --dry-run")
        .operand("FILE", "Installation script (.inf)", kOne, Complete::files)
        .operand("DRIVER", "Drivers of the script; all of them without any", kAny, Complete::scriptsDrivers)
        .option("--from", "Where the libraries lie; where the script does, without it", Complete::directories)
        .onRead(Needs::bothFiles, runInstall);
}

}  // namespace jx::cli
