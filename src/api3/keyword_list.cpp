// Takes keyword lists apart.
#include "api3/keyword_list.h"

#include <algorithm>
#include <utility>

#include "api3/name_list.h"
#include "api3/quoted.h"
#include "api3/text_conversion.h"
#include "rules/sections.h"
#include "rules/storable.h"
#include "rules/valid_names.h"

namespace jx::api3 {

namespace {

KeywordList faulty(DWORD code, std::string fault) {
    KeywordList list;
    list.code = code;
    list.fault = std::move(fault);
    return list;
}

KeywordList faulty(std::string fault) {
    return faulty(ODBC_ERROR_INVALID_KEYWORD_VALUE, std::move(fault));
}

std::optional<KeywordValue> split(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        return std::nullopt;
    return KeywordValue{std::string(rules::trimmed(text.substr(0, equals))),
                        std::string(rules::trimmed(text.substr(equals + 1)))};
}

// Why a pair cannot be stored; an empty text when it can.
std::string faultOf(const KeywordValue& pair) {
    if (pair.keyword.empty())
        return "a keyword is empty";
    if (const rules::Why why = rules::whyNoKey(pair.keyword))
        return "the keyword " + quoted(pair.keyword) + " cannot be stored: " + why;
    if (const rules::Why why = rules::whyNoValue(pair.value))
        return "the value of " + quoted(pair.keyword) + " cannot be stored: " + why;
    if (rules::sameName(pair.keyword, rules::kUsageCount))
        return "UsageCount is counted by the library";
    return {};
}

// Takes over a pair at its place in the list.
bool take(KeywordList& list, KeywordValue pair, std::size_t place, std::string_view libraryKeyword) {
    if (place == 0)
        list.library = std::move(pair.value);
    else if (place == 1 && rules::sameName(pair.keyword, rules::kSetup))
        list.setup = std::move(pair.value);
    else if (rules::sameName(pair.keyword, rules::kSetup) || rules::sameName(pair.keyword, libraryKeyword))
        return false;
    else
        list.others.push_back(std::move(pair));
    return true;
}

std::string faultAtTheBeginning(const KeywordValue& pair, std::string_view libraryKeyword) {
    if (rules::sameName(pair.keyword, libraryKeyword) && !pair.value.empty())
        return {};
    return "its second text is not " + std::string(libraryKeyword) + "=FILE";
}

KeywordList takeAll(std::string_view name, NamesIn texts, std::string_view libraryKeyword) {
    KeywordList list;
    list.name = name;
    NameList keywords;
    std::size_t place = 0;
    for (const std::string_view text : texts) {
        std::optional<KeywordValue> pair = split(text);
        if (!pair)
            return faulty(quoted(text) + " is not KEYWORD=VALUE");
        std::string fault = faultOf(*pair);
        if (fault.empty() && place == 0)
            fault = faultAtTheBeginning(*pair, libraryKeyword);
        if (!fault.empty())
            return faulty(std::move(fault));
        if (!keywords.add(pair->keyword))
            return faulty(quoted(pair->keyword) + " stands twice");
        const std::string keyword = pair->keyword;
        if (!take(list, std::move(*pair), place++, libraryKeyword))
            return faulty(keyword + " does not stand where it belongs");
    }
    return list;
}

}  // namespace

KeywordList parseKeywordList(const char* list, std::string_view libraryKeyword) {
    const std::string_view texts = listOf(list);
    if (texts.empty())
        return faulty(ODBC_ERROR_INVALID_PARAM_SEQUENCE, "there is no list");
    const std::string_view first = texts.substr(0, texts.find('\0'));
    const std::string_view name = rules::trimmed(first);
    if (const rules::Why why = rules::whyNoName(name, rules::kAnyDriver))
        return faulty(ODBC_ERROR_INVALID_NAME, "nothing can be called " + quoted(name) + ": " + why);
    const std::string_view rest = texts.substr(first.size() + 1);
    if (rest.empty())
        return faulty(ODBC_ERROR_INVALID_PARAM_SEQUENCE, "nothing stands behind the name " + quoted(name));
    return takeAll(name, NamesIn(rest), libraryKeyword);
}

}  // namespace jx::api3
