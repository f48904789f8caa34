// The part of jxini.h that reads: a text, its pieces, look-ups and lists.
#include <cerrno>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include <jxini.h>
#include "jxutl/ini/ini_line.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/ini/ini_target.h"
#include "jxutl/ini/whole_file.h"
#include "jxutl/thread/failure.h"
#include "rules/names.h"

namespace ini = jx::ini;
namespace rules = jx::rules;

// Pieces point into bytes, so the object stays where it was made.
struct JxIniText {
    explicit JxIniText(std::string text) : bytes(std::move(text)), pieces(ini::splitLines(bytes)) {}
    JxIniText(const JxIniText&) = delete;
    JxIniText& operator=(const JxIniText&) = delete;

    const std::string bytes;
    const std::vector<JxIniPiece> pieces;
};

namespace {

struct HashName {
    std::size_t operator()(std::string_view name) const { return rules::hashName(name); }
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

JxIniText* readText(const char* file) {
    const ini::IniLocation where = ini::locate(file);
    if (where.path.empty()) {
        ini::noteFailure(JxIniStepLocate, file, errno);
        return nullptr;
    }
    std::string target;
    if (!ini::findTarget(where.path, target))
        return nullptr;
    std::string bytes;
    struct stat state;
    const ini::Whole outcome = ini::readWhole(target, bytes, state);
    if (outcome == ini::Whole::absent)
        ini::noteFailure(JxIniStepOpen, target, ENOENT);
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

}  // namespace

JxIniText* jxIniRead(const char* file) {
    if (file == nullptr || *file == '\0') {
        ini::noteFailure(JxIniStepLocate, {}, EINVAL);
        return nullptr;
    }
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
    // Collected first: what visit throws must pass, and what collecting throws must not.
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
