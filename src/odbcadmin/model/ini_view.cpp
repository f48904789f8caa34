// Making one list of sections and keys of a text's pieces.
#include "odbcadmin/model/ini_view.h"

#include <algorithm>
#include <cerrno>

#include "rules/names.h"

namespace jx::model {

namespace {

std::string_view nameOf(const JxIniPiece& piece) {
    return piece.name == nullptr ? std::string_view() : std::string_view(piece.name, piece.nameLength);
}

// A value ends at its first NUL and no name that holds one is ever found, as everywhere in the store.
std::string_view valueOf(const JxIniPiece& piece) {
    if (piece.value == nullptr)
        return {};
    const std::string_view value(piece.value, piece.valueLength);
    return value.substr(0, value.find('\0'));
}

// In a few keys it is quicker to look than to make a table.
constexpr std::size_t kFewKeys = 12;

// In place: most sections have nothing to drop.
void keepFirstOfEach(IniSection& section) {
    std::vector<IniEntry>& entries = section.entries;
    const bool few = entries.size() <= kFewKeys;
    if (!few)
        section.places.reserve(entries.size());
    std::size_t kept = 0;
    for (const IniEntry& entry : entries) {
        const auto isSame = [&](std::size_t at) { return rules::sameName(entries[at].key, entry.key); };
        const std::uint32_t hash = few ? 0 : NamePlaces::hashOf(entry.key);
        bool isNew = !section.places.find(hash, isSame);
        for (std::size_t at = 0; few && isNew && at < kept; ++at)
            isNew = !isSame(at);
        if (!isNew)
            continue;
        if (!few)
            section.places.add(hash, kept);
        entries[kept++] = entry;
    }
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(kept), entries.end());
}

}  // namespace

const IniEntry* IniSection::find(std::string_view key) const {
    const std::string_view wanted = rules::trimmed(key);
    if (!places.isEmpty()) {
        const auto isSame = [&](std::size_t at) { return rules::sameName(entries[at].key, wanted); };
        const auto place = places.find(NamePlaces::hashOf(wanted), isSame);
        return place ? &entries[*place] : nullptr;
    }
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const IniEntry& entry) { return rules::sameName(entry.key, wanted); });
    return found == entries.end() ? nullptr : &*found;
}

std::string IniSection::value(std::string_view key) const {
    const IniEntry* entry = find(key);
    return entry == nullptr ? std::string() : std::string(entry->value);
}

std::vector<std::string> IniSection::keys() const {
    std::vector<std::string> names;
    for (const IniEntry& entry : entries)
        names.emplace_back(entry.key);
    return names;
}

std::optional<IniView> IniView::read(const std::string& file) {
    Text text(jxIniRead(file.c_str()));
    if (text)
        return IniView(std::move(text));
    const JxIniFailure failure = jxIniLastFailure();
    if (failure.error == ENOENT && (failure.step == JxIniStepOpen || failure.step == JxIniStepLook))
        return IniView();
    return std::nullopt;
}

std::optional<IniView> IniView::parse(std::string_view bytes) {
    Text text(jxIniParse(bytes.data(), bytes.size()));
    if (!text)
        return std::nullopt;
    return IniView(std::move(text));
}

IniView::IniView(Text text) : text_(std::move(text)) {
    readSections();
    // A section without a name that can be asked for holds what no look-up finds.
    std::erase_if(sections_, [](const IniSection& each) { return !rules::canBeAskedFor(each.name); });
    places_ = {};
    places_.reserve(sections_.size());
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        places_.add(NamePlaces::hashOf(sections_[i].name), i);
        keepFirstOfEach(sections_[i]);
    }
}

// The entries below one header are gathered first: their list is then made in one piece.
void IniView::readSections() {
    std::vector<IniEntry> entries;
    std::optional<std::size_t> current;
    const auto settle = [&] {
        if (current && !entries.empty()) {
            std::vector<IniEntry>& all = sections_[*current].entries;
            all.insert(all.end(), entries.begin(), entries.end());
        }
        entries.clear();
    };
    JxIniPiece piece;
    for (std::size_t i = 0; jxIniPieceAt(text_.get(), i, &piece) != 0; ++i) {
        if (piece.kind == JxIniEntry && rules::canBeAskedFor(nameOf(piece)))
            entries.push_back({nameOf(piece), valueOf(piece), piece.line});
        if (piece.kind != JxIniSection)
            continue;
        settle();
        current = sectionFor(piece);
    }
    settle();
}

std::size_t IniView::sectionFor(const JxIniPiece& header) {
    const std::optional<std::size_t> known = placeOf(nameOf(header));
    if (known)
        return *known;
    places_.add(NamePlaces::hashOf(nameOf(header)), sections_.size());
    sections_.push_back({nameOf(header), header.line, {}, {}});
    return sections_.size() - 1;
}

std::string_view IniView::bytes() const {
    std::size_t length = 0;
    const char* begin = text_ ? jxIniBytes(text_.get(), &length) : nullptr;
    return begin == nullptr ? std::string_view() : std::string_view(begin, length);
}

std::optional<std::size_t> IniView::placeOf(std::string_view name) const {
    return places_.find(NamePlaces::hashOf(name),
                        [&](std::size_t at) { return rules::sameName(sections_[at].name, name); });
}

const IniSection* IniView::section(std::string_view name) const {
    const auto place = placeOf(rules::trimmed(name));
    return place ? &sections_[*place] : nullptr;
}

const IniEntry* IniView::find(std::string_view name, std::string_view key) const {
    const IniSection* found = section(name);
    return found == nullptr ? nullptr : found->find(key);
}

std::string IniView::value(std::string_view name, std::string_view key) const {
    const IniSection* found = section(name);
    return found == nullptr ? std::string() : found->value(key);
}

}  // namespace jx::model
