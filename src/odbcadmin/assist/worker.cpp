// Reading the driver of the selected row.
#include "odbcadmin/assist/worker.h"

#include <control_ids.h>

#include <string_view>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/model/configuration.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

std::string workerOf(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0)
        return {};
    std::string driver;
    if (const auto source = chosenSource(dialog))
        driver = source->scope == model::Scope::user ? source->driver : "";
    else if (std::string_view(info.module) == trial::kInstallerModule && info.templateId == JxAddDataSourceDialog)
        driver = selectedRow(dialog, JxAddDataSourceList);
    if (driver.empty() || withoutSystemMark(driver))
        return {};
    const model::Configuration configuration = model::Configuration::read();
    const auto& registered = configuration.driver(driver);
    const std::string library = registered ? registered->setup.text : std::string();
    return "The setup library " + (library.empty() ? "" : library + " ") + "of driver " + driver;
}

}  // namespace jx::assist
