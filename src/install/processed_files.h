// The files a run has processed, in the record's list: each file name is processed once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

#include "install/install_record.h"
#include "install/owned_text.h"

namespace jx::install {

// 1 when the list has a file of exactly this name, else 0.
unsigned int HasFileBeenProcessed(_Install* install, std::uint32_t item, std::uint32_t entry);

// Appends a copy of the entry's file name, even if it is in the list already. Returns 1, or 0 with the list unchanged
// when memory is short.
unsigned int AddFileToProcessedList(_Install* install, std::uint32_t item, std::uint32_t entry);

// NameFilter: tells most names that are not in the list without a search of it, which would take the square of the
// number of files.
// Use      note each name that is added to the list; only a name that mayHold accepts has to be searched for.
// Failure  isThere says whether there was enough memory.
class NameFilter {
public:
    NameFilter() : bits_(static_cast<unsigned char*>(ramAllocZ(kBytes))) {}

    bool isThere() const { return bits_ != nullptr; }
    void note(std::string_view name) { bits_.get()[byteOf(name)] |= bitOf(name); }
    bool mayHold(std::string_view name) const { return (bits_.get()[byteOf(name)] & bitOf(name)) != 0; }

private:
    static constexpr std::size_t kBytes = 32768;

    static std::size_t byteOf(std::string_view name) { return std::hash<std::string_view>{}(name) / 8 % kBytes; }
    static unsigned char bitOf(std::string_view name) {
        return static_cast<unsigned char>(1U << std::hash<std::string_view>{}(name) % 8);
    }

    OwnedText bits_;
};

}  // namespace jx::install
