// Requests to a driver's setup library.
#include "odbcadmin/cli/setup_route.h"

#include "odbcadmin/cli/progress.h"

namespace jx::cli {

namespace {

using End = trial::SetupReport::End;

std::string bytesOfBothFiles() {
    std::string bytes;
    for (const model::FileKind kind : {model::FileKind::dataSources, model::FileKind::drivers})
        bytes.append(model::readConfigFile(kind).view.bytes()).push_back('\0');
    return bytes;
}

std::string troubleWith(const std::string& library) {
    const trial::SetupReport report = trial::probeSetup(library);
    if (report.end == End::notLoaded)
        return "its setup library cannot be loaded: " + report.sentence;
    return report.end == End::noRoutine ? "its setup library has no ConfigDSN: " + library : "";
}

model::Reason reasonOf(const trial::SetupReport& report, const std::string& library, const std::string& doing) {
    using Kind = model::Reason::Kind;
    if (report.end == End::tooLong)
        return {Kind::refused, "Cannot " + doing + " through the setup library: " + report.sentence,
                "Use --direct to write without it."};
    std::string fact = "The setup library " + library + " refused to " + doing;
    for (const std::string& error : report.errors)
        fact.append(": ").append(error);
    return {Kind::failed, fact, "--direct writes without the library."};
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
    const std::string trouble = troubleWith(driver->setup.text);
    return {trouble.empty(), trouble};
}

model::ChangeResult goThroughSetup(const Session& session, const model::Registered& driver,
                                   const trial::SetupRequest& request, const std::string& doing) {
    const std::string before = bytesOfBothFiles();
    trial::SetupReport report;
    {
        const Waiting waiting(session.quiet, "The setup library " + driver.setup.text + " is at work");
        report = trial::callSetup(request);
    }
    if (report.end != End::done)
        return {reasonOf(report, driver.setup.text, doing)};
    if (bytesOfBothFiles() == before)
        return {};
    return {{}, {{model::pathOf(rules::kDataSourceFile), {}}}};
}

}  // namespace jx::cli
