// Reading the driver of the selected row.
#include "odbcadmin/assist/worker.h"

#include <control_ids.h>
#include <odbcinst.h>

#include <array>
#include <string_view>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

namespace {

std::string selectedRow(HWND dialog, unsigned short id) {
    JxwControlInfo list{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &list) != 0; ++index) {
        const char* row = list.id == id ? JXW_GetRow(dialog, index, list.selection) : nullptr;
        if (row != nullptr)
            return row;
    }
    return {};
}

// Rows of data sources end with their driver in parentheses; a driver's name may hold some in pairs.
std::string driverIn(const std::string& row) {
    int depth = 0;
    for (std::size_t at = row.size(); at-- > 0;) {
        depth += row[at] == ')' ? 1 : row[at] == '(' ? -1 : 0;
        if (depth == 0)
            return row.ends_with(')') ? row.substr(at + 1, row.size() - at - 2) : std::string();
    }
    return {};
}

}  // namespace

std::string workerOf(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0 || std::string_view(info.module) != trial::kInstallerModule)
        return {};
    std::string driver;
    if (info.templateId == JxDataSourcesDialog)
        driver = driverIn(selectedRow(dialog, JxDataSourcesList));
    else if (info.templateId == JxAddDataSourceDialog)
        driver = selectedRow(dialog, JxAddDataSourceList);
    if (driver.empty())
        return {};
    const model::Configuration configuration = model::Configuration::read();
    const auto registered = configuration.driver(driver);
    const std::string library = registered ? registered->setup.text : std::string();
    return "The setup library " + (library.empty() ? "" : library + " ") + "of driver " + driver;
}

}  // namespace jx::assist
