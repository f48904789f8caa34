// What the store's failures mean for whoever wanted the file.
#include "odbcadmin/model/reason.h"

#include <jxini.h>

#include <cerrno>
#include <utility>

namespace jx::model {

namespace {

std::string adviceOn(const JxIniFailure& failure) {
    constexpr const char* kRights = "Look at the rights of the file and of its directory: ls -ld.";
    constexpr const char* kRoom = "Make room on the disk; the file is as it was.";
    constexpr std::pair<int, const char*> kAdvice[] = {
        {EACCES, kRights},
        {EPERM, kRights},
        {EISDIR, "There must be a file at this place, or nothing."},
        {EOPNOTSUPP, "There must be an ordinary file at this place, or nothing."},
        {ENOSPC, kRoom},
        {EDQUOT, kRoom},
        {EROFS, "The disk is mounted read-only."},
        {ELOOP, "Make the link anew, or remove it."},
        {ENOENT, "Make the directory first."}};
    if (failure.afterRename != 0)
        return "The new text is in place all the same; only a power failure right now could bring the old one back.";
    for (const auto& [error, advice] : kAdvice)
        if (error == failure.error)
            return advice;
    return "The file is as it was.";
}

std::string sentenceOfFailure() {
    std::string sentence(jxIniFailureText(nullptr, 0), '\0');
    jxIniFailureText(sentence.data(), sentence.size() + 1);
    return sentence;
}

}  // namespace

Reason lastFailure() {
    const JxIniFailure failure = jxIniLastFailure();
    const std::string fact = sentenceOfFailure();
    if (failure.step == JxIniStepArgument)
        return {Reason::Kind::refused, fact, "Use another name or value."};
    if (failure.step == JxIniStepLock && failure.error == ETIMEDOUT)
        return {Reason::Kind::locked, fact, "Another program is changing the file; try again."};
    const bool isNoRight = failure.error == EACCES || failure.error == EPERM;
    return {isNoRight ? Reason::Kind::noRight : Reason::Kind::fileTrouble, fact, adviceOn(failure)};
}

}  // namespace jx::model
