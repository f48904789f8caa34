// The lines of an INI text: their kinds, names and values.
//
// Blanks are space and tab. A line ends with LF; a CR directly before it, or at the end of the text, belongs to the
// line end. Every other byte is content: any bytes are an INI text.
//
// A section or key whose name is empty or holds a NUL stays in the file, but is not listed and not found. A value that
// holds a NUL is read up to it.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <jxini.h>
#include "rules/names.h"

namespace jx::ini {

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The section name of a line without its line end: from [ to the last ] before a comment. Its data() is null when the
// line is not a section header or has no ].
std::string_view headerName(std::string_view line);

// Entry: a line that holds a key. The key without = has no value: value.data() is null.
struct Entry {
    std::string_view key;
    std::string_view value;
};

// The key and value of a line without its line end that is neither a comment nor a header; both are views of it. The
// key's data() is null when the line is blank or begins with =.
Entry entryOf(std::string_view line);

// Where the line that begins at begin ends: after its LF, or at the end of the text.
std::size_t lineEndAfter(std::string_view text, std::size_t begin);

// A line without its line end.
std::string_view withoutLineEnd(std::string_view line);

// The piece that begins at begin, the first byte of a line or of the text; lineNumber is that line's.
JxIniPiece pieceAt(std::string_view text, std::size_t begin, std::size_t lineNumber);

// Pieces: all pieces of a text in order; joined they are the text. The byte order mark is a piece of kind JxIniOther,
// counted as part of line 1. Only their begins are kept, the rest is read from the text, which must outlive them: eight
// bytes a line are quicker to fill than what a piece says of it.
class Pieces {
public:
    explicit Pieces(std::string_view text);

    std::size_t size() const { return begins_.size(); }

    // Its name and value point into the text.
    JxIniPiece operator[](std::size_t index) const;

private:
    std::string_view text_;
    std::size_t firstLine_ = 1;  // the line of the piece with index 0, were it a line
    std::vector<std::size_t> begins_;
};

// The name and value of a piece as views.
inline std::string_view nameOf(const JxIniPiece& piece) {
    return {piece.name, piece.nameLength};
}
inline std::string_view valueOf(const JxIniPiece& piece) {
    return {piece.value, piece.valueLength};
}

}  // namespace jx::ini
