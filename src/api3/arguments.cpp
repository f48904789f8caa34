// Checks and converts the texts of a call.
#include "api3/arguments.h"

#include <algorithm>
#include <string_view>

#include "api3/call.h"
#include "rules/utf8.h"

namespace jx::api3 {

namespace {

bool refuseText(const char* why) {
    return refuse(ODBC_ERROR_INVALID_STR, why);
}

constexpr char kNotUtf8[] = "A text of the call is not UTF-8.";
constexpr char kHalfAPair[] = "A text of the call is not UTF-16: half of a surrogate pair stands alone.";

bool isUtf8Text(const char* text) {
    return text == nullptr || rules::isUtf8(text);
}

}  // namespace

bool areUtf8(std::initializer_list<const char*> texts) {
    return std::all_of(texts.begin(), texts.end(), isUtf8Text) || refuseText(kNotUtf8);
}

bool isUtf8List(const char* list) {
    return rules::isUtf8(listOf(list)) || refuseText(kNotUtf8);
}

WideTexts::WideTexts(std::initializer_list<const SQLWCHAR*> texts) {
    auto* made = texts_.begin();
    for (const SQLWCHAR* text : texts) {
        if (text != nullptr) {
            *made = toUtf8(unitsOf(text));
            areWhole_ = areWhole_ && *made;
        }
        ++made;
    }
}

bool WideTexts::areWhole() const {
    return areWhole_ || refuseText(kHalfAPair);
}

// The empty text behind the last one is the string's own NUL.
WideList::WideList(const SQLWCHAR* list) {
    if (list == nullptr)
        return;
    list_ = toUtf8(listUnitsOf(list));
    isWhole_ = list_.has_value();
}

bool WideList::isWhole() const {
    return isWhole_ || refuseText(kHalfAPair);
}

}  // namespace jx::api3
