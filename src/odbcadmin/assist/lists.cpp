// Filling lists from the files.
#include "odbcadmin/assist/lists.h"

#include <control_ids.h>
#include <jxscreen.h>
#include <sys/stat.h>

#include <array>
#include <iterator>
#include <map>
#include <vector>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/cut_list.h"
#include "odbcadmin/assist/driver_lists.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/library_dialog.h"
#include "odbcadmin/assist/list_search.h"
#include "odbcadmin/assist/selection.h"

namespace jx::assist {

namespace {

// What tells one state of a file from another.
struct FileStamp {
    ino_t node = 0;
    off_t size = -1;
    timespec changed{};

    bool operator==(const FileStamp& other) const {
        return node == other.node && size == other.size && changed.tv_sec == other.changed.tv_sec &&
               changed.tv_nsec == other.changed.tv_nsec;
    }
};
constexpr std::array kKinds{model::FileKind::dataSources, model::FileKind::drivers};
using Stamps = std::array<FileStamp, kKinds.size()>;

struct ListState {
    std::string filter;
    Stamps stamps;
};
thread_local std::map<HWND, ListState> states;

ListState& stateOf(HWND dialog) {
    std::erase_if(states, [](const auto& each) { return JXW_IsWindow(each.first) == 0; });
    return states[dialog];
}

Stamps stampsNow() {
    Stamps stamps;
    for (std::size_t index = 0; index < kKinds.size(); ++index) {
        struct stat status {};
        if (::stat(model::pathOf(nameOf(kKinds[index])).c_str(), &status) == 0)
            stamps[index] = {status.st_ino, status.st_size, status.st_mtim};
    }
    return stamps;
}

// The list that is kept up to date; 0 when the dialog has none.
unsigned short listOf(HWND dialog) {
    if (const unsigned short list = sourceList(dialog))
        return list;
    return driverList(dialog);
}

std::vector<std::string> rowsIn(HWND dialog, unsigned short id) {
    std::vector<std::string> rows;
    JxwControlInfo list{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &list) != 0; ++index)
        for (int row = 0; list.id == id && row < list.rowCount; ++row)
            rows.emplace_back(JXW_GetRow(dialog, index, row));
    return rows;
}

void enableFor(HWND dialog, bool hasRows) {
    for (const unsigned short id :
         {static_cast<unsigned short>(JxSetupButton), static_cast<unsigned short>(JxDeleteButton), kSourcesSetup,
          kSourcesView, kSourcesTest, kSourcesRemove})
        JXW_EnableWindow(JXW_GetDlgItem(dialog, id), hasRows ? 1 : 0);
}

void fillSources(HWND dialog, const std::string& filter) {
    const unsigned short list = sourceList(dialog);
    JXW_SendDlgItemMessage(dialog, list, LB_RESETCONTENT, 0, 0);
    const model::Configuration configuration = model::Configuration::read();
    bool hasRows = false;
    for (const model::DataSource& source : configuration.dataSources()) {
        const std::string row = rowOf(source);
        if ((!source.isListed() && !source.isDefault) || !holdsText(row, filter))
            continue;
        addRow(dialog, list, row);
        hasRows = true;
    }
    if (hasRows)
        JXW_SendDlgItemMessage(dialog, list, LB_SETCURSEL, 0, 0);
    enableFor(dialog, hasRows);
}

bool isOwnForm(HWND dialog) {
    return sourceList(dialog) == kSourcesList;
}

}  // namespace

void refillList(HWND dialog) {
    if (sourceList(dialog) == 0) {
        refreshDriverLists();
        noteFilled(dialog);
        return;
    }
    const Selection before(dialog);
    noteFilled(dialog);
    if (isOwnForm(dialog))
        fillSources(dialog, filterOf(dialog));
    else
        refillLibraryDialog(dialog);
    applyFilter(dialog);
    before.restore(Selection::Why::readAgain);
}

void filterList(HWND dialog, const std::string& text) {
    stateOf(dialog).filter = text;
    refillList(dialog);
}

std::string filterOf(HWND dialog) {
    const auto found = states.find(dialog);
    return found == states.end() ? "" : found->second.filter;
}

void applyFilter(HWND dialog) {
    const std::string filter = filterOf(dialog);
    if (!filter.empty() && sourceList(dialog) != 0 && !isOwnForm(dialog))
        fillSources(dialog, filter);
    noteCutList(dialog);
}

void noteFilled(HWND dialog) {
    if (listOf(dialog) != 0)
        stateOf(dialog).stamps = stampsNow();
}

std::string noticeChange(HWND dialog) {
    const unsigned short list = listOf(dialog);
    const auto state = states.find(dialog);
    if (list == 0 || state == states.end())
        return {};
    const Stamps before = state->second.stamps;
    const Stamps now = stampsNow();
    if (now == before)
        return {};
    const std::vector<std::string> rows = rowsIn(dialog, list);
    refillList(dialog);
    if (rowsIn(dialog, list) == rows)
        return {};
    const std::size_t changed = before[0] == now[0] ? 1 : 0;
    return "Another program has changed " + model::pathOf(nameOf(kKinds[changed])) + ": the list is up to date again.";
}

}  // namespace jx::assist
