// Loading in a child and reading what it reported.
#include "odbcadmin/trial/library_load.h"

#include <dlfcn.h>

#include <cstdlib>

namespace jx::trial {

namespace {

// The kinds of the child's reports.
constexpr char kLoaded = 'L';
constexpr char kLoadRefused = 'R';
constexpr char kOffered = 'O';
constexpr char kUnloaded = 'U';

int load(const LoadRequest& request, int result) {
    void* library = ::dlopen(request.library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        report(result, kLoadRefused, ::dlerror());
        return EXIT_SUCCESS;
    }
    report(result, kLoaded);
    for (const std::string& name : request.functions) {
        if (::dlsym(library, name.c_str()) != nullptr)
            report(result, kOffered, name);
    }
    ::dlclose(library);
    report(result, kUnloaded);
    return EXIT_SUCCESS;
}

void takeLoad(char kind, const std::string& text, LoadReport& load) {
    if (kind == kLoaded)
        load.end = LoadReport::End::loaded;
    else if (kind == kOffered)
        load.offered.insert(text);
    else if (kind == kUnloaded)
        load.unloaded = true;
    if (kind != kLoadRefused)
        return;
    load.end = LoadReport::End::refused;
    load.sentence = text;
}

std::string endText(const ChildOutcome& outcome) {
    if (outcome.end == ChildOutcome::End::exited)
        return "exit code " + std::to_string(outcome.code);
    return outcome.end == ChildOutcome::End::signalled ? signalText(outcome.code) : "no end within the time limit";
}

}  // namespace

LoadReport tryLoading(const LoadRequest& request, const Waiting& waiting) {
    const ChildOutcome outcome = runInChild([&](int result) { return load(request, result); }, request.limit, waiting);
    LoadReport found = answerOf<LoadReport>(outcome, takeLoad);
    if (found.end == LoadReport::End::loaded && !found.unloaded)
        found.unloadEnd = endText(outcome);
    return found;
}

}  // namespace jx::trial
