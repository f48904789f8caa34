// Seen at the pieces of a text.
#include "odbcadmin/doctor/syntax_checks.h"

#include <jxini.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/model/name_places.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/secrets.h"
#include "rules/utf8.h"

namespace jx::doctor {

namespace {

struct Release {
    void operator()(JxIniText* text) const { jxIniRelease(text); }
};
using Text = std::unique_ptr<JxIniText, Release>;

constexpr std::string_view kByteOrderMarkBytes = "\xEF\xBB\xBF";
constexpr std::size_t kShownOfEach = 5;
constexpr std::size_t kFewKeys = 12;  // are quicker compared than looked up

struct Range {
    std::uint32_t first, last;
    const char* name;
};

constexpr Range kInvisible[] = {
    {0x00A0, 0x00A0, "no-break space"},
    {0x00AD, 0x00AD, "soft hyphen"},
    {0x2000, 0x200A, "typographic space"},
    {0x200B, 0x200B, "zero-width space"},
    {0x200C, 0x200D, "zero-width joiner"},
    {0x200E, 0x200F, "direction mark"},
    {0x2028, 0x2029, "line separator"},
    {0x202A, 0x202E, "direction mark"},
    {0x202F, 0x202F, "narrow no-break space"},
    {0x205F, 0x205F, "typographic space"},
    {0x2060, 0x2064, "word joiner"},
    {0x3000, 0x3000, "ideographic space"},
    {0xFEFF, 0xFEFF, "zero-width no-break space"},
};

// "U+00A0 (no-break space)" for the first character of a UTF-8 text that shows as nothing or as a blank without being
// one; "" when there is none. Bytes that are not UTF-8 are passed over.
std::string firstInvisible(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const rules::Character next = rules::characterAt(text, at);
        for (const Range& range : kInvisible) {
            if (next.code < range.first || next.code > range.last)
                continue;
            char number[16];
            std::snprintf(number, sizeof number, "U+%04X", static_cast<unsigned>(next.code));
            return std::string(number) + " (" + range.name + ")";
        }
        at += next.length;
    }
    return {};
}

std::string_view nameOf(const JxIniPiece& piece) {
    return piece.name == nullptr ? std::string_view() : std::string_view(piece.name, piece.nameLength);
}

std::string quoted(std::string_view text) {
    constexpr std::size_t kExcerpt = 40;
    const std::string shown = model::printable(text.substr(0, kExcerpt));
    return "\"" + shown + (text.size() > kExcerpt ? "..." : "") + "\"";
}

// Eight bytes at a time: most files are nothing else.
bool isAscii(std::string_view text) {
    std::uint64_t all = 0;
    std::size_t at = 0;
    for (; at + sizeof all <= text.size(); at += sizeof all)
        all |= rules::name_words::wordAt(text.data() + at);
    for (; at < text.size(); ++at)
        all |= static_cast<unsigned char>(text[at]);
    return (all & rules::name_words::kTopBits) == 0;
}

// A key that lost its "=" may have a secret in what is read as its name.
std::string_view withoutSecret(const JxIniPiece& piece) {
    const std::string_view name = nameOf(piece);
    const std::string_view word = rules::secretWord(name);
    return piece.value == nullptr && !word.empty() ? word : name;
}

class Reader {
public:
    Reader(const std::string& path, const JxIniText* text) : path_(path), text_(text) {
        std::size_t length = 0;
        const char* bytes = jxIniBytes(text, &length);
        bytes_ = {bytes, length};
        isPlain_ = bytes_.find('\0') == std::string_view::npos && bytes_.find('\r') == std::string_view::npos &&
                   isAscii(bytes_);
        keyLines_.reserve(jxIniPieceCount(text));
    }

    Findings run() {
        if (isUtf16()) {
            findings_.push_back(found(
                check::kUtf16, path_, "The file is in UTF-16, as some editors save it: no section of it is found.",
                "Save it as UTF-8; this prints it so: iconv -f UTF-16 -t UTF-8 " + model::shellWord(path_)));
            return findings_;
        }
        JxIniPiece piece;
        for (std::size_t i = 0; jxIniPieceAt(text_, i, &piece) != 0; ++i)
            look(piece);
        tellLineEnds();
        for (const auto& [check, more] : hidden_)
            findings_[check].fact += " So " + (more == 1 ? std::string("is one more line.")
                                                         : "are " + std::to_string(more) + " more lines.");
        return findings_;
    }

private:
    // The first header of a section, and its keys in keyLines_ up to the next header.
    struct SectionLine {
        std::string_view name;
        std::size_t line;
        std::size_t firstKey, keyEnd;
        bool isInTable = false;
    };
    struct KeyLine {
        std::string_view name;
        std::size_t line;
        std::size_t section;
    };

    // By its mark, in either order of bytes.
    bool isUtf16() const { return bytes_.starts_with("\xFF\xFE") || bytes_.starts_with("\xFE\xFF"); }

    void tell(const Check& what, std::size_t line, std::string fact, std::string advice) {
        std::size_t& count = counts_[what.id];
        if (++count > kShownOfEach) {
            ++hidden_[last_[what.id]];
            return;
        }
        last_[what.id] = findings_.size();
        findings_.push_back(found(what, path_ + ":" + std::to_string(line), std::move(fact), std::move(advice)));
    }

    void look(const JxIniPiece& piece) {
        std::string_view line = bytes_.substr(piece.begin, piece.end - piece.begin);
        if (line.ends_with('\n')) {
            line.remove_suffix(1);
            ++lines_;
        }
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
            ++carriageReturns_;
        }
        if (piece.kind == JxIniBlank || piece.kind == JxIniComment)
            return;
        lookAtBytes(piece, line);
        if (piece.kind == JxIniSection)
            lookAtSection(piece);
        else if (piece.kind == JxIniEntry)
            lookAtEntry(piece);
        else
            lookAtOther(piece, line);
    }

    void lookAtBytes(const JxIniPiece& piece, std::string_view line) {
        if (!isPlain_)
            lookAtOddBytes(piece, line);
        if (piece.kind != JxIniOther && (line.ends_with(' ') || line.ends_with('\t')))
            tell(check::kTrailingBlanks, piece.line, "Blanks at the end of the line are not part of its value.",
                 "Delete them: other programs may take them in.");
    }

    void lookAtOddBytes(const JxIniPiece& piece, std::string_view line) {
        if (line.find('\r') != std::string_view::npos)
            tell(check::kCarriageReturn, piece.line, "There is a carriage return inside the line.",
                 "Delete it, or make it a line end.");
        if (line.find('\0') != std::string_view::npos)
            tell(check::kNul, piece.line,
                 "There is a NUL byte in the line: a name that holds one is never found, and a value ends there.",
                 "Delete it; if there is one behind each letter, save the file as UTF-8.");
        if (!rules::isUtf8(line))
            tell(check::kNotUtf8, piece.line, "The line is not UTF-8: programs differ in how they read it.",
                 "Save the file as UTF-8.");
        const std::string invisible = firstInvisible(line == kByteOrderMarkBytes ? std::string_view() : line);
        if (!invisible.empty())
            tell(check::kInvisible, piece.line,
                 "The line holds " + invisible + ", which is invisible or looks like a blank, but belongs to the text.",
                 "Delete it, or type an ordinary blank.");
    }

    void lookAtSection(const JxIniPiece& piece) {
        const std::string_view name = nameOf(piece);
        const std::uint32_t hash = model::NamePlaces::hashOf(name);
        const auto known =
            places_.find(hash, [&](std::size_t at) { return rules::sameName(sections_[at].name, name); });
        leaveSection();
        section_ = known.value_or(sections_.size());
        if (known)
            putInTable(sections_[*known]);
        if (!known) {
            places_.add(hash, sections_.size());
            sections_.push_back({name, piece.line, keyLines_.size(), 0});
        }
        if (name.empty())
            return tell(check::kNoKey, piece.line, "The section has no name, so nobody can ask for its keys.",
                        "Name it, or delete it with its keys.");
        if (known)
            tell(check::kDuplicateSection, piece.line,
                 "The section " + quoted(name) + " begins in line " + std::to_string(sections_[*known].line) +
                     " already; here the two count as one, elsewhere one may hide the other.",
                 "Put the keys together under one header.");
    }

    void lookAtEntry(const JxIniPiece& piece) {
        const auto key = [&] { return quoted(withoutSecret(piece)); };
        if (!section_)
            return tell(check::kKeyOutside, piece.line,
                        "The key " + key() + " stands before any section, so it belongs to none.",
                        "Move it below the header of its section.");
        if (piece.value == nullptr)
            tell(check::kNoEquals, piece.line, "The line " + key() + " has no \"=\": it is a key with an empty value.",
                 "Add the \"=\" and the value, or begin the line with \";\" if it is a comment.");
        if (const auto first = firstOf(*section_, piece))
            tell(check::kDuplicateKey, piece.line,
                 "The key " + key() + " stands in line " + std::to_string(*first) + " already, and that one counts.",
                 "Delete the one that is not meant.");
    }

    void leaveSection() {
        if (section_)
            sections_[*section_].keyEnd = keyLines_.size();
    }

    bool isKey(std::size_t at, std::size_t section, std::string_view name) const {
        return keyLines_[at].section == section && rules::sameName(keyLines_[at].name, name);
    }

    // The keys of a section that has many of them, or comes again, are looked up.
    void putInTable(SectionLine& section) {
        for (std::size_t at = section.firstKey; !section.isInTable && at < section.keyEnd; ++at)
            keys_.add(model::NamePlaces::hashOf(keyLines_[at].name, keyLines_[at].section), at);
        section.isInTable = true;
    }

    // The line of the same key in the section; nothing when this is the first.
    std::optional<std::size_t> firstOf(std::size_t section, const JxIniPiece& piece) {
        const std::string_view name = nameOf(piece);
        SectionLine& own = sections_[section];
        own.keyEnd = keyLines_.size();
        if (!own.isInTable && own.keyEnd - own.firstKey >= kFewKeys)
            putInTable(own);
        std::optional<std::size_t> known;
        if (own.isInTable)
            known = keys_.find(model::NamePlaces::hashOf(name, section),
                               [&](std::size_t at) { return isKey(at, section, name); });
        for (std::size_t at = own.firstKey; !own.isInTable && !known && at < own.keyEnd; ++at)
            if (isKey(at, section, name))
                known = at;
        if (known)
            return keyLines_[*known].line;
        if (own.isInTable)
            keys_.add(model::NamePlaces::hashOf(name, section), keyLines_.size());
        keyLines_.push_back({name, piece.line, section});
        return std::nullopt;
    }

    void lookAtOther(const JxIniPiece& piece, std::string_view line) {
        if (line == kByteOrderMarkBytes)
            return tell(check::kByteOrderMark, piece.line,
                        "The file begins with a byte order mark; here it is passed over, elsewhere it hides the first "
                        "section.",
                        "Save the file as UTF-8 without it.");
        const std::size_t first = line.find_first_not_of(" \t");
        if (first != std::string_view::npos && line[first] == '[') {
            // What follows was meant for a section of its own: no more is said of it.
            leaveSection();
            section_ = sections_.size();
            sections_.push_back({{}, piece.line, keyLines_.size(), 0});
            return tell(check::kUnclosed, piece.line,
                        "The header " + quoted(line.substr(first)) +
                            " is never closed: the keys below it belong to the section above it.",
                        "Add the \"]\".");
        }
        tell(check::kNoKey, piece.line, "There is no key before the \"=\": the line means nothing.",
             "Name the key, or delete the line.");
    }

    void tellLineEnds() {
        if (carriageReturns_ == 0)
            return;
        findings_.push_back(found(check::kCarriageReturn, path_,
                                  std::to_string(carriageReturns_) + " of " +
                                      std::to_string(std::max(lines_, carriageReturns_)) +
                                      " lines end with a carriage return; here it counts as part of the line end, "
                                      "elsewhere as part of the value.",
                                  "Save the file with Unix line ends."));
    }

    const std::string& path_;
    const JxIniText* text_;
    std::string_view bytes_;
    Findings findings_;
    std::size_t lines_ = 0;
    std::size_t carriageReturns_ = 0;
    bool isPlain_ = false;                // no byte of it needs a closer look
    std::optional<std::size_t> section_;  // none before the first header
    std::vector<SectionLine> sections_;
    std::vector<KeyLine> keyLines_;
    model::NamePlaces places_, keys_;                        // of these two
    std::map<std::string_view, std::size_t> counts_, last_;  // by identifier: how many, and where the last one stands
    std::map<std::size_t, std::size_t> hidden_;              // by finding: how many more there are
};

Findings checkText(const std::string& path, const JxIniText* text) {
    return text != nullptr ? Reader(path, text).run() : Findings();
}

}  // namespace

Findings checkSyntax(const std::string& path) {
    return checkText(path, Text(jxIniRead(path.c_str())).get());
}

Findings checkSyntaxOf(const std::string& path, std::string_view text) {
    return checkText(path, Text(jxIniParse(text.data(), text.size())).get());
}

Findings checkSyntaxOf(const std::string& path, const model::IniView& view) {
    return checkText(path, view.text());
}

}  // namespace jx::doctor
