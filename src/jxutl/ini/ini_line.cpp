// Splits a text into lines and classifies them.
#include "jxutl/ini/ini_line.h"

#include <algorithm>

#include "rules/names.h"

namespace jx::ini {

namespace {

// The part of a line before its comment, which a blank followed by ; or # begins.
std::string_view beforeComment(std::string_view line) {
    for (std::size_t at = 1; at < line.size(); ++at)
        if (rules::beginsComment(line[at]) && rules::isBlank(line[at - 1]))
            return line.substr(0, at - 1);
    return line;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
    std::size_t begin = 0;
    while (begin < text.size() && rules::isBlank(text[begin]))
        ++begin;
    return text.substr(begin);
}

void setName(JxIniPiece& piece, JxIniKind kind, std::string_view name) {
    piece.kind = kind;
    piece.name = name.data();
    piece.nameLength = name.size();
}

void setEntry(JxIniPiece& piece, std::string_view line) {
    const Entry entry = entryOf(line);
    if (entry.key.data() == nullptr)
        return;
    setName(piece, JxIniEntry, entry.key);
    piece.value = entry.value.data();
    piece.valueLength = entry.value.size();
}

// Sets the piece's kind, name and value from its line; the piece comes as JxIniOther.
void classify(JxIniPiece& piece, std::string_view line) {
    const std::string_view content = withoutLeadingBlanks(line);
    if (content.empty())
        piece.kind = JxIniBlank;
    else if (rules::beginsComment(content.front()))
        piece.kind = JxIniComment;
    else if (content.front() != '[')
        setEntry(piece, content);
    else if (const std::string_view name = headerName(content); name.data() != nullptr)
        setName(piece, JxIniSection, name);
}

}  // namespace

std::string_view headerName(std::string_view line) {
    const std::string_view header = beforeComment(withoutLeadingBlanks(line));
    if (header.empty() || header.front() != '[')
        return {};
    const std::size_t close = header.rfind(']');
    if (close == std::string_view::npos)
        return {};
    return rules::trimmed(header.substr(1, close - 1));
}

Entry entryOf(std::string_view line) {
    const std::size_t equals = line.find('=');
    const std::string_view key = rules::trimmed(line.substr(0, equals));
    if (key.empty())
        return {};
    if (equals == std::string_view::npos)
        return {key, {}};
    return {key, rules::trimmed(line.substr(equals + 1))};
}

std::size_t lineEndAfter(std::string_view text, std::size_t begin) {
    const std::size_t feed = text.find('\n', begin);
    return feed == std::string_view::npos ? text.size() : feed + 1;
}

std::string_view withoutLineEnd(std::string_view line) {
    if (!line.empty() && line.back() == '\n')
        line.remove_suffix(1);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

JxIniPiece pieceAt(std::string_view text, std::size_t begin, std::size_t lineNumber) {
    JxIniPiece piece{JxIniOther, begin, begin, lineNumber, nullptr, 0, nullptr, 0};
    if (begin == 0 && text.starts_with(kByteOrderMark)) {
        piece.end = kByteOrderMark.size();
        return piece;
    }
    piece.end = lineEndAfter(text, begin);
    classify(piece, withoutLineEnd(text.substr(begin, piece.end - begin)));
    return piece;
}

Pieces::Pieces(std::string_view text) : text_(text) {
    begins_.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 2);
    std::size_t begin = 0;
    if (text.starts_with(kByteOrderMark)) {
        firstLine_ = 0;
        begins_.push_back(begin);
        begin = kByteOrderMark.size();
    }
    for (; begin < text.size(); begin = lineEndAfter(text, begin))
        begins_.push_back(begin);
}

JxIniPiece Pieces::operator[](std::size_t index) const {
    return pieceAt(text_, begins_[index], std::max<std::size_t>(firstLine_ + index, 1));
}

}  // namespace jx::ini
