// trace status, on and off.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/model/trace_settings.h"

namespace jx::cli {

namespace {

ExitCode showStatus(const Session& session, const model::Configuration& configuration) {
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

}  // namespace

void addTraceCommands(CLI::App& app, Session& session) {
    CLI::App& trace = noun(app, "trace");
    onRead(addVerb(trace, "status", "Show whether calls are traced, and where to", "odbcadmin trace status"), session,
           Needs::dataSources, showStatus);
    CLI::App& on = addVerb(trace, "on", "Trace calls to a file", "odbcadmin trace on /tmp/odbc.log");
    const CLI::Option* file = addOperands(on, "FILE", "Trace file", {1, 1, Complete::files});
    onRun(on, session, [file](Session& run) {
        if (operand(file, 0).empty())
            return run.fail(ExitCode::wrongUse, "The trace file has no name", "Give a path.");
        const std::string path = model::absolutePath(operand(file, 0));
        return run.report(model::turnTraceOn(path, run.way()), "Tracing to " + path);
    });
    onRun(addVerb(trace, "off", "Stop tracing; the trace file stays", "odbcadmin trace off"), session,
          [](Session& run) { return run.report(model::turnTraceOff(run.way()), "Tracing is off"); });
}

}  // namespace jx::cli
