// Prepares a text for look-ups, part by part.
#include "jxutl/ini/ini_index.h"

#include <new>

#include "jxutl/ini/ini_line.h"
#include "jxutl/ini/ini_scan.h"
#include "jxutl/ini/name_hash.h"
#include "rules/names.h"

namespace jx::ini {

namespace {

// The hash of a key in a section: one table serves all sections, so that one look-up finds a value.
std::uint32_t hashKey(std::uint32_t sectionHash, std::string_view key) {
    return hashName(key) + sectionHash * 0x9E3779B1U;
}

// Makes room for more by growing a quarter: these vectors may have an element for every line of a large file.
template <class Element>
void makeRoom(std::vector<Element>& elements, std::size_t more = 1) {
    if (elements.size() + more > elements.capacity())
        elements.reserve(elements.size() + elements.size() / 4 + more + 16);
}

void appendName(std::vector<char>& list, std::string_view name) {
    makeRoom(list, name.size() + 1);
    list.insert(list.end(), name.begin(), name.end());
    list.push_back('\0');
}

std::string_view beforeNul(std::string_view value) {
    return value.substr(0, value.find('\0'));
}

std::optional<std::string_view> valueByWalking(std::string_view text, std::string_view section, std::string_view key) {
    if (!rules::canBeAskedFor(section) || !rules::canBeAskedFor(key))
        return std::nullopt;
    SectionWalk walk(text);
    while (walk.nextNamed(section))
        if (const EntryLine line = findEntry(text, walk.body(), walk.bodyEnd(), key))
            return beforeNul(line.entry.value);
    return std::nullopt;
}

}  // namespace

void IniIndex::reset(std::string_view text) noexcept {
    // What a text that was much longer took is given back.
    constexpr std::size_t kWorthIt = std::size_t{1} << 20;
    if (memory() > kWorthIt && text.size() < memory() / 16)
        *this = IniIndex();
    clear();
    text_ = text;
    walked_ = false;
}

void IniIndex::clear() noexcept {
    prepared_ = false;
    sectionList_ = kNotYet;
    sections_.clear();
    bodies_.clear();
    keys_.clear();
    lists_.clear();
    sectionTable_.clear();
    keyTable_.clear();
}

std::size_t IniIndex::memory() const {
    return sections_.capacity() * sizeof(Section) + bodies_.capacity() * sizeof(Body) + keys_.capacity() * sizeof(Key) +
           lists_.capacity() + sectionTable_.memory() + keyTable_.memory();
}

std::uint32_t IniIndex::offset(std::string_view part) const {
    return static_cast<std::uint32_t>(part.data() - text_.data());
}

std::uint32_t IniIndex::findSection(std::string_view name, std::uint32_t hash) const {
    return sectionTable_.find(hash, [&](std::uint32_t number) {
        const Section& section = sections_[number];
        return rules::sameName(view(section.name, section.nameLength), name);
    });
}

std::uint32_t IniIndex::findKey(std::string_view section, std::string_view key, std::uint32_t hash) const {
    return keyTable_.find(hash, [&](std::uint32_t number) {
        const Key& candidate = keys_[number];
        const Section& home = sections_[candidate.section];
        return rules::sameName(view(candidate.name, candidate.nameLength), key) &&
               rules::sameName(view(home.name, home.nameLength), section);
    });
}

std::optional<std::string_view> IniIndex::value(std::string_view section, std::string_view key) {
    const std::uint32_t found = findKey(section, key, hashKey(hashName(section), key));
    if (found == NameTable::kNone)
        return unpreparedValue(section, key);
    return valueOf(keys_[found]);
}

std::optional<std::string_view> IniIndex::unpreparedValue(std::string_view section, std::string_view key) {
    if (!walked_ && !prepared_) {
        walked_ = true;
        return valueByWalking(text_, section, key);
    }
    const std::uint32_t sectionHash = hashName(section);
    if (!prepareSection(section, sectionHash).isNew)
        return std::nullopt;
    const std::uint32_t found = findKey(section, key, hashKey(sectionHash, key));
    if (found == NameTable::kNone)
        return std::nullopt;
    return valueOf(keys_[found]);
}

std::optional<std::string_view> IniIndex::keys(std::string_view section) {
    if (!walked_ && !prepared_) {
        walked_ = true;
        if (!prepareOnly(section))
            return std::nullopt;
    }
    Section* prepared = prepareSection(section, hashName(section)).section;
    if (prepared == nullptr)
        return std::nullopt;
    if (prepared->list == kNotYet)
        prepareList(*prepared);
    return std::string_view(lists_.data() + prepared->list, prepared->listLength);
}

std::string_view IniIndex::sections() {
    if (!prepared_)
        prepareSections();
    if (sectionList_ == kNotYet)
        prepareSectionList();
    return {lists_.data() + sectionList_, sectionListLength_};
}

IniIndex::Finding IniIndex::find(std::string_view section, std::string_view key) {
    const std::uint32_t sectionHash = hashName(section);
    const std::uint32_t hash = hashKey(sectionHash, key);
    if (const std::uint32_t known = findKey(section, key, hash); known != NameTable::kNone)
        return {valueOf(keys_[known]), true};
    if (!walked_ && !prepared_) {
        walked_ = true;
        if (const std::optional<std::string_view> walked = valueByWalking(text_, section, key))
            return {walked, true};
    }
    const Prepared prepared = prepareSection(section, sectionHash);
    if (prepared.section == nullptr)
        return {};
    const std::uint32_t found = prepared.isNew ? findKey(section, key, hash) : NameTable::kNone;
    if (found != NameTable::kNone)
        return {valueOf(keys_[found]), true};
    return {std::nullopt, true, prepared.section->keysWithAt};
}

// When memory runs short, nothing is left half prepared.
IniIndex::Prepared IniIndex::prepareSection(std::string_view name, std::uint32_t hash) {
    std::uint32_t number = findSection(name, hash);
    if (number == NameTable::kNone && !prepared_) {
        prepareSections();
        number = findSection(name, hash);
    }
    if (number == NameTable::kNone)
        return {};
    Section& section = sections_[number];
    const bool isNew = section.firstKey == kNotYet;
    if (isNew)
        prepareKeys(section, hash);
    return {&section, isNew};
}

void IniIndex::prepareSections() {
    clear();
    try {
        SectionWalk walk(text_);
        while (walk.next())
            if (rules::canBeAskedFor(walk.name()))
                addSection(walk);
    } catch (const std::bad_alloc&) {
        clear();
        throw;
    }
    prepared_ = true;
}

// Only the sections of that name; false when there is none. When memory runs short, nothing is left half prepared.
bool IniIndex::prepareOnly(std::string_view name) {
    try {
        SectionWalk walk(text_);
        while (rules::canBeAskedFor(name) && walk.nextNamed(name))
            addSection(walk);
    } catch (const std::bad_alloc&) {
        clear();
        throw;
    }
    return !sections_.empty();
}

void IniIndex::addSection(const SectionWalk& walk) {
    makeRoom(bodies_);
    makeRoom(sections_);
    const auto body = static_cast<std::uint32_t>(bodies_.size());
    bodies_.push_back({static_cast<std::uint32_t>(walk.body()), static_cast<std::uint32_t>(walk.bodyEnd())});
    const std::uint32_t hash = hashName(walk.name());
    const std::uint32_t known = findSection(walk.name(), hash);
    if (known != NameTable::kNone) {
        bodies_[sections_[known].lastBody].next = body;
        sections_[known].lastBody = body;
        return;
    }
    sectionTable_.insert(hash, static_cast<std::uint32_t>(sections_.size()));
    Section& section = sections_.emplace_back();
    section.name = offset(walk.name());
    section.nameLength = static_cast<std::uint32_t>(walk.name().size());
    section.firstBody = body;
    section.lastBody = body;
}

void IniIndex::prepareKeys(Section& section, std::uint32_t sectionHash) {
    section.firstKey = static_cast<std::uint32_t>(keys_.size());
    try {
        for (std::uint32_t body = section.firstBody; body != NameTable::kNone; body = bodies_[body].next)
            prepareKeysOf(section, sectionHash, bodies_[body]);
    } catch (const std::bad_alloc&) {
        clear();
        throw;
    }
}

void IniIndex::prepareKeysOf(Section& section, std::uint32_t sectionHash, const Body& body) {
    const auto number = static_cast<std::uint32_t>(&section - sections_.data());
    const std::string_view name = view(section.name, section.nameLength);
    EntryLine line;
    for (std::size_t from = body.begin; (line = nextEntry(text_, from, body.end)); from = line.end) {
        const auto [key, value] = line.entry;
        const std::uint32_t hash = hashKey(sectionHash, key);
        if (!rules::canBeAskedFor(key) || findKey(name, key, hash) != NameTable::kNone)
            continue;
        const std::string_view held = value.data() == nullptr ? key.substr(key.size()) : beforeNul(value);
        makeRoom(keys_);
        keyTable_.insert(hash, static_cast<std::uint32_t>(keys_.size()));
        keys_.push_back({offset(key), static_cast<std::uint32_t>(key.size()), offset(held),
                         static_cast<std::uint32_t>(held.size()), number});
        ++section.keyCount;
        section.keysWithAt += key.find('@') == std::string_view::npos ? 0 : 1;
    }
}

void IniIndex::prepareList(Section& section) {
    const std::size_t begin = lists_.size();
    for (std::uint32_t i = 0; i < section.keyCount; ++i) {
        const Key& key = keys_[section.firstKey + i];
        appendName(lists_, view(key.name, key.nameLength));
    }
    section.listLength = static_cast<std::uint32_t>(lists_.size() - begin);
    section.list = static_cast<std::uint32_t>(begin);
}

void IniIndex::prepareSectionList() {
    const std::size_t begin = lists_.size();
    for (const Section& section : sections_)
        appendName(lists_, view(section.name, section.nameLength));
    sectionListLength_ = static_cast<std::uint32_t>(lists_.size() - begin);
    sectionList_ = static_cast<std::uint32_t>(begin);
}

}  // namespace jx::ini
