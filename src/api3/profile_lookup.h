// What a look-up of a key, of a section's keys or of the sections finds, and in which file.
//
//     const Sources sources(state, "odbc.ini", readEnvironment());
//     const Answer answer = lookUp(sources, {"Sales", "Server"});
//     if (answer.outcome == Outcome::found) ... answer.text ...
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "api3/file_places.h"

namespace jx::api3 {

struct ThreadState;

// Question: a null key asks for the section's keys, a null section for the sections.
struct Question {
    const char* section;
    const char* key;
};

enum class Outcome : std::uint8_t {
    found,
    noFile,            // none of the files is there
    notRead,           // one that would answer cannot be read; a record says why
    noSection,         // in none of them
    noKey,             // in the section that answers
    referenceRefused,  // a record says why
};

// Answer: the text is valid until the thread looks up again, and while the answer lives where it is.
struct Answer {
    Outcome outcome = Outcome::noFile;
    const Place* place = nullptr;             // the file that answered, or whose section has no such key
    std::string_view inFile;                  // the text where the file holds it as it is
    std::optional<std::string> own;           // the text when it had to be made
    std::optional<std::string> referenceKey;  // KEY@file and the like, when the value comes or should come from there

    bool isFound() const { return outcome == Outcome::found; }

    // The value, or the list: each name with its NUL.
    std::string_view text() const { return own ? std::string_view(*own) : inFile; }
};

// Sources: the files that a name stands for in this mode, in the order in which they are asked.
class Sources {
public:
    Sources(ThreadState& state, const char* file, const Environment& environment);

    // One file by its absolute path.
    Sources(ThreadState& state, const std::string& path);

    std::size_t count() const { return count_; }
    const Place& operator[](std::size_t index) const { return *places_[index]; }

private:
    std::array<const Place*, 2> places_{};
    std::size_t count_ = 0;
};

// Answers from the first file that has the section, and from no other. The list of sections, and those of data sources,
// drivers and translators, are joined from all; a key of such a list is looked for in each.
// Failure  std::bad_alloc may be thrown; nothing is allocated for a value that stands in the file.
Answer lookUp(const Sources& sources, const Question& question);

// The same without following references: what the library asks for itself.
Answer lookUpWritten(const Sources& sources, const Question& question);

// Look: what one file holds at this moment; the record says what was asked.
struct Look {
    JxIniView* view = nullptr;
    bool failed = false;  // the file is there but cannot be read; the record is posted
};
Look lookAt(const Place& place, const Question& question);

// One question to one file. JxIniAskFailed is thrown as std::bad_alloc.
JxIniAnswer ask(JxIniView* view, const char* section, const char* key, JxIniPart& part);

}  // namespace jx::api3
