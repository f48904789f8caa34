// Walking through a text finds what looking at every line finds.
#include "jxutl/ini/ini_scan.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "random_text.h"
#include "rules/names.h"
#include "split_lines.h"

namespace jx::ini::test {
namespace {

// One line for each section: its name, where its header and body begin and where the body ends.
std::string sectionsByWalking(std::string_view text) {
    std::string lines;
    for (SectionWalk walk(text); walk.next();)
        lines += "<" + std::string(walk.name()) + "> " + std::to_string(walk.header()) + " " +
                 std::to_string(walk.body()) + " " + std::to_string(walk.bodyEnd()) + "\n";
    return lines;
}

std::string sectionsByPieces(std::string_view text) {
    std::vector<JxIniPiece> headers;
    for (const JxIniPiece& piece : splitLines(text))
        if (piece.kind == JxIniSection)
            headers.push_back(piece);
    std::string lines;
    for (std::size_t i = 0; i < headers.size(); ++i)
        lines += "<" + std::string(nameOf(headers[i])) + "> " + std::to_string(headers[i].begin) + " " +
                 std::to_string(headers[i].end) + " " +
                 std::to_string(i + 1 < headers.size() ? headers[i + 1].begin : text.size()) + "\n";
    return lines;
}

std::string namedByWalking(std::string_view text, std::string_view name) {
    std::string begins;
    for (SectionWalk walk(text); walk.nextNamed(name);)
        begins += std::to_string(walk.header()) + "-" + std::to_string(walk.bodyEnd()) + " ";
    return begins;
}

std::string namedByPieces(std::string_view text, std::string_view name) {
    std::string begins;
    for (SectionWalk walk(text); walk.next();)
        if (rules::sameName(walk.name(), name))
            begins += std::to_string(walk.header()) + "-" + std::to_string(walk.bodyEnd()) + " ";
    return begins;
}

std::string randomText(Random& random) {
    return random.oneIn(3) ? randomBytes(random, random.below(120)) : randomFile(random);
}

TEST(IniScan, GoesFromHeaderToHeader) {
    const std::pair<const char*, const char*> rows[] = {
        {"k=1\n[A]\nk=[x]\n; [c]\n [ B ] ; c\n", "<A> 4 8 20\n<B> 20 31 31\n"},
        {"\xEF\xBB\xBF [A]\n", "<A> 3 8 8\n"},
        {"[A", ""},
        {"[A]", "<A> 0 3 3\n"},
        {"[open\n[A]\n[open\nk\n", "<A> 6 10 18\n"},
        {"", ""}};
    for (const auto& [text, sections] : rows)
        EXPECT_EQ(sectionsByWalking(text), sections);
}

TEST(IniScan, FindsTheSameSectionsAsASearchThroughAllLines) {
    Random random(3);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = randomText(random);
        ASSERT_EQ(sectionsByWalking(text), sectionsByPieces(text)) << "round " << round << "\n" << text;
    }
}

TEST(IniScan, FindsTheSectionsOfAName) {
    Random random(4);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = randomText(random);
        for (const std::string_view name : {"A", "odbc data sources", "b]c", "[D", "none"})
            ASSERT_EQ(namedByWalking(text, name), namedByPieces(text, name)) << "round " << round << "\n" << text;
    }
}

// Lines that resemble the wanted header and must not be found.
TEST(IniScan, ANameIsTheWholeName) {
    EXPECT_EQ(namedByWalking("[AB]\n[A]B]\n[A ;c]\n[A\n[[A]\nx[A]\n;[A]\n[A]\n", "A"), "36-40 ");
    EXPECT_EQ(namedByWalking("[  A  ] [B]\n", "A"), "");
    EXPECT_EQ(namedByWalking("[  A  ] ;[B]\n", "a"), "0-13 ");
}

TEST(IniScan, FindsEntriesLineByLine) {
    Random random(5);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = randomText(random);
        for (SectionWalk walk(text); walk.next();) {
            std::vector<std::size_t> expected;
            for (const JxIniPiece& piece : splitLines(text))
                if (piece.kind == JxIniEntry && piece.begin >= walk.body() && piece.begin < walk.bodyEnd())
                    expected.push_back(piece.begin);
            std::vector<std::size_t> found;
            EntryLine line;
            for (std::size_t at = walk.body(); (line = nextEntry(text, at, walk.bodyEnd())); at = line.end)
                found.push_back(line.begin);
            ASSERT_EQ(found, expected) << "round " << round << "\n" << text;
        }
    }
}

TEST(IniScan, AnEntryIsFoundByItsWholeKey) {
    const std::string_view text = "kk=1\n[k\n;k=2\n#k\n k x=3\n=k\n K = 4\nk=5\n";
    const EntryLine line = findEntry(text, 0, text.size(), "k");
    ASSERT_TRUE(line);
    EXPECT_EQ(line.entry.key, "K");
    EXPECT_EQ(line.entry.value, "4");
    EXPECT_EQ(text.substr(line.begin, line.end - line.begin), " K = 4\n");
    EXPECT_FALSE(findEntry(text, 0, 5, "k"));
    for (const std::string_view none : {"", "[k", ";k", "#k", "=k", "k=5", "kkk"})
        EXPECT_FALSE(findEntry(text, 0, text.size(), none)) << none;
}

TEST(IniScan, AnEntryEndsWhereItsSectionEnds) {
    const std::string_view text = "k\nl";
    EXPECT_FALSE(findEntry(text, 0, 2, "l"));
    EXPECT_EQ(findEntry(text, 0, 3, "l").end, 3U);
    EXPECT_FALSE(nextEntry(text, 3, 3));
}

}  // namespace
}  // namespace jx::ini::test
