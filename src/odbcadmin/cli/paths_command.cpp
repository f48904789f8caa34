// odbcadmin paths: every file that is considered, and which one counts.
#include <nlohmann/json.hpp>
#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/doctor_commands.h"

#include "odbcadmin/doctor/config_places.h"

namespace jx::admin {

namespace {

Json candidateJson(const doctor::Candidate& candidate) {
    Json object;
    object["path"] = candidate.path;
    object["wins"] = candidate.wins;
    object["exists"] = candidate.exists;
    object["rights"] = candidate.rights;
    object["readers"] = candidate.readers;
    object["why"] = candidate.why;
    return object;
}

std::string presence(const doctor::Candidate& candidate) {
    return candidate.exists ? candidate.rights + ", read by " + candidate.readers : "not there";
}

ExitCode printJson(const Session& session, const std::vector<doctor::ConfigPlace>& places) {
    Json object;
    object["files"] = Json::array();
    for (const doctor::ConfigPlace& place : places) {
        Json file;
        file["file"] = place.file;
        file["path"] = place.path;
        file["candidates"] = Json::array();
        for (const doctor::Candidate& each : place.candidates)
            file["candidates"].push_back(candidateJson(each));
        object["files"].push_back(file);
    }
    session.printJson(object);
    return ExitCode::done;
}

ExitCode runPaths(const Session& session) {
    const std::vector<doctor::ConfigPlace> places = doctor::configPlaces();
    if (session.json)
        return printJson(session, places);
    std::vector<std::vector<std::string>> rows;
    for (const doctor::ConfigPlace& place : places) {
        if (session.quiet) {
            session.print(place.path);
            continue;
        }
        rows.push_back({place.file});
        for (const doctor::Candidate& each : place.candidates)
            rows.push_back({(each.wins ? "  * " : "    ") + each.path, presence(each), each.why});
    }
    session.printTable(rows);
    session.say("* the file that is read and written");
    return ExitCode::done;
}

}  // namespace

void addPaths(CLI::App& app, Session& session) {
    CLI::App& verb = addVerb(app, "paths", "Show every file that is considered, and which one counts",
                             "odbcadmin paths\nodbcadmin -q paths");
    onRun(verb, session, [](Session& run) { return runPaths(run); });
}

}  // namespace jx::admin
