// The store's own interface: failures, paths, texts and changes.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include <jxini.h>
#include "jxutl/ini/ini_change.h"
#include "jxutl/ini/ini_line.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/ini/ini_place.h"
#include "jxutl/ini/ini_run.h"
#include "jxutl/ini/name_hash.h"
#include "jxutl/ini/whole_file.h"
#include "jxutl/thread/failure.h"
#include "jxutl/thread/no_cancellation.h"
#include "jxutl/thread/thread_data.h"
#include "rules/names.h"

namespace ini = jx::ini;
namespace rules = jx::rules;

// Not copied or moved: pieces point into bytes.
struct JxIniText {
    explicit JxIniText(std::string text) : bytes(std::move(text)), pieces(bytes) {}
    JxIniText(const JxIniText&) = delete;
    JxIniText& operator=(const JxIniText&) = delete;

    const std::string bytes;
    const ini::Pieces pieces;
};

struct JxIniChange {
    ini::IniChange change;
};

namespace {

// Copies text into a buffer of size bytes, cut to fit and ended with NUL; returns the text's full length. A null buffer
// or a size of 0 gets nothing.
std::size_t copyOut(std::string_view text, char* buffer, std::size_t size) noexcept {
    if (buffer != nullptr && size > 0) {
        const std::size_t count = text.size() < size ? text.size() : size - 1;
        if (count > 0)
            std::memcpy(buffer, text.data(), count);
        buffer[count] = '\0';
    }
    return text.size();
}

struct HashName {
    std::size_t operator()(std::string_view name) const { return ini::hashName(name); }
};
struct SameName {
    bool operator()(std::string_view left, std::string_view right) const { return rules::sameName(left, right); }
};
using Names = std::unordered_set<std::string_view, HashName, SameName>;

JxIniText* makeText(std::string bytes) {
    auto text = std::make_unique<JxIniText>(std::move(bytes));
    ini::noteSuccess();
    return text.release();
}

std::shared_ptr<ini::IniChange> pendingIn(ini::IniRun* run, const std::string& path) {
    return run != nullptr ? run->pending(path) : nullptr;
}

JxIniText* readText(const char* file) {
    const ini::IniLocation where = ini::locate(file);
    if (where.path.empty()) {
        ini::noteFailure(JxIniStepLocate, file, errno);
        return nullptr;
    }
    if (const auto pending = pendingIn(ini::currentRun(), where.path); pending != nullptr && !pending->isAbsent())
        return makeText(pending->text());
    ini::IniPlace place;
    if (!place.find(where.path))
        return nullptr;
    std::string bytes;
    struct stat state;
    const ini::Whole outcome = ini::readWhole(place, bytes, state);
    if (outcome == ini::Whole::absent)
        ini::noteFailure(JxIniStepOpen, place.path(), ENOENT);
    return outcome == ini::Whole::read ? makeText(std::move(bytes)) : nullptr;
}

template <typename Make>
JxIniText* textOrNull(const char* name, Make make) {
    try {
        return make();
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, name, ENOMEM);
        return nullptr;
    }
}

// Calls visit(piece) for every entry of the sections called name, in order, until it returns false.
template <typename Visit>
void eachEntry(const JxIniText& text, std::string_view name, Visit visit) {
    bool inside = false;
    for (std::size_t i = 0; i < text.pieces.size(); ++i) {
        const JxIniPiece piece = text.pieces[i];
        if (piece.kind == JxIniSection)
            inside = rules::sameName(ini::nameOf(piece), name);
        else if (inside && piece.kind == JxIniEntry && !visit(piece))
            return;
    }
}

template <typename Visit>
void eachHeader(const JxIniText& text, Visit visit) {
    for (std::size_t i = 0; i < text.pieces.size(); ++i)
        if (const JxIniPiece piece = text.pieces[i]; piece.kind == JxIniSection && !visit(piece))
            return;
}

enum class With { lock, lockShared, preview };

bool begin(ini::IniChange& change, const ini::IniLocation& where, With with) {
    return with == With::preview ? change.preview(where) : change.begin(where);
}

bool beginInRun(ini::IniRun& run, ini::IniChange& change, const ini::IniLocation& where, With with) {
    if (with == With::preview) {
        const std::shared_ptr<ini::IniChange> pending = run.pending(where.path);
        if (pending == nullptr)
            return change.preview(where);
        change.look(*pending);
        return true;
    }
    const std::shared_ptr<ini::IniChange> pending = run.changeOf(where);
    if (pending == nullptr) {
        run.fail();
        return false;
    }
    change.join(pending);
    return true;
}

std::unique_ptr<JxIniChange> makeChange(const char* file, With with) {
    auto made = std::make_unique<JxIniChange>();
    ini::IniLocation where = ini::locate(file);
    where.shared = where.shared || with == With::lockShared;
    ini::IniRun* run = ini::currentRun();
    const bool ready = run != nullptr ? beginInRun(*run, made->change, where, with) : begin(made->change, where, with);
    if (!ready)
        return nullptr;
    ini::noteSuccess();
    return made;
}

JxIniChange* changeOrNull(const char* file, With with) {
    if (file == nullptr || *file == '\0') {
        ini::noteFailure(JxIniStepLocate, {}, EINVAL);
        return nullptr;
    }
    const jx::NoCancellation beginning;
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

JxIniFailure jxIniLastFailure(void) {
    const ini::Failure& last = ini::lastFailure();
    return {last.step, last.error, last.afterRename ? 1 : 0, last.path.c_str()};
}

size_t jxIniFailureText(char* buffer, size_t size) {
    try {
        return copyOut(ini::describe(ini::lastFailure()), buffer, size);
    } catch (const std::bad_alloc&) {
        return copyOut("Too little memory to describe the failure", buffer, size);
    }
}

size_t jxIniPath(const char* file, char* buffer, size_t size) {
    try {
        return copyOut(file == nullptr ? std::string() : ini::locate(file).path, buffer, size);
    } catch (const std::bad_alloc&) {
        return copyOut({}, buffer, size);
    }
}

JxIniText* jxIniRead(const char* file) {
    if (file == nullptr || *file == '\0') {
        ini::noteFailure(JxIniStepLocate, {}, EINVAL);
        return nullptr;
    }
    const jx::NoCancellation reading;
    return textOrNull(file, [file] { return readText(file); });
}

JxIniText* jxIniParse(const char* bytes, size_t length) {
    if (bytes == nullptr && length != 0) {
        ini::noteFailure(JxIniStepArgument, {}, EINVAL);
        return nullptr;
    }
    return textOrNull("", [=] { return makeText(length == 0 ? std::string() : std::string(bytes, length)); });
}

void jxIniRelease(JxIniText* text) {
    delete text;
}

const char* jxIniBytes(const JxIniText* text, size_t* length) {
    const std::size_t size = text == nullptr ? 0 : text->bytes.size();
    if (length != nullptr)
        *length = size;
    return text == nullptr ? nullptr : text->bytes.c_str();
}

size_t jxIniPieceCount(const JxIniText* text) {
    return text == nullptr ? 0 : text->pieces.size();
}

int jxIniPieceAt(const JxIniText* text, size_t index, JxIniPiece* piece) {
    if (text == nullptr || piece == nullptr || index >= text->pieces.size())
        return 0;
    *piece = text->pieces[index];
    return 1;
}

int jxIniFind(const JxIniText* text, const char* section, const char* key, JxIniPiece* piece) {
    const std::string_view sectionName = rules::argument(section);
    const std::string_view keyName = rules::argument(key);
    if (text == nullptr || !rules::canBeAskedFor(sectionName) || (key != nullptr && !rules::canBeAskedFor(keyName)))
        return 0;
    std::optional<JxIniPiece> found;
    const auto take = [&](std::string_view name) {
        return [&found, name](const JxIniPiece& candidate) {
            if (rules::sameName(ini::nameOf(candidate), name))
                found = candidate;
            return !found;
        };
    };
    if (key == nullptr)
        eachHeader(*text, take(sectionName));
    else
        eachEntry(*text, sectionName, take(keyName));
    if (found && piece != nullptr)
        *piece = *found;
    return found ? 1 : 0;
}

size_t jxIniEach(const JxIniText* text, const char* section, JxIniVisit visit, void* context) {
    const std::string_view sectionName = rules::argument(section);
    if (text == nullptr || visit == nullptr || (section != nullptr && !rules::canBeAskedFor(sectionName)))
        return 0;
    // Collected first: exceptions of visit pass through, std::bad_alloc of ours does not.
    std::vector<JxIniPiece> listed;
    try {
        Names names;
        const auto take = [&](const JxIniPiece& piece) {
            const std::string_view name = ini::nameOf(piece);
            if (rules::canBeAskedFor(name) && names.insert(name).second)
                listed.push_back(piece);
            return true;
        };
        if (section == nullptr)
            eachHeader(*text, take);
        else
            eachEntry(*text, sectionName, take);
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
        return 0;
    }
    size_t visits = 0;
    for (const JxIniPiece& piece : listed) {
        ++visits;
        if (visit(context, &piece) == 0)
            break;
    }
    return visits;
}

long jxIniSetLockWait(long milliseconds) {
    jx::ThreadData* data = milliseconds < 0 ? nullptr : jx::threadData();
    if (data == nullptr)
        return -1;
    return static_cast<long>(std::exchange(data->lockWaitInMilliseconds, milliseconds));
}

JxIniChange* jxIniBegin(const char* file) {
    return changeOrNull(file, With::lock);
}

JxIniChange* jxIniBeginShared(const char* file) {
    return changeOrNull(file, With::lockShared);
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

int jxIniSetAll(JxIniChange* change, const JxIniSetting* settings, size_t count) {
    const auto isWhole = [](const JxIniSetting& each) {
        return each.section != nullptr && each.key != nullptr && each.value != nullptr;
    };
    if (change == nullptr || (settings == nullptr && count > 0) || !std::all_of(settings, settings + count, isWhole)) {
        ini::noteFailure(JxIniStepArgument, {}, EINVAL);
        return 0;
    }
    try {
        return change->change.applyAll({settings, count}) == ini::Edit::refused ? 0 : 1;
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
        return 0;
    }
}

int jxIniReplace(JxIniChange* change, const char* bytes, size_t length) {
    if (change == nullptr || (bytes == nullptr && length > 0)) {
        ini::noteFailure(JxIniStepArgument, {}, EINVAL);
        return 0;
    }
    try {
        change->change.replaceText(length == 0 ? std::string() : std::string(bytes, length));
        return 1;
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
        return 0;
    }
}

const char* jxIniBefore(const JxIniChange* change, size_t* length) {
    return textOf(change == nullptr ? nullptr : &change->change.before(), length);
}

const char* jxIniAfter(const JxIniChange* change, size_t* length) {
    return textOf(change == nullptr ? nullptr : &change->change.text(), length);
}

int jxIniCommit(JxIniChange* change) {
    const jx::NoCancellation writing;
    const std::unique_ptr<JxIniChange> owner(change);
    if (change == nullptr) {
        ini::noteFailure(JxIniStepArgument, {}, EINVAL);
        return 0;
    }
    try {
        if (!change->change.commit())
            return 0;
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
        return 0;
    }
    ini::noteSuccess();
    return 1;
}

void jxIniDiscard(JxIniChange* change) {
    const jx::NoCancellation closing;
    delete change;
}

// The thread's run is its own handle, also for the runs inside it: they end in the reverse order of their beginnings.
JxIniRun* jxIniBeginRun(void) {
    const jx::NoCancellation beginning;
    ini::IniRun* run = nullptr;
    try {
        run = ini::beginRun();
    } catch (const std::bad_alloc&) {
        run = nullptr;
    }
    if (run == nullptr)
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
    else
        ini::noteSuccess();
    return reinterpret_cast<JxIniRun*>(run);
}

int jxIniCommitRun(JxIniRun* run) {
    const jx::NoCancellation writing;
    ini::IniRun* current = ini::currentRun();
    if (current == nullptr || reinterpret_cast<ini::IniRun*>(run) != current) {
        ini::noteFailure(JxIniStepArgument, {}, EINVAL);
        return 0;
    }
    if (current->leave() == ini::IniRun::Level::inner)
        return 1;
    bool written = false;
    try {
        written = current->commit();
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
    }
    ini::endRun();
    if (written)
        ini::noteSuccess();
    return written ? 1 : 0;
}

void jxIniDiscardRun(JxIniRun* run) {
    const jx::NoCancellation closing;
    ini::IniRun* current = ini::currentRun();
    if (current == nullptr || reinterpret_cast<ini::IniRun*>(run) != current)
        return;
    if (current->leave() == ini::IniRun::Level::outer) {
        ini::endRun();
        return;
    }
    if (ini::lastFailure().step == JxIniStepNone)
        ini::noteFailure(JxIniStepArgument, {}, ECANCELED);
    current->fail();
}

int jxIniLockInRun(const char* file) {
    ini::IniRun* run = ini::currentRun();
    if (run == nullptr || file == nullptr || *file == '\0') {
        ini::noteFailure(JxIniStepArgument, {}, run == nullptr ? EPERM : EINVAL);
        return 0;
    }
    const jx::NoCancellation locking;
    try {
        if (run->changeOf(ini::locate(file)) == nullptr)
            return 0;
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, file, ENOMEM);
        return 0;
    }
    ini::noteSuccess();
    return 1;
}
