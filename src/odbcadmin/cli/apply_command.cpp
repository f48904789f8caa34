// apply: sees that what a JSON document names is there; all or nothing in each of the two files.
#include <odbcinst.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/data_source_change.h"
#include "odbcadmin/cli/document.h"
#include "odbcadmin/cli/registration.h"
#include "odbcadmin/cli/text.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::admin {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

ExitCode readInput(const Session& session, const std::string& name, std::string& text) {
    const std::unique_ptr<std::FILE, CloseFile> own(name == "-" ? nullptr : std::fopen(name.c_str(), "rbe"));
    std::FILE* file = name == "-" ? stdin : own.get();
    std::array<char, 65536> part{};
    while (file != nullptr && std::feof(file) == 0 && std::ferror(file) == 0)
        text.append(part.data(), std::fread(part.data(), 1, part.size(), file));
    const int error = errno;
    if (file != nullptr && std::ferror(file) == 0)
        return ExitCode::done;
    return session.fail(ExitCode::fileTrouble, "Cannot read " + name + ": " + std::strerror(error),
                        "Give a file, or - for standard input.");
}

// Keys without a value are left as they are.
Pairs pairsOf(const std::vector<DocumentKey>& keys) {
    Pairs pairs;
    for (const DocumentKey& key : keys)
        if (key.value)
            pairs.emplace_back(key.name, *key.value);
    return pairs;
}

ExitCode checkNames(const Session& session, const Document& document) {
    for (const DocumentDriver& driver : document.drivers)
        if (const ExitCode code = checkRegisteredName(session, driverKind(), driver.name); code != ExitCode::done)
            return code;
    for (const DocumentDriver& translator : document.translators)
        if (const ExitCode code = checkRegisteredName(session, translatorKind(), translator.name);
            code != ExitCode::done)
            return code;
    for (const DocumentSource& source : document.dataSources)
        if (const ExitCode code = checkDataSourceName(session, source.name); code != ExitCode::done)
            return code;
    return ExitCode::done;
}

// The library a data source's driver has in the document, else in the file; empty when nowhere.
std::string libraryOf(const Document& document, const Configuration& configuration, const std::string& name) {
    for (const DocumentDriver& driver : document.drivers)
        if (rules::sameName(driver.name, name))
            for (const DocumentKey& key : driver.keys)
                if (rules::sameName(key.name, INS_ODBCINI_DRIVER))
                    return key.value.value_or("");
    const std::optional<Registered> driver = configuration.driver(name);
    return driver ? driver->library : std::string();
}

ExitCode checkDrivers(const Session& session, const Document& document, const Configuration& configuration) {
    for (const DocumentSource& source : document.dataSources)
        if (libraryOf(document, configuration, source.driver).empty())
            return noDriver(session, configuration, source.driver);
    return ExitCode::done;
}

bool composeDrivers(FileChange& change, const Document& document) {
    const auto all = [&](const RegisteredKind& kind, const std::vector<DocumentDriver>& list) {
        return std::all_of(list.begin(), list.end(), [&](const DocumentDriver& driver) {
            return composeRegistration(change, kind, {driver.name, {}, {}, pairsOf(driver.keys)});
        });
    };
    const auto isDefault = [](const DocumentSource& source) { return rules::isDefaultName(source.name); };
    const auto source = std::find_if(document.dataSources.begin(), document.dataSources.end(), isDefault);
    return all(driverKind(), document.drivers) && all(translatorKind(), document.translators) &&
           (source == document.dataSources.end() ||
            change.set(INS_ODBCINI_DEFAULT, INS_ODBCINI_DRIVER, source->driver));
}

bool composeSources(FileChange& change, const Document& document, const Configuration& configuration) {
    return std::all_of(document.dataSources.begin(), document.dataSources.end(), [&](const DocumentSource& source) {
        return composeDataSource(change, {source.name, source.driver, pairsOf(source.keys)},
                                 libraryOf(document, configuration, source.driver), OtherKeys::keep);
    });
}

// What the second file would refuse must show before the first one is written.
ExitCode tryDataSources(const Session& session, const Document& document, const Configuration& configuration) {
    Session trial = session;
    trial.check = true;
    FileChange change(trial, INS_ODBCINI_FILENAME);
    if (!change.isOpen() || !composeSources(change, document, configuration))
        return change.trouble();
    return change.finish();
}

ExitCode writeBoth(const Session& session, const Document& document, const Configuration& configuration,
                   Outcome& outcome) {
    if (const ExitCode code = tryDataSources(session, document, configuration); code != ExitCode::done)
        return code;
    {
        FileChange drivers(session, INS_ODBCINST_FILENAME);
        if (!drivers.isOpen() || !composeDrivers(drivers, document))
            return drivers.trouble();
        if (const ExitCode code = outcome.finish(drivers); code != ExitCode::done)
            return code;
    }
    FileChange sources(session, INS_ODBCINI_FILENAME);
    if (!sources.isOpen() || !composeSources(sources, document, configuration))
        return sources.trouble();
    return outcome.finish(sources);
}

ExitCode applyFile(const Session& session, const std::string& file) {
    std::string text;
    ExitCode code = readInput(session, file, text);
    if (code != ExitCode::done)
        return code;
    std::string fault;
    const std::optional<Document> document = parseDocument(text, fault);
    if (!document)
        return session.fail(ExitCode::badInput, (file == "-" ? "The input" : file) + " is not valid: " + fault,
                            "odbcadmin export shows what it must look like. Nothing was changed.");
    if (code = checkNames(session, *document); code != ExitCode::done)
        return code;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    if (code = checkDrivers(session, *document, *configuration); code != ExitCode::done)
        return code;
    Outcome outcome;
    if (code = writeBoth(session, *document, *configuration, outcome); code != ExitCode::done)
        return code;
    return outcome.tell(session, "Applied " + counted(document->drivers.size(), "driver") + ", " +
                                     counted(document->translators.size(), "translator") + ", " +
                                     counted(document->dataSources.size(), "data source"));
}

}  // namespace

void addApplyCommand(CLI::App& app, Session& session) {
    CLI::App& verb =
        addVerb(app, "apply", "See that the drivers and data sources of a JSON document are there",
                "odbcadmin apply -f odbc.json --dry-run\nodbcadmin export | odbcadmin apply -f - --home /srv/app");
    CLI::Option* file = addValueOption(verb, "-f,--file", "The document; - is standard input", Complete::files);
    require(file);
    onRun(verb, session, [file](Session& run) { return applyFile(run, operand(file, 0)); });
}

}  // namespace jx::admin
