// The setup dialog: a data source's name, its driver, and its keys with their values.
#include "setup/setup_dialog.h"

#include <jxini.h>
#include <jxwindow.h>
#include "rules/names.h"
#include "setup/data_source_file.h"
#include "setup/key_fields.h"
#include "setup/setup_template.h"

namespace jx::setup {

namespace {

constexpr char kRecord[] = "Form";

unsigned int ask(HWND dialog, const std::string& text, unsigned int style) {
    return guiMessageBox(dialog, reinterpret_cast<const unsigned char*>(text.c_str()),
                         reinterpret_cast<const unsigned char*>("Data Source Setup"), style);
}

// Shows why something cannot be done. Returns false, so that callers can return the result.
bool refuse(HWND dialog, const std::string& reason) {
    ask(dialog, reason, MB_OK | MB_ICONEXCLAMATION);
    return false;
}

int sendToList(HWND dialog, int message, int row, const char* text = nullptr) {
    return JXW_SendDlgItemMessage(dialog, kKeyList, message, row, reinterpret_cast<uintptr_t>(text));
}

// The position of the selected attribute; the number of attributes when none is selected.
std::size_t selection(HWND dialog, const SetupForm& form) {
    const int row = sendToList(dialog, LB_GETCURSEL, 0);
    return row == LB_ERR ? form.now.attributes.size() : static_cast<std::size_t>(row);
}

// Selects a row (-1: none) and shows its key and value.
void selectRow(HWND dialog, const SetupForm& form, int row) {
    sendToList(dialog, LB_SETCURSEL, row);
    for (const unsigned short button : {kChangeButton, kRemoveButton})
        JXW_EnableWindow(JXW_GetDlgItem(dialog, button), row >= 0 ? 1 : 0);
    showPair(dialog, row >= 0 ? form.now.attributes[static_cast<std::size_t>(row)] : Attribute{});
}

void fillList(HWND dialog, const SetupForm& form) {
    sendToList(dialog, LB_RESETCONTENT, 0);
    for (const Attribute& attribute : form.now.attributes)
        sendToList(dialog, LB_ADDSTRING, 0, rowText(attribute).c_str());
}

unsigned int open(HWND dialog, uintptr_t lparam) {
    JXW_SetProp(dialog, kRecord, lparam);
    auto& form = *reinterpret_cast<SetupForm*>(lparam);  // NOLINT(performance-no-int-to-ptr): messages carry numbers
    form.opened = true;
    JXW_SetDlgItemText(dialog, kNameEdit, form.now.name.c_str());
    JXW_SetDlgItemText(dialog, kDriverText, form.driver);
    JXW_EnableWindow(JXW_GetDlgItem(dialog, kNameEdit), form.adds ? 1 : 0);
    fillList(dialog, form);
    winCenterBox(dialog);
    return 1;
}

// Reads the pair that was typed. False, after a message, when it cannot be stored.
bool takePair(HWND dialog, Attribute& pair) {
    pair = typedPair(dialog);
    std::string objection = objectionToKeyword(pair.keyword);
    if (objection.empty())
        objection = objectionToValue(pair.value);
    return objection.empty() || refuse(dialog, objection);
}

bool refuseTwin(HWND dialog, const std::string& keyword) {
    return refuse(dialog, "The key " + keyword + " is in the list already.");
}

bool addPair(HWND dialog, SetupForm& form) {
    Attribute pair;
    if (!takePair(dialog, pair))
        return false;
    if (placeOf(form.now.attributes, pair.keyword) != form.now.attributes.size())
        return refuseTwin(dialog, pair.keyword);
    form.now.attributes.push_back(pair);
    fillList(dialog, form);
    selectRow(dialog, form, -1);
    JXW_SetFocus(JXW_GetDlgItem(dialog, kKeyEdit));  // for the next pair
    return true;
}

bool changePair(HWND dialog, SetupForm& form) {
    const std::size_t at = selection(dialog, form);
    Attribute pair;
    if (at == form.now.attributes.size() || !takePair(dialog, pair))
        return false;
    const std::size_t twin = placeOf(form.now.attributes, pair.keyword);
    if (twin != at && twin != form.now.attributes.size())
        return refuseTwin(dialog, pair.keyword);
    form.now.attributes[at] = pair;
    fillList(dialog, form);
    selectRow(dialog, form, static_cast<int>(at));
    return true;
}

void removePair(HWND dialog, SetupForm& form) {
    const std::size_t at = selection(dialog, form);
    if (at == form.now.attributes.size())
        return;
    form.now.attributes.erase(form.now.attributes.begin() + static_cast<std::ptrdiff_t>(at));
    fillList(dialog, form);
    selectRow(dialog, form, -1);
}

// Whether the fields are empty, or the same as the selected row, whose key may be one that cannot be typed here.
bool hasNothingToTake(const Attribute& typed, const SetupForm& form, std::size_t selected) {
    if (typed.keyword.empty() && typed.value.empty())
        return true;
    if (selected == form.now.attributes.size())
        return false;
    const Attribute& shown = form.now.attributes[selected];
    return typed.keyword == rules::trimmed(shown.keyword) && typed.value == shown.value;
}

// On OK, a pair that was typed but not added or changed in the list is stored, too: the key of that name gets the
// value, or is added. While a row is selected, the pair cannot change another row.
bool takeRest(HWND dialog, SetupForm& form) {
    const std::size_t selected = selection(dialog, form);
    Attribute pair = typedPair(dialog);
    if (hasNothingToTake(pair, form, selected))
        return true;
    if (!takePair(dialog, pair))
        return false;
    const std::size_t at = placeOf(form.now.attributes, pair.keyword);
    if (at == form.now.attributes.size())
        return addPair(dialog, form);
    if (selected != form.now.attributes.size() && at != selected)
        return refuseTwin(dialog, pair.keyword);
    form.now.attributes[at].value = pair.value;
    fillList(dialog, form);
    selectRow(dialog, form, static_cast<int>(at));
    return true;
}

bool takeName(HWND dialog, SetupForm& form) {
    if (!form.adds)
        return true;
    form.now.name = rules::trimmed(fieldText(dialog, kNameEdit));
    if (const std::string objection = objectionToName(form.now.name, form.files); !objection.empty())
        return refuse(dialog, objection);
    return !dataSourceExists(form.files, form.now.name) ||
           ask(dialog, "There is a data source " + form.now.name + " already. Replace it with all its keys?",
               MB_YESNO | MB_ICONQUESTION) == IDYES;
}

bool writeToFiles(const SetupForm& form) {
    return form.adds
               ? addDataSource(form.files, form.driver, form.now)
               : changeKeys(form.files, form.driver, form.now.name, changesBetween(form.before, form.now.attributes));
}

// The store's message about its failure; empty when the failure was not the store's.
std::string reasonOfTheStore() {
    char reason[1024];
    jxIniFailureText(reason, sizeof reason);
    return reason[0] != '\0' ? std::string("\n") + reason : std::string();
}

unsigned int save(HWND dialog, SetupForm& form) {
    if (!takeRest(dialog, form) || !takeName(dialog, form))
        return 0;
    if (!writeToFiles(form)) {
        refuse(dialog, "The data source was not stored." + reasonOfTheStore());
        return 0;
    }
    form.stored = true;
    JXW_EndDialog(dialog, 1);
    return 0;
}

void followSelection(HWND dialog, const SetupForm& form, int notification) {
    if (notification == LBN_SELCHANGE)
        selectRow(dialog, form, sendToList(dialog, LB_GETCURSEL, 0));
}

unsigned int command(HWND dialog, SetupForm& form, int id, int notification) {
    switch (id) {
        case kKeyList:
            followSelection(dialog, form, notification);
            return 0;
        case kKeyEdit:
            followKey(dialog);
            return 0;
        case kAddButton:
            addPair(dialog, form);
            return 0;
        case kChangeButton:
            changePair(dialog, form);
            return 0;
        case kRemoveButton:
            removePair(dialog, form);
            return 0;
        case IDOK:
            return save(dialog, form);
        case IDCANCEL:
            JXW_EndDialog(dialog, 1);
            return 0;
        default:
            return 0;
    }
}

unsigned int setupProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG)
        return open(dialog, lparam);
    auto* form = reinterpret_cast<SetupForm*>(JXW_GetProp(dialog, kRecord));  // NOLINT(performance-no-int-to-ptr)
    if (message != WM_COMMAND || form == nullptr)
        return 0;
    return command(dialog, *form, wparam, static_cast<int>((lparam >> 16) & 0xFFFF));
}

}  // namespace

void runSetupDialog(HWND owner, SetupForm& form) {
    JXW_RegisterModule(kModule, nullptr, kSetupTemplates);
    JXW_DialogBox(kModule, kSetupDialog, owner, setupProcedure, &form);
}

}  // namespace jx::setup
