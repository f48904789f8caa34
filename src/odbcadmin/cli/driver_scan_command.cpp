// driver scan: drivers that lie on the disk.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/driver_scan.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using doctor::FoundDriver;

bool isRegistered(const FoundDriver& found, const model::Configuration& configuration) {
    const std::vector<model::Registered> drivers = configuration.drivers();
    return std::any_of(drivers.begin(), drivers.end(), [&](const model::Registered& each) {
        std::error_code ignored;
        return each.library && std::filesystem::equivalent(each.library.text, found.path, ignored);
    });
}

std::string addLine(const FoundDriver& found) {
    return "odbcadmin driver add " + model::shellWord(found.name) + " --lib " + model::shellWord(found.path) +
           (found.setup.empty() ? "" : " --setup " + model::shellWord(found.setup));
}

Json foundJson(const FoundDriver& found, bool registered) {
    Json object;
    object["name"] = found.name;
    object["lib"] = found.path;
    object["setup"] = found.setup;
    object["registered"] = registered;
    return object;
}

ExitCode show(const Session& session, const model::Configuration& configuration,
              const std::vector<std::string>& directories, const std::vector<FoundDriver>& drivers) {
    Json object;
    object["directories"] = directories;
    object["drivers"] = Json::array();
    std::size_t registered = 0;
    for (const FoundDriver& each : drivers) {
        const bool known = isRegistered(each, configuration);
        registered += known ? 1 : 0;
        object["drivers"].push_back(foundJson(each, known));
        if (!session.json && !known)
            session.print(session.quiet ? each.path : addLine(each));
    }
    if (session.json)
        session.printJson(object);
    else if (registered == drivers.size())
        session.warn((drivers.empty() ? "No drivers were found in " : "All drivers found are registered already: ") +
                     model::joined(directories));
    return ExitCode::done;
}

ExitCode runScan(const Session& session, const model::Configuration& configuration, const Line& line) {
    std::vector<std::string> directories;
    for (const std::string& each : line.texts("DIR")) {
        std::error_code error;
        if (!std::filesystem::is_directory(each, error))
            return session.fail(ExitCode::fileTrouble, "There is no directory " + each, "Give directories that exist.");
        directories.push_back(model::absolutePath(each));
    }
    if (directories.empty())
        directories = doctor::usualDriverDirectories(doctor::loaderPlaces());
    std::vector<FoundDriver> drivers;
    {
        Progress progress(session.quiet);
        drivers = doctor::scanForDrivers(
            directories, [&](const std::string& what) { progress.begin(what); }, [&] { progress.tick(); });
    }
    return show(session, configuration, directories, drivers);
}

}  // namespace

void addDriverScan(CLI::App& app, Session& session) {
    addVerb(app, session, "driver scan", "Find ODBC drivers on the disk and print the lines that would add them",
            "odbcadmin driver scan\nodbcadmin driver scan /opt/acme/lib\nodbcadmin driver scan | sh")
        .operand("DIR", "Directories to look into; the usual ones without any", kAny, Complete::directories)
        .onRead(Needs::nothing, runScan);
}

}  // namespace jx::cli
