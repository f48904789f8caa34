// The exported calls that read and post error records.
#include <algorithm>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include <jxodbc3/odbcinst.h>
#include "api3/ansi_name.h"
#include "api3/text_conversion.h"
#include "api3/text_output.h"
#include "api3/thread_state.h"

using namespace jx::api3;

namespace {

WORD asWord(std::size_t length) {
    return static_cast<WORD>(std::min<std::size_t>(length, UINT16_MAX));
}

struct Record {
    DWORD code;
    const char* sentence;
};

// Where a thread can keep no records, that is the record.
std::optional<Record> recordOf(WORD number) {
    if (wasWithoutState())
        return number == 1 ? std::optional(Record{ODBC_ERROR_OUT_OF_MEM, sentenceOf(ODBC_ERROR_OUT_OF_MEM)})
                           : std::nullopt;
    const ThreadState* state = threadState();
    const ErrorRecord* record = state == nullptr ? nullptr : state->errors.record(number);
    if (record == nullptr)
        return std::nullopt;
    return Record{record->code, record->sentence()};
}

RETCODE giveRecord(WORD number, DWORD* code, const TextOutput& output, bool wantsText, WORD* length) {
    if (number == 0)
        return SQL_ERROR;
    const std::optional<Record> record = recordOf(number);
    const Placed placed = output.place(record ? record->sentence : "");
    if (length != nullptr)
        *length = asWord(placed.length);
    if (!record)
        return SQL_NO_DATA;
    if (code != nullptr)
        *code = record->code;
    return wantsText && placed.isCut ? SQL_SUCCESS_WITH_INFO : SQL_SUCCESS;
}

// Adds a record; nothing stands for a text that is none.
template <class Text>
RETCODE post(DWORD code, Text text) {
    ThreadState* state = threadState();
    if (state == nullptr)
        return SQL_ERROR;
    try {
        std::optional<std::string> sentence = text();
        return sentence && state->errors.post(code, std::move(*sentence)) ? SQL_SUCCESS : SQL_ERROR;
    } catch (const std::bad_alloc&) {
        return SQL_ERROR;
    }
}

std::optional<std::string> utf8Text(const char* text) {
    if (text == nullptr)
        return std::string();
    return jx::rules::isUtf8(text) ? std::optional<std::string>(text) : std::nullopt;
}

}  // namespace

RETCODE SQLInstallerError(WORD iError, DWORD* pfErrorCode, LPSTR lpszErrorMsg, WORD cbErrorMsgMax, WORD* pcbErrorMsg) {
    return giveRecord(iError, pfErrorCode, {lpszErrorMsg, cbErrorMsgMax}, lpszErrorMsg != nullptr, pcbErrorMsg);
}

JX_ALSO_WITH_A(SQLInstallerError);

RETCODE SQLInstallerErrorW(WORD iError, DWORD* pfErrorCode, SQLWCHAR* lpszErrorMsg, WORD cchErrorMsgMax,
                           WORD* pcchErrorMsg) {
    return giveRecord(iError, pfErrorCode, {lpszErrorMsg, cchErrorMsgMax}, lpszErrorMsg != nullptr, pcchErrorMsg);
}

RETCODE SQLPostInstallerError(DWORD fErrorCode, LPCSTR szErrorMsg) {
    return post(fErrorCode, [=] { return utf8Text(szErrorMsg); });
}

JX_ALSO_WITH_A(SQLPostInstallerError);

RETCODE SQLPostInstallerErrorW(DWORD fErrorCode, const SQLWCHAR* szErrorMsg) {
    return post(fErrorCode, [=] { return toUtf8(unitsOf(szErrorMsg)); });
}
