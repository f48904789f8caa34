// Keeps the places of headers up to date, and finds sections with them.
#include "jxutl/ini/section_map.h"

#include <algorithm>

#include "jxutl/ini/name_hash.h"
#include "rules/names.h"

namespace jx::ini {

// ---- the map ----

SectionMap::Header SectionMap::headerOf(std::string_view text, std::size_t begin, std::size_t length,
                                        std::string_view name) {
    const auto nameAt = static_cast<std::size_t>(name.data() - text.data()) - begin;
    return {begin, static_cast<std::uint32_t>(length), static_cast<std::uint32_t>(nameAt),
            static_cast<std::uint32_t>(name.size()), hashName(name)};
}

void SectionMap::build(std::string_view text) {
    drop();
    SectionWalk walk(text);
    while (walk.next())
        headers_.push_back(headerOf(text, walk.header(), walk.body() - walk.header(), walk.name()));
    isThere_ = true;
}

void SectionMap::drop() noexcept {
    headers_.clear();
    isThere_ = false;
}

void SectionMap::replaced(std::size_t begin, std::size_t end, std::size_t size) noexcept {
    const auto isBefore = [](const Header& header, std::size_t place) { return header.begin < place; };
    const auto first = std::lower_bound(headers_.begin(), headers_.end(), begin, isBefore);
    const auto last = std::lower_bound(first, headers_.end(), end, isBefore);
    for (auto header = last; header != headers_.end(); ++header)
        header->begin = header->begin - (end - begin) + size;
    headers_.erase(first, last);
}

// Doubled, as for any vector: reserve alone would copy all of them each time.
void SectionMap::makeRoom() {
    if (isThere_ && headers_.size() == headers_.capacity())
        headers_.reserve(2 * headers_.size() + 16);
}

void SectionMap::added(std::string_view text, std::size_t begin, std::size_t length, std::string_view name) noexcept {
    headers_.push_back(headerOf(text, begin, length, name));
}

// ---- the sections of a name ----

// A walk begins with a search for the first header, so with a map it gets no text.
SectionsNamed::SectionsNamed(std::string_view text, const SectionMap& map, std::string_view name)
    : text_(text), map_(map), name_(name), walk_(map.isThere() ? std::string_view() : text) {
    if (map.isThere())
        hash_ = hashName(name);
}

bool SectionsNamed::next() {
    if (map_.isThere())
        return nextOfMap();
    if (!walk_.nextNamed(name_))
        return false;
    header_ = walk_.header();
    body_ = walk_.body();
    bodyEnd_ = walk_.bodyEnd();
    return true;
}

bool SectionsNamed::nextOfMap() {
    const std::vector<SectionMap::Header>& headers = map_.headers();
    while (at_ < headers.size()) {
        const SectionMap::Header& header = headers[at_++];
        if (header.hash != hash_ ||
            !rules::sameName(text_.substr(header.begin + header.nameAt, header.nameLength), name_))
            continue;
        header_ = header.begin;
        body_ = header.begin + header.length;
        bodyEnd_ = at_ < headers.size() ? headers[at_].begin : text_.size();
        return true;
    }
    return false;
}

}  // namespace jx::ini
