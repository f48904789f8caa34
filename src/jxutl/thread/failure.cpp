// The calling thread's last failure, and its sentence.
#include "jxutl/thread/failure.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <new>

#include "jxutl/thread/thread_data.h"
#include "rules/names.h"
#include "rules/storable.h"

namespace jx::ini {

namespace {

// The failure when there is no memory to keep one.
const Failure kNoMemoryToNote{JxIniStepMemory, {}, ENOMEM, false};

const char* verb(JxIniStep step) {
    switch (step) {
        case JxIniStepNone:
            return "";
        case JxIniStepArgument:
            return "change";
        case JxIniStepMemory:
            return "process";
        case JxIniStepLocate:
            return "find";
        case JxIniStepLook:
            return "look at";
        case JxIniStepOpen:
            return "open";
        case JxIniStepRead:
            return "read";
        case JxIniStepLock:
            return "lock";
        case JxIniStepWrite:
            return "write";
        case JxIniStepMode:
            return "set the mode of";
        case JxIniStepOwner:
            return "keep the owner of";
        case JxIniStepFlush:
            return "flush";
        case JxIniStepRename:
            return "replace";
        case JxIniStepFlushDirectory:
            return "flush the directory";
        case JxIniStepRemove:
            return "remove";
    }
    return "work on";
}

// Never the value itself, which may be a secret.
std::string refusalSentence(const char* section, const char* key, const char* value) {
    const rules::Refusal refusal =
        rules::refusalOf(rules::argument(section), rules::argument(key), rules::argument(value));
    if (!refusal)
        return {};
    if (rules::argument(section).empty())
        return "a section without a name";
    std::string what = "the section ";
    if (refusal.what != rules::Text::section)
        what = refusal.what == rules::Text::key ? "the key " : "the value of the key ";
    what.append("\"").append(refusal.what == rules::Text::section ? section : key).append("\"");
    return what + ": " + refusal.why;
}

std::string waitText() {
    constexpr double kMillisecondsOfSecond = 1000;
    const ThreadData* data = existingThreadData();
    const std::int64_t wait = data != nullptr ? data->lockWaitInMilliseconds : kLongestWaitInMilliseconds;
    if (wait == 0)
        return "has it locked";
    std::array<char, 32> seconds;
    const auto end = std::to_chars(seconds.begin(), seconds.end(), static_cast<double>(wait) / kMillisecondsOfSecond);
    return "kept it locked for " + std::string(seconds.begin(), end.ptr) +
           (wait == static_cast<std::int64_t>(kMillisecondsOfSecond) ? " second" : " seconds");
}

// In English whatever the locale.
std::string reason(const Failure& failure) {
    if (failure.step == JxIniStepLock && failure.error == ETIMEDOUT)
        return "another writer " + waitText();
    if (failure.step == JxIniStepLock && failure.error == EEXIST)
        return "it is not a lock of this library, and is left alone; move it away";
    if (failure.step == JxIniStepRename && failure.error == ESTALE)
        return "another program replaced it at the same time; try again";
    if (failure.step == JxIniStepLocate && failure.error == EACCES)
        return "this symbolic link belongs to another user and is not followed";
    const char* words = strerrordesc_np(failure.error);
    return words != nullptr ? words : "error " + std::to_string(failure.error);
}

}  // namespace

void noteFailure(JxIniStep step, std::string_view path, int error, bool afterRename) noexcept {
    ThreadData* data = threadData();
    if (data == nullptr)
        return;
    Failure& kept = data->storeFailure;
    kept.step = step;
    kept.error = error;
    kept.afterRename = afterRename;
    kept.refused.clear();
    try {
        kept.path.assign(path);
    } catch (const std::bad_alloc&) {
        kept.path.clear();
    }
}

void noteFailure(const Failure& failure) noexcept {
    noteFailure(failure.step, failure.path, failure.error, failure.afterRename);
}

void noteRefusal(std::string_view path, const char* section, const char* key, const char* value) noexcept {
    noteFailure(JxIniStepArgument, path, EINVAL);
    ThreadData* data = existingThreadData();
    if (data == nullptr)
        return;
    try {
        data->storeFailure.refused = refusalSentence(section, key, value);
    } catch (const std::bad_alloc&) {
        data->storeFailure.refused.clear();
    }
}

void noteSuccess() noexcept {
    ThreadData* data = existingThreadData();
    if (data == nullptr || data->storeFailure.step == JxIniStepNone)
        return;
    Failure& kept = data->storeFailure;
    kept.step = JxIniStepNone;
    kept.path.clear();
    kept.error = 0;
    kept.afterRename = false;
    kept.refused.clear();
}

const Failure& lastFailure() noexcept {
    const ThreadData* data = threadData();
    return data != nullptr ? data->storeFailure : kNoMemoryToNote;
}

std::string describe(const Failure& failure) {
    if (failure.step == JxIniStepNone)
        return {};
    if (!failure.refused.empty())
        return (failure.path.empty() ? "" : failure.path + ": ") + "cannot store " + failure.refused;
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
