// What the store's failures mean for whoever wanted the file.
#include "odbcadmin/model/reason.h"

#include <jxini.h>

#include <array>
#include <cerrno>

namespace jx::model {

namespace {

std::string adviceOn(const JxIniFailure& failure) {
    switch (failure.error) {
        case EACCES:
        case EPERM:
            return "Look at the rights of the file and of its directory: ls -ld.";
        case EISDIR:
            return "There must be a file at this place, or nothing.";
        case EOPNOTSUPP:
            return "There must be an ordinary file at this place, or nothing.";
        case ENOSPC:
        case EDQUOT:
            return "Make room on the disk; the file is as it was.";
        case EROFS:
            return "The disk is mounted read-only.";
        case ELOOP:
            return "Make the link anew, or remove it.";
        case ENOENT:
            return "Make the directory first.";
        default:
            return failure.afterRename != 0 ? "The new text is in place all the same." : "The file is as it was.";
    }
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
    if (failure.step == JxIniStepTurn && failure.error == ETIMEDOUT)
        return {Reason::Kind::locked, fact, "Another program is changing the file; try again."};
    return {Reason::Kind::fileTrouble, fact, adviceOn(failure)};
}

}  // namespace jx::model
