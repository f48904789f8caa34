// Profile writes.
#include <cerrno>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include <jxprofile.h>
#include "jxutl/ini/file_ops.h"
#include "jxutl/ini/ini_change.h"
#include "jxutl/ini/ini_line.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/ini/ini_lock.h"
#include "jxutl/ini/ini_run.h"
#include "jxutl/ini/profile_file.h"
#include "jxutl/thread/failure.h"
#include "jxutl/thread/no_cancellation.h"
#include "jxutl/thread/thread_data.h"
#include "rules/names.h"
#include "rules/storable.h"

namespace ini = jx::ini;
namespace rules = jx::rules;

namespace {

const char* asText(const unsigned char* bytes) {
    return reinterpret_cast<const char*>(bytes);
}

struct Request {
    const char* section;
    const char* key;
    const char* value;
};

// What the arguments decide without the file.
enum class Verdict { dependsOnFile, storesNothing, refused };

Verdict judge(const Request& request) {
    const std::string_view key = rules::argument(request.key);
    if (rules::refusalOf(rules::argument(request.section), key, rules::argument(request.value)))
        return Verdict::refused;
    return request.key != nullptr && key.empty() ? Verdict::storesNothing : Verdict::dependsOnFile;
}

bool isForbidden(int error) {
    return error == EACCES || error == EPERM || error == EROFS;
}

bool isFull(int error) {
    return error == ENOSPC || error == EDQUOT;
}

// If the file cannot be locked for want of rights, space or the directory, a write that would change nothing still
// succeeds. Otherwise the failure to lock stays noted.
bool isStoredAlready(const Request& request, const ini::IniLocation& where) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the preview below may note another
    const ini::Failure notLocked = ini::lastFailure();
    const int error = notLocked.error;
    if (notLocked.step != JxIniStepLock || !(isForbidden(error) || isFull(error) || ini::isAbsence(error)))
        return false;
    ini::IniChange preview;
    if (preview.preview(where) && preview.apply(request.section, request.key, request.value) == ini::Edit::unchanged)
        return true;
    ini::noteFailure(notLocked);
    return false;
}

bool changeOnce(const Request& request, const ini::IniLocation& where) {
    ini::IniChange change;
    if (!change.begin(where))
        return isStoredAlready(request, where);
    return change.apply(request.section, request.key, request.value) != ini::Edit::refused && change.commit();
}

// Whether a program that does not lock put another text in place between the reading and the renaming.
bool isOvertaken(const ini::Failure& failure) {
    return failure.step == JxIniStepRename && failure.error == ESTALE && !failure.afterRename;
}

// A store that fails fails the run, even where the program does not look at the result of each write.
bool changeInRun(ini::IniRun& run, const Request& request, const ini::IniLocation& where) {
    const std::shared_ptr<ini::IniChange> pending = run.changeOf(where);
    if (pending != nullptr)
        return pending->apply(request.section, request.key, request.value) != ini::Edit::refused;
    if (isStoredAlready(request, where))
        return true;
    run.fail();
    return false;
}

// One request is right for any text, so an overtaken change is made again.
bool change(const Request& request, const ini::IniLocation& where) {
    if (ini::IniRun* run = ini::currentRun(); run != nullptr)
        return changeInRun(*run, request, where);
    const std::int64_t end = ini::files().waitingClockInMilliseconds() + ini::kLongestWaitInMilliseconds;
    for (;;) {
        if (changeOnce(request, where))
            return true;
        if (!isOvertaken(ini::lastFailure()) || ini::files().waitingClockInMilliseconds() >= end)
            return false;
    }
}

template <typename Locate>
bool write(const Request& request, const char* file, Locate locate) {
    switch (judge(request)) {
        case Verdict::refused:
            ini::noteRefusal(locate(file).path, request.section, request.key, request.value);
            return false;
        // Deliberate: an empty key stores nothing and succeeds; programs rely on it.
        case Verdict::storesNothing:
            return true;
        case Verdict::dependsOnFile:
            break;
    }
    return change(request, locate(file));
}

template <typename Locate>
int writeAndNote(const Request& request, const char* file, Locate locate) {
    if (file == nullptr || *file == '\0') {
        ini::noteFailure(JxIniStepLocate, {}, EINVAL);
        return 0;
    }
    const jx::NoCancellation writing;
    try {
        if (!write(request, file, locate))
            return 0;
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, file, ENOMEM);
        if (ini::IniRun* run = ini::currentRun(); run != nullptr)
            run->fail();
        return 0;
    }
    ini::noteSuccess();
    return 1;
}

}  // namespace

int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* value,
                                const unsigned char* file) {
    return writeAndNote({asText(section), asText(key), asText(value)}, asText(file), ini::locate);
}

int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* value,
                                JxIniFileCache* cache) {
    const char* file = cache == nullptr ? nullptr : cache->file.c_str();
    return writeAndNote({asText(section), asText(key), asText(value)}, file, ini::locateAsSpelled);
}
