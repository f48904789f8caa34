// Putting the checks together.
#include "odbcadmin/doctor/examination.h"

#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <utility>

#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/file_checks.h"
#include "odbcadmin/doctor/name_checks.h"
#include "odbcadmin/doctor/syntax_checks.h"
#include "rules/names.h"

namespace jx::doctor {

namespace {

void append(Findings& findings, const Findings& more) {
    findings.insert(findings.end(), more.begin(), more.end());
}

// The libraries of one run; one that several drivers share is loaded once.
class Libraries {
public:
    explicit Libraries(const ExaminationOptions& options) : options_(options) {}

    Findings check(const std::string& subject, const std::string& path, LibraryRole role) {
        const auto [place, isNew] = known_.try_emplace({path, role});
        if (isNew) {
            options_.progress("Loading " + path);
            place->second = checkLibrary("", path, role, options_.library);
        }
        Findings findings = place->second;
        for (Finding& each : findings)
            each.subject = subject;
        return findings;
    }

    Findings check(const DriverRecord& driver, bool isTranslator) {
        Findings findings;
        const std::string name = (isTranslator ? "translator " : "driver ") + driver.name;
        if (driver.library)
            append(findings,
                   check(name, driver.library->text, isTranslator ? LibraryRole::translator : LibraryRole::driver));
        if (driver.setup)
            append(findings, check("setup library of " + name, driver.setup->text,
                                   isTranslator ? LibraryRole::translatorSetup : LibraryRole::setup));
        return findings;
    }

private:
    const ExaminationOptions& options_;
    std::map<std::pair<std::string, LibraryRole>, Findings> known_;
};

Findings checkText(const Records& records, const std::string& systemFolder) {
    Findings findings = checkFiles(configPlaces(systemFolder));
    for (const std::string& path : {records.odbcPath, records.odbcinstPath})
        append(findings, checkSyntax(path));
    return findings;
}

bool isNamed(const std::vector<std::string>& names, const std::string& name) {
    return names.empty() || std::any_of(names.begin(), names.end(), [&](const std::string& each) {
               return rules::sameName(rules::trimmed(each), name);
           });
}

// What one run is about.
struct Selection {
    std::vector<DataSourceRecord> dataSources;
    std::vector<DriverRecord> drivers, translators;
};

Selection select(const Records& records, const std::vector<std::string>& names) {
    Selection selection;
    std::vector<std::string> drivers = names;
    for (const DataSourceRecord& each : records.dataSources) {
        if (!isNamed(names, each.name))
            continue;
        selection.dataSources.push_back(each);
        if (each.listed && !names.empty())
            drivers.push_back(each.listed->text);
    }
    for (const DriverRecord& each : records.drivers)
        if (isNamed(drivers, each.name))
            selection.drivers.push_back(each);
    if (names.empty())
        selection.translators = records.translators;
    return selection;
}

Findings checkNames(const Selection& selection, const Records& records) {
    Findings findings;
    for (const DataSourceRecord& each : selection.dataSources)
        append(findings, checkDataSourceNames(each, records));
    for (const DriverRecord& each : selection.drivers)
        append(findings, checkDriverNames(each, DriverKind::driver, records));
    for (const DriverRecord& each : selection.translators)
        append(findings, checkDriverNames(each, DriverKind::translator, records));
    return findings;
}

// A data source's own path is told of where it differs from its driver's: else the driver's findings say it all.
Findings checkLibraries(const Selection& selection, const Records& records, const ExaminationOptions& options) {
    Libraries libraries(options);
    Findings findings;
    for (const DriverRecord& each : selection.drivers)
        append(findings, libraries.check(each, /*isTranslator=*/false));
    for (const DataSourceRecord& each : selection.dataSources) {
        const DriverRecord* driver = each.listed ? records.driver(each.listed->text) : nullptr;
        const bool isDrivers =
            driver != nullptr && driver->library && each.library && driver->library->text == each.library->text;
        if (each.library && !isDrivers)
            append(findings, libraries.check("data source " + each.name, each.library->text, LibraryRole::driver));
    }
    for (const DriverRecord& each : selection.translators)
        append(findings, libraries.check(each, /*isTranslator=*/true));
    return findings;
}

bool isOn(const std::string& text) {
    constexpr const char* kWords[] = {"1", "on", "yes", "true"};
    return std::any_of(std::begin(kWords), std::end(kWords),
                       [&](const char* word) { return rules::sameName(text, word); });
}

}  // namespace

Findings lint(const Records& records, const std::string& systemFolder) {
    Findings findings = checkText(records, systemFolder);
    append(findings, checkNames(select(records, {}), records));
    return findings;
}

Findings examineDrivers(const std::vector<DriverRecord>& drivers, const ExaminationOptions& options) {
    Libraries libraries(options);
    Findings findings;
    for (const DriverRecord& each : drivers)
        append(findings, libraries.check(each, /*isTranslator=*/false));
    return findings;
}

Findings checkEnvironment(const Records& records) {
    if (!records.trace || !isOn(records.trace->text))
        return {};
    const bool isNamedFile = records.traceFile && !records.traceFile->text.empty();
    const std::string file = isNamedFile ? records.traceFile->text : "sql.log";
    struct stat status {};
    const std::string size = ::stat(file.c_str(), &status) == 0
                                 ? "has " + std::to_string(status.st_size) + " bytes"
                                 : (file.front() == '/' ? "is not there yet" : "lies where a program is started");
    return {found(check::kTracingOn, "tracing",
                  records.trace->where() + ": tracing is on; its file " + file + " " + size + ".",
                  "It slows every call down and records values: turn it off with odbcadmin trace off.")};
}

Findings examine(const Records& records, const ExaminationOptions& options) {
    Findings findings = checkText(records, options.systemFolder);
    const Selection selection = select(records, options.names);
    append(findings, checkNames(selection, records));
    append(findings, checkLibraries(selection, records, options));
    append(findings, checkEnvironment(records));
    return findings;
}

}  // namespace jx::doctor
