// Comparing rows with what was typed.
#include "odbcadmin/assist/list_search.h"

#include <cwctype>

#include "rules/utf8.h"

namespace jx::assist {

namespace {

// What is typed this long after the letter before begins anew.
constexpr long kTypingPause = 1000;

// Bytes that are no characters stand for themselves, beyond all code points.
std::u32string lowered(std::string_view text) {
    constexpr char32_t kBytes = 0x110000;
    std::u32string all;
    for (std::size_t at = 0; at < text.size();) {
        const rules::Character each = rules::characterAt(text, at);
        all.push_back(each.code == rules::kNoCharacter
                          ? kBytes + static_cast<unsigned char>(text[at])
                          : static_cast<char32_t>(std::towlower(static_cast<std::wint_t>(each.code))));
        at += each.length;
    }
    return all;
}

enum class Match { begins, holds };

// The first row from begin on, round the end of the list, that matches; -1 when none does.
int rowOf(HWND dialog, int index, const JxwControlInfo& list, int begin, const std::string& text, Match match) {
    const std::u32string sought = lowered(text);
    for (int i = 0; i < list.rowCount; ++i) {
        const int row = (begin + i) % list.rowCount;
        const char* shown = JXW_GetRow(dialog, index, row);
        const std::size_t at = shown == nullptr ? std::u32string::npos : lowered(shown).find(sought);
        if (match == Match::begins ? at == 0 : at != std::u32string::npos)
            return row;
    }
    return -1;
}

}  // namespace

bool holdsText(const std::string& row, const std::string& text) {
    return lowered(row).find(lowered(text)) != std::u32string::npos;
}

void ListSearch::close() {
    isOpen_ = false;
    typed_.clear();
}

std::string ListSearch::openSearch(HWND dialog, int index, const JxwControlInfo& list) {
    if (typed_.empty())
        return "Search: _   Enter or Escape ends it";
    const int row = rowOf(dialog, index, list, std::max(list.selection, 0), typed_, Match::holds);
    if (row >= 0)
        JXW_UserSelect(dialog, list.id, row);
    return "Search: " + typed_ + (row < 0 ? "   no row holds this" : "_");
}

std::string ListSearch::takeBack(HWND dialog, int index, const JxwControlInfo& list) {
    while (!typed_.empty() && rules::isContinuation(typed_.back()))
        typed_.pop_back();
    if (!typed_.empty())
        typed_.pop_back();
    return openSearch(dialog, index, list);
}

std::string ListSearch::type(HWND dialog, int index, const JxwControlInfo& list, const std::string& text, long time) {
    if (list_ != list.control || (!isOpen_ && time - typedAt_ > kTypingPause))
        close();
    list_ = list.control;
    typedAt_ = time;
    if (isOpen_) {
        typed_ += text;
        return openSearch(dialog, index, list);
    }
    if (text == "/" && typed_.empty()) {
        isOpen_ = true;
        return openSearch(dialog, index, list);
    }
    const bool isRepeated = typed_ == text;
    const std::string sought = isRepeated ? typed_ : typed_ + text;
    const int begin = isRepeated || typed_.empty() ? list.selection + 1 : std::max(list.selection, 0);
    const int row = rowOf(dialog, index, list, begin, sought, Match::begins);
    if (row < 0)
        return "No row begins with \"" + sought + "\". Alt and a marked letter presses a button; / searches.";
    typed_ = sought;
    JXW_UserSelect(dialog, list.id, row);
    return {};
}

}  // namespace jx::assist
