// The expected results of look-ups and edits, worked out slowly from all pieces of a text.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "jxutl/ini/ini_line.h"
#include "rules/names.h"
#include "split_lines.h"

namespace jx::ini::test {

inline std::string_view bytesOf(std::string_view text, const JxIniPiece& piece) {
    return text.substr(piece.begin, piece.end - piece.begin);
}

// TextModel: a text as its pieces, each with its section.
class TextModel {
public:
    explicit TextModel(std::string_view text) : text_(text), pieces_(splitLines(text)) {}

    // The number of the piece that a look-up finds.
    std::optional<std::size_t> find(std::string_view section, std::string_view key) const {
        if (!rules::canBeAskedFor(section) || !rules::canBeAskedFor(key))
            return std::nullopt;
        for (std::size_t i = 0; i < pieces_.size(); ++i)
            if (isEntryOf(i, section) && rules::sameName(nameOf(pieces_[i]), key))
                return i;
        return std::nullopt;
    }

    std::optional<std::string> value(std::string_view section, std::string_view key) const {
        const auto found = find(section, key);
        if (!found)
            return std::nullopt;
        const std::string_view whole = valueOf(pieces_[*found]);
        return std::string(whole.substr(0, whole.find('\0')));
    }

    std::optional<std::string> keys(std::string_view section) const {
        std::vector<std::string_view> names;
        for (std::size_t i = 0; i < pieces_.size(); ++i)
            if (isEntryOf(i, section))
                names.push_back(nameOf(pieces_[i]));
        return firstHeader(section) ? std::optional<std::string>(list(names)) : std::nullopt;
    }

    std::string sections() const {
        std::vector<std::string_view> names;
        for (const JxIniPiece& piece : pieces_)
            if (piece.kind == JxIniSection)
                names.push_back(nameOf(piece));
        return list(names);
    }

    std::string withoutKey(std::string_view section, std::string_view key) const {
        std::string bytes;
        for (std::size_t i = 0; i < pieces_.size(); ++i)
            if (!isEntryOf(i, section) || !rules::sameName(nameOf(pieces_[i]), key))
                bytes += bytesOf(text_, pieces_[i]);
        return bytes;
    }

    std::string withoutSection(std::string_view section) const {
        std::string bytes;
        for (std::size_t i = 0; i < pieces_.size(); ++i)
            if (!standsIn(i, section) || isSparedComment(i))
                bytes += bytesOf(text_, pieces_[i]);
        return bytes;
    }

    std::string with(std::string_view section, std::string_view key, std::string_view value) const {
        if (const auto found = find(section, key))
            return withValue(*found, value);
        const std::string line = std::string(key) + "=" + std::string(value);
        const auto header = firstHeader(section);
        return header ? withLineAfter(lastEntryOrHeader(*header), line) : withSection(section, line);
    }

private:
    // The number of the header above piece i, or of piece i itself.
    std::optional<std::size_t> headerOver(std::size_t i) const {
        for (std::size_t at = i + 1; at-- > 0;)
            if (pieces_[at].kind == JxIniSection)
                return at;
        return std::nullopt;
    }
    bool standsIn(std::size_t i, std::string_view section) const {
        const auto header = headerOver(i);
        return header && rules::sameName(nameOf(pieces_[*header]), section);
    }
    bool isEntryOf(std::size_t i, std::string_view section) const {
        return pieces_[i].kind == JxIniEntry && standsIn(i, section);
    }
    std::optional<std::size_t> firstHeader(std::string_view section) const {
        for (std::size_t i = 0; i < pieces_.size() && rules::canBeAskedFor(section); ++i)
            if (pieces_[i].kind == JxIniSection && rules::sameName(nameOf(pieces_[i]), section))
                return i;
        return std::nullopt;
    }
    // Whether piece i is a comment with only comments between it and the next header.
    bool isSparedComment(std::size_t i) const {
        const std::size_t from = i;
        while (i < pieces_.size() && pieces_[i].kind == JxIniComment)
            ++i;
        return i > from && i < pieces_.size() && pieces_[i].kind == JxIniSection;
    }
    std::size_t lastEntryOrHeader(std::size_t header) const {
        std::size_t last = header;
        for (std::size_t i = header + 1; i < pieces_.size() && pieces_[i].kind != JxIniSection; ++i)
            if (pieces_[i].kind == JxIniEntry)
                last = i;
        return last;
    }

    static std::string list(const std::vector<std::string_view>& names) {
        std::vector<std::string_view> listed;
        std::string bytes;
        for (const std::string_view name : names) {
            bool again = !rules::canBeAskedFor(name);
            for (const std::string_view other : listed)
                again = again || rules::sameName(name, other);
            if (again)
                continue;
            listed.push_back(name);
            bytes.append(name).push_back('\0');
        }
        return bytes;
    }

    std::string withValue(std::size_t i, std::string_view value) const {
        const JxIniPiece& piece = pieces_[i];
        const bool bare = piece.value == nullptr;
        if (bare && value.empty())
            return std::string(text_);
        const char* from = bare ? piece.name + piece.nameLength : piece.value;
        const auto place = static_cast<std::size_t>(from - text_.data());
        return std::string(text_).replace(place, piece.valueLength, (bare ? "=" : "") + std::string(value));
    }
    // The line end of the last line up to end that has one.
    std::string_view lineEnd(std::size_t end) const {
        const std::string_view above = text_.substr(0, end);
        if (!above.empty() && above.back() == '\r')
            return "\r\n";
        const std::size_t feed = above.rfind('\n');
        return feed != std::string_view::npos && feed > 0 && above[feed - 1] == '\r' ? "\r\n" : "\n";
    }
    std::string_view missingLineEnd(std::size_t end) const {
        if (end == 0 || text_[end - 1] == '\n' || (pieces_.size() == 1 && text_ == kByteOrderMark))
            return "";
        return text_[end - 1] == '\r' ? "\n" : lineEnd(end);
    }
    std::string withLineAfter(std::size_t i, const std::string& line) const {
        const std::size_t end = pieces_[i].end;
        return std::string(text_).insert(end, std::string(missingLineEnd(end)) + line + std::string(lineEnd(end)));
    }
    std::string withSection(std::string_view section, const std::string& line) const {
        const std::string_view end = lineEnd(text_.size());
        std::string bytes(text_);
        bytes += missingLineEnd(text_.size());
        const bool isEmpty = pieces_.empty() || text_ == kByteOrderMark;
        if (!isEmpty && pieces_.back().kind != JxIniBlank)
            bytes += end;
        return bytes.append("[").append(section).append("]").append(end).append(line).append(end);
    }

    std::string_view text_;
    std::vector<JxIniPiece> pieces_;
};

}  // namespace jx::ini::test
