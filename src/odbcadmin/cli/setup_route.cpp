// Requests to a driver's setup library.
#include "odbcadmin/cli/setup_route.h"

#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using Action = trial::SetupRequest::Action;
using End = trial::SetupReport::End;
using model::Configuration;
using model::DataSource;
using model::Reason;

std::string bytesOfFiles(const Configuration& configuration) {
    std::string bytes;
    for (const model::FileKind kind : {model::FileKind::dataSources, model::FileKind::drivers})
        for (const model::ConfigFile* file : configuration.files(kind))
            bytes.append(file->view.bytes()).push_back('\0');
    return bytes;
}

std::string valueOf(const DataSource& source, const std::string& key) {
    return source.section != nullptr ? source.section->value(key) : "";
}

// The routine and its driver, by name.
std::string nameOf(const model::Registered& driver) {
    return "The setup library " + driver.setup.text + " of driver " + driver.name;
}

// How a call ended that gave no answer.
std::string endText(const trial::SetupReport& report, std::chrono::milliseconds limit) {
    const std::string during = report.function.empty() ? " while it was loaded" : " in " + report.function;
    switch (report.end) {
        case End::crashed:
            return "crashed" + during + ", with " + trial::signalText(report.code);
        case End::exited:
            return "ended its program" + during + ", with exit code " + std::to_string(report.code);
        case End::timedOut:
            return "was not done within " + model::secondsText(limit) + during;
        case End::withheld:
            return "was not loaded with the rights of root: " + report.why;
        case End::notStarted:
            return "could not be called: " + report.why;
        default:
            return "refused";
    }
}

std::string adviceFor(End end) {
    if (end == End::withheld)
        return "Run the command as that user, or use --direct to write without the library.";
    return end == End::timedOut ? "--timeout gives it more time; --direct writes without the library."
                                : "--direct writes without the library.";
}

Reason reasonOf(const trial::SetupReport& report, const model::Registered& driver, const SetupWork& work) {
    using Kind = Reason::Kind;
    if (report.end == End::tooLong)
        return {Kind::refused, "Cannot " + work.doing + " through the setup library: " + report.sentence,
                "Use --direct to write without it."};
    std::string fact = nameOf(driver) + " " + endText(report, work.limit) +
                       (report.end == End::declined ? " to " : " when it was to ") + work.doing;
    for (const std::string& error : report.errors)
        fact.append(": ").append(error);
    if (report.end != End::declined && !report.output.empty())
        fact.append(". It printed: ").append(report.output.substr(0, report.output.find('\n')));
    return {Kind::failed, fact, adviceFor(report.end)};
}

// Keys that were asked for and are not as they should be.
struct StoredKeys {
    std::vector<std::string> missing, otherwise;
};

StoredKeys compareStored(const SetupWork& work, const std::optional<DataSource>& before, const DataSource& after) {
    StoredKeys compared;
    for (const auto& [key, value] : work.attributes) {
        const std::string stored = valueOf(after, key);
        if (stored == value)
            continue;
        // A routine may store a value in its own way, but not leave it as it was.
        const bool isAsBefore = before && valueOf(*before, key) == stored;
        (stored.empty() || isAsBefore ? compared.missing : compared.otherwise).push_back(key);
    }
    return compared;
}

Reason notDone(const model::Registered& driver, const SetupWork& work, const std::string& how) {
    return {Reason::Kind::failed, nameOf(driver) + " said that it did " + work.doing + ", but " + how,
            "--direct writes without the library."};
}

// Whether it is true that it was done.
Reason look(const model::Registered& driver, const SetupWork& work, const Configuration& before,
            const Configuration& after, std::vector<std::string>& remarks) {
    if (after.trouble(model::FileKind::dataSources))
        return after.trouble(model::FileKind::dataSources);
    const auto source = after.dataSource(work.dataSource);
    if (work.action == Action::remove)
        return source ? notDone(driver, work, "it is still in " + source->file->path) : Reason();
    if (!source)
        return notDone(driver, work, "it is not in " + after.file(model::FileKind::dataSources).path);
    const StoredKeys compared = compareStored(work, before.dataSource(work.dataSource), *source);
    if (!compared.otherwise.empty())
        remarks.push_back("the setup library stored in its own way: " + model::joined(compared.otherwise));
    if (!compared.missing.empty())
        return notDone(driver, work, "it did not store " + model::joined(compared.missing));
    return {};
}

}  // namespace

SetupRoute findRoute(const Session& session, const std::optional<model::Registered>& driver, bool isDirect) {
    if (isDirect)
        return {false, "as --direct asks"};
    if (!driver)
        return {false, "its driver is not registered"};
    if (session.writesNothing())
        return {false, driver->setup ? "the setup library of " + driver->name + " might do otherwise" : ""};
    if (!driver->setup)
        return {false, driver->name + " has no setup library"};
    if (!session.root.empty())
        return {false, "the setup library of " + driver->name + " is one of another root"};
    // Setup libraries go by the older interface, which knows this user's files only.
    if (session.system || driver->file->scope == model::Scope::system)
        return {false, "the setup library of " + driver->name + " works on the user's files only"};
    return {true, ""};
}

std::optional<model::ChangeResult> goThroughSetup(const Session& session, const model::Registered& driver,
                                                  const SetupWork& work, std::vector<std::string>& remarks) {
    const Configuration before = Configuration::read();
    Progress progress(session.quiet);
    progress.begin("The setup library " + driver.setup.text + " is at work");
    const trial::SetupReport report = trial::callSetup(
        {work.action, driver.setup.text, driver.name, work.dataSource, work.attributes, before.paths(), work.limit},
        [&] { progress.tick(); });
    if (report.end == End::notLoaded || report.end == End::noRoutine) {
        remarks.push_back("written directly: " + (report.end == End::notLoaded
                                                      ? "its setup library cannot be loaded: " + report.sentence
                                                      : "its setup library has no ConfigDSN: " + driver.setup.text));
        return std::nullopt;
    }
    const Configuration after = Configuration::read();
    const bool isChanged = bytesOfFiles(after) != bytesOfFiles(before);
    model::ChangeResult result;
    result.reason =
        report.end == End::agreed ? look(driver, work, before, after, remarks) : reasonOf(report, driver, work);
    if (isChanged)
        result.files.push_back({model::pathOf(rules::kDataSourceFile), {}});
    if (!report.user.empty())
        remarks.push_back("the setup library had the rights of " + report.user + ", not those of root");
    return result;
}

}  // namespace jx::cli
