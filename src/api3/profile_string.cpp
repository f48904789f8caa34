// Answers one look-up.
#include "api3/profile_string.h"

#include <new>

#include "api3/arguments.h"
#include "api3/log_file.h"
#include "api3/thread_state.h"

namespace jx::api3 {

namespace {

bool isAscii(const char* text) {
    unsigned char all = 0;
    for (; text != nullptr && *text != '\0'; ++text)
        all |= static_cast<unsigned char>(*text);
    return all < 0x80;
}

bool canBeAsked(const Question& question) {
    return (isAscii(question.section) && isAscii(question.key)) || areUtf8({question.section, question.key});
}

// No file holds the section of a name that is no text.
Answer notAsked() {
    Answer answer;
    answer.outcome = Outcome::noSection;
    return answer;
}

bool asksForList(const Question& question) {
    return question.section == nullptr || question.key == nullptr;
}

int give(const Answer& answer, const LookUpCall& call, const TextOutput& output) {
    if (!answer.isFound())
        return giveDefault(call, output);
    const Placed placed = asksForList(call.question) ? output.placeList(answer.text()) : output.place(answer.text());
    return static_cast<int>(placed.held);
}

// Out of line: without a log a look-up need not make room for this. A line that memory is too short for is left out.
[[gnu::noinline]] void log(const Environment& environment, const LookUpCall& call, const Sources& sources,
                           const Answer& answer) {
    try {
        appendToLog(environment.log, logLine(call, sources, answer));
    } catch (const std::bad_alloc&) {
        return;
    }
}

}  // namespace

int giveDefault(const LookUpCall& call, const TextOutput& output) {
    return static_cast<int>(output.place(call.fallback, asksForList(call.question) ? 2 : 1));
}

int giveProfileString(ThreadState& state, const LookUpCall& call, const TextOutput& output) {
    if (!output.isThere())
        return 0;
    const Environment environment = readEnvironment();
    const Sources sources(state, call.file, environment);
    const Answer answer = canBeAsked(call.question) ? lookUp(sources, call.question) : notAsked();
    const int held = give(answer, call, output);
    if (environment.log != nullptr && *environment.log != '\0')
        log(environment, call, sources, answer);
    return held;
}

}  // namespace jx::api3
