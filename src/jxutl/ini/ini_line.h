// The lines of an INI text: what each one is, its name and value.
//
// Blanks are space and tab. A line ends with LF, and a CR directly before that LF or at the end of the text belongs to
// the line end; every other CR, every NUL and every stray byte is content. Any bytes are an INI text.
//
// A name that is empty or holds a NUL is no name a program could ask for: such a section or key stays in the file, is
// on no list and answers no look-up. A value that holds a NUL ends there for a reader of texts.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <jxini.h>
#include "rules/names.h"

namespace jx::ini {

inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The section name of a line without its line end: from [ to the last ] before a comment. A view with a null data()
// when the line is no section header, also when it is never closed.
std::string_view headerName(std::string_view line);

// Entry: a line that holds a key. The key without = has no value: value.data() is null.
struct Entry {
    std::string_view key;
    std::string_view value;
};

// The key and value of a line without its line end that begins no comment and no section; both are views of it. A key
// with a null data() when nothing stands before the = or in the line.
Entry entryOf(std::string_view line);

// Where the line that begins at begin ends: after its LF, or at the end of the text.
std::size_t lineEndAfter(std::string_view text, std::size_t begin);

// A line without its line end.
std::string_view withoutLineEnd(std::string_view line);

// The piece that begins at begin, the first byte of a line or of the text; lineNumber is that line's.
JxIniPiece pieceAt(std::string_view text, std::size_t begin, std::size_t lineNumber);

// All pieces in order; their names and values point into text. Joined they are the text. The byte order mark is a piece
// of kind JxIniOther, counted as part of line 1.
std::vector<JxIniPiece> splitLines(std::string_view text);

// The name and value of a piece as views.
inline std::string_view nameOf(const JxIniPiece& piece) {
    return {piece.name, piece.nameLength};
}
inline std::string_view valueOf(const JxIniPiece& piece) {
    return {piece.value, piece.valueLength};
}

}  // namespace jx::ini
