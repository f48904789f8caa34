// Comparing the rows before and after.
#include "odbcadmin/assist/selection.h"

#include <control_ids.h>
#include <odbcinst.h>

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/cut_list.h"
#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

namespace {

// Only lists of the library's and our own dialogs: what a driver's dialog selects is its own affair.
int keptList(HWND dialog) {
    JxwDialogInfo info{};
    const bool isDialog = JXW_GetDialogInfo(dialog, &info) != 0;
    const bool isDrivers =
        isDialog && std::string_view(info.module) == trial::kInstallerModule && info.templateId == JxDriversDialog;
    if (!isDrivers && sourceList(dialog) == 0)
        return -1;
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &control) != 0; ++index)
        if (control.kind == JXW_LISTBOX)
            return index;
    return -1;
}

std::vector<std::string> rowsOf(HWND dialog, int index, int count) {
    std::vector<std::string> rows;
    rows.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row)
        rows.emplace_back(JXW_GetRow(dialog, index, row));
    return rows;
}

// The place of the only row that was not there before; -1 when there is none, or there are several.
int newRow(const std::vector<std::string>& before, const std::vector<std::string>& now) {
    const std::unordered_set<std::string> known(before.begin(), before.end());
    int found = -1;
    for (std::size_t row = 0; row < now.size(); ++row) {
        if (known.contains(now[row]))
            continue;
        if (found >= 0)
            return -1;
        found = static_cast<int>(row);
    }
    return found;
}

}  // namespace

Selection::Selection(HWND dialog) : dialog_(dialog), index_(keptList(dialog)) {
    JxwControlInfo list{};
    if (index_ < 0 || JXW_GetControlInfo(dialog, index_, &list) == 0)
        return;
    row_ = list.selection;
    rows_ = rowsOf(dialog, index_, list.rowCount);
}

// The row whose driver or mark has changed; -1 when there is none.
int Selection::sameEntry(const std::vector<std::string>& now) const {
    const bool isSources = sourceList(dialog_) != 0;
    const auto entryOf = [&](const std::string& row) {
        const auto source = isSources ? sourceInRow(row) : std::nullopt;
        const auto ofSystem = withoutSystemMark(row);
        return std::pair(source ? source->name : ofSystem.value_or(row), ofSystem.has_value());
    };
    const auto wanted = entryOf(rows_[static_cast<std::size_t>(row_)]);
    const auto found = std::find_if(now.begin(), now.end(), [&](const auto& row) { return entryOf(row) == wanted; });
    return found == now.end() ? -1 : static_cast<int>(found - now.begin());
}

// Where the user is to be among the rows that there are now.
int Selection::rowIn(const std::vector<std::string>& now, Why why) const {
    const int added = newRow(rows_, now);
    if (now == rows_ || (row_ < 0 && added < 0))
        return row_;
    if (row_ < 0 || (why == Why::command && added >= 0 && now.size() == rows_.size() + 1))
        return added;
    const auto same = std::find(now.begin(), now.end(), rows_[static_cast<std::size_t>(row_)]);
    if (same != now.end())
        return static_cast<int>(same - now.begin());
    if (const int entry = sameEntry(now); entry >= 0)
        return entry;
    return added >= 0 && now.size() == rows_.size() ? added : row_;
}

void Selection::restore(Why why) const {
    JxwControlInfo list{};
    noteCutList(dialog_);
    if (index_ < 0 || keptList(dialog_) != index_ || JXW_GetControlInfo(dialog_, index_, &list) == 0 ||
        list.rowCount == 0)
        return;
    const std::vector<std::string> now = rowsOf(dialog_, index_, list.rowCount);
    if (now == rows_ && list.selection == row_)
        return;
    if (why == Why::command)
        JXW_UserFocus(dialog_, list.id);
    JXW_UserSelect(dialog_, list.id, std::clamp(rowIn(now, why), 0, list.rowCount - 1));
}

void SelectionKeeper::around(const std::function<void()>& action) {
    std::optional<Selection> before;
    struct Leave {
        std::optional<Selection>*& place;
        std::optional<Selection>* outer;
        ~Leave() { place = outer; }
    };
    const Leave leave{innermost_, std::exchange(innermost_, &before)};
    action();
    if (before)
        before->restore(Selection::Why::command);
}

}  // namespace jx::assist
