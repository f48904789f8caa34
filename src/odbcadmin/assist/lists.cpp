// Filling lists from the files.
#include "odbcadmin/assist/lists.h"

#include <control_ids.h>
#include <jxscreen.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/cut_list.h"
#include "odbcadmin/assist/driver_lists.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/library_dialog.h"
#include "odbcadmin/assist/list_search.h"
#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/assist/selection.h"
#include "odbcadmin/assist/system_rows.h"

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
struct WatchedFile {
    model::FileKind kind;
    model::Scope scope;

    std::string path() const { return model::pathOf(nameOf(kind), scope); }
};
constexpr std::array kWatchedFiles{WatchedFile{model::FileKind::dataSources, model::Scope::user},
                                   WatchedFile{model::FileKind::drivers, model::Scope::user},
                                   WatchedFile{model::FileKind::dataSources, model::Scope::system},
                                   WatchedFile{model::FileKind::drivers, model::Scope::system}};
using Stamps = std::array<FileStamp, kWatchedFiles.size()>;

struct ListState {
    Filter filter;
    Stamps stamps;
};
thread_local std::map<HWND, ListState> states;

ListState& stateOf(HWND dialog) {
    std::erase_if(states, [](const auto& each) { return JXW_IsWindow(each.first) == 0; });
    return states[dialog];
}

Stamps stampsNow() {
    Stamps stamps;
    for (std::size_t index = 0; index < kWatchedFiles.size(); ++index) {
        struct stat status {};
        if (::stat(kWatchedFiles[index].path().c_str(), &status) == 0)
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

void enableFor(HWND dialog, bool hasRows) {
    for (const unsigned short id :
         {static_cast<unsigned short>(JxSetupButton), static_cast<unsigned short>(JxDeleteButton), kSourcesSetup,
          kSourcesView, kSourcesTest, kSourcesRemove})
        JXW_EnableWindow(JXW_GetDlgItem(dialog, id), hasRows ? 1 : 0);
}

std::vector<std::string> userSourceRows() {
    std::vector<std::string> rows;
    for (const model::DataSource& source : model::Configuration::read().dataSources())
        if (source.isListed() || source.isDefault)
            rows.push_back(rowOf(source));
    return rows;
}

// The mark is no part of what a text is looked for in: a letter of it would find all of the system's.
bool isWanted(const std::string& row, const Filter& filter) {
    return holdsText(withoutSystemMark(row).value_or(row), filter.text);
}

void fillSources(HWND dialog, const Filter& filter) {
    std::vector<std::string> rows;
    if (filter.scope != model::Seen::system)
        rows = userSourceRows();
    if (filter.scope != model::Seen::user)
        for (std::string& row : systemSourceRows())
            rows.push_back(std::move(row));
    std::erase_if(rows, [&](const std::string& row) { return !isWanted(row, filter); });
    const unsigned short list = sourceList(dialog);
    JXW_SendDlgItemMessage(dialog, list, LB_RESETCONTENT, 0, 0);
    for (const std::string& row : rows)
        addRow(dialog, list, row);
    if (!rows.empty())
        JXW_SendDlgItemMessage(dialog, list, LB_SETCURSEL, 0, 0);
    enableFor(dialog, !rows.empty());
}

// The library's rows, as many as it has room for, and the system's.
void completeSources(HWND dialog) {
    const Filter filter = filterOf(dialog);
    if (!filter.text.empty() || filter.scope == model::Seen::system) {
        fillSources(dialog, filter);
        return;
    }
    putSystemRows(dialog, JxDataSourcesList,
                  filter.scope == model::Seen::user ? std::vector<std::string>() : systemSourceRows());
    if (JXW_SendDlgItemMessage(dialog, JxDataSourcesList, LB_GETCURSEL, 0, 0) >= 0)
        enableFor(dialog, /*hasRows=*/true);
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
    completeList(dialog);
    before.restore(Selection::Why::readAgain);
}

void filterList(HWND dialog, const Filter& filter) {
    stateOf(dialog).filter = filter;
    refillList(dialog);
}

Filter filterOf(HWND dialog) {
    const auto found = states.find(dialog);
    return found == states.end() ? Filter() : found->second.filter;
}

void completeList(HWND dialog) {
    if (sourceList(dialog) == JxDataSourcesList)
        completeSources(dialog);
    else if (driverList(dialog) != 0)
        completeDrivers(dialog);
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
    const auto changed = std::mismatch(before.begin(), before.end(), now.begin()).first - before.begin();
    return "Another program has changed " + kWatchedFiles[static_cast<std::size_t>(changed)].path() +
           ": the list is up to date again.";
}

}  // namespace jx::assist
