// odbcadmin lint: the files themselves, without looking at any library.
#include <filesystem>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/doctor_commands.h"
#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/examination.h"
#include "odbcadmin/doctor/file_checks.h"
#include "odbcadmin/doctor/syntax_checks.h"

namespace jx::admin {

namespace {

ExitCode runLint(const Session& session, const std::vector<std::string>& files) {
    if (files.empty())
        return showFindings(session, doctor::lint(doctor::readRecords()));
    doctor::Findings findings;
    for (const std::string& file : files) {
        const std::string path = absolutePath(file);
        std::error_code error;
        if (std::filesystem::symlink_status(path, error).type() == std::filesystem::file_type::not_found)
            return session.fail(ExitCode::fileTrouble, "There is no file " + path, "Give files that exist.");
        for (const doctor::Findings& each : {doctor::checkFile(path), doctor::checkSyntax(path)})
            findings.insert(findings.end(), each.begin(), each.end());
    }
    return showFindings(session, findings);
}

}  // namespace

void addLint(CLI::App& app, Session& session) {
    CLI::App& verb = addVerb(app, "lint", "Look for mistakes in the files: rights, lines and names",
                             "odbcadmin lint\nodbcadmin lint servers.ini");
    const auto files = addOperands(verb, "FILE", "Files to look at; the two configuration files without any",
                                   {.least = 0, .most = -1, .complete = Complete::files});
    onRun(verb, session, [files](Session& run) { return runLint(run, operands(files)); });
}

}  // namespace jx::admin
