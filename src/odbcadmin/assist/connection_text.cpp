// Connecting, and putting it into words.
#include "odbcadmin/assist/connection_text.h"

#include <algorithm>

#include "odbcadmin/assist/say.h"
#include "odbcadmin/doctor/connection_words.h"
#include "odbcadmin/doctor/examination.h"
#include "odbcadmin/doctor/path_mistakes.h"

namespace jx::assist {

namespace {

std::string firstFinding(const model::Configuration& configuration, const std::string& name) {
    doctor::ExaminationOptions options;
    options.names = {name};
    options.library.places = doctor::loaderPlaces();
    const doctor::Findings findings = doctor::examine(configuration, options);
    const auto first = std::find_if(findings.begin(), findings.end(), [](const doctor::Finding& each) {
        return each.severity == doctor::Severity::error;
    });
    return first == findings.end() ? "The doctor finds nothing wrong with its entries and its driver's libraries."
                                   : "The doctor says: " + first->fact + " " + first->advice;
}

std::string connectedText(const std::string& name, const trial::ConnectReport& report) {
    return name + ": connected." + (report.driver.empty() ? "" : "\nDriver: " + report.driver) +
           (report.database.empty() ? "" : "\nDatabase: " + report.database);
}

std::string remarksOf(const trial::ConnectReport& report) {
    std::string text;
    for (const trial::Diagnostic& each : report.diagnostics)
        text += "\n\n" + doctor::describe(each, doctor::outcomeOf(report));
    return text + (report.user.empty() ? "" : "\n\nThe driver had the rights of " + report.user + ".");
}

}  // namespace

// What a program has is the user's files, and behind them the system's.
ConnectionText connectionText(const ChosenSource& chosen) {
    const model::Configuration configuration = model::Configuration::read(model::Scopes());
    const auto source = configuration.dataSource(chosen.name);
    if (!source)
        return {false, sentenceOf(model::noDataSource(configuration, chosen.name))};
    if (chosen.scope == model::Scope::system && source->file->scope == model::Scope::user)
        return {false, "Your own " + source->name + " shadows the system's: your programs get [" + source->name +
                           "] of " + source->header.where() + ". Another user can test the system's."};
    trial::ConnectRequest request{doctor::meantLibrary(*source, configuration, doctor::loaderPlaces()), source->name,
                                  configuration.paths()};
    std::string why = "it leads to no library";
    if (!request.library.empty()) {
        trial::ConnectReport report = trial::tryConnecting(request);
        doctor::hideSecrets(*source, report);
        if (report.end == trial::ConnectReport::End::connected)
            return {true, connectedText(source->name, report) + remarksOf(report)};
        why = doctor::endOf(report, request.limit) + "." + remarksOf(report);
    }
    return {false,
            "Cannot connect to " + source->name + ": " + why + "\n\n" + firstFinding(configuration, source->name)};
}

}  // namespace jx::assist
