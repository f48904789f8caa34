// Jumps from [ to [ and from line to line.
#include "jxutl/ini/ini_scan.h"

#include "rules/names.h"

namespace jx::ini {

namespace {

constexpr bool beginsKey(char character) {
    return character != '[' && character != '=' && !rules::beginsComment(character);
}

// The first byte from begin on that is not a blank, or the end of the text.
std::size_t afterBlanks(std::string_view text, std::size_t begin) {
    while (begin < text.size() && rules::isBlank(text[begin]))
        ++begin;
    return begin;
}

EntryLine entryLine(std::string_view text, std::size_t begin, std::size_t end) {
    return {begin, end, entryOf(withoutLineEnd(text.substr(begin, end - begin)))};
}

}  // namespace

SectionWalk::SectionWalk(std::string_view text)
    : text_(text), start_(text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0) {
    findHeader(start_);
}

// Whether only blanks are before the byte in its line.
bool SectionWalk::beginsLine(std::size_t at) const {
    while (at > start_ && rules::isBlank(text_[at - 1]))
        --at;
    return at == start_ || text_[at - 1] == '\n';
}

// The next [ that begins a line.
std::size_t SectionWalk::findOpening(std::size_t from) const {
    std::size_t open = text_.find('[', from);
    while (open != std::string_view::npos && !beginsLine(open))
        open = text_.find('[', open + 1);
    return open;
}

// Reads the header at an opening [; false when the line has no ].
bool SectionWalk::readHeader(std::size_t open) {
    const std::size_t end = lineEndAfter(text_, open);
    following_.name = headerName(withoutLineEnd(text_.substr(open, end - open)));
    if (following_.name.data() == nullptr)
        return false;
    following_.begin = open;
    while (following_.begin > start_ && text_[following_.begin - 1] != '\n')
        --following_.begin;
    following_.end = end;
    return true;
}

void SectionWalk::findHeader(std::size_t from) {
    for (std::size_t open = findOpening(from); open != std::string_view::npos; open = findOpening(open + 1))
        if (readHeader(open))
            return;
    following_ = {{}, text_.size(), text_.size()};
}

bool SectionWalk::next() {
    if (following_.name.data() == nullptr)
        return false;
    current_ = following_;
    findHeader(current_.end);
    return true;
}

bool SectionWalk::nextNamed(std::string_view name) {
    if (following_.name.data() == nullptr)
        return false;
    if (rules::sameName(following_.name, name))
        return next();
    // Only headers that begin with the name are read, and the one after. The name is compared first, since it nearly
    // always differs.
    for (std::size_t open = text_.find('[', following_.end); open != std::string_view::npos;
         open = text_.find('[', open + 1)) {
        const std::string_view rest = text_.substr(afterBlanks(text_, open + 1));
        if (rules::beginsWithName(rest, name) && beginsLine(open) && readHeader(open) &&
            rules::sameName(following_.name, name))
            return next();
    }
    following_ = {{}, text_.size(), text_.size()};
    return false;
}

EntryLine findEntry(std::string_view text, std::size_t begin, std::size_t end, std::string_view key) {
    const std::string_view lines = text.substr(0, end);
    if (key.empty() || !beginsKey(key.front()))
        return {};
    while (begin < end) {
        const std::size_t next = lineEndAfter(lines, begin);
        const std::size_t content = afterBlanks(lines, begin);
        if (rules::beginsWithName(lines.substr(content), key)) {
            const EntryLine line = entryLine(lines, begin, next);
            if (rules::sameName(line.entry.key, key))
                return line;
        }
        begin = next;
    }
    return {};
}

EntryLine nextEntry(std::string_view text, std::size_t begin, std::size_t end) {
    const std::string_view lines = text.substr(0, end);
    while (begin < end) {
        const std::size_t next = lineEndAfter(lines, begin);
        const std::size_t content = afterBlanks(lines, begin);
        if (content < next && beginsKey(lines[content]))
            if (const EntryLine line = entryLine(lines, begin, next))
                return line;
        begin = next;
    }
    return {};
}

}  // namespace jx::ini
