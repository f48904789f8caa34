// The sentences of the help line and of the help page.
#include "odbcadmin/assist/help.h"

#include <control_ids.h>
#include <jxtemplate.h>
#include <odbcinst.h>

#include <cstdlib>
#include <string_view>
#include <vector>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/cut_list.h"
#include "odbcadmin/assist/driver_lists.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/list_keys.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/model/configuration.h"

namespace jx::assist {

namespace {

struct Sentence {
    std::string_view module;
    unsigned short dialog;
    unsigned short control;
    const char* does;
    const char* whyGrey;
};

constexpr std::string_view kLibrary = "odbcinst";
constexpr std::string_view kForm = kFormModule;

// The dialog of libjxsetup.so.
constexpr std::string_view kSetup = "jxsetup";
constexpr unsigned short kSetupDialog = 200;

constexpr const char* kChooseSource = "Choose a data source in the list first. None there? Add... makes one.";
constexpr const char* kChooseKey = "Choose a key in the list first.";
constexpr const char* kSecretKey = "This key is a secret: type its value in the field below.";
constexpr const char* kNoSecretKey = "It is for passwords: type PWD or Password as the key.";
constexpr const char* kNoDriver = "No driver is registered yet. Press F2 to register one.";

constexpr Sentence kSentences[] = {
    {kLibrary, JxDataSourcesDialog, JxDataSourcesList, "Your data sources. Enter or a double click sets one up.", ""},
    {kLibrary, JxDataSourcesDialog, JxSetupButton, "Changes the settings of the chosen data source.", kChooseSource},
    {kLibrary, JxDataSourcesDialog, JxDeleteButton, "Removes the chosen data source; asks first.", kChooseSource},
    {kLibrary, JxDataSourcesDialog, JxAddButton, "Makes a new data source for one of your drivers.", ""},
    {kLibrary, JxDataSourcesDialog, JxDriversButton, "Shows, installs and removes drivers. F2 registers one by hand.",
     ""},
    {kLibrary, JxDataSourcesDialog, JxOptionsButton, "Turns the tracing of calls on and off.", ""},
    {kLibrary, JxDataSourcesDialog, JxCloseButton, "Ends the program.", ""},
    {kLibrary, JxAddDataSourceDialog, JxAddDataSourceList, "Choose the driver that reaches your database.", ""},
    {kLibrary, JxAddDataSourceDialog, IDOK, "Lets the chosen driver ask for the settings.", kNoDriver},
    {kLibrary, JxAddDataSourceDialog, IDCANCEL, "Makes no data source.", ""},
    {kLibrary, JxDriversDialog, JxDriversList, "The drivers registered for you.", ""},
    {kLibrary, JxDriversDialog, JxAddDriverButton,
     "Installs from a vendor's script (odbc.inf). F2 registers a driver without one.", ""},
    {kLibrary, JxDriversDialog, JxDeleteDriverButton,
     "Unregisters the chosen driver, or deletes its files and its data sources too; asks first.",
     "Choose a driver in the list first. None there? F2 registers one."},
    {kLibrary, JxDriversDialog, JxCloseButton, "Back to the data sources.", ""},
    {kLibrary, JxOptionsDialog, JxTraceBox, "A driver manager that reads this setting writes its calls into the file.",
     ""},
    {kLibrary, JxOptionsDialog, JxTraceAutoStopBox,
     "Asks the driver manager to end the tracing with the program it traces.", ""},
    {kLibrary, JxOptionsDialog, JxTraceFileEdit, "The file that the calls are written to.", ""},
    {kLibrary, JxOptionsDialog, JxTraceFileButton, "Not available: type the file's name above.",
     "Type the file's name above."},
    {kLibrary, JxOptionsDialog, IDOK, "Stores the three settings.", ""},
    {kLibrary, JxOptionsDialog, IDCANCEL, "Leaves the settings as they were.", ""},
    {kLibrary, JxAddDriverDialog, JxDirectoryEdit,
     "The directory with the vendor's odbc.inf. No such file? Escape, then F2.", ""},
    {kLibrary, JxAddDriverDialog, IDOK, "Reads the script in that directory.", "Type a directory first."},
    {kLibrary, JxAddDriverDialog, IDCANCEL, "Installs nothing.", ""},
    {kLibrary, JxInstallDriversDialog, JxInstallDriversList, "The drivers that the script can install.", ""},
    {kLibrary, JxInstallDriversDialog, IDOK, "Installs the chosen driver.", "The script has no driver."},
    {kLibrary, JxInstallDriversDialog, IDCANCEL, "Installs nothing.", ""},
    {kLibrary, JxInstallDriversDialog, JxAdvancedButton,
     "Options of the installation, and what the script says of versions.", ""},
    {kLibrary, JxAdvancedOptionsDialog, JxOptionFlagBox, "Kept for a later release; nothing reads it yet.", ""},
    {kLibrary, JxAdvancedOptionsDialog, JxVersionsButton, "Shows what the script says about its drivers' files.", ""},
    {kLibrary, JxVersionsDialog, JxVersionsList, "Choose a driver to see its file below.", ""},
    {kLibrary, JxVersionsDialog, IDOK, "Does nothing here; Close leaves the dialog.", "Close leaves the dialog."},
    {kLibrary, JxVersionsDialog, IDCANCEL, "Back to the options.", ""},
    {kLibrary, JxSelectTranslatorDialog, JxTranslatorsList, "The translators registered for you.", ""},
    {kLibrary, JxSelectTranslatorDialog, IDOK, "Takes the chosen translator.", "Choose a translator first."},
    {kForm, kFormDialog, kFormFound, "Drivers in the usual places. Choosing one fills in the fields below.",
     "No driver lies in the usual places under a usual name. odbcadmin driver scan looks at all libraries."},
    {kForm, kFormDialog, kFormBrowse, "Looks for the driver's file in directories.", ""},
    {kForm, kFormDialog, kFormName, "Any name you like: data sources refer to the driver by it.", ""},
    {kForm, kFormDialog, kFormLibrary, "The driver's file, with its whole path. Its package lists it (dpkg -L NAME).",
     ""},
    {kForm, kFormDialog, kFormSetup, "Asks for the settings of data sources. The proposed one works for any driver.",
     ""},
    {kForm, kFormDialog, IDOK, "Tries the libraries in a process of their own, then enters the driver.", ""},
    {kForm, kFormDialog, IDCANCEL, "Registers nothing.", ""},
    {kForm, kRemovalForm, kRemovalList, "What Delete Files... removes for good.", ""},
    {kForm, kRemovalForm, kRemovalUnregister, "Removes the driver's entries; its files and data sources stay.", ""},
    {kForm, kRemovalForm, kRemovalDelete, "Removes all that the list names; asks once more.", ""},
    {kForm, kRemovalForm, IDCANCEL, "Removes nothing.", ""},
    {kForm, kSourcesForm, kSourcesList, "All your data sources. Enter or a double click sets one up.", ""},
    {kForm, kSourcesForm, kSourcesSetup, "Changes the settings of the chosen data source.", kChooseSource},
    {kForm, kSourcesForm, kSourcesView, "Shows its keys and values, secrets as stars.", kChooseSource},
    {kForm, kSourcesForm, kSourcesTest, "Connects with it in a process of its own.", kChooseSource},
    {kForm, kSourcesForm, kSourcesRemove, "Removes the chosen data source; asks first.", kChooseSource},
    {kForm, kSourcesForm, IDCANCEL, "Back to the data sources.", ""},
    {kForm, kValuesForm, kValuesList, "The keys in the order of the file. Secrets are shown as stars.", ""},
    {kForm, kValuesForm, IDCANCEL, "Back to the list.", ""},
    {kForm, kFilterForm, kLineText, "The text that rows must contain; empty shows all.", ""},
    {kForm, kFilterForm, kFilterBoth, "Your own data sources, and those of all users of this machine.", ""},
    {kForm, kFilterForm, kFilterUser, "Your own data sources only.", ""},
    {kForm, kFilterForm, kFilterSystem, "Only those that all users of this machine have.", ""},
    {kForm, kFilterForm, IDOK, "Shows the rows that are wanted.", ""},
    {kForm, kFilterForm, IDCANCEL, "Changes nothing.", ""},
    {kForm, kCopyForm, kLineText, "Any name that is free there.", ""},
    {kForm, kCopyForm, kCopyToUser, "The copy goes to your own file.", ""},
    {kForm, kCopyForm, kCopyToSystem,
     "The copy goes to the system's file, which only root may change on most machines.", ""},
    {kForm, kCopyForm, IDOK, "Makes the copy.", ""},
    {kForm, kCopyForm, IDCANCEL, "Changes nothing.", ""},
    {kForm, kSectionForm, kSectionList, "What the driver gets. Choose a row to change or remove it.", ""},
    {kForm, kSectionForm, kSectionSet, "Gives the key below the value below; a new key is added.", ""},
    {kForm, kSectionForm, kSectionRemove, "Takes the chosen row out of the list.", kChooseKey},
    {kForm, kSectionForm, kSectionKey, "A key your driver knows, such as Database or Server; its manual lists them.",
     ""},
    {kForm, kSectionForm, kSectionValue, "The key's value, such as a path or a host. OK stores it, too.", kSecretKey},
    {kForm, kSectionForm, kSectionHidden, "The secret is shown as stars. OK stores it, too.", kNoSecretKey},
    {kForm, kSectionForm, IDOK, "Stores the keys and their values.", ""},
    {kForm, kSectionForm, IDCANCEL, "Stores nothing.", ""},
    {kForm, kNewSourceForm, kNewName, "Any name you like: programs open the data source by it.", ""},
    {kForm, kNewSourceForm, kNewForUser, "The data source goes to your own file.", ""},
    {kForm, kNewSourceForm, kNewForSystem,
     "The data source goes to the system's file, which only root may change on most machines.", ""},
    {kForm, kNewSourceForm, kSectionList, "Choose a key and type its value. Keys without a value are not stored.", ""},
    {kForm, kNewSourceForm, kSectionSet, "Gives the key below the value below; a new key is added.", ""},
    {kForm, kNewSourceForm, kSectionRemove, "Takes the chosen row out of the list.", kChooseKey},
    {kForm, kNewSourceForm, kSectionKey, "A key your driver knows, such as Database or Server; its manual lists them.",
     ""},
    {kForm, kNewSourceForm, kSectionValue, "The key's value, such as a path or a host. OK stores it, too.", kSecretKey},
    {kForm, kNewSourceForm, kSectionHidden, "The secret is shown as stars. OK stores it, too.", kNoSecretKey},
    {kForm, kNewSourceForm, IDOK, "Makes the data source.", ""},
    {kForm, kNewSourceForm, IDCANCEL, "Makes no data source.", ""},
    {kForm, kFilesForm, kFilesList, "Enter opens a directory, and takes a file. ../ is the directory above.", ""},
    {kForm, kFilesForm, IDOK, "Opens the directory, or takes the file.", ""},
    {kForm, kFilesForm, IDCANCEL, "Chooses no file.", ""},
    {kForm, kLineForm, kLineText, "Type it; Enter takes it.", ""},
    {kForm, kLineForm, IDOK, "Takes what is typed.", ""},
    {kForm, kLineForm, IDCANCEL, "Changes nothing.", ""},
    {kSetup, kSetupDialog, 201, "Any name you like: programs open the data source by it.",
     "The name stays as it is; a new data source gets another one."},
    {kSetup, kSetupDialog, 203, "What the driver gets. Choose a row to change or remove it.", ""},
    {kSetup, kSetupDialog, 204, "Puts the key and value below into the list.", ""},
    {kSetup, kSetupDialog, 205, "Gives the chosen row the key and value below.", kChooseKey},
    {kSetup, kSetupDialog, 206, "Takes the chosen row out of the list.", kChooseKey},
    {kSetup, kSetupDialog, 207, "A key your driver knows, such as Database or Server; its manual lists them.", ""},
    {kSetup, kSetupDialog, 208, "The key's value, such as a path or a host. OK stores it, too.", kSecretKey},
    {kSetup, kSetupDialog, 209, "The secret is shown as stars. OK stores it, too.", kNoSecretKey},
    {kSetup, kSetupDialog, IDOK, "Stores the name, the keys and their values.", ""},
    {kSetup, kSetupDialog, IDCANCEL, "Stores nothing.", ""},
};

const Sentence* find(const JxwDialogInfo& dialog, unsigned short control) {
    for (const Sentence& sentence : kSentences) {
        if (control != 0 && sentence.dialog == dialog.templateId && sentence.control == control &&
            sentence.module == dialog.module)
            return &sentence;
    }
    return nullptr;
}

// For the dialogs of drivers, which nobody knows here.
std::string byKind(const JxwControlInfo& control) {
    switch (control.kind) {
        case JXW_LISTBOX:
            return "Choose a row with the arrows or its first letters.";
        case JXW_EDIT:
            return "Type the value.";
        case JXW_CHECKBOX:
            return "Space turns it on and off.";
        case JXW_RADIO:
            return "The arrows choose one of the group.";
        case JXW_BUTTON:
            return control.id == IDCANCEL ? "Leaves without a change." : "Enter or space presses it.";
        default:
            return {};
    }
}

// Why a list of the user's files is empty though it need not be; empty when there is nothing wrong.
std::string fileTrouble(model::FileKind kind) {
    const model::Reason trouble = model::Configuration::read().trouble(kind);
    return trouble ? sentenceOf(trouble) : std::string();
}

std::string emptyFilterHelp(const Filter& filter) {
    const std::string whose = filter.scope == model::Seen::both     ? ""
                              : filter.scope == model::Seen::system ? " of the system"
                                                                    : " of yours";
    return "No data source" + whose + (filter.text.empty() ? " is there" : " contains \"" + filter.text + "\"") +
           ". F8 changes the filter.";
}

std::string emptySourcesHelp(HWND dialog) {
    if (std::string trouble = fileTrouble(model::FileKind::dataSources); !trouble.empty())
        return trouble;
    if (const model::Reason trouble = systemTrouble(model::FileKind::dataSources))
        return "No data source of yours, and without the system's: " + sentenceOf(trouble);
    if (const Filter filter = filterOf(dialog); !filter.hasAll())
        return emptyFilterHelp(filter);
    return model::Configuration::read().drivers().empty()
               ? "No data source yet: Add... makes one, after a driver is registered (F2)."
               : "No data source yet: Add... makes one.";
}

std::string emptyDriversHelp(const char* none) {
    std::string trouble = fileTrouble(model::FileKind::drivers);
    return trouble.empty() ? none : trouble;
}

std::string emptyListHelp(const JxwDialogInfo& dialog, const JxwControlInfo& control) {
    if (control.kind != JXW_LISTBOX || control.rowCount > 0)
        return {};
    if (sourceList(dialog.dialog) != 0)
        return emptySourcesHelp(dialog.dialog);
    if (dialog.module == kSetup)
        return "No key yet: type one and its value below, then Add.";
    if (dialog.module == kForm && dialog.templateId == kValuesForm)
        return "It has no keys.";
    if (dialog.module != kLibrary)
        return {};
    switch (dialog.templateId) {
        case JxAddDataSourceDialog:
            return emptyDriversHelp(kNoDriver);
        case JxDriversDialog:
            return emptyDriversHelp("No driver yet: F2 registers one, Add... runs a vendor's script.");
        default:
            return "There is nothing in this list.";
    }
}

// About a row of the system's; empty for others.
std::string systemRowHelp(const JxwDialogInfo& dialog, const JxwControlInfo& control) {
    const unsigned short drivers = driverList(dialog.dialog);
    if (control.kind != JXW_LISTBOX || (drivers == 0 && sourceList(dialog.dialog) == 0) ||
        !withoutSystemMark(selectedRow(dialog.dialog, control.id)))
        return {};
    if (drivers == JxAddDataSourceList)
        return "A driver of the system's. OK asks for the name and the keys of the data source.";
    return drivers != 0 ? "The system's, for all users. Delete unregisters it; its files stay."
                        : "The system's, for all users. Enter shows its keys, to change them.";
}

std::string labelOf(const JxwControlInfo& control) {
    std::string text = shownText(control);
    if (text.ends_with(":"))
        text.pop_back();
    return text;
}

// The path of the file of that kind, with "~" for the home directory.
std::string shownPath(model::FileKind kind, model::Scope scope = model::Scope::user) {
    const std::string path = model::pathOf(nameOf(kind), scope);
    const char* home = std::getenv("HOME");
    const std::string folder = home != nullptr ? home : "";
    if (path.empty())
        return nameOf(kind);
    return !folder.empty() && path.starts_with(folder + "/") ? "~" + path.substr(folder.size()) : path;
}

// " and /etc/odbc.ini" where rows of the list stand for entries of that file; else empty.
std::string andTheSystems(HWND dialog, unsigned short list, model::FileKind kind) {
    const std::vector<std::string> rows = rowsIn(dialog, list);
    return !rows.empty() && withoutSystemMark(rows.back()) ? " and " + shownPath(kind, model::Scope::system) : "";
}

std::string sourcesHeading(HWND dialog) {
    return "Data sources in " + shownPath(model::FileKind::dataSources) +
           andTheSystems(dialog, sourceList(dialog), model::FileKind::dataSources);
}

model::Scope scopeOfChosen(HWND dialog) {
    const auto source = chosenSource(dialog);
    return source ? source->scope : model::Scope::user;
}

std::string formHeading(const JxwDialogInfo& form) {
    switch (form.templateId) {
        case kSourcesForm:
            return sourcesHeading(form.dialog);
        case kValuesForm:
        case kLineForm:
        case kCopyForm:
        case kFilterForm:
            return sourcesHeading(form.owner);
        case kNewSourceForm:
            return "Makes a data source in " + shownPath(model::FileKind::dataSources) + " or " +
                   shownPath(model::FileKind::dataSources, model::Scope::system);
        case kSectionForm:
            return "A data source in " + shownPath(model::FileKind::dataSources, scopeOfChosen(form.owner));
        case kFilesForm:
        case kFormDialog:
            return "Registers a driver in " + shownPath(model::FileKind::drivers);
        case kRemovalForm:
            return "Drivers in " + shownPath(model::FileKind::drivers);
        default:
            return "Data sources in " + shownPath(model::FileKind::dataSources);
    }
}

// The function keys of lists, in words.
std::string helpOnKeys(HWND dialog) {
    constexpr const char* kDoes[] = {"connects with the chosen data source and says what happens",
                                     "shows its keys and values",
                                     "reads the list again",
                                     "copies it under another name",
                                     "gives it another name",
                                     "chooses which rows are shown",
                                     "lists all data sources"};
    std::string text;
    for (const FunctionKey& key : listKeys(dialog))
        text += "\nF" + std::to_string(key.number) + ": " + kDoes[key.number - 3] + ".";
    return text.empty() ? "" : "\n" + text;
}

}  // namespace

std::string withoutAccessKey(const std::string& text) {
    std::string shown;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '&' && at + 1 < text.size())
            ++at;
        shown.push_back(text[at]);
    }
    return shown;
}

int controlOfAccessKey(HWND dialog, int letter) {
    const int small = letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter;
    int grey = -1;
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &control) != 0; ++index) {
        if (control.accessKey != small || control.kind == JXW_EDIT || control.kind == JXW_LISTBOX)
            continue;
        if (control.enabled != 0)
            return index;
        grey = index;
    }
    return grey;
}

std::string shownText(const JxwControlInfo& control) {
    return (control.flags & JXW_PLAIN) != 0 ? control.text : withoutAccessKey(control.text);
}

std::string headingOf(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0)
        return {};
    if (info.module == kForm)
        return formHeading(info);
    if (info.module == kSetup)
        return "A data source in " + shownPath(model::FileKind::dataSources);
    if (info.module != kLibrary)
        return info.title;
    switch (info.templateId) {
        case JxDataSourcesDialog:
            return sourcesHeading(dialog);
        case JxDriversDialog:
        case JxAddDataSourceDialog:
            return "Drivers in " + shownPath(model::FileKind::drivers) +
                   andTheSystems(dialog, driverList(dialog), model::FileKind::drivers);
        case JxSelectTranslatorDialog:
            return "Translators in " + shownPath(model::FileKind::drivers);
        case JxOptionsDialog:
            return "Settings in " + shownPath(model::FileKind::dataSources);
        default:
            return info.title;
    }
}

std::string helpOn(HWND dialog, int index) {
    JxwDialogInfo info{};
    JxwControlInfo control{};
    if (JXW_GetDialogInfo(dialog, &info) == 0 || JXW_GetControlInfo(dialog, index, &control) == 0)
        return {};
    const Sentence* sentence = find(info, control.id);
    if (control.enabled == 0) {
        const std::string name = withoutAccessKey(control.text);
        const bool isKnown = sentence != nullptr && *sentence->whyGrey != '\0';
        return (name.empty() ? "This" : name) +
               " is grey: " + (isKnown ? sentence->whyGrey : "the dialog cannot use it at the moment.");
    }
    std::string empty = emptyListHelp(info, control);
    if (!empty.empty())
        return empty;
    if (info.module == kLibrary && info.templateId == JxAddDataSourceDialog && control.kind == JXW_LISTBOX &&
        control.selection < 0)
        return "Choose the driver that reaches your database with the arrows; then Enter.";
    const std::string notice = control.kind == JXW_LISTBOX ? cutNotice(dialog) : std::string();
    const std::string ofSystem = systemRowHelp(info, control);
    const std::string known = sentence != nullptr ? sentence->does : byKind(control);
    const std::string& does = ofSystem.empty() ? known : ofSystem;
    return notice.empty() ? does : notice + " " + does;
}

std::string helpOnAll(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0)
        return {};
    std::string text = headingOf(dialog) + "\n";
    std::string label;
    for (int index = 0; index < info.controlCount; ++index) {
        JxwControlInfo control{};
        JXW_GetControlInfo(dialog, index, &control);
        const std::string help = helpOn(dialog, index);
        const bool isNamed = control.kind != JXW_LISTBOX && control.kind != JXW_EDIT;
        if (!help.empty() && control.enabled == 0 && isNamed)
            text += "\n" + help;
        else if (!help.empty() && control.kind != JXW_LABEL && control.kind != JXW_GROUPBOX)
            text += "\n" + (isNamed ? labelOf(control) : label) + ": " + help;
        label = labelOf(control);
    }
    return text + helpOnKeys(dialog);
}

}  // namespace jx::assist
