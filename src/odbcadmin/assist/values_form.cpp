// Filling the list of values.
#include "odbcadmin/assist/values_form.h"

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/model/text.h"
#include "rules/secrets.h"

namespace jx::assist {

namespace {

std::string whereabouts(const model::DataSource& source) {
    return (source.driver.empty() ? "No driver" : "Driver " + source.driver) + ". In " +
           (source.header ? source.header.where() : source.file->path + ", without a section") + ".";
}

// Which of two sections of the same name answers.
std::string shadowOf(const ChosenSource& chosen) {
    const model::Configuration both = model::Configuration::read(model::Scopes());
    const auto answering = both.dataSource(chosen.name);
    if (!answering || !answering->hides)
        return {};
    return chosen.scope == model::Scope::user ? " It shadows the system's, " + answering->hides.where() + "."
                                              : " Shadowed by your own, " + answering->header.where() + ".";
}

void fillValues(HWND dialog, const ChosenSource& chosen) {
    const bool isSystems = chosen.scope == model::Scope::system;
    JXW_SetWindowText(dialog, ("Values of " + chosen.name + (isSystems ? " (System)" : "")).c_str());
    const model::Configuration configuration = configurationOf(chosen.scope);
    const auto source = configuration.dataSource(chosen.name);
    if (!source)
        return;
    JXW_SetDlgItemText(dialog, kValuesWhere, (whereabouts(*source) + shadowOf(chosen)).c_str());
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
        fillValues(dialog, formRecord<const ChosenSource>(dialog));
    } else {
        return closedByCancel(dialog, message, wparam);
    }
    return 1;
}

}  // namespace

void showValues(HWND owner, const ChosenSource& source) {
    ChosenSource shown = source;
    showForm(kValuesForm, owner, valuesProcedure, &shown);
}

}  // namespace jx::assist
