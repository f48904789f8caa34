// The list that describes a driver or translator to be installed.
//
//     const KeywordList list = parseKeywordList("PG\0Driver=psqlodbcw.so\0FileUsage=0\0", "Driver");
//     if (!list.fault.empty()) ...   // "its second text is not Driver=FILE"
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <jxodbc3/odbcinst.h>

namespace jx::api3 {

struct KeywordValue {
    std::string keyword;
    std::string value;
};

// KeywordList: name, library, perhaps a setup library, and the other keywords in the list's order; or the fault of a
// list that cannot be taken, as the end of a sentence, with its code.
struct KeywordList {
    std::string name;
    std::string library;
    std::optional<std::string> setup;
    std::vector<KeywordValue> others;
    DWORD code = 0;
    std::string fault;
};

// Takes a list apart: the name, then libraryKeyword=FILE, then if at all Setup=FILE, then the rest; an empty text ends
// it. Keywords match without regard to case; blanks around texts are no part of them. None may stand twice, none may be
// UsageCount, and all must be such as a file can store. A null list, and a name with nothing behind it, are
// ODBC_ERROR_INVALID_PARAM_SEQUENCE, a bad name INVALID_NAME, everything else INVALID_KEYWORD_VALUE.
// std::bad_alloc may be thrown.
KeywordList parseKeywordList(const char* list, std::string_view libraryKeyword);

}  // namespace jx::api3
