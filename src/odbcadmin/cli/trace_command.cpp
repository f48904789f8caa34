// trace status, on and off.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/model/trace_settings.h"

namespace jx::cli {

namespace {

ExitCode showStatus(const Session& session, const model::Configuration& configuration, const Line& /*line*/) {
    const model::TraceSettings settings = model::traceSettings(configuration);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(settings.file, error);
    if (session.json)
        session.printJson({{"trace", settings.isOn},
                           {"autoStop", settings.stopsByItself},
                           {"file", settings.file},
                           {"bytes", error ? Json() : Json(size)}});
    else
        session.print(std::string("Tracing is ") + (settings.isOn ? "on" : "off") + ", file " +
                      model::printable(settings.file) + (error ? "" : " (" + std::to_string(size) + " bytes)") +
                      (settings.stopsByItself ? ", stops by itself" : ""));
    return ExitCode::done;
}

ExitCode turnOn(const Session& session, const Line& line) {
    if (line.text("FILE").empty())
        return session.fail(ExitCode::wrongUse, "The trace file has no name", "Give a path.");
    const std::string path = model::absolutePath(line.text("FILE"));
    return session.report(model::turnTraceOn(path, session.way()), "Tracing to " + path);
}

ExitCode turnOff(const Session& session, const Line& /*line*/) {
    const model::ChangeResult result = model::turnTraceOff(session.way());
    // What the system's file says counts where the user's has no settings of its own.
    const model::Configuration configuration = model::Configuration::read(session.scopes());
    const model::TraceSettings settings = model::traceSettings(configuration);
    std::vector<std::string> remarks;
    if (settings.isOn && settings.trace.file->scope == model::Scope::system && !session.system)
        remarks.push_back(settings.trace.where() + " turns it on: odbcadmin trace off --system");
    return session.report(result, "Tracing is off", remarks);
}

}  // namespace

void addTraceCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "trace status", "Show whether calls are traced, and where to", "odbcadmin trace status")
        .onRead(Needs::dataSources, showStatus);
    addVerb(app, session, "trace on", "Trace calls to a file", "odbcadmin trace on /tmp/odbc.log")
        .operand("FILE", "Trace file", kOne, Complete::files)
        .onRun(turnOn);
    addVerb(app, session, "trace off", "Stop tracing; the trace file stays", "odbcadmin trace off").onRun(turnOff);
}

}  // namespace jx::cli
