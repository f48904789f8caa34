// Look-ups in one text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "jxutl/ini/name_table.h"

namespace jx::ini {

class SectionWalk;

// IniIndex: prepares only what is needed. The first value or list is found by walking from header to header. The second
// look-up finds all sections; a section's keys are prepared with the first of them, a list when it is first read. After
// that a value is one hash look-up and a list is ready.
// Use      reset with a text below 1 GiB, which must stay valid until the next reset; then look up trimmed names.
//          Results are views of the text or the index, valid until the next reset or look-up.
// Threads  one at a time, since look-ups prepare.
// Failure  std::bad_alloc may be thrown; the next look-up starts again from the text.
class IniIndex {
public:
    void reset(std::string_view text) noexcept;

    // The value of the first line of key in the first section of that name that has the key, up to its first NUL, or
    // nothing. A key without = has an empty value.
    std::optional<std::string_view> value(std::string_view section, std::string_view key);

    // The keys of all sections of that name, each once and ended with NUL, in the file's order and spelling; nothing
    // for an absent section.
    std::optional<std::string_view> keys(std::string_view section);

    // The names of all sections, as keys lists them.
    std::string_view sections();

    // A value; when there is none, whether there is such a section at all, and how many of its keys hold an @.
    struct Finding {
        std::optional<std::string_view> value;
        bool hasSection = false;
        std::uint32_t keysWithAt = 0;
    };
    Finding find(std::string_view section, std::string_view key);

    // The text it was given.
    std::string_view text() const { return text_; }

    // The bytes the index itself takes.
    std::size_t memory() const;

private:
    static constexpr std::uint32_t kNotYet = UINT32_MAX;

    struct Body {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
        std::uint32_t next = NameTable::kNone;  // in bodies_: the next section of the same name
    };
    struct Section {
        std::uint32_t name = 0;
        std::uint32_t nameLength = 0;
        std::uint32_t firstBody = 0;
        std::uint32_t lastBody = 0;
        std::uint32_t firstKey = kNotYet;  // its keys are consecutive in keys_
        std::uint32_t keyCount = 0;
        std::uint32_t keysWithAt = 0;
        std::uint32_t list = kNotYet;  // in lists_
        std::uint32_t listLength = 0;
    };
    struct Key {
        std::uint32_t name = 0;
        std::uint32_t nameLength = 0;
        std::uint32_t value = 0;
        std::uint32_t valueLength = 0;
        std::uint32_t section = 0;  // in sections_
    };
    struct Prepared {
        Section* section = nullptr;  // null for an absent section
        bool isNew = false;          // its keys were not prepared before
    };

    void clear() noexcept;
    std::string_view view(std::uint32_t begin, std::uint32_t length) const { return text_.substr(begin, length); }
    std::uint32_t offset(std::string_view part) const;

    std::uint32_t findSection(std::string_view name, std::uint32_t hash) const;
    std::uint32_t findKey(std::string_view section, std::string_view key, std::uint32_t hash) const;
    std::optional<std::string_view> unpreparedValue(std::string_view section, std::string_view key);
    std::string_view valueOf(const Key& key) const { return view(key.value, key.valueLength); }
    Prepared prepareSection(std::string_view name, std::uint32_t hash);

    void prepareSections();
    bool prepareOnly(std::string_view name);
    void addSection(const SectionWalk& walk);
    void prepareKeys(Section& section, std::uint32_t sectionHash);
    void prepareKeysOf(Section& section, std::uint32_t sectionHash, const Body& body);
    void prepareList(Section& section);
    void prepareSectionList();

    std::string_view text_;
    bool walked_ = false;    // one value or list was found by walking
    bool prepared_ = false;  // sections_ is complete
    std::uint32_t sectionList_ = kNotYet;
    std::uint32_t sectionListLength_ = 0;
    std::vector<Section> sections_;
    std::vector<Body> bodies_;
    std::vector<Key> keys_;
    std::vector<char> lists_;
    NameTable sectionTable_;
    NameTable keyTable_;
};

}  // namespace jx::ini
