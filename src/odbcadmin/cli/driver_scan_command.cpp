// driver scan and adopt: drivers that lie on the disk.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/image_libraries.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/driver_scan.h"
#include "odbcadmin/doctor/installer_search.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/registration.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

namespace jx::cli {

namespace {

using doctor::FoundDriver;

// With the options that say which files are meant.
std::string addLine(const Session& session, const FoundDriver& found) {
    std::string line = "odbcadmin" + (session.root.empty() ? "" : " --root " + model::shellWord(session.imageRoot())) +
                       (session.system ? " --system" : "") + " driver add " + model::shellWord(found.name) + " --lib " +
                       model::shellWord(found.path) +
                       (found.setup.empty() ? "" : " --setup " + model::shellWord(found.setup));
    for (const auto& [key, value] : found.keys)
        line += " " + model::shellWord(key + "=" + value);
    return line;
}

// A comment for a shell that gets the lines.
std::string registeredLine(const FoundDriver& found, const model::Registered& driver) {
    return "# " + found.path + " is registered: " + driver.name + ", " + driver.library.where();
}

Json foundJson(const FoundDriver& found, const std::optional<model::Registered>& registered) {
    Json object;
    object["name"] = found.name;
    object["lib"] = found.path;
    object["setup"] = found.setup;
    object["keys"] = Json::object();
    for (const auto& [key, value] : found.keys)
        object["keys"][key] = value;
    object["registered"] = registered.has_value();
    if (registered) {
        object["registeredAs"] = registered->name;
        object["where"] = registered->library.where();
    }
    return object;
}

ExitCode show(const Session& session, const model::Configuration& configuration,
              const std::vector<std::string>& directories, const std::vector<FoundDriver>& drivers) {
    Json object;
    object["directories"] = directories;
    object["drivers"] = Json::array();
    std::size_t registered = 0;
    for (const FoundDriver& each : drivers) {
        const std::optional<model::Registered> known =
            doctor::registeredWith(configuration, each.path, session.imageRoot());
        registered += known ? 1 : 0;
        object["drivers"].push_back(foundJson(each, known));
        if (session.json || (known && session.quiet))
            continue;
        session.print(session.quiet ? each.path : known ? registeredLine(each, *known) : addLine(session, each));
    }
    if (session.json)
        session.printJson(object);
    else if (registered == drivers.size())
        session.warn((drivers.empty() ? "No drivers were found in " : "All drivers found are registered already: ") +
                     model::joined(directories));
    return ExitCode::done;
}

// The directories that are given, or the usual ones; nothing after it said that one is not there.
std::optional<std::vector<std::string>> directoriesOf(const Session& session, const std::vector<std::string>& given) {
    std::vector<std::string> directories;
    for (const std::string& each : given) {
        std::error_code error;
        if (!std::filesystem::is_directory(each, error)) {
            session.fail(ExitCode::fileTrouble, "There is no directory " + each, "Give directories that exist.");
            return std::nullopt;
        }
        directories.push_back(model::absolutePath(each));
    }
    return given.empty() ? doctor::usualDriverDirectories(placesOf(session)) : directories;
}

std::vector<FoundDriver> find(const Session& session, const std::vector<std::string>& directories) {
    Progress progress(session.quiet);
    return doctor::scanForDrivers(
        directories, [&](const std::string& what) { progress.begin(what); }, [&] { progress.tick(); },
        doctor::Candidates::all, placesOf(session));
}

ExitCode runScan(const Session& session, const model::Configuration& configuration, const Line& line) {
    const auto directories = directoriesOf(session, line.texts("DIR"));
    return directories ? show(session, configuration, *directories, find(session, *directories))
                       : ExitCode::fileTrouble;
}

// Of drivers that have the same name the first one that the scan found is meant.
const FoundDriver* called(const std::vector<FoundDriver>& drivers, const std::string& name) {
    const auto found = std::find_if(drivers.begin(), drivers.end(), [&](const FoundDriver& each) {
        return rules::sameName(each.name, name) || each.path == name;
    });
    return found == drivers.end() ? nullptr : &*found;
}

// The driver of that name may be the same one already.
model::WhenPresent presentOf(const Session& session, const model::Configuration& configuration,
                             const FoundDriver& found) {
    const std::string root = session.imageRoot();
    const auto& driver = configuration.driver(found.name);
    const bool isSame = driver && driver->library && doctor::isSameFile(root + driver->library.text, root + found.path);
    return isSame ? model::WhenPresent::change : model::WhenPresent::fail;
}

ExitCode runAdopt(const Session& session, const model::Configuration& configuration, const Line& line) {
    const auto directories = directoriesOf(session, line.texts("--in"));
    if (!directories)
        return ExitCode::fileTrouble;
    const std::vector<FoundDriver> drivers = find(session, *directories);
    std::vector<model::Entering> entries;
    std::vector<std::string> adopted;
    for (const std::string& name : line.texts("NAME")) {
        const FoundDriver* found = called(drivers, session.storedPath(name));
        if (found == nullptr)
            return session.fail(
                ExitCode::notFound, "No driver " + name + " was found in " + model::joined(*directories),
                model::adviceFor(name, model::namesOf(drivers), "odbcadmin driver scan shows what there is."));
        // Named twice, by its name and its path.
        if (std::find(adopted.begin(), adopted.end(), found->name) != adopted.end())
            continue;
        model::Registration wish{found->name, found->path, {}, found->keys};
        if (!found->setup.empty())
            wish.setup = found->setup;
        entries.push_back({wish, presentOf(session, configuration, *found)});
        adopted.push_back(found->name);
    }
    return session.report(model::registerEntries(configuration, model::kDriverKind, entries, session.way()),
                          "Registered driver " + model::joined(adopted));
}

}  // namespace

void addDriverScan(CLI::App& app, Session& session) {
    addVerb(app, session, "driver scan", "Find ODBC drivers on the disk and print the lines that would add them",
            "odbcadmin driver scan\nodbcadmin driver scan /opt/acme/lib\nodbcadmin driver scan | sh")
        .operand("DIR", "Directories to look into; the usual ones without any", kAny, Complete::directories)
        .onRead(Needs::nothing, runScan);
    addVerb(app, session, "driver adopt", "Register drivers that driver scan finds, under the names it shows",
            "odbcadmin driver adopt 'PostgreSQL Unicode'\nodbcadmin driver adopt Acme --in /opt/acme/lib")
        .operand("NAME", "Drivers as driver scan shows them, or paths of their libraries", kSome)
        .option("--in", "A directory to look into instead of the usual ones", Complete::directories)
        .onRead(Needs::drivers, runAdopt);
}

}  // namespace jx::cli
