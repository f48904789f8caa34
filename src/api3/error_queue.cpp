// Keeps records, and the sentences of the codes.
#include "api3/error_queue.h"

#include <iterator>
#include <utility>

namespace jx::api3 {

namespace {

constexpr const char* kSentences[] = {
    "The call failed.",
    "A buffer is missing or too small.",
    "The window is missing or is none.",
    "A text is not valid.",
    "There is no such request.",
    "There is no such driver or translator.",
    "A name is not valid.",
    "A keyword and its value are not valid.",
    "The name of the data source is not valid.",
    "The installation script is not valid.",
    "The request could not be carried out.",
    "A path is not valid.",
    "A library could not be loaded.",
    "A parameter does not fit the others, or is missing.",
    "The log file could not be used.",
    "The user gave up.",
    "The usage count could not be changed.",
    "The data source could not be made.",
    "The system information could not be written.",
    "The data source could not be removed.",
    "Memory was too short.",
    "The text was cut.",
    "There is no information on the translator.",
};
static_assert(std::size(kSentences) == ODBC_ERROR_NOTRANINFO);

}  // namespace

const char* sentenceOf(DWORD code) {
    return code >= ODBC_ERROR_GENERAL_ERR && code <= ODBC_ERROR_NOTRANINFO ? kSentences[code - 1] : nullptr;
}

bool ErrorQueue::post(DWORD code, std::string text) noexcept {
    if (count_ == kMost || sentenceOf(code) == nullptr)
        return false;
    records_[count_].code = code;
    records_[count_].text = std::move(text);
    ++count_;
    return true;
}

void ErrorQueue::keep(std::size_t count) noexcept {
    for (; count_ > count; --count_)
        records_[count_ - 1].text.clear();
}

const ErrorRecord* ErrorQueue::record(std::size_t number) const {
    return number >= 1 && number <= count_ ? &records_[number - 1] : nullptr;
}

}  // namespace jx::api3
