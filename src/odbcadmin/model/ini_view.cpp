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
    section.places.reserve(few ? 0 : entries.size());
    auto end = entries.begin();
    for (const IniEntry& entry : entries) {
        const auto isSame = [&](const IniEntry& other) { return rules::sameName(other.key, entry.key); };
        const auto place = static_cast<std::size_t>(end - entries.begin());
        const bool isNew = few ? std::none_of(entries.begin(), end, isSame)
                               : section.places.emplace(rules::foldedName(entry.key), place).second;
        if (isNew)
            *end++ = entry;
    }
    entries.erase(end, entries.end());
}

}  // namespace

const IniEntry* IniSection::find(std::string_view key) const {
    const std::string_view wanted = rules::trimmed(key);
    if (!places.empty()) {
        const auto place = places.find(rules::foldedName(wanted));
        return place == places.end() ? nullptr : &entries[place->second];
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
    const std::size_t count = jxIniPieceCount(text_.get());
    std::optional<std::size_t> current;
    JxIniPiece piece;
    for (std::size_t i = 0; i < count && jxIniPieceAt(text_.get(), i, &piece) != 0; ++i) {
        if (piece.kind == JxIniSection)
            current = sectionFor(piece);
        else if (piece.kind == JxIniEntry && current && rules::canBeAskedFor(nameOf(piece)))
            sections_[*current].entries.push_back({nameOf(piece), valueOf(piece), piece.line});
    }
    // A section without a name that can be asked for holds what no look-up finds.
    std::erase_if(sections_, [](const IniSection& each) { return !rules::canBeAskedFor(each.name); });
    places_.clear();
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        places_.emplace(rules::foldedName(sections_[i].name), i);
        keepFirstOfEach(sections_[i]);
    }
}

std::string_view IniView::bytes() const {
    std::size_t length = 0;
    const char* begin = text_ ? jxIniBytes(text_.get(), &length) : nullptr;
    return begin == nullptr ? std::string_view() : std::string_view(begin, length);
}

std::size_t IniView::sectionFor(const JxIniPiece& header) {
    const auto [place, isNew] = places_.emplace(rules::foldedName(nameOf(header)), sections_.size());
    if (isNew)
        sections_.push_back({nameOf(header), header.line, {}});
    return place->second;
}

const IniSection* IniView::section(std::string_view name) const {
    const auto place = places_.find(rules::foldedName(rules::trimmed(name)));
    return place == places_.end() ? nullptr : &sections_[place->second];
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
