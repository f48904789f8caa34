// The error records of a thread.
//
//     queue.post(ODBC_ERROR_INVALID_DSN, "A data source cannot be called \"a=b\": it holds =.");
//     const ErrorRecord* first = queue.record(1);
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include <jxodbc3/odbcinst.h>

namespace jx::api3 {

// The code's own sentence; null for a number that is no code.
const char* sentenceOf(DWORD code);

// ErrorRecord: a code, and a sentence that may be empty for the code's own.
struct ErrorRecord {
    DWORD code = 0;
    std::string text;

    const char* sentence() const { return text.empty() ? sentenceOf(code) : text.c_str(); }
};

// ErrorQueue: up to kMost records in the order in which they were posted. Posting takes no memory.
class ErrorQueue {
public:
    static constexpr std::size_t kMost = 8;

    // False, with nothing posted, when the queue is full or code is none.
    bool post(DWORD code, std::string text) noexcept;

    void clear() noexcept {
        if (count_ != 0)
            keep(0);
    }

    // Forgets all but the first count records.
    void keep(std::size_t count) noexcept;

    std::size_t count() const { return count_; }

    // Record number 1 to count(); null for any other number.
    const ErrorRecord* record(std::size_t number) const;

private:
    std::array<ErrorRecord, kMost> records_;
    std::size_t count_ = 0;
};

}  // namespace jx::api3
