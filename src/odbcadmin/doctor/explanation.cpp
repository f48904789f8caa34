// Building the steps.
#include "odbcadmin/doctor/explanation.h"

#include <string_view>
#include <utility>

#include "odbcadmin/doctor/library_state.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/doctor/unclosed_headers.h"
#include "odbcadmin/doctor/unknown_name.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

namespace jx::doctor {

namespace {

using model::FileKind;
using model::Located;

class Explainer {
public:
    Explainer(const model::Configuration& configuration, const std::string& systemFolder)
        : configuration_(configuration), systemFolder_(systemFolder) {}

    void dataSource(const model::DataSource& source) {
        subject_ = "data source " + source.name;
        const std::string& path = source.file->path;
        const std::string ensure =
            model::commandOn(*source.file) + " dsn ensure " + model::shellWord(source.name) + " --driver DRIVER";
        if (source.listed && source.driver.empty())
            bad("listed", source.listed.where(), "the list names no driver", "Name its driver: " + ensure);
        else if (source.listed)
            good("listed", source.listed, "for the driver " + source.driver);
        else
            bad("listed", path, "not in [ODBC Data Sources]", "List it: " + ensure);
        section(source.header, source.name, FileKind::dataSources);
        hides(source.hides);
        if (source.header)
            key("Driver", source.library, source.section, path);
        if (source.listed && !source.driver.empty())
            driverOf(source);
        if (source.library)
            library(meantLibrary(source, configuration_, loaderPlaces()), LibraryRole::driver);
    }

    void driver(const model::Registered& driver) {
        subject_ = "driver " + driver.name;
        const std::string& path = driver.file->path;
        if (driver.listed)
            good("listed", driver.listed, driver.listed.text);
        else
            bad("listed", path, "not in [ODBC Drivers]",
                "List it: " + model::commandOn(*driver.file) + " driver ensure " + model::shellWord(driver.name) +
                    " --lib " + (driver.library ? model::shellWord(driver.library.text) : "PATH"));
        section(driver.header, driver.name, FileKind::drivers);
        hides(driver.hides);
        if (!driver.header)
            return;
        key("Driver", driver.library, driver.section, path);
        if (driver.setup)
            key("Setup", driver.setup, driver.section, path);
    }

    void libraries(const model::Registered& driver) {
        if (driver.library)
            library(meantLibrary(driver.library.text, configuration_, loaderPlaces()), LibraryRole::driver);
        if (driver.setup)
            library(driver.setup.text, LibraryRole::setup);
    }

    std::vector<Step> steps() { return std::move(steps_); }

private:
    void good(const std::string& what, const Located& where, const std::string& value) {
        steps_.push_back({/*ok=*/true, what, subject_, where.where(), value, ""});
    }

    void bad(const std::string& what, const std::string& where, const std::string& value, const std::string& advice) {
        steps_.push_back({/*ok=*/false, what, subject_, where, value, advice});
    }

    void section(const Located& header, const std::string& name, FileKind kind) {
        if (header)
            return good("section", header, "[" + header.text + "]");
        for (const UnclosedHeader& each : unclosedHeaders(configuration_))
            if (each.means(name))
                return bad("section", each.where(), "[" + each.name + " is never closed", "Add the \"]\" there.");
        bad("section", configuration_.file(kind).path, "no section [" + name + "]",
            model::adviceFor(name, configuration_.sectionNames(kind),
                             "Add the section, or remove the name from the list."));
    }

    void hides(const Located& hidden) {
        if (hidden)
            good("hides", hidden, "[" + hidden.text + "] of the system, which would answer without this one");
    }

    void key(const std::string& name, const Located& value, const model::IniSection* section, const std::string& file) {
        const std::string other = !value && section != nullptr ? section->value(name + "64") : "";
        if (const auto mistake = value ? mistakeIn(value.text) : std::nullopt)
            bad(name, value.where(), value.text + " " + mistake->fact, mistake->advice(name));
        else if (value)
            good(name, value, value.text);
        else if (!other.empty())
            bad(name, file, "no value; " + name + "64 is not read here", "Write the line as: " + name + "=" + other);
        else
            bad(name, file, "no value", "Enter the full path of the driver's library.");
    }

    void driverOf(const model::DataSource& source) {
        const auto& found = configuration_.driver(source.driver);
        if (!found) {
            subject_ = "driver " + source.driver;
            return bad("section", configuration_.file(FileKind::drivers).path, "no driver of that name",
                       adviceForDriver(configuration_, source.driver, systemFolder_));
        }
        driver(*found);
        if (found->library && source.library && found->library.text != source.library.text &&
            !rules::sameName(found->name, source.library.text))
            bad("Driver", found->library.where(), "not what the data source has: " + source.library.text,
                "The data source's path counts. Unless it is meant: " + model::commandOn(*source.file) +
                    " dsn ensure " + model::shellWord(source.name) + " --driver " + model::shellWord(found->name));
    }

    // A value with a mistake in it names another file than meant; its own step says so.
    void library(const std::string& path, LibraryRole role) {
        if (mistakeIn(path))
            return;
        const std::string state = libraryState(path, role, configuration_.paths());
        const bool ok = state == "ok";
        steps_.push_back(
            {ok, "library", path, "", state, ok ? "" : "See odbcadmin driver check " + model::shellWord(path)});
    }

    const model::Configuration& configuration_;
    const std::string& systemFolder_;
    std::string subject_;
    std::vector<Step> steps_;
};

}  // namespace

std::vector<Step> explain(const model::Configuration& configuration, const std::string& name,
                          const std::string& systemFolder) {
    Explainer explainer(configuration, systemFolder);
    if (const auto source = configuration.dataSource(name)) {
        explainer.dataSource(*source);
    } else if (const auto& driver = configuration.driver(name)) {
        explainer.driver(*driver);
        explainer.libraries(*driver);
    }
    return explainer.steps();
}

}  // namespace jx::doctor
