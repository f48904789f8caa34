// Putting the checks together.
#include "odbcadmin/doctor/examination.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <utility>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/file_checks.h"
#include "odbcadmin/doctor/name_checks.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/doctor/scope_checks.h"
#include "odbcadmin/doctor/syntax_checks.h"
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
    // A mistake in the value says all; the file is then another one than meant.
    Findings checkValue(const std::string& subject, const model::Located& value, LibraryRole role) {
        if (const auto mistake = mistakeIn(value.text))
            return {found(*mistake->check, subject, value.where() + ": the value " + mistake->fact + ".",
                          "Write " + mistake->meant + " there.")};
        const std::string found = value.text.find('/') != std::string::npos
                                      ? value.text
                                      : inDriverDirectories(value.text, options_.library.places);
        return check(subject, found.empty() ? value.text : found, role);
    }

    const ExaminationOptions& options_;
    std::map<std::pair<std::string, LibraryRole>, Findings> known_;
};

Findings checkTexts(const Configuration& configuration) {
    Findings findings = checkFiles(model::configPlaces());
    append(findings, checkVariables());
    for (const FileKind kind : {FileKind::dataSources, FileKind::drivers})
        for (const model::ConfigFile* file : configuration.files(kind))
            append(findings, checkSyntax(file->path));
    return findings;
}

// The lines below a header that is not closed, which were meant for another section than they are in.
struct StrayLines {
    std::string path, header;
    std::size_t first, last;

    // Whether a finding is about the section that was meant, or begins with one of the lines: "PATH:LINE ...".
    bool cause(const Finding& finding) const {
        const std::string name = finding.subject.substr(finding.subject.rfind(' ') + 1);
        if (header.starts_with("\"[" + name))
            return true;
        if (!finding.fact.starts_with(path + ":"))
            return false;
        const std::size_t line = std::strtoul(finding.fact.c_str() + path.size() + 1, nullptr, 10);
        return line >= first && line <= last;
    }
};

std::vector<StrayLines> strayLines(const Findings& texts, const Configuration& configuration) {
    std::vector<StrayLines> all;
    for (const Finding& each : texts) {
        if (each.id != check::kUnclosed.id)
            continue;
        const std::size_t colon = each.subject.rfind(':');
        const std::size_t line = std::strtoul(each.subject.c_str() + colon + 1, nullptr, 10);
        StrayLines stray{each.subject.substr(0, colon), each.fact.substr(each.fact.find('"')), line + 1, SIZE_MAX};
        for (const FileKind kind : {FileKind::dataSources, FileKind::drivers})
            for (const model::ConfigFile* file : configuration.files(kind))
                for (const model::IniSection& section : file->view.sections())
                    if (file->path == stray.path && section.line > line)
                        stray.last = std::min(stray.last, section.line - 1);
        all.push_back(stray);
    }
    return all;
}

// What follows from a header that is not closed is not said, and nothing is advised because of it: what was meant
// cannot be known.
Findings withoutFollowers(const Findings& names, const std::vector<StrayLines>& stray) {
    Findings kept;
    for (const Finding& each : names)
        if (std::none_of(stray.begin(), stray.end(), [&](const StrayLines& lines) { return lines.cause(each); }))
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
        const auto driver = configuration.driver(name);
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

Findings checkNames(const Selection& selection, const Configuration& configuration) {
    Findings findings;
    for (const DataSource& each : selection.dataSources) {
        append(findings, checkDataSourceNames(each, configuration));
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

}  // namespace

Findings lint(const Configuration& configuration) {
    Findings findings = checkTexts(configuration);
    append(findings,
           withoutFollowers(checkNames(select(configuration, {}), configuration), strayLines(findings, configuration)));
    return findings;
}

Findings examineDrivers(const std::vector<Registered>& drivers, const ExaminationOptions& options) {
    Libraries libraries(options);
    Findings findings;
    for (const Registered& each : drivers)
        append(findings, libraries.check(each, model::kDriverKind));
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

static bool isMistake(const Finding& finding) {
    return finding.id == check::kQuotedPath.id || finding.id == check::kUnexpandedPath.id ||
           finding.id == check::kCommentInValue.id;
}

Findings examine(const Configuration& configuration, const ExaminationOptions& options) {
    Findings findings = checkTexts(configuration);
    const Selection selection = select(configuration, options.names);
    append(findings, withoutFollowers(checkNames(selection, configuration), strayLines(findings, configuration)));
    // What the checks of names say of a value need not be said again.
    for (const Finding& each : checkLibraries(selection, configuration, options))
        if (!isMistake(each))
            findings.push_back(each);
    append(findings, checkEnvironment(configuration));
    return findings;
}

}  // namespace jx::doctor
