// Building the steps.
#include "odbcadmin/doctor/explanation.h"

#include <string_view>
#include <utility>

#include "odbcadmin/doctor/library_state.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/model/near_matches.h"
#include "rules/names.h"

namespace jx::doctor {

namespace {

using model::FileKind;
using model::Located;

class Explainer {
public:
    explicit Explainer(const model::Configuration& configuration) : configuration_(configuration) {}

    void dataSource(const model::DataSource& source) {
        subject_ = "data source " + source.name;
        const std::string& path = source.file->path;
        if (source.listed)
            good("listed", source.listed, "for the driver " + source.driver);
        else
            bad("listed", path, "not in [ODBC Data Sources]", "List it with the name of its driver.");
        section(source.header, source.name, FileKind::dataSources);
        hides(source.hides);
        if (source.header)
            key("Driver", source.library, path);
        if (source.listed)
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
            bad("listed", path, "not in [ODBC Drivers]", "List it: " + driver.name + "=Installed");
        section(driver.header, driver.name, FileKind::drivers);
        hides(driver.hides);
        if (!driver.header)
            return;
        key("Driver", driver.library, path);
        if (driver.setup)
            good("Setup", driver.setup, driver.setup.text);
    }

    void libraries(const model::Registered& driver) {
        if (driver.library)
            library(driver.library.text, LibraryRole::driver);
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
        bad("section", configuration_.file(kind).path, "no section [" + name + "]",
            model::adviceFor(name, configuration_.sectionNames(kind),
                             "Add the section, or remove the name from the list."));
    }

    void hides(const Located& hidden) {
        if (hidden)
            good("hides", hidden, "[" + hidden.text + "] of the system, which would answer without this one");
    }

    void key(const char* name, const Located& value, const std::string& file) {
        if (value)
            return good(name, value, value.text);
        bad(name, file, "no value", "Enter the full path of the driver's library.");
    }

    void driverOf(const model::DataSource& source) {
        const auto found = configuration_.driver(source.driver);
        if (!found) {
            subject_ = "driver " + source.driver;
            return bad("section", configuration_.file(FileKind::drivers).path, "no driver of that name",
                       model::adviceFor(source.driver, namesOf(configuration_.drivers()),
                                        "Add it with odbcadmin driver add."));
        }
        driver(*found);
        if (found->library && source.library && found->library.text != source.library.text &&
            !rules::sameName(found->name, source.library.text))
            bad("Driver", found->library.where(), "not what the data source has: " + source.library.text,
                "The data source's path counts; enter the driver's there unless it is meant.");
    }

    void library(const std::string& path, LibraryRole role) {
        const std::string state = libraryState(path, role, configuration_.paths());
        const bool ok = state == "ok";
        steps_.push_back({ok, "library", path, "", state, ok ? "" : "See odbcadmin driver check " + path});
    }

    const model::Configuration& configuration_;
    std::string subject_;
    std::vector<Step> steps_;
};

}  // namespace

std::vector<Step> explain(const model::Configuration& configuration, const std::string& name) {
    Explainer explainer(configuration);
    if (const auto source = configuration.dataSource(name)) {
        explainer.dataSource(*source);
    } else if (const auto driver = configuration.driver(name)) {
        explainer.driver(*driver);
        explainer.libraries(*driver);
    }
    return explainer.steps();
}

}  // namespace jx::doctor
