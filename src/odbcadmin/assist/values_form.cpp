// Filling the list of values.
#include "odbcadmin/assist/values_form.h"

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/text.h"
#include "rules/secrets.h"

namespace jx::assist {

namespace {

std::string whereabouts(const model::DataSource& source) {
    return (source.driver.empty() ? "No driver" : "Driver " + source.driver) + ". In " +
           (source.header ? source.header.where() : source.file->path + ", without a section") + ".";
}

void fillValues(HWND dialog, const std::string& name) {
    JXW_SetWindowText(dialog, ("Values of " + name).c_str());
    const model::Configuration configuration = model::Configuration::read();
    const auto source = configuration.dataSource(name);
    if (!source)
        return;
    JXW_SetDlgItemText(dialog, kValuesWhere, whereabouts(*source).c_str());
    if (source->section == nullptr)
        return;
    for (const model::IniEntry& entry : source->section->entries)
        addRow(dialog, kValuesList,
               model::printable(std::string(entry.key) + " = " + rules::masked(entry.key, entry.value)));
    JXW_SendDlgItemMessage(dialog, kValuesList, LB_SETCURSEL, 0, 0);
}

unsigned int valuesProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        fillValues(dialog, formRecord<const std::string>(dialog));
    } else {
        return closedByCancel(dialog, message, wparam);
    }
    return 1;
}

}  // namespace

void showValues(HWND owner, const std::string& dataSource) {
    std::string name = dataSource;
    showForm(kValuesForm, owner, valuesProcedure, &name);
}

}  // namespace jx::assist
