// Loading in a child and reading what it reported.
#include "odbcadmin/doctor/trial_load.h"

#include <dlfcn.h>

#include <cstdlib>

#include "odbcadmin/doctor/child_report.h"

namespace jx::doctor {

namespace {

// The kinds of the child's reports.
constexpr char kLoaded = 'L';
constexpr char kRefused = 'R';
constexpr char kOffered = 'O';
constexpr char kUnloaded = 'U';

int load(const std::string& path, const std::vector<std::string>& names, int result) {
    void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        report(result, kRefused, ::dlerror());
        return EXIT_SUCCESS;
    }
    report(result, kLoaded);
    for (const std::string& name : names) {
        if (::dlsym(library, name.c_str()) != nullptr)
            report(result, kOffered, name);
    }
    ::dlclose(library);
    report(result, kUnloaded);
    return EXIT_SUCCESS;
}

void take(char kind, const std::string& text, TrialLoad& load) {
    switch (kind) {
        case kLoaded:
            load.end = TrialLoad::End::loaded;
            break;
        case kRefused:
            load.end = TrialLoad::End::refused;
            load.sentence = text;
            break;
        case kOffered:
            load.offered.insert(text);
            break;
        case kUnloaded:
            load.unloaded = true;
            break;
        default:
            break;
    }
}

TrialLoad::End earlyEnd(ChildOutcome::End end) {
    switch (end) {
        case ChildOutcome::End::exited:
            return TrialLoad::End::exited;
        case ChildOutcome::End::signalled:
            return TrialLoad::End::crashed;
        case ChildOutcome::End::timedOut:
            return TrialLoad::End::timedOut;
        case ChildOutcome::End::notStarted:
            break;
    }
    return TrialLoad::End::notStarted;
}

std::string endText(const ChildOutcome& outcome) {
    switch (outcome.end) {
        case ChildOutcome::End::exited:
            return "exit code " + std::to_string(outcome.code);
        case ChildOutcome::End::signalled:
            return signalText(outcome.code);
        default:
            return "no end within the time limit";
    }
}

}  // namespace

TrialLoad tryLoading(const std::string& path, const std::vector<std::string>& names, std::chrono::milliseconds limit,
                     const Waiting& waiting) {
    const ChildOutcome outcome = runInChild([&](int result) { return load(path, names, result); }, limit, waiting);
    TrialLoad found;
    found.end = earlyEnd(outcome.end);
    found.code = outcome.code;
    found.output = outcome.output;
    eachReport(outcome.result, [&](char kind, const std::string& text) { take(kind, text, found); });
    if (found.end == TrialLoad::End::loaded && !found.unloaded)
        found.unloadEnd = endText(outcome);
    return found;
}

}  // namespace jx::doctor
