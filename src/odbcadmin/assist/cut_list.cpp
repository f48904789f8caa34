// Comparing the rows with the file.
#include "odbcadmin/assist/cut_list.h"

#include <control_ids.h>
#include <odbcinst.h>

#include <string_view>
#include <vector>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/trial/installer_library.h"
#include "rules/sections.h"

namespace jx::assist {

namespace {

struct Notice {
    HWND dialog = 0;
    std::string text;
};
thread_local Notice lastNotice;

// 1998 as "1,998".
std::string grouped(std::size_t number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3)
        text.insert(at - 3, ",");
    return text;
}

bool isNamed(const std::string& row, const std::string& name) {
    return row.starts_with(name + " (");
}

}  // namespace

void noteCutList(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0 || std::string_view(info.module) != trial::kInstallerModule ||
        info.templateId != JxDataSourcesDialog)
        return;
    lastNotice = {dialog, {}};
    JxwControlInfo list{};
    int index = 0;
    while (JXW_GetControlInfo(dialog, index, &list) != 0 && list.id != JxDataSourcesList)
        ++index;
    std::vector<std::string> names;
    for (const model::DataSource& source : model::Configuration::read().dataSources())
        if (source.isListed())
            names.push_back(source.name);
    // The default data source is the last row, and in no list of the file.
    const bool hasDefault = list.rowCount > 0 && isNamed(JXW_GetRow(dialog, index, list.rowCount - 1), rules::kDefault);
    const int shown = list.rowCount - (hasDefault ? 1 : 0);
    if (static_cast<std::size_t>(shown) < names.size())
        lastNotice.text = grouped(static_cast<std::size_t>(shown)) + " of " + grouped(names.size()) +
                          " shown; odbcadmin dsn list shows all.";
}

std::string cutNotice(HWND dialog) {
    return dialog == lastNotice.dialog ? lastNotice.text : std::string();
}

}  // namespace jx::assist
