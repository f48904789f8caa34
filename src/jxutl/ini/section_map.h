// Where the sections of a text are, while it is edited.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "jxutl/ini/ini_scan.h"

namespace jx::ini {

// SectionMap: the places of all headers of a text, so that an edit does not have to look for its section.
// Use      build it for a text, look sections up with SectionsNamed, report every edit. drop it where an edit may
// change
//          more than it reports: it is then built again.
// Threads  as for the text.
// Failure  std::bad_alloc of build and makeRoom; the map is then not there, or as it was.
class SectionMap {
public:
    struct Header {
        std::size_t begin;
        std::uint32_t length;  // of its line
        std::uint32_t nameAt;  // behind begin
        std::uint32_t nameLength;
        std::uint32_t hash;
    };

    bool isThere() const { return isThere_; }
    void build(std::string_view text);
    void drop() noexcept;

    // Whole lines or parts of one line between begin and end were replaced by size bytes that hold no header.
    void replaced(std::size_t begin, std::size_t end, std::size_t size) noexcept;

    // A header was added at the end of the text. makeRoom before the text is changed, so that this cannot fail.
    void makeRoom();
    void added(std::string_view text, std::size_t begin, std::size_t length, std::string_view name) noexcept;

    const std::vector<Header>& headers() const { return headers_; }

private:
    static Header headerOf(std::string_view text, std::size_t begin, std::size_t length, std::string_view name);

    std::vector<Header> headers_;
    bool isThere_ = false;
};

// SectionsNamed: the sections of a name, from the map when it is there, else by walking through the text.
// Use      while (sections.next()); the text and the map must stay as they are. The name must not be empty or hold a
// NUL.
class SectionsNamed {
public:
    SectionsNamed(std::string_view text, const SectionMap& map, std::string_view name);

    bool next();

    std::size_t header() const { return header_; }    // where the header's line begins
    std::size_t body() const { return body_; }        // where the line after it begins
    std::size_t bodyEnd() const { return bodyEnd_; }  // the next header's line, or the end of the text

private:
    bool nextOfMap();

    std::string_view text_;
    const SectionMap& map_;
    std::string_view name_;
    std::uint32_t hash_ = 0;
    std::size_t at_ = 0;  // in the map
    SectionWalk walk_;
    std::size_t header_ = 0;
    std::size_t body_ = 0;
    std::size_t bodyEnd_ = 0;
};

}  // namespace jx::ini
