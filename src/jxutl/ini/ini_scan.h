// Finds sections and keys in a text without splitting it into lines.
#pragma once

#include <cstddef>
#include <string_view>

#include "jxutl/ini/ini_line.h"

namespace jx::ini {

// SectionWalk: the sections of a text one after another, from header to header. The text must outlive the walk.
// Use      while (walk.next()) or while (walk.nextNamed(name)); then read the section's name and places.
class SectionWalk {
public:
    explicit SectionWalk(std::string_view text);

    // Goes to the first or next section; false after the last.
    bool next();

    // The same for sections of that name, which must not be empty or hold a NUL.
    bool nextNamed(std::string_view name);

    std::string_view name() const { return current_.name; }
    std::size_t header() const { return current_.begin; }     // where the header's line begins
    std::size_t body() const { return current_.end; }         // where the line after it begins
    std::size_t bodyEnd() const { return following_.begin; }  // the next header's line, or the end of the text

private:
    struct Header {
        std::string_view name;
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    bool beginsLine(std::size_t at) const;
    std::size_t findOpening(std::size_t from) const;
    bool readHeader(std::size_t open);
    void findHeader(std::size_t from);

    std::string_view text_;
    std::size_t start_ = 0;  // after the byte order mark
    Header current_;
    Header following_;  // name.data() is null after the last
};

// EntryLine: one line that holds a key; false when none was found.
struct EntryLine {
    std::size_t begin = 0;
    std::size_t end = 0;
    Entry entry;

    explicit operator bool() const { return entry.key.data() != nullptr; }
};

// The first line of key between begin, where a line begins, and end, where one ends; there must be no header between.
EntryLine findEntry(std::string_view text, std::size_t begin, std::size_t end, std::string_view key);

// The first line between begin and end that holds any key.
EntryLine nextEntry(std::string_view text, std::size_t begin, std::size_t end);

}  // namespace jx::ini
