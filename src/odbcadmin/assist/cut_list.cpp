// Comparing the rows with the file.
#include "odbcadmin/assist/cut_list.h"

#include <algorithm>
#include <vector>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/model/configuration.h"
#include "rules/sections.h"

namespace jx::assist {

namespace {

struct Notice {
    HWND dialog = 0;
    bool isCut = false;
    std::string text;
};
thread_local Notice lastNotice;

// 1998 as "1,998".
std::string grouped(long number) {
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
    const unsigned short id = sourceList(dialog);
    if (id == 0)
        return;
    lastNotice = {dialog, /*isCut=*/false, {}};
    JxwControlInfo list{};
    int index = 0;
    while (JXW_GetControlInfo(dialog, index, &list) != 0 && list.id != id)
        ++index;
    const model::Configuration configuration = model::Configuration::read();
    const std::vector<model::DataSource> sources = configuration.dataSources();
    const auto all = std::count_if(sources.begin(), sources.end(), [](const auto& each) { return each.isListed(); });
    // The default data source is the last row, and in no list of the file.
    const bool hasDefault = list.rowCount > 0 && isNamed(JXW_GetRow(dialog, index, list.rowCount - 1), rules::kDefault);
    const int shown = list.rowCount - (hasDefault ? 1 : 0);
    const std::string filter = filterOf(dialog);
    lastNotice.isCut = filter.empty() && shown < all;
    if (!filter.empty())
        lastNotice.text =
            "Filter \"" + filter + "\": " + grouped(shown) + " of " + grouped(all) + " shown; F8 changes it.";
    else if (lastNotice.isCut)
        lastNotice.text = grouped(shown) + " of " + grouped(all) + " shown; F9 shows all.";
}

std::string cutNotice(HWND dialog) {
    return dialog == lastNotice.dialog ? lastNotice.text : std::string();
}

bool isCut(HWND dialog) {
    return dialog == lastNotice.dialog && lastNotice.isCut;
}

}  // namespace jx::assist
