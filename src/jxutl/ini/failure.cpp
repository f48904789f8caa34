// The calling thread's last failure, and its sentence.
#include "failure.h"

#include <cstring>
#include <new>

namespace jx::ini {

namespace {

// Set when the thread's objects have been destroyed: nobody would release a path that is noted later.
thread_local constinit bool threadEnds = false;

// Kept: one thread's failure. The end of the thread releases the path's memory but leaves the object usable, since
// clean-up that runs later in the thread may still call the store.
union Kept {
    Failure failure;
    Kept() : failure() {}
    ~Kept() {
        std::string().swap(failure.path);
        threadEnds = true;
    }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;
};

thread_local Kept kept;

const char* verb(JxIniStep step) {
    switch (step) {
        case JxIniStepNone:
            return "";
        case JxIniStepArgument:
            return "store that in";
        case JxIniStepMemory:
            return "find memory for";
        case JxIniStepLocate:
            return "find";
        case JxIniStepLook:
            return "look at";
        case JxIniStepOpen:
            return "open";
        case JxIniStepRead:
            return "read";
        case JxIniStepTurn:
            return "lock";
        case JxIniStepEmpty:
            return "empty";
        case JxIniStepWrite:
            return "write";
        case JxIniStepMode:
            return "set the mode of";
        case JxIniStepOwner:
            return "keep the owner of";
        case JxIniStepFlush:
            return "flush";
        case JxIniStepRename:
            return "rename";
        case JxIniStepFlushDirectory:
            return "flush the directory";
        case JxIniStepRemove:
            return "remove";
    }
    return "work on";
}

// In English whatever the locale.
std::string reason(const Failure& failure) {
    if (failure.step == JxIniStepTurn && failure.error == ETIMEDOUT)
        return "another program held it all the time";
    const char* words = strerrordesc_np(failure.error);
    return words != nullptr ? words : "error " + std::to_string(failure.error);
}

}  // namespace

void noteFailure(JxIniStep step, std::string_view path, int error, bool afterRename) noexcept {
    kept.failure.step = step;
    kept.failure.error = error;
    kept.failure.afterRename = afterRename;
    try {
        kept.failure.path.assign(threadEnds ? std::string_view() : path);
    } catch (const std::bad_alloc&) {
        kept.failure.path.clear();
    }
}

void noteFailure(const Failure& failure) noexcept {
    noteFailure(failure.step, failure.path, failure.error, failure.afterRename);
}

void noteSuccess() noexcept {
    if (kept.failure.step == JxIniStepNone)
        return;
    kept.failure.step = JxIniStepNone;
    kept.failure.path.clear();
    kept.failure.error = 0;
    kept.failure.afterRename = false;
}

const Failure& lastFailure() noexcept {
    return kept.failure;
}

std::string describe(const Failure& failure) {
    if (failure.step == JxIniStepNone)
        return {};
    std::string sentence = "Cannot ";
    sentence += verb(failure.step);
    sentence += ' ';
    sentence += failure.path.empty() ? "the file" : failure.path.c_str();
    if (failure.error != 0)
        sentence += ": " + reason(failure);
    if (failure.afterRename)
        sentence += " (the new text is in place, but a power cut could undo it)";
    return sentence;
}

}  // namespace jx::ini
