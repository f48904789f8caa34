// paths: every file that is considered, and which one counts.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/file_rights.h"
#include "odbcadmin/model/config_places.h"

namespace jx::cli {

namespace {

using model::Candidate;
using model::ConfigPlace;

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

ExitCode printJson(const Session& session, const std::vector<ConfigPlace>& places) {
    Json files = Json::array();
    for (const ConfigPlace& place : places) {
        Json candidates = Json::array();
        for (const Candidate& each : place.candidates)
            candidates.push_back(candidateJson(each));
        files.push_back({{"file", place.file}, {"path", place.path}, {"candidates", candidates}});
    }
    session.printJson({{"files", files}});
    return ExitCode::done;
}

ExitCode runPaths(const Session& session, const Line& /*line*/) {
    const std::vector<ConfigPlace> places = model::configPlaces();
    if (session.json)
        return printJson(session, places);
    std::vector<std::vector<std::string>> rows;
    for (const ConfigPlace& place : places) {
        if (session.quiet) {
            session.print(place.path);
            continue;
        }
        rows.push_back({place.file});
        for (const Candidate& each : place.candidates)
            rows.push_back({(each.wins ? "  * " : "    ") + each.path, presence(each), each.why});
    }
    session.printTable(rows);
    session.say("* the file that is read and written");
    return ExitCode::done;
}

}  // namespace

void addPaths(CLI::App& app, Session& session) {
    addVerb(app, session, "paths", "Show every file that is considered, and which one counts",
            "odbcadmin paths\nodbcadmin -q paths")
        .onRun(runPaths);
}

}  // namespace jx::cli
