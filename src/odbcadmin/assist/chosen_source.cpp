// Taking rows apart.
#include "odbcadmin/assist/chosen_source.h"

#include <control_ids.h>

#include <string_view>

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/trial/installer_library.h"
#include "rules/names.h"

namespace jx::assist {

namespace {

// The position of the "(" that matches the ")" at the end; npos without one.
std::size_t driverIn(std::string_view row) {
    int depth = 0;
    for (std::size_t at = row.size(); at-- > 0 && row.ends_with(')');) {
        depth += row[at] == ')' ? 1 : row[at] == '(' ? -1 : 0;
        if (depth == 0)
            return at;
    }
    return std::string_view::npos;
}

template <class Visit>
void eachRow(HWND dialog, unsigned short id, Visit visit) {
    JxwControlInfo list{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &list) != 0; ++index) {
        if (list.id != id)
            continue;
        for (int row = 0; row < list.rowCount; ++row)
            if (!visit(row, JXW_GetRow(dialog, index, row)))
                return;
    }
}

// Names and drivers of the system's are of any kind, with parentheses anywhere: the file says which row is whose.
std::optional<ChosenSource> systemSourceInRow(const std::string& row) {
    if (const auto shown = withoutSystemMark(row))
        for (const model::DataSource& source : configurationOf(model::Scope::system).dataSources())
            if (rowOf(source) == *shown)
                return ChosenSource{source.name, source.driver, model::Scope::system};
    return std::nullopt;
}

}  // namespace

std::string rowOf(const model::DataSource& source) {
    return source.name + " (" + source.driver + ")";
}

std::optional<ChosenSource> sourceInRow(const std::string& row) {
    const std::optional<std::string> ofSystem = withoutSystemMark(row);
    const std::string& whole = ofSystem ? *ofSystem : row;
    const model::Scope scope = ofSystem ? model::Scope::system : model::Scope::user;
    std::size_t open = driverIn(whole);
    if (open == std::string_view::npos && ofSystem)
        open = whole.find(" (") + 1;
    if (open == std::string_view::npos)
        return std::nullopt;
    std::string name = whole.substr(0, open);
    while (name.size() > 1 && name.back() == ' ')
        name.pop_back();
    return ChosenSource{name, whole.substr(open + 1, whole.size() - open - 2), scope};
}

std::vector<std::string> rowsIn(HWND dialog, unsigned short list) {
    std::vector<std::string> rows;
    eachRow(dialog, list, [&](int /*row*/, const char* shown) {
        rows.emplace_back(shown);
        return true;
    });
    return rows;
}

std::string selectedRow(HWND dialog, unsigned short list) {
    const int selected = JXW_SendDlgItemMessage(dialog, list, LB_GETCURSEL, 0, 0);
    std::string text;
    eachRow(dialog, list, [&](int row, const char* shown) {
        if (row == selected)
            text = shown;
        return row != selected;
    });
    return text;
}

unsigned short sourceList(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0)
        return 0;
    if (std::string_view(info.module) == trial::kInstallerModule && info.templateId == JxDataSourcesDialog)
        return JxDataSourcesList;
    if (std::string_view(info.module) == kFormModule && info.templateId == kSourcesForm)
        return kSourcesList;
    return 0;
}

std::optional<ChosenSource> chosenSource(HWND dialog) {
    const unsigned short list = sourceList(dialog);
    if (list == 0)
        return std::nullopt;
    const std::string row = selectedRow(dialog, list);
    const std::optional<ChosenSource> exact = systemSourceInRow(row);
    return exact ? exact : sourceInRow(row);
}

void chooseSource(HWND dialog, const std::string& name, model::Scope scope) {
    const unsigned short list = sourceList(dialog);
    int found = -1;
    eachRow(dialog, list, [&](int row, const char* shown) {
        const auto source = sourceInRow(shown);
        found = source && source->scope == scope && rules::sameName(source->name, name) ? row : -1;
        return found < 0;
    });
    if (found >= 0)
        JXW_UserSelect(dialog, list, found);
}

}  // namespace jx::assist
