// trace status, on and off: the settings the driver manager reads, as the Options dialog writes them.
#include <odbcinst.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/outcome.h"
#include "odbcadmin/cli/text.h"

namespace jx::admin {

namespace {

constexpr const char* kTrace = "Trace";
constexpr const char* kTraceAutoStop = "TraceAutoStop";
constexpr const char* kTraceFile = "TraceFile";
constexpr const char* kUsualTraceFile = "sql.log";

bool isOn(const IniView& file, const char* key) {
    const std::string value = file.value(INS_ODBCINI_ODBC, key);
    return !value.empty() && value[0] >= '1' && value[0] <= '9';
}

ExitCode showStatus(const Session& session) {
    ExitCode code = ExitCode::done;
    const std::optional<IniView> file = readFile(session, INS_ODBCINI_FILENAME, code);
    if (!file)
        return code;
    const IniEntry* entry = file->find(INS_ODBCINI_ODBC, kTraceFile);
    const std::string path = entry != nullptr ? std::string(entry->value) : kUsualTraceFile;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    const std::string state = isOn(*file, kTrace) ? "on" : "off";
    const bool stops = isOn(*file, kTraceAutoStop);
    if (session.json)
        session.printJson(
            {{"trace", state == "on"}, {"autoStop", stops}, {"file", path}, {"bytes", error ? Json() : Json(size)}});
    else
        session.print("Tracing is " + state + ", file " + printable(path) +
                      (error ? "" : " (" + std::to_string(size) + " bytes)") + (stops ? ", stops by itself" : ""));
    return ExitCode::done;
}

ExitCode switchTrace(const Session& session, const std::string& file) {
    FileChange change(session, INS_ODBCINI_FILENAME);
    if (!change.isOpen())
        return change.trouble();
    const bool turnsOn = !file.empty();
    // Where nothing says that tracing is on, it is off already.
    const bool asWanted = !turnsOn && !isOn(change.before(), kTrace);
    if (!asWanted && !change.set(INS_ODBCINI_ODBC, kTrace, turnsOn ? "1" : "0"))
        return change.trouble();
    if (turnsOn && !change.set(INS_ODBCINI_ODBC, kTraceFile, absolutePath(file)))
        return change.trouble();
    Outcome outcome;
    const ExitCode code = outcome.finish(change);
    return code != ExitCode::done
               ? code
               : outcome.tell(session, turnsOn ? "Tracing to " + absolutePath(file) : "Tracing is off");
}

}  // namespace

void addTraceCommands(CLI::App& app, Session& session) {
    CLI::App& trace = noun(app, "trace");
    onRun(addVerb(trace, "status", "Tell whether calls are traced, and where to", "odbcadmin trace status"), session,
          showStatus);
    CLI::App& on = addVerb(trace, "on", "Trace calls to a file", "odbcadmin trace on /tmp/odbc.log");
    const CLI::Option* file = addOperands(on, "FILE", "Trace file", {1, 1, Complete::files});
    onRun(on, session, [file](Session& run) {
        if (operand(file, 0).empty())
            return run.fail(ExitCode::wrongUse, "The trace file has no name", "Give a path.");
        return switchTrace(run, operand(file, 0));
    });
    onRun(addVerb(trace, "off", "Stop tracing; the trace file stays", "odbcadmin trace off"), session,
          [](Session& run) { return switchTrace(run, {}); });
}

}  // namespace jx::admin
