// paths: every file that is considered, and which one counts.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/model/config_places.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Candidate;
using model::ConfigPlace;

// With --root it is the command itself that moves the files.
std::vector<std::string> variablesOf(const Session& session) {
    return session.root.empty() ? model::variablesThatMove() : std::vector<std::string>();
}

Json candidateJson(const Candidate& candidate) {
    return {{"path", candidate.path},
            {"wins", candidate.wins},
            {"exists", candidate.exists},
            {"rights", doctor::rightsText(candidate.path)},
            {"readers", doctor::readersText(candidate.path)},
            {"why", candidate.why}};
}

std::string presence(const Candidate& candidate) {
    return candidate.exists ? doctor::rightsText(candidate.path) + ", read by " + doctor::readersText(candidate.path)
                            : "not there";
}

Json placeJson(const ConfigPlace& place) {
    Json candidates = Json::array();
    for (const Candidate& each : place.candidates)
        candidates.push_back(candidateJson(each));
    return {{"file", place.file}, {"scope", scopeWord(place.scope)}, {"path", place.path}, {"candidates", candidates}};
}

ExitCode printJson(const Session& session, const std::vector<ConfigPlace>& places) {
    Json files = Json::array();
    for (const ConfigPlace& place : places)
        files.push_back(placeJson(place));
    Json programs = Json::array();
    for (const model::Generation& each : model::generations())
        programs.push_back({{"program", each.program}, {"dataSources", each.dataSources}, {"drivers", each.drivers}});
    session.printJson({{"files", files}, {"variables", variablesOf(session)}, {"programs", programs}});
    return ExitCode::done;
}

// The paths that count; the system's only where there are such files.
ExitCode printPaths(const Session& session, const std::vector<ConfigPlace>& places) {
    for (const ConfigPlace& place : places) {
        const bool isThere = std::any_of(place.candidates.begin(), place.candidates.end(),
                                         [](const Candidate& each) { return each.wins && each.exists; });
        if (place.scope == model::Scope::user || isThere || session.system)
            session.print(place.path);
    }
    return ExitCode::done;
}

void printPrograms(const Session& session) {
    std::vector<std::vector<std::string>> rows{{"Read by", "data sources", "drivers"}};
    for (const model::Generation& each : model::generations())
        for (std::size_t i = 0; i < each.dataSources.size(); ++i)
            rows.push_back({i == 0 ? "  " + each.program : "", each.dataSources[i], each.drivers[i]});
    session.printTable(rows);
}

ExitCode runPaths(const Session& session, const Line& /*line*/) {
    std::vector<ConfigPlace> places = model::configPlaces(session.imageRoot());
    std::erase_if(places, [&](const ConfigPlace& place) { return !session.isAbout(place.scope); });
    if (session.json)
        return printJson(session, places);
    if (session.quiet)
        return printPaths(session, places);
    std::vector<std::vector<std::string>> rows;
    for (const ConfigPlace& place : places) {
        rows.push_back({place.file + " (" + scopeWord(place.scope) + ")"});
        for (const Candidate& each : place.candidates)
            rows.push_back({(each.wins ? "  * " : "    ") + each.path, presence(each), each.why});
    }
    session.printTable(rows);
    session.print(
        "* the files that are read, the user's first; changes go to the user's, with --system to the system's");
    const std::vector<std::string> variables = variablesOf(session);
    session.print("\nSet here: " +
                  (variables.empty() ? "none of ODBCINI, ODBCINSTINI and ODBCSYSINI"
                                     : model::printable(model::joined(variables))) +
                  "\n");
    printPrograms(session);
    return ExitCode::done;
}

}  // namespace

void addPaths(CLI::App& app, Session& session) {
    addVerb(app, session, "paths", "Show the files of the user and of the system, what moves them and who reads them",
            "odbcadmin paths\nodbcadmin -q paths")
        .onRun(runPaths);
}

}  // namespace jx::cli
