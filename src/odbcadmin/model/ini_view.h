// One INI text seen as sections with their keys, as look-ups and lists of the libraries answer.
//
//     const std::optional<IniView> file = IniView::read(".odbc.ini");
//     if (file)
//         ... file->value("Sales", "Server") ...
#pragma once

#include <jxini.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/model/name_places.h"

namespace jx::model {

struct IniEntry {
    std::string_view key;
    std::string_view value;
    std::size_t line;
};

// IniSection: all sections of one name as one. Keys in the file's order, each once: of equal keys the first counts.
struct IniSection {
    std::string_view name;  // as its first header spells it
    std::size_t line = 0;   // of that header
    std::vector<IniEntry> entries;
    NamePlaces places = {};  // of the keys; empty when there are few

    // Null when there is none. The key is trimmed first, as the store does.
    const IniEntry* find(std::string_view key) const;

    // The key's value; empty when there is none.
    std::string value(std::string_view key) const;

    std::vector<std::string> keys() const;
};

// IniView: a file read once. What it hands out points into it and lives as long as it; it can be moved, not copied.
// Names of any length, values of any length; a look-up does not depend on the number of sections.
class IniView {
public:
    // An absent file.
    IniView() = default;

    // Reads a file by the names of jxini.h. An absent file is an empty view whose isAbsent() is true. Nothing when it
    // cannot be read: jxIniLastFailure tells why.
    static std::optional<IniView> read(const std::string& file);

    // Takes a copy of text. Nothing when memory is short.
    static std::optional<IniView> parse(std::string_view text);

    bool isAbsent() const { return !text_; }

    // The whole text, and its lines; null of an absent file.
    std::string_view bytes() const;
    const JxIniText* text() const { return text_.get(); }

    // In the file's order.
    const std::vector<IniSection>& sections() const { return sections_; }

    // Null when there is none.
    const IniSection* section(std::string_view name) const;

    // Null when there is no such section or key.
    const IniEntry* find(std::string_view section, std::string_view key) const;
    std::string value(std::string_view section, std::string_view key) const;

private:
    struct Release {
        void operator()(JxIniText* text) const { jxIniRelease(text); }
    };
    using Text = std::unique_ptr<JxIniText, Release>;

    explicit IniView(Text text);
    std::optional<std::size_t> placeOf(std::string_view name) const;
    void readSections();
    std::size_t sectionFor(const JxIniPiece& header);

    Text text_;
    std::vector<IniSection> sections_;
    NamePlaces places_;  // of the sections' names
};

}  // namespace jx::model
