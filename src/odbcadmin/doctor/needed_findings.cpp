// Sentences about needed libraries.
#include "odbcadmin/doctor/needed_findings.h"

#include <algorithm>

#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/elf_header.h"
#include "odbcadmin/doctor/needed_libraries.h"

namespace jx::doctor {

namespace {

constexpr std::size_t kShown = 8;

// At most a line of them: a C library offers forty versions.
std::string some(std::vector<std::string> texts) {
    const std::size_t more = texts.size() - std::min(texts.size(), kShown);
    if (more == 0)
        return admin::joined(texts);
    texts.erase(texts.begin(), texts.end() - kShown);
    return std::to_string(more) + " others and " + admin::joined(texts);
}

std::string whoNeeds(const NeededProblem& problem) {
    const bool isLong = std::count(problem.chain.begin(), problem.chain.end(), '>') > 1;
    return problem.requester + " needs " + problem.name + (isLong ? " (" + problem.chain + ")" : "");
}

Finding missing(const std::string& subject, const NeededProblem& problem) {
    const bool hasSimilar = !problem.similar.empty();
    return found(check::kNeededMissing, subject,
                 whoNeeds(problem) + ", which is nowhere where the loader looks" +
                     (problem.directories.empty() ? "" : ": " + some(problem.directories)) + "." +
                     (hasSimilar ? " Of another version there is " + some(problem.similar) + "." : ""),
                 hasSimilar ? "Install " + problem.name + " as well, or a build for the version that is there."
                            : "Install the package that holds " + problem.name +
                                  ", or name its directory in LD_LIBRARY_PATH or the loader's configuration.");
}

Finding otherSystem(const std::string& subject, const NeededProblem& problem) {
    return found(check::kNeededOtherSystem, subject,
                 whoNeeds(problem) + ", which is there for " + systemText(readElfHeader(problem.at).system) +
                     " only: " + problem.at + ".",
                 "Install " + problem.name + " for " + systemText(thisSystem()) + ".");
}

Finding damaged(const std::string& subject, const NeededProblem& problem) {
    return found(check::kNeededDamaged, subject,
                 whoNeeds(problem) + ", and the loader finds " + problem.at + ", which is no shared library.",
                 "Install the package that holds " + problem.name + " again.");
}

Finding versionMissing(const std::string& subject, const NeededProblem& problem) {
    return found(check::kVersionMissing, subject,
                 problem.requester + " needs version " + problem.version + " of " + problem.name + "; " + problem.at +
                     " offers " + some(problem.similar) + ".",
                 "Install a newer " + problem.name + ", or a build of the library for this system.");
}

Finding fromProgram(const std::string& subject, const NeededProblem& problem) {
    return found(check::kNeededFromProgram, subject,
                 whoNeeds(problem) + ", which only this program has loaded; the loader would not find it for others.",
                 "Name its directory in LD_LIBRARY_PATH or the loader's configuration.");
}

Finding told(const std::string& subject, const NeededProblem& problem) {
    switch (problem.kind) {
        case NeededProblem::Kind::missing:
            return missing(subject, problem);
        case NeededProblem::Kind::otherSystem:
            return otherSystem(subject, problem);
        case NeededProblem::Kind::damaged:
            return damaged(subject, problem);
        case NeededProblem::Kind::versionMissing:
            return versionMissing(subject, problem);
        case NeededProblem::Kind::fromProgram:
            break;
    }
    return fromProgram(subject, problem);
}

}  // namespace

void addNeededFindings(const std::string& subject, const std::string& path, const LoaderPlaces& places,
                       Findings& findings) {
    for (const NeededProblem& problem : examineNeeded(path, places))
        findings.push_back(told(subject, problem));
}

}  // namespace jx::doctor
