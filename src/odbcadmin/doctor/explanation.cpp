// Building the steps.
#include "odbcadmin/doctor/explanation.h"

#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/doctor/library_state.h"

namespace jx::doctor {

namespace {

class Explainer {
public:
    explicit Explainer(const Records& records) : records_(records) {}

    void dataSource(const DataSourceRecord& record) {
        subject_ = "data source " + record.name;
        if (record.listed)
            good("listed", *record.listed, "for the driver " + record.listed->text);
        else
            bad("listed", records_.odbcPath, "not in [ODBC Data Sources]", "List it with the name of its driver.");
        section(record.section, record.name, records_.odbcPath, records_.dataSourceSections);
        if (record.section)
            key("Driver", record.library, records_.odbcPath);
        driverOf(record);
        if (record.library)
            library(record.library->text);
    }

    void driver(const DriverRecord& record) {
        subject_ = "driver " + record.name;
        if (record.listed)
            good("listed", *record.listed, record.listed->text);
        else
            bad("listed", records_.odbcinstPath, "not in [ODBC Drivers]", "List it: " + record.name + "=Installed");
        section(record.section, record.name, records_.odbcinstPath, records_.driverSections);
        if (!record.section)
            return;
        key("Driver", record.library, records_.odbcinstPath);
        if (record.setup)
            good("Setup", *record.setup, record.setup->text);
    }

    void libraries(const DriverRecord& record) {
        if (record.library)
            library(record.library->text);
        if (record.setup)
            library(record.setup->text);
    }

    std::vector<Step> steps() { return std::move(steps_); }

private:
    void good(const std::string& what, const Located& where, const std::string& value) {
        steps_.push_back({/*ok=*/true, what, subject_, where.where(), value, ""});
    }

    void bad(const std::string& what, const std::string& where, const std::string& value, const std::string& advice) {
        steps_.push_back({/*ok=*/false, what, subject_, where, value, advice});
    }

    void section(const std::optional<Located>& header, const std::string& name, const std::string& file,
                 const std::vector<std::string>& candidates) {
        if (header)
            return good("section", *header, "[" + header->text + "]");
        bad("section", file, "no section [" + name + "]",
            admin::adviceFor(name, candidates, "Add the section, or remove the name from the list."));
    }

    void key(const char* name, const std::optional<Located>& value, const std::string& file) {
        if (value)
            return good(name, *value, value->text);
        bad(name, file, "no value", "Enter the full path of the driver's library.");
    }

    void driverOf(const DataSourceRecord& record) {
        if (!record.listed)
            return;
        const DriverRecord* found = records_.driver(record.listed->text);
        if (found == nullptr) {
            subject_ = "driver " + record.listed->text;
            return bad(
                "section", records_.odbcinstPath, "no driver of that name",
                admin::adviceFor(record.listed->text, namesOf(records_.drivers), "Add it with odbcadmin driver add."));
        }
        driver(*found);
        if (found->library && record.library && found->library->text != record.library->text)
            steps_.push_back({/*ok=*/false, "Driver", subject_, found->library->where(),
                              "not what the data source has: " + record.library->text,
                              "The data source's path counts; enter the driver's there unless it is meant."});
    }

    void library(const std::string& path) {
        const LibraryState state = libraryState(path);
        const bool ok = state == LibraryState::ok;
        const std::string advice = ok ? "" : "See odbcadmin driver check " + path;
        steps_.push_back({ok, "library", path, "", libraryStateWord(state), advice});
    }

    const Records& records_;
    std::string subject_;
    std::vector<Step> steps_;
};

}  // namespace

std::vector<Step> explain(const Records& records, const std::string& name) {
    Explainer explainer(records);
    if (const DataSourceRecord* source = records.dataSource(name)) {
        explainer.dataSource(*source);
    } else if (const DriverRecord* driver = records.driver(name)) {
        explainer.driver(*driver);
        explainer.libraries(*driver);
    }
    return explainer.steps();
}

}  // namespace jx::doctor
