// Drivers and translators in one file: where they are listed, which key names their library, how often they were
// installed.
//
//     const FileText text = change.before();
//     if (isInstalled(kDrivers, text, "PG")) ... countOf(text, "PG") ...
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <jxodbc3/odbcinst.h>
#include "api3/file_change.h"
#include "rules/sections.h"

namespace jx::api3 {

// ComponentKind: what tells drivers from translators.
struct ComponentKind {
    const char* noun;
    const char* list;        // the section that lists them
    const char* libraryKey;  // which key of their own sections names the library
};

inline constexpr ComponentKind kDrivers{"Driver", rules::kDriverList, rules::kDriver};
inline constexpr ComponentKind kTranslators{"Translator", rules::kTranslatorList, rules::kTranslator};

// "Driver "PG"", for sentences.
std::string subjectOf(const ComponentKind& kind, const std::string& name);

// Whether a file has it: in the list, or as a section with a library.
bool isInstalled(const ComponentKind& kind, const FileText& text, const std::string& name);

// How often it was installed; nothing when there is no count, or what stands there is no number of 32 bits.
std::optional<std::uint32_t> countOf(const FileText& text, const std::string& section);

// The count after one more installation: 1 for a new one, 2 for one that was installed before counts were kept.
std::uint32_t countOneMore(std::optional<std::uint32_t> count, bool wasInstalled);

// The count after one less, where none counts as 1.
std::uint32_t countOneLess(std::optional<std::uint32_t> count);

bool setCount(FileChange& change, const std::string& section, std::uint32_t count);

}  // namespace jx::api3
