// Putting the checks together.
#include "odbcadmin/doctor/examination.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <utility>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/driver_scan.h"
#include "odbcadmin/doctor/file_checks.h"
#include "odbcadmin/doctor/name_checks.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/doctor/reference_checks.h"
#include "odbcadmin/doctor/scope_checks.h"
#include "odbcadmin/doctor/syntax_checks.h"
#include "odbcadmin/doctor/unclosed_headers.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/model/trace_settings.h"
#include "rules/names.h"

namespace jx::doctor {

namespace {

using model::Configuration;
using model::DataSource;
using model::FileKind;
using model::Registered;

void append(Findings& findings, const Findings& more) {
    findings.insert(findings.end(), more.begin(), more.end());
}

bool holdsCheck(const Findings& findings, const Check& check) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& each) { return each.id == check.id; });
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

    Findings check(const Registered& entry, const model::RegisteredKind& kind) {
        const bool isDriver = kind.key == model::kDriverKind.key;
        const std::string name = std::string(kind.word) + " " + entry.name;
        Findings findings;
        if (entry.library)
            findings = checkValue(name, entry.library, isDriver ? LibraryRole::driver : LibraryRole::translator);
        if (entry.setup)
            append(findings, checkValue("setup library of " + name, entry.setup,
                                        isDriver ? LibraryRole::setup : LibraryRole::translatorSetup));
        return findings;
    }

private:
    // What the checks of names say of a mistake in the value says all; the file is then another one than meant.
    Findings checkValue(const std::string& subject, const model::Located& value, LibraryRole role) {
        if (mistakeIn(value.text))
            return {};
        const std::string found = value.text.find('/') != std::string::npos
                                      ? value.text
                                      : inDriverDirectories(value.text, options_.library.places);
        return check(subject, found.empty() ? value.text : found, role);
    }

    const ExaminationOptions& options_;
    std::map<std::pair<std::string, LibraryRole>, Findings> known_;
};

// Whether a finding follows from a header that is not closed: it is about the name that was meant, or begins with one
// of the lines below the header, "PATH:LINE ...".
bool follows(const Finding& finding, const UnclosedHeader& header) {
    const std::string& subject = finding.subject;
    const bool isLonger = subject.size() > header.name.size();
    if (isLonger && header.means(subject.substr(subject.size() - header.name.size())))
        return true;
    if (finding.id == check::kDriverUnknown.id && finding.fact.find('"' + header.name + '"') != std::string::npos)
        return true;
    if (!finding.fact.starts_with(header.path + ":"))
        return false;
    const std::size_t line = std::strtoul(finding.fact.c_str() + header.path.size() + 1, nullptr, 10);
    return line > header.line && line <= header.last;
}

// What follows from a header that is not closed is not said, and nothing is advised because of it.
Findings withoutFollowers(const Findings& names, const Configuration& configuration) {
    const std::vector<UnclosedHeader> headers = unclosedHeaders(configuration);
    Findings kept;
    for (const Finding& each : names)
        if (std::none_of(headers.begin(), headers.end(), [&](const auto& header) { return follows(each, header); }))
            kept.push_back(each);
    return kept;
}

template <class Rows>
bool holds(const Rows& rows, const std::string& name) {
    return std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return rules::sameName(row.name, name); });
}

// What one run is about.
struct Selection {
    std::vector<DataSource> dataSources;
    std::vector<Registered> drivers, translators;
};

Selection select(const Configuration& configuration, const std::vector<std::string>& names) {
    if (names.empty())
        return {configuration.dataSources(), configuration.drivers(), configuration.all(model::kTranslatorKind)};
    Selection selection;
    const auto addDriver = [&](const std::string& name) {
        const auto& driver = configuration.driver(name);
        if (driver && !holds(selection.drivers, driver->name))
            selection.drivers.push_back(*driver);
    };
    for (const std::string& name : names) {
        addDriver(name);
        const auto source = configuration.dataSource(name);
        if (!source || holds(selection.dataSources, source->name))
            continue;
        selection.dataSources.push_back(*source);
        if (source->listed)
            addDriver(source->driver);
    }
    return selection;
}

Findings checkNames(const Selection& selection, const Configuration& configuration, const std::string& systemFolder) {
    Findings findings;
    for (const DataSource& each : selection.dataSources) {
        append(findings, checkDataSourceNames(each, configuration, systemFolder));
        append(findings, checkKeys(each, configuration));
        append(findings, checkScopes(each, configuration));
    }
    for (const Registered& each : selection.drivers) {
        append(findings, checkRegisteredNames(each, model::kDriverKind, configuration));
        append(findings, checkScopes(each));
    }
    for (const Registered& each : selection.translators)
        append(findings, checkRegisteredNames(each, model::kTranslatorKind, configuration));
    return findings;
}

// A data source's own path is looked at where it differs from its driver's: else the driver's findings say it all.
Findings checkLibraries(const Selection& selection, const Configuration& configuration,
                        const ExaminationOptions& options) {
    Libraries libraries(options);
    Findings findings;
    for (const Registered& each : selection.drivers)
        append(findings, libraries.check(each, model::kDriverKind));
    for (const DataSource& each : selection.dataSources) {
        const auto driver = each.listed ? configuration.driver(each.driver) : std::nullopt;
        const std::string library = meantLibrary(each, configuration, options.library.places);
        const bool isDrivers = driver && driver->library && driver->library.text == library;
        if (each.library && !isDrivers && !mistakeIn(each.library.text))
            append(findings, libraries.check("data source " + each.name, library, LibraryRole::driver));
    }
    for (const Registered& each : selection.translators)
        append(findings, libraries.check(each, model::kTranslatorKind));
    return findings;
}

// Where a library's name leads nowhere, where it might lead in other programs is not said.
void dropRelativePathsOfMissing(Findings& findings) {
    std::set<std::string> missing;
    for (const Finding& each : findings)
        if (each.id == check::kLibraryMissing.id)
            missing.insert(each.subject);
    std::erase_if(findings, [&](const Finding& each) {
        return each.id == check::kRelativePath.id && missing.contains(each.subject);
    });
}

}  // namespace

static Findings checkTextsAt(const LintPlaces& places, const Configuration& configuration) {
    Findings findings = checkFiles(places.files, configuration);
    if (places.variables == LintPlaces::Variables::seen)
        append(findings, checkVariables());
    for (const FileKind kind : {FileKind::dataSources, FileKind::drivers})
        for (const model::ConfigFile* file : configuration.files(kind))
            append(findings, checkSyntaxOf(file->path, file->view));
    return findings;
}

Findings checkTexts(const Configuration& configuration) {
    return checkTextsAt({}, configuration);
}

// What the names say, without what only follows from a header that is not closed.
static void appendNames(Findings& findings, const Findings& names, const Configuration& configuration) {
    append(findings, holdsCheck(findings, check::kUnclosed) ? withoutFollowers(names, configuration) : names);
}

// Files, lines and names.
static Findings checkAllTexts(const Selection& selection, const Configuration& configuration,
                              const LintPlaces& places) {
    Findings findings = checkTextsAt(places, configuration);
    appendNames(findings, checkNames(selection, configuration, places.systemFolder), configuration);
    return findings;
}

Findings lint(const Configuration& configuration, const LintPlaces& places) {
    return checkAllTexts(select(configuration, {}), configuration, places);
}

Findings lintTexts(const Configuration& configuration, const std::string& systemFolder) {
    Findings findings;
    for (const FileKind kind : {FileKind::dataSources, FileKind::drivers})
        for (const model::ConfigFile* file : configuration.files(kind))
            append(findings, checkSyntaxOf(file->path, file->view));
    appendNames(findings, checkNames(select(configuration, {}), configuration, systemFolder), configuration);
    return findings;
}

Findings examineDrivers(const std::vector<Registered>& drivers, const ExaminationOptions& options) {
    Libraries libraries(options);
    Findings findings;
    for (const Registered& each : drivers) {
        append(findings, checkLibraryKeys(each, model::kDriverKind));
        append(findings, libraries.check(each, model::kDriverKind));
    }
    dropRelativePathsOfMissing(findings);
    return findings;
}

Findings checkEnvironment(const Configuration& configuration) {
    const model::TraceSettings settings = model::traceSettings(configuration);
    if (!settings.isOn)
        return {};
    struct stat status {};
    const std::string size = ::stat(settings.file.c_str(), &status) == 0
                                 ? "has " + std::to_string(status.st_size) + " bytes"
                             : settings.file.front() == '/' ? "is not there yet"
                                                            : "lies where a program is started";
    return {found(check::kTracingOn, "tracing",
                  settings.trace.where() + ": tracing is on; its file " + settings.file + " " + size + ".",
                  "It slows every call down and records values: turn it off with odbcadmin trace off.")};
}

Findings checkTemplates(const Configuration& configuration, const ExaminationOptions& options) {
    Findings findings;
    for (const std::string& folder : options.dataFolders)
        for (const model::DriverTemplate& file : model::templatesIn(folder)) {
            std::vector<std::string> missing;
            for (const model::Registration& driver : placedDrivers(file, options.library.places, missing))
                if (!registeredWith(configuration, driver.library))
                    findings.push_back(found(check::kUnregistered, "driver " + driver.name,
                                             file.path + " has the driver, " + driver.library +
                                                 " is there, and no driver is registered with it.",
                                             "Register it: odbcadmin driver add -f " + model::shellWord(file.path) +
                                                 " " + model::shellWord(driver.name)));
        }
    return findings;
}

Findings examine(const Configuration& configuration, const ExaminationOptions& options) {
    const Selection selection = select(configuration, options.names);
    LintPlaces places;
    places.systemFolder = options.systemFolder;
    Findings findings = checkAllTexts(selection, configuration, places);
    append(findings, checkLibraries(selection, configuration, options));
    dropRelativePathsOfMissing(findings);
    for (const DataSource& each : selection.dataSources)
        append(findings, checkReferences(each, configuration, options.library.places));
    append(findings, checkEnvironment(configuration));
    if (options.names.empty())
        append(findings, checkTemplates(configuration, options));
    return findings;
}

}  // namespace jx::doctor
