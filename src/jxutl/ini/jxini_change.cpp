// The part of jxini.h that changes a file.
#include <cerrno>
#include <memory>
#include <new>
#include <string>

#include <jxini.h>
#include "jxutl/ini/ini_change.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/thread/failure.h"

namespace ini = jx::ini;

struct JxIniChange {
    ini::IniChange change;
    std::string before;
};

namespace {

enum class With { turn, sharedFile, preview };

std::unique_ptr<JxIniChange> makeChange(const char* file, With with) {
    auto made = std::make_unique<JxIniChange>();
    ini::IniLocation where = ini::locate(file);
    where.shared = where.shared || with == With::sharedFile;
    const bool ready = with == With::preview ? made->change.preview(where) : made->change.begin(where);
    if (!ready)
        return nullptr;
    made->before = made->change.text();
    ini::noteSuccess();
    return made;
}

JxIniChange* changeOrNull(const char* file, With with) {
    if (file == nullptr || *file == '\0') {
        ini::noteFailure(JxIniStepLocate, {}, EINVAL);
        return nullptr;
    }
    try {
        return makeChange(file, with).release();
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, file, ENOMEM);
        return nullptr;
    }
}

const char* textOf(const std::string* bytes, size_t* length) {
    if (length != nullptr)
        *length = bytes == nullptr ? 0 : bytes->size();
    return bytes == nullptr ? nullptr : bytes->c_str();
}

}  // namespace

JxIniChange* jxIniBegin(const char* file) {
    return changeOrNull(file, With::turn);
}

JxIniChange* jxIniBeginShared(const char* file) {
    return changeOrNull(file, With::sharedFile);
}

JxIniChange* jxIniPreview(const char* file) {
    return changeOrNull(file, With::preview);
}

int jxIniSet(JxIniChange* change, const char* section, const char* key, const char* value) {
    if (change == nullptr) {
        ini::noteFailure(JxIniStepArgument, {}, EINVAL);
        return 0;
    }
    try {
        return change->change.apply(section, key, value) == ini::Edit::refused ? 0 : 1;
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
        return 0;
    }
}

const char* jxIniBefore(const JxIniChange* change, size_t* length) {
    return textOf(change == nullptr ? nullptr : &change->before, length);
}

const char* jxIniAfter(const JxIniChange* change, size_t* length) {
    return textOf(change == nullptr ? nullptr : &change->change.text(), length);
}

int jxIniCommit(JxIniChange* change) {
    const std::unique_ptr<JxIniChange> owner(change);
    if (change == nullptr) {
        ini::noteFailure(JxIniStepArgument, {}, EINVAL);
        return 0;
    }
    // Edits that undid each other change nothing.
    const bool same = change->change.holdsTurn() && change->before == change->change.text();
    if (!(same ? change->change.discard() : change->change.commit()))
        return 0;
    ini::noteSuccess();
    return 1;
}

void jxIniDiscard(JxIniChange* change) {
    delete change;
}
