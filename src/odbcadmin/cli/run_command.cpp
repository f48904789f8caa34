// run: a program with this product's installer library in front.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/lookup_line.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/installer_search.h"
#include "odbcadmin/doctor/package_owner.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/doctor/program.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/installer_library.h"
#include "odbcadmin/trial/program_start.h"

namespace jx::cli {

namespace {

using doctor::Program;

constexpr const char* kVariable = "LD_LIBRARY_PATH";

// The end of a sentence that begins with the program.
std::string obstacleText(const Program& program) {
    switch (program.obstacle) {
        case Program::Obstacle::notExecutable:
            return "is not a file that this user may run";
        case Program::Obstacle::notProgram:
            return program.interpreters.empty()
                       ? "is not a program"
                       : "is a script whose interpreter " + program.interpreters.back() + " cannot be run";
        case Program::Obstacle::otherSystem:
            return "is for " + systemText(program.file.system) + ", and this product's library for " +
                   systemText(doctor::thisSystem());
        case Program::Obstacle::linkedStatically:
            return "is linked statically, so it loads the libraries that are built into it only";
        case Program::Obstacle::raisedRights:
            return "gets other rights than yours when it is started, so the loader takes no search path from you";
        default:
            return {};
    }
}

ExitCode refuse(const Session& session, const std::string& name, const Program& program) {
    if (program.obstacle == Program::Obstacle::absent)
        return session.fail(
            ExitCode::noProgram, "There is no program " + name,
            name.find('/') == std::string::npos ? "None of the directories in PATH has it." : "Correct the path.");
    const bool wouldRunWithout = program.obstacle == Program::Obstacle::linkedStatically ||
                                 program.obstacle == Program::Obstacle::otherSystem ||
                                 program.obstacle == Program::Obstacle::raisedRights;
    return session.fail(
        ExitCode::cannotRun, program.path + " " + obstacleText(program),
        wouldRunWithout ? "It was not started: it would not have got this product's library." : "Give a program.");
}

void setSearchPath(const std::string& directory) {
    const char* present = std::getenv(kVariable);
    const bool isSet = present != nullptr && *present != '\0';
    ::setenv(kVariable, (directory + (isSet ? std::string(":") + present : "")).c_str(), 1);
}

std::vector<std::string> driversThatNeedIt(const model::Configuration& configuration) {
    const doctor::LoaderPlaces places = doctor::loaderPlaces();
    std::vector<std::string> drivers;
    for (const model::Registered& each : configuration.drivers()) {
        const std::string path = doctor::meantLibrary(each.library.text, configuration, places);
        const std::vector<std::string> needed = doctor::readLibraryFile(path).needed;
        if (std::find(needed.begin(), needed.end(), trial::kDriversInstaller) != needed.end())
            drivers.push_back("driver " + each.name + ": " + path);
    }
    return drivers;
}

// What running the program so would change for it.
struct LibraryChange {
    doctor::InstallerSearch without, with;
    std::vector<std::string> drivers;

    bool isAny() const { return !doctor::isSameFile(without.path, with.path); }
};

void print(const Session& session, const Program& program, const LibraryChange& change) {
    std::vector<std::vector<std::string>> rows{{"Program", program.path}};
    for (const std::string& each : program.interpreters)
        rows.push_back({"Run by", each});
    rows.push_back({"Without", change.without.path.empty()
                                   ? std::string("no ") + trial::kDriversInstaller + " anywhere the loader looks"
                                   : doctor::withPackage(change.without.path)});
    rows.push_back({"With", doctor::withPackage(change.with.path)});
    for (const auto* list : {&change.with.neededBy, &change.drivers})
        for (const std::string& each : *list)
            rows.push_back({"Needed by", each});
    if (change.with.neededBy.empty() && change.drivers.empty())
        rows.push_back({"Needed by", "nothing that the program is linked with, and no registered driver"});
    session.printTable(rows);
}

ExitCode showChange(const Session& session, const model::Configuration& configuration, const Program& program) {
    const doctor::LoaderPlaces places = doctor::loaderPlaces();
    const LibraryChange change{searchInstaller(program.file, places),
                               searchInstaller(program.file, doctor::withOwnInstaller(places)),
                               driversThatNeedIt(configuration)};
    if (session.json)
        session.printJson({{"program", program.path},
                           {"interpreters", program.interpreters},
                           {"without", change.without.path},
                           {"package", doctor::packageOf(change.without.path)},
                           {"with", change.with.path},
                           {"neededBy", change.with.neededBy},
                           {"drivers", change.drivers},
                           {"changes", change.isAny()}});
    else
        print(session, program, change);
    if (!doctor::isSameFile(change.with.path, trial::driversInstallerPath()))
        session.warn("a search path that is built into the program prevails over " + std::string(kVariable));
    return session.check && change.isAny() ? ExitCode::wouldChange : ExitCode::done;
}

ExitCode failStart(const Session& session, const std::string& path, int error) {
    return session.fail(error == ENOENT ? ExitCode::noProgram : ExitCode::cannotRun,
                        "Cannot run " + path + ": " + std::strerror(error));
}

// The program may close its standard error, so it gets the log as another descriptor.
void logToStandardError() {
    constexpr int kAbove = 100;
    const int log = ::fcntl(STDERR_FILENO, F_DUPFD, kAbove);
    if (log >= 0)
        ::setenv("JXODBC_LOG", std::to_string(log).c_str(), 1);
}

ExitCode superviseWithJson(const Session& session, const Program& program, const std::vector<std::string>& words) {
    const trial::ProgramEnd end = trial::superviseProgram(
        program.path, words, [](std::string_view line) { std::cerr << lookupJson(line) << '\n'; });
    return end.error != 0 ? failStart(session, program.path, end.error) : static_cast<ExitCode>(trial::endLike(end));
}

ExitCode run(const Session& session, const model::Configuration& configuration, const Line& line) {
    std::vector<std::string> words{line.text("PROGRAM")};
    for (const std::string& each : line.texts("ARGUMENT"))
        words.push_back(each);
    const std::string own = trial::driversInstallerPath();
    if (own.empty())
        return session.fail(ExitCode::failed, std::string("This product's ") + trial::kDriversInstaller + " is missing",
                            "Install jxodbc again.");
    const Program program = doctor::findProgram(words[0]);
    if (program.obstacle != Program::Obstacle::none)
        return refuse(session, words[0], program);
    if (session.writesNothing())
        return showChange(session, configuration, program);
    setSearchPath(std::filesystem::path(own).parent_path().string());
    if (line.has("--log") && session.json)
        return superviseWithJson(session, program, words);
    if (line.has("--log"))
        logToStandardError();
    return failStart(session, program.path, trial::becomeProgram(program.path, words));
}

}  // namespace

void addRunCommand(CLI::App& app, Session& session) {
    addVerb(app, session, "run", "Run a program with this product's libodbcinst.so.2, changing nothing on the system",
            "odbcadmin run -- report --monthly\n"
            "odbcadmin run --check -- report\n"
            "odbcadmin run --log -- report --monthly")
        .operand("PROGRAM", "The program; put -- before it", kOne, Complete::files)
        .operand("ARGUMENT", "Its arguments", kAny, Complete::files)
        .flag("--log", "Show on standard error what each driver looks up; with --json as lines of JSON")
        .thisSystemOnly()
        .onRead(Needs::nothing, run);
}

}  // namespace jx::cli
