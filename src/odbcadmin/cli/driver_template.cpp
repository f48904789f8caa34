// What a template holds, as drivers of this system.
#include "odbcadmin/cli/driver_template.h"

#include <filesystem>

#include "odbcadmin/cli/image_libraries.h"
#include "odbcadmin/doctor/driver_scan.h"
#include "odbcadmin/model/driver_template.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::DriverTemplate;

// Keeps the driver that is asked for; false after it said that there is none.
bool choose(const Session& session, const std::string& name, DriverTemplate& file) {
    if (name.empty())
        return true;
    const model::Registration* wanted = file.find(name);
    if (wanted == nullptr) {
        session.fail(ExitCode::notFound, "There is no driver " + name + " in " + file.path,
                     model::adviceFor(name, model::namesOf(file.drivers),
                                      "It offers " + model::joined(model::namesOf(file.drivers)) + "."));
        return false;
    }
    file.drivers = {*wanted};
    return true;
}

}  // namespace

ExitCode addFromTemplate(const Session& session, const model::Configuration& configuration, const Line& line) {
    const std::string path = model::absolutePath(line.text("-f"));
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        return session.fail(ExitCode::fileTrouble, "There is no file " + path,
                            "Give the template that the driver's package brings.");
    std::optional<DriverTemplate> file = DriverTemplate::read(path);
    if (!file)
        return session.fail(model::lastFailure());
    if (file->drivers.empty())
        return session.fail(ExitCode::notFound, "There is no section with a Driver in " + path,
                            "Give the template that the driver's package brings.");
    if (!choose(session, line.text("NAME"), *file))
        return ExitCode::notFound;
    std::vector<std::string> missing;
    const std::vector<model::Registration> drivers = doctor::placedDrivers(*file, placesOf(session), missing);
    if (!missing.empty())
        return session.fail(ExitCode::notFound,
                            "The library was not found where drivers are installed: " + model::joined(missing),
                            "Install the driver's package, or register it with --lib.");
    return session.report(model::registerFromTemplate(configuration, drivers, session.way()),
                          "Registered driver " + model::joined(model::namesOf(drivers)) + " from " + path);
}

}  // namespace jx::cli
