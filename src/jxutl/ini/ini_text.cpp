// Edits one text.
#include "jxutl/ini/ini_text.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "jxutl/ini/ini_scan.h"
#include "jxutl/ini/section_map.h"
#include "rules/names.h"
#include "rules/storable.h"

namespace jx::ini {

namespace {

// The span of a text.
struct Span {
    std::size_t begin;
    std::size_t end;
};

// Takes the spans, which are in order and do not overlap, out of the text. Throws nothing.
void removeSpans(std::string& text, const std::vector<Span>& spans) {
    std::size_t kept = spans.front().begin;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const std::size_t next = i + 1 < spans.size() ? spans[i + 1].begin : text.size();
        const std::size_t length = next - spans[i].end;
        std::char_traits<char>::move(text.data() + kept, text.data() + spans[i].end, length);
        kept += length;
    }
    text.resize(kept);
}

Edit removed(std::string& text, SectionMap& map, const std::vector<Span>& spans) {
    if (spans.empty())
        return Edit::unchanged;
    removeSpans(text, spans);
    if (spans.size() == 1)
        map.replaced(spans.front().begin, spans.front().end, 0);
    else
        map.drop();
    return Edit::changed;
}

// Where the line before end, which is not the first, begins.
std::size_t lineBefore(std::string_view text, std::size_t end) {
    const std::size_t feed = end < 2 ? std::string_view::npos : text.rfind('\n', end - 2);
    return feed == std::string_view::npos ? 0 : feed + 1;
}

// The line end for a new line after the one that ends at end: that of this line, or the last one above. A CR at the end
// of the text is half a CRLF.
std::string_view lineEndAt(std::string_view text, std::size_t end) {
    if (end > 0 && text[end - 1] == '\r')
        return "\r\n";
    const std::size_t feed = end == 0 ? std::string_view::npos : text.rfind('\n', end - 1);
    if (feed == std::string_view::npos)
        return "\n";
    return feed > 0 && text[feed - 1] == '\r' ? "\r\n" : "\n";
}

// What completes the last line of the text so that another can follow.
std::string_view missingLineEnd(std::string_view text, std::string_view lineEnd) {
    if (text.empty() || text.back() == '\n' || text == kByteOrderMark)
        return {};
    return text.back() == '\r' ? "\n" : lineEnd;
}

// Where the comment block directly above a header begins; without comments, where the header's line begins.
std::size_t commentBlockAbove(std::string_view text, std::size_t body, std::size_t header) {
    std::size_t begin = header;
    while (begin > body) {
        const std::size_t line = lineBefore(text, begin);
        if (pieceAt(text, line, 1).kind != JxIniComment)
            break;
        begin = line;
    }
    return begin;
}

Edit removeSection(std::string& text, SectionMap& map, std::string_view section) {
    std::vector<Span> spans;
    SectionsNamed sections(text, map, section);
    while (sections.next()) {
        const bool last = sections.bodyEnd() == text.size();
        const std::size_t end = last ? text.size() : commentBlockAbove(text, sections.body(), sections.bodyEnd());
        spans.push_back({sections.header(), end});
    }
    return removed(text, map, spans);
}

Edit removeKey(std::string& text, SectionMap& map, std::string_view section, std::string_view key) {
    std::vector<Span> spans;
    SectionsNamed sections(text, map, section);
    while (sections.next()) {
        std::size_t from = sections.body();
        while (const EntryLine line = findEntry(text, from, sections.bodyEnd(), key)) {
            spans.push_back({line.begin, line.end});
            from = line.end;
        }
    }
    return removed(text, map, spans);
}

Edit replace(std::string& text, SectionMap& map, Span span, std::string_view by) {
    text.replace(span.begin, span.end - span.begin, by);
    map.replaced(span.begin, span.end, by.size());
    return Edit::changed;
}

Edit changeValue(std::string& text, SectionMap& map, const Entry& entry, std::string_view value) {
    if (entry.value == value)
        return Edit::unchanged;
    if (entry.value.data() != nullptr) {
        const auto begin = static_cast<std::size_t>(entry.value.data() - text.data());
        return replace(text, map, {begin, begin + entry.value.size()}, value);
    }
    std::string added = "=";
    added += value;
    const auto end = static_cast<std::size_t>(entry.key.data() - text.data()) + entry.key.size();
    return replace(text, map, {end, end}, added);
}

void appendEntry(std::string& lines, std::string_view key, std::string_view value, std::string_view lineEnd) {
    lines += key;
    lines += '=';
    lines += value;
    lines += lineEnd;
}

// After the last key line between body, which follows the header, and end.
std::size_t placeOfNewKey(std::string_view text, std::size_t body, std::size_t end) {
    while (end > body) {
        const std::size_t line = lineBefore(text, end);
        if (nextEntry(text, line, end))
            return end;
        end = line;
    }
    return body;
}

// A line end that completes a header makes its line longer.
Edit addKey(std::string& text, SectionMap& map, std::size_t place, std::string_view key, std::string_view value) {
    const std::string_view lineEnd = lineEndAt(text, place);
    std::string added(missingLineEnd(std::string_view(text).substr(0, place), lineEnd));
    const bool completesALine = !added.empty();
    appendEntry(added, key, value, lineEnd);
    replace(text, map, {place, place}, added);
    if (completesALine)
        map.drop();
    return Edit::changed;
}

bool endsWithBlankLine(std::string_view text) {
    std::string_view line = text.substr(lineBefore(text, text.size()));
    if (line.size() == text.size() && line.starts_with(kByteOrderMark))
        line.remove_prefix(kByteOrderMark.size());
    return rules::trimmed(withoutLineEnd(line)).empty();
}

// Without a key: its header.
std::string newSection(std::string_view text, std::string_view section, std::string_view lineEnd) {
    std::string added(missingLineEnd(text, lineEnd));
    if (!text.empty() && text != kByteOrderMark && !endsWithBlankLine(text))
        added += lineEnd;
    added += '[';
    added += section;
    added += ']';
    added += lineEnd;
    return added;
}

Edit addSection(std::string& text, SectionMap& map, std::string_view section, std::string_view key,
                std::string_view value) {
    const std::string_view lineEnd = lineEndAt(text, text.size());
    const bool completesALine = !missingLineEnd(text, lineEnd).empty();
    std::string added = newSection(text, section, lineEnd);
    const std::size_t body = text.size() + added.size();
    const std::size_t header = body - lineEnd.size() - section.size() - 2;
    appendEntry(added, key, value, lineEnd);
    map.makeRoom();
    text += added;
    if (completesALine)
        map.drop();
    else if (map.isThere())
        map.added(text, header, body - header, std::string_view(text).substr(header + 1, section.size()));
    return Edit::changed;
}

Edit setKey(std::string& text, SectionMap& map, std::string_view section, std::string_view key,
            std::string_view value) {
    SectionsNamed sections(text, map, section);
    bool present = false;
    Span first{};
    while (sections.next()) {
        if (const EntryLine line = findEntry(text, sections.body(), sections.bodyEnd(), key))
            return changeValue(text, map, line.entry, value);
        if (!present)
            first = {sections.body(), sections.bodyEnd()};
        present = true;
    }
    if (!present)
        return addSection(text, map, section, key, value);
    return addKey(text, map, placeOfNewKey(text, first.begin, first.end), key, value);
}

// Batch: settings of different keys, gathered against one text and then made in one pass over it.
class Batch {
public:
    explicit Batch(const std::string& text) : text_(text) {
        SectionWalk walk(text_);
        while (walk.next())
            sections_[rules::foldedName(walk.name())].bodies.push_back({walk.body(), walk.bodyEnd()});
    }

    // False, and nothing is gathered, when the key was set before: what the text says of it is another then.
    bool add(std::string_view section, std::string_view key, std::string_view value) {
        const auto [place, isNew] = sections_.try_emplace(rules::foldedName(section));
        Section& known = place->second;
        const std::string folded = rules::foldedName(key);
        if (!known.isIndexed)
            index(known);
        if (!known.set.insert(folded).second)
            return false;
        if (isNew) {
            known.name = section;
            newSections_.push_back(&known);
        }
        const auto entry = known.entries.find(folded);
        if (entry != known.entries.end())
            replaceValue(entry->second, value);
        else
            known.newKeys.emplace_back(key, value);
        return true;
    }

    std::string text() {
        for (const auto& [name, section] : sections_)
            if (!section.bodies.empty() && !section.newKeys.empty())
                insertKeys(section);
        std::sort(changes_.begin(), changes_.end(), [](const Change& a, const Change& b) { return a.begin < b.begin; });
        std::string made;
        std::size_t from = 0;
        for (const Change& change : changes_) {
            made.append(text_, from, change.begin - from).append(change.bytes);
            from = change.end;
        }
        made.append(text_, from);
        for (const Section* section : newSections_)
            append(made, *section);
        return made;
    }

private:
    // All sections of one name; without bodies, one that the text has not.
    struct Section {
        std::string_view name;
        std::vector<Span> bodies;
        bool isIndexed = false;
        std::unordered_map<std::string, Entry> entries;  // by folded key: the first of each
        std::size_t lastKeyEnd = 0;                      // in the first body: where a new key goes
        std::unordered_set<std::string> set;
        std::vector<std::pair<std::string_view, std::string_view>> newKeys;
    };

    struct Change {
        std::size_t begin, end;  // of the text that bytes replace
        std::string bytes;
    };

    void index(Section& section) const {
        section.isIndexed = true;
        for (const Span& body : section.bodies) {
            const bool isFirst = body.begin == section.bodies.front().begin;
            section.lastKeyEnd = isFirst ? body.begin : section.lastKeyEnd;
            std::size_t from = body.begin;
            while (const EntryLine line = nextEntry(text_, from, body.end)) {
                section.entries.emplace(rules::foldedName(line.entry.key), line.entry);
                section.lastKeyEnd = isFirst ? line.end : section.lastKeyEnd;
                from = line.end;
            }
        }
    }

    std::size_t placeOf(const char* byte) const { return static_cast<std::size_t>(byte - text_.data()); }

    void replaceValue(const Entry& entry, std::string_view value) {
        if (entry.value == value)
            return;
        const bool isBare = entry.value.data() == nullptr;
        const std::size_t begin = isBare ? placeOf(entry.key.data()) + entry.key.size() : placeOf(entry.value.data());
        changes_.push_back({begin, begin + entry.value.size(), std::string(isBare ? "=" : "").append(value)});
    }

    void insertKeys(const Section& section) {
        const std::string_view above = std::string_view(text_).substr(0, section.lastKeyEnd);
        const std::string_view lineEnd = lineEndAt(text_, section.lastKeyEnd);
        std::string added(missingLineEnd(above, lineEnd));
        for (const auto& [key, value] : section.newKeys)
            appendEntry(added, key, value, lineEnd);
        changes_.push_back({section.lastKeyEnd, section.lastKeyEnd, std::move(added)});
    }

    static void append(std::string& text, const Section& section) {
        const std::string_view lineEnd = lineEndAt(text, text.size());
        text += newSection(text, section.name, lineEnd);
        for (const auto& [key, value] : section.newKeys)
            appendEntry(text, key, value, lineEnd);
    }

    const std::string& text_;
    std::unordered_map<std::string, Section> sections_;  // by folded name
    std::vector<Section*> newSections_;                  // in order
    std::vector<Change> changes_;
};

}  // namespace

Edit IniText::applyAll(std::span<const Setting> settings) {
    for (const Setting& each : settings)
        if (rules::refusalOf(rules::argument(each.section), rules::argument(each.key), rules::argument(each.value)))
            return Edit::refused;
    std::string text = bytes_;
    for (auto next = settings.begin(); next != settings.end();) {
        Batch batch(text);
        for (; next != settings.end(); ++next)
            if (!rules::argument(next->key).empty() &&
                !batch.add(rules::argument(next->section), rules::argument(next->key), rules::argument(next->value)))
                break;
        text = batch.text();
    }
    const Edit edit = text == bytes_ ? Edit::unchanged : Edit::changed;
    bytes_ = std::move(text);
    sections_.drop();
    return edit;
}

Edit IniText::apply(const char* section, const char* key, const char* value) {
    const std::string_view sectionName = rules::argument(section);
    const std::string_view keyName = rules::argument(key);
    const std::string_view newValue = rules::argument(value);
    if (rules::refusalOf(sectionName, keyName, newValue))
        return Edit::refused;
    if (key != nullptr && keyName.empty())
        return Edit::unchanged;
    // A map costs as much as an edit without one, and most texts get one edit.
    if (hasBeenSearched_ && !sections_.isThere())
        sections_.build(bytes_);
    hasBeenSearched_ = true;
    if (key == nullptr)
        return removeSection(bytes_, sections_, sectionName);
    if (value == nullptr)
        return removeKey(bytes_, sections_, sectionName, keyName);
    return setKey(bytes_, sections_, sectionName, keyName, newValue);
}

}  // namespace jx::ini
