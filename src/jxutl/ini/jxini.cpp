// The store's own interface: failures, paths, texts, look-ups and changes.
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
#include "jxutl/ini/ini_index.h"
#include "jxutl/ini/ini_line.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/ini/ini_place.h"
#include "jxutl/ini/ini_run.h"
#include "jxutl/ini/ini_scan.h"
#include "jxutl/ini/name_hash.h"
#include "jxutl/ini/profile_cache.h"
#include "jxutl/ini/profile_file.h"
#include "jxutl/ini/whole_file.h"
#include "jxutl/thread/failure.h"
#include "jxutl/thread/no_cancellation.h"
#include "rules/names.h"

namespace ini = jx::ini;
namespace rules = jx::rules;

// Not copied or moved: pieces point into bytes.
struct JxIniText {
    explicit JxIniText(std::string text) : bytes(std::move(text)), pieces(ini::splitLines(bytes)) {}
    JxIniText(const JxIniText&) = delete;
    JxIniText& operator=(const JxIniText&) = delete;

    const std::string bytes;
    const std::vector<JxIniPiece> pieces;
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
    for (const JxIniPiece& piece : text.pieces) {
        if (piece.kind == JxIniSection)
            inside = rules::sameName(ini::nameOf(piece), name);
        else if (inside && piece.kind == JxIniEntry && !visit(piece))
            return;
    }
}

template <typename Visit>
void eachHeader(const JxIniText& text, Visit visit) {
    for (const JxIniPiece& piece : text.pieces)
        if (piece.kind == JxIniSection && !visit(piece))
            return;
}

// A view is an index of the thread's cache under a name for programs.
ini::IniIndex& indexOf(JxIniView* view) {
    return *reinterpret_cast<ini::IniIndex*>(view);
}

JxIniAnswer answer(std::optional<std::string_view> found, JxIniAnswer otherwise, JxIniPart* part) {
    if (!found)
        return otherwise;
    *part = {found->data(), found->size()};
    return JxIniFound;
}

JxIniAnswer ask(ini::IniIndex& index, const char* section, const char* key, JxIniPart* part) {
    if (section == nullptr)
        return answer(index.sections(), JxIniNoSection, part);
    const std::string_view sectionName = rules::argument(section);
    if (key == nullptr)
        return answer(index.keys(sectionName), JxIniNoSection, part);
    const ini::IniIndex::Finding found = index.find(sectionName, rules::argument(key));
    if (found.value || !found.hasSection)
        return answer(found.value, JxIniNoSection, part);
    *part = {nullptr, found.keysWithAt};
    return JxIniNoKey;
}

std::size_t lineAt(std::string_view text, std::size_t place) {
    return 1 + static_cast<std::size_t>(std::count(text.data(), text.data() + place, '\n'));
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
    const JxIniPiece* found = nullptr;
    const auto take = [&](std::string_view name) {
        return [&found, name](const JxIniPiece& candidate) {
            if (rules::sameName(ini::nameOf(candidate), name))
                found = &candidate;
            return found == nullptr;
        };
    };
    if (key == nullptr)
        eachHeader(*text, take(sectionName));
    else
        eachEntry(*text, sectionName, take(keyName));
    if (found != nullptr && piece != nullptr)
        *piece = *found;
    return found != nullptr ? 1 : 0;
}

size_t jxIniEach(const JxIniText* text, const char* section, JxIniVisit visit, void* context) {
    const std::string_view sectionName = rules::argument(section);
    if (text == nullptr || visit == nullptr || (section != nullptr && !rules::canBeAskedFor(sectionName)))
        return 0;
    // Collected first: exceptions of visit pass through, std::bad_alloc of ours does not.
    std::vector<const JxIniPiece*> listed;
    try {
        Names names;
        const auto take = [&](const JxIniPiece& piece) {
            const std::string_view name = ini::nameOf(piece);
            if (rules::canBeAskedFor(name) && names.insert(name).second)
                listed.push_back(&piece);
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
    for (const JxIniPiece* piece : listed) {
        ++visits;
        if (visit(context, piece) == 0)
            break;
    }
    return visits;
}

JxIniView* jxIniLook(JxIniFileCache* file) {
    if (file == nullptr || file->file.empty()) {
        ini::noteFailure(JxIniStepLocate, {}, EINVAL);
        return nullptr;
    }
    try {
        if (ini::ProfileCache* cache = ini::threadCache(); cache != nullptr)
            return reinterpret_cast<JxIniView*>(cache->read(file->file));
    } catch (const std::bad_alloc&) {
        // Noted below, as for a thread that cannot have a cache.
    }
    ini::noteFailure(JxIniStepMemory, file->file, ENOMEM);
    return nullptr;
}

JxIniAnswer jxIniAsk(JxIniView* view, const char* section, const char* key, JxIniPart* part) {
    if (view == nullptr || part == nullptr)
        return JxIniNoSection;
    try {
        return ask(indexOf(view), section, key, part);
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
        return JxIniAskFailed;
    }
}

size_t jxIniLine(JxIniView* view, const char* section, const char* key) {
    const std::string_view name = rules::argument(section);
    if (view == nullptr || !rules::canBeAskedFor(name))
        return 0;
    const std::string_view text = indexOf(view).text();
    ini::SectionWalk walk(text);
    while (walk.nextNamed(name)) {
        if (key == nullptr)
            return lineAt(text, walk.header());
        if (const auto line = ini::findEntry(text, walk.body(), walk.bodyEnd(), rules::argument(key)))
            return lineAt(text, line.begin);
    }
    return 0;
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
