// Asking the helper for a load and reading its answer.
#include "odbcadmin/trial/library_load.h"

namespace jx::trial {

namespace {

void takeLoad(const std::string& word, const std::string& text, LoadReport& load) {
    if (word == "loaded")
        load.end = LoadReport::End::loaded;
    else if (word == "offered")
        load.offered.insert(text);
    else if (word == "unloaded")
        load.unloaded = true;
    if (word != "refused")
        return;
    load.end = LoadReport::End::refused;
    load.sentence = text;
}

std::string endText(const HelperOutcome& outcome) {
    if (outcome.end == HelperOutcome::End::exited)
        return "exit code " + std::to_string(outcome.code);
    return outcome.end == HelperOutcome::End::signalled ? signalText(outcome.code) : "no end within the time limit";
}

}  // namespace

LoadReport tryLoading(const LoadRequest& request, const Waiting& waiting) {
    Records names;
    for (const std::string& function : request.functions)
        names.emplace_back("function", function);
    const HelperOutcome outcome = runHelper({"load", request.library, request.namedBy, names, request.limit}, waiting);
    LoadReport found = answerOf<LoadReport>(outcome, takeLoad);
    if (found.end == LoadReport::End::loaded && !found.unloaded)
        found.unloadEnd = endText(outcome);
    return found;
}

}  // namespace jx::trial
