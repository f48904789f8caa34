// The lines of a text and their kinds.
#include "jxutl/ini/ini_line.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "random_text.h"
#include "split_lines.h"

namespace jx::ini::test {
namespace {

using namespace std::string_view_literals;

std::string shown(const JxIniPiece& piece) {
    switch (piece.kind) {
        case JxIniBlank:
            return "b";
        case JxIniComment:
            return "c";
        case JxIniSection:
            return "s <" + std::string(nameOf(piece)) + ">";
        case JxIniEntry:
            return "e <" + std::string(nameOf(piece)) + ">" +
                   (piece.value == nullptr ? "" : "=<" + std::string(valueOf(piece)) + ">");
        case JxIniOther:
            return "o";
    }
    return "?";
}

// One line for each piece: its line number, kind, name and value.
std::string dump(std::string_view text) {
    std::string lines;
    for (const JxIniPiece& piece : splitLines(text))
        lines += std::to_string(piece.line) + " " + shown(piece) + "\n";
    return lines;
}

std::string joined(std::string_view text) {
    std::string bytes;
    for (const JxIniPiece& piece : splitLines(text))
        bytes += text.substr(piece.begin, piece.end - piece.begin);
    return bytes;
}

struct Row {
    std::string_view line;
    std::optional<std::string_view> section;
};

constexpr Row kHeaders[] = {
    {"[a]", "a"},
    {" \t[ a\t] ", "a"},
    {"[a b]", "a b"},
    {"[]", ""},
    {"[ ]", ""},
    {"[a]b]", "a]b"},
    {"[[a]]", "[a]"},
    {"[a]]", "a]"},
    {"[a] trailing", "a"},
    {"[a] trailing]", "a] trailing"},
    {"[a] ; comment", "a"},
    {"[a] # comment]", "a"},
    {"[a]\t;comment]", "a"},
    {"[a];comment]", "a];comment"},
    {"[a;b]", "a;b"},
    {"[a#b]", "a#b"},
    {"[;a]", ";a"},
    {"[a=b]", "a=b"},
    {"[a\0b]"sv, "a\0b"sv},
    {"[a\rb]", "a\rb"},
    {"[a ;b]", std::nullopt},
    {"[ #b]", std::nullopt},
    {"[a", std::nullopt},
    {"[", std::nullopt},
    {"a]", std::nullopt},
    {"x[a]", std::nullopt},
    {"; [a]", std::nullopt},
    {"", std::nullopt},
    {" ", std::nullopt},
};

TEST(IniLine, ASectionNameRunsToTheLastBracketBeforeAComment) {
    for (const Row& row : kHeaders) {
        SCOPED_TRACE(row.line);
        const std::string_view name = headerName(row.line);
        EXPECT_EQ(name.data() != nullptr, row.section.has_value());
        EXPECT_EQ(name, row.section.value_or(""));
    }
}

struct EntryRow {
    std::string_view line;
    std::optional<std::string_view> key;
    std::optional<std::string_view> value;
};

constexpr EntryRow kEntries[] = {
    {"k=v", "k", "v"},
    {" k\t= v ", "k", "v"},
    {"k", "k", std::nullopt},
    {"k ", "k", std::nullopt},
    {"k=", "k", ""},
    {"k =  ", "k", ""},
    {"a b=c d", "a b", "c d"},
    {"k=a=b", "k", "a=b"},
    {"k=\"v\"", "k", "\"v\""},
    {"k=a\\nb", "k", "a\\nb"},
    {"k=v ; no comment", "k", "v ; no comment"},
    {"k=[v]", "k", "[v]"},
    {"\"Driver\"=1, x", "\"Driver\"", "1, x"},
    {"k=a\0b"sv, "k", "a\0b"sv},
    {"a\0b=v"sv, "a\0b"sv, "v"},
    {"k\r=\rv", "k\r", "\rv"},
    {"=v", std::nullopt, std::nullopt},
    {" = v", std::nullopt, std::nullopt},
    {"=", std::nullopt, std::nullopt},
    {"", std::nullopt, std::nullopt},
};

TEST(IniLine, AnEntryIsAKeyWithOrWithoutAValue) {
    for (const EntryRow& row : kEntries) {
        SCOPED_TRACE(row.line);
        const Entry entry = entryOf(row.line);
        EXPECT_EQ(entry.key.data() != nullptr, row.key.has_value());
        EXPECT_EQ(entry.key, row.key.value_or(""));
        EXPECT_EQ(entry.value.data() != nullptr, row.value.has_value());
        EXPECT_EQ(entry.value, row.value.value_or(""));
    }
}

TEST(IniLine, EveryLineIsOfOneKind) {
    EXPECT_EQ(dump("; c\n\t# c\n\n \t\n [A]\nk = v\nk\n=v\n[open\n"),
              "1 c\n2 c\n3 b\n4 b\n5 s <A>\n6 e <k>=<v>\n7 e <k>\n8 o\n9 o\n");
    EXPECT_EQ(dump(""), "");
    EXPECT_EQ(dump("\n"), "1 b\n");
    EXPECT_EQ(dump("k"), "1 e <k>\n");
}

TEST(IniLine, ACrBelongsToTheLineEndOnlyBeforeALfOrAtTheEndOfTheText) {
    const std::pair<const char*, const char*> rows[] = {
        {"k=v\r\n[A]\r\n; c\r\n\r\nx\r\n", "1 e <k>=<v>\n2 s <A>\n3 c\n4 b\n5 e <x>\n"},
        {"k=v\r", "1 e <k>=<v>\n"},
        {"[A]\r", "1 s <A>\n"},
        {"k=v\r\r\n", "1 e <k>=<v\r>\n"},
        {"a\rb=c\rd\n", "1 e <a\rb>=<c\rd>\n"},
        {"\r", "1 b\n"}};
    for (const auto& [text, pieces] : rows)
        EXPECT_EQ(dump(text), pieces);
}

TEST(IniLine, TheByteOrderMarkIsAPieceOfItsOwnInTheFirstLine) {
    const std::pair<const char*, const char*> rows[] = {{"\xEF\xBB\xBF[A]\nk=v\n", "1 o\n1 s <A>\n2 e <k>=<v>\n"},
                                                        {"\xEF\xBB\xBF", "1 o\n"},
                                                        {"\xEF\xBB\xBF\n", "1 o\n1 b\n"},
                                                        {"\n\xEF\xBB\xBFk\n", "1 b\n2 e <\xEF\xBB\xBFk>\n"},
                                                        {"\xEF\xBB", "1 e <\xEF\xBB>\n"}};
    for (const auto& [text, pieces] : rows)
        EXPECT_EQ(dump(text), pieces);
}

TEST(IniLine, PiecesCoverTheirBytesWithTheLineEnd) {
    const std::vector<JxIniPiece> pieces = splitLines("\xEF\xBB\xBF[A]\r\nk=v");
    ASSERT_EQ(pieces.size(), 3U);
    EXPECT_EQ(pieces[0].end, 3U);
    EXPECT_EQ(pieces[1].begin, 3U);
    EXPECT_EQ(pieces[1].end, 8U);
    EXPECT_EQ(pieces[2].begin, 8U);
    EXPECT_EQ(pieces[2].end, 11U);
}

TEST(IniLine, LinesOfAnyLengthAreOnePiece) {
    for (const std::size_t size : {32767U, 32768U, 65535U, 70000U}) {
        const std::string text = "[A]\n" + std::string(size, 'k') + "=" + std::string(size, 'v') + "\n";
        const std::vector<JxIniPiece> pieces = splitLines(text);
        ASSERT_EQ(pieces.size(), 2U);
        EXPECT_EQ(pieces[1].nameLength, size);
        EXPECT_EQ(pieces[1].valueLength, size);
    }
}

TEST(IniLine, PiecesOfAnyBytesJoinToTheSameBytes) {
    Random random(1);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = random.oneIn(2) ? randomBytes(random, random.below(200)) : randomFile(random);
        ASSERT_EQ(joined(text), text) << "round " << round;
    }
}

TEST(IniLine, PiecesFollowOneAnotherAndCountLines) {
    Random random(2);
    for (int round = 0; round < 5000; ++round) {
        const std::string text = randomBytes(random, random.below(100));
        std::size_t at = 0;
        std::size_t line = 1;
        for (const JxIniPiece& piece : splitLines(text)) {
            ASSERT_EQ(piece.begin, at);
            ASSERT_GT(piece.end, piece.begin);
            ASSERT_EQ(piece.line, line);
            line += text[piece.end - 1] == '\n' ? 1 : 0;
            at = piece.end;
        }
        ASSERT_EQ(at, text.size());
    }
}

}  // namespace
}  // namespace jx::ini::test
