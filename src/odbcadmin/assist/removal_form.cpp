// What goes in each of the two ways, and unregistering.
#include "odbcadmin/assist/removal_form.h"

#include <algorithm>
#include <vector>

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/model/registration.h"
#include "odbcadmin/model/text.h"

namespace jx::assist {

namespace {

constexpr const char* kRemovalTitle = "Remove a Driver";
constexpr std::size_t kNamesShown = 5;

std::string users(const model::Configuration& configuration, const std::string& driver) {
    std::vector<std::string> names = namesOf(configuration.dataSourcesOf(driver));
    const std::size_t all = names.size();
    names.resize(std::min(all, kNamesShown));
    if (all == 0)
        return "No data source uses it.";
    return "Unregister Only leaves its files and the " + model::counted(all, "data source") +
           " that need it: " + model::joined(names) + (all > kNamesShown ? ", ..." : "") + ".";
}

// The library deletes no file whose path it may have cut.
void addFile(HWND dialog, const model::Located& library, const char* what) {
    constexpr std::size_t kLongest = 197;
    if (library && library.text.size() <= kLongest)
        addRow(dialog, kRemovalList, std::string(what) + " " + library.text);
}

void fill(HWND dialog, const std::string& driver) {
    const model::Configuration configuration = model::Configuration::read();
    JXW_SetDlgItemText(dialog, kRemovalDriver, ("Driver: " + driver).c_str());
    JXW_SetDlgItemText(dialog, kRemovalUsers, users(configuration, driver).c_str());
    if (const auto& registered = configuration.driver(driver)) {
        addFile(dialog, registered->library, "file");
        addFile(dialog, registered->setup, "file");
    }
    addRow(dialog, kRemovalList, "entries of driver " + driver);
    for (const model::DataSource& source : configuration.dataSources())
        if (source.isListed() && source.listed.text.find(driver) != std::string::npos)
            addRow(dialog, kRemovalList, "data source " + source.name);
    JXW_SendDlgItemMessage(dialog, kRemovalList, LB_SETCURSEL, 0, 0);
}

void unregister(HWND dialog, const std::string& driver) {
    const model::ChangeResult result =
        model::unregisterEntry(model::Configuration::read(), model::kDriverKind, driver, model::ChangeWay());
    if (!result.isDone())
        say(dialog, "The driver was not removed. " + sentenceOf(result.reason), kRemovalTitle, MB_OK | MB_ICONSTOP);
    else
        JXW_EndDialog(dialog, static_cast<int>(Removal::unregistered));
}

unsigned int removalProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        fill(dialog, formRecord<const std::string>(dialog));
    } else if (message == WM_COMMAND && wparam == kRemovalUnregister) {
        unregister(dialog, formRecord<const std::string>(dialog));
    } else if (message == WM_COMMAND && wparam == kRemovalDelete) {
        JXW_EndDialog(dialog, static_cast<int>(Removal::withFiles));
    } else if (message == WM_COMMAND && wparam == IDCANCEL) {
        JXW_EndDialog(dialog, static_cast<int>(Removal::none));
    } else {
        return 0;
    }
    return 1;
}

}  // namespace

Removal askForRemoval(HWND owner, const std::string& driver) {
    std::string name = driver;
    const int result = showForm(kRemovalForm, owner, removalProcedure, &name);
    return result == -1 ? Removal::none : static_cast<Removal>(result);
}

}  // namespace jx::assist
