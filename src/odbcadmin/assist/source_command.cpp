// The commands, each from its question to its box.
#include "odbcadmin/assist/source_command.h"

#include <jxfiles.h>
#include <jxini.h>
#include <odbcinst.h>

#include <utility>

#include "odbcadmin/assist/connection_text.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/general_setup.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/open_secret.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/assist/section_form.h"
#include "odbcadmin/assist/system_rows.h"
#include "odbcadmin/assist/values_form.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/scope_transfer.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

namespace {

constexpr const char* kSourcesTitle = "Data Sources";
constexpr std::size_t kLongestName = 49;

// Why the installer said no, if it was not the user who did: the reason of the store, or of the loader.
std::string whyRefused() {
    if (jxIniLastFailure().step != JxIniStepNone)
        return sentenceOf(model::lastFailure());
    const std::string sentence = reinterpret_cast<const char*>(bosLastLoadError());
    return sentence.empty() ? "" : "The loader says:\n" + sentence;
}

bool configure(HWND dialog, WORD request, const ChosenSource& source, const char* failure) {
    const auto configureDataSource = trial::installerFunction<decltype(&SQLConfigDataSource)>("SQLConfigDataSource");
    if (configureDataSource == nullptr) {
        say(dialog, trial::installerTrouble(), kSourcesTitle, MB_OK | MB_ICONSTOP);
        return false;
    }
    const std::string attributes = "DSN=" + source.name + '\0';
    if (configureDataSource(dialog, request, source.driver.c_str(), attributes.c_str()) != FALSE)
        return true;
    if (const std::string why = whyRefused(); !why.empty())
        say(dialog, std::string(failure) + " " + why, kSourcesTitle, MB_OK | MB_ICONSTOP);
    return false;
}

bool isDriverTooLong(HWND dialog, const ChosenSource& source) {
    if (source.driver.size() <= kLongestName)
        return false;
    say(dialog,
        "The name of its driver, " + source.driver + ", has " + std::to_string(source.driver.size()) +
            " bytes; the installer takes at most 49. Give the driver a shorter name in " +
            model::pathOf(nameOf(model::FileKind::drivers)) + ".",
        kSourcesTitle, MB_OK | MB_ICONEXCLAMATION);
    return true;
}

void removeEntries(HWND dialog, const ChosenSource& source) {
    const model::ChangeResult result = model::removeDataSources({source.name}, changeWayOf(source.scope));
    if (!result.isDone())
        say(dialog,
            "The data source was not removed. " +
                sentenceOf(result.reason, {{{"--system", "dsn", "remove", source.name}}}),
            kSourcesTitle, MB_OK | MB_ICONSTOP);
}

std::string pathOfSources(const ChosenSource& source) {
    return model::pathOf(nameOf(model::FileKind::dataSources), source.scope);
}

// The user's of the same name is not touched, and answers if there is one.
void removeFromSystem(HWND dialog, const ChosenSource& source) {
    const bool hasOwn = configurationOf(model::Scope::user).dataSource(source.name).has_value();
    if (!asksToDestroy(dialog,
                       "Remove the data source \"" + source.name +
                           "\" of the system?\nAll users lose it: its entries in " + pathOfSources(source) +
                           " are deleted and cannot be restored." +
                           (hasOwn ? "\nYour own one of that name stays." : ""),
                       kSourcesTitle))
        return;
    removeEntries(dialog, source);
    refillList(dialog);
}

// The installer knows a data source by its section.
bool isWithoutSection(const ChosenSource& source) {
    const model::Configuration configuration = model::Configuration::read();
    const auto found = configuration.dataSource(source.name);
    return found && found->section == nullptr;
}

struct NewName {
    ChosenSource source;
    Naming naming;
};

// Where the copy or the renamed one is to be; a form without the buttons leaves it where it is.
model::Scope wishedScope(HWND dialog, const NewName& wish) {
    if (JXW_IsDlgButtonChecked(dialog, kCopyToSystem) != 0)
        return model::Scope::system;
    return JXW_IsDlgButtonChecked(dialog, kCopyToUser) != 0 ? model::Scope::user : wish.source.scope;
}

model::ChangeResult giveName(const NewName& wish, const std::string& name, const model::ChangeWay& way) {
    const model::Old old = wish.naming == Naming::copy ? model::Old::keep : model::Old::remove;
    return way.scope == wish.source.scope
               ? model::copyDataSource(configurationOf(way.scope), wish.source.name, name, old, way)
               : model::transferDataSource({wish.source.name, name, way.scope, old}, way);
}

model::RepeatedCommand commandFor(const NewName& wish, const std::string& name) {
    if (wish.source.scope == model::Scope::user)
        return {{"dsn", "copy", wish.source.name, name, "--to", "system"}, /*isInRoot=*/false, /*needsHome=*/true};
    return {{"--system", "dsn", wish.naming == Naming::copy ? "copy" : "rename", wish.source.name, name}};
}

// True when it is done.
bool takeName(HWND dialog, const NewName& wish) {
    const char* title = wish.naming == Naming::copy ? "Copy" : "Rename";
    const std::string name = fieldText(dialog, kLineText);
    const auto result = changeAsking(dialog, title, wishedScope(dialog, wish),
                                     [&](const model::ChangeWay& way) { return giveName(wish, name, way); });
    if (result && !result->isDone())
        say(dialog, sentenceOf(result->reason, {commandFor(wish, name)}), title, MB_OK | MB_ICONEXCLAMATION);
    return result && result->isDone();
}

void openName(HWND dialog, const NewName& wish) {
    const bool isCopy = wish.naming == Naming::copy;
    JXW_SetWindowText(dialog, isCopy ? "Copy a Data Source" : "Rename a Data Source");
    JXW_SetDlgItemText(dialog, kLineAbout, isCopy ? "&Name of the copy:" : "New &name:");
    JXW_SetDlgItemText(dialog, kLineText, wish.source.name.c_str());
    JXW_CheckRadioButton(dialog, kCopyToUser, kCopyToSystem,
                         wish.source.scope == model::Scope::user ? kCopyToUser : kCopyToSystem);
}

// Where the system has no data sources, nothing of it is asked.
unsigned short nameForm(const NewName& wish) {
    const bool asksForScope = wish.source.scope == model::Scope::system || !systemSourceRows().empty();
    return wish.naming == Naming::copy && asksForScope ? kCopyForm : kLineForm;
}

unsigned int nameProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        openName(dialog, formRecord<const NewName>(dialog));
    } else if (message == WM_COMMAND && wparam == IDOK) {
        auto& wish = formRecord<NewName>(dialog);
        if (!takeName(dialog, wish))
            return 1;
        wish.source = {fieldText(dialog, kLineText), wish.source.driver, wishedScope(dialog, wish)};
        JXW_EndDialog(dialog, 1);
    } else {
        return closedByCancel(dialog, message, wparam);
    }
    return 1;
}

}  // namespace

bool isStillThere(HWND dialog, const ChosenSource& source) {
    const model::Configuration configuration = configurationOf(source.scope);
    std::string why;
    if (const model::Reason& trouble = configuration.trouble(model::FileKind::dataSources))
        why = sentenceOf(trouble);
    else if (!configuration.dataSource(source.name))
        why = "The data source " + source.name + " is not in " + pathOfSources(source) +
              " any more: another program has removed or renamed it. The list is read again.";
    if (why.empty())
        return true;
    say(dialog, why, kSourcesTitle, MB_OK | MB_ICONEXCLAMATION);
    refillList(dialog);
    return false;
}

bool isTooLong(const ChosenSource& source) {
    return source.name.size() > kLongestName || source.driver.size() > kLongestName;
}

bool isWithoutSetup(const ChosenSource& source) {
    const auto driver = model::Configuration::read().driver(source.driver);
    return !driver || !driver->setup;
}

bool isSetUpHere(const ChosenSource& source) {
    return source.scope == model::Scope::system || (!model::Configuration::read().driver(source.driver) &&
                                                    configurationOf(model::Scope::system).driver(source.driver));
}

void setUpSource(HWND dialog, const ChosenSource& source) {
    if (!isStillThere(dialog, source))
        return;
    if (isSetUpHere(source)) {
        editSource(dialog, source);
        refillList(dialog);
        return;
    }
    if (isDriverTooLong(dialog, source) || !hasSetupLibrary(dialog, source.driver))
        return;
    if (isWithoutSection(source)) {
        say(dialog,
            "The data source " + source.name + " is in the list, but has no section in " +
                model::pathOf(nameOf(model::FileKind::dataSources)) +
                ": there is nothing to set up. Delete it and add it anew.",
            kSourcesTitle, MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    configure(dialog, ODBC_CONFIG_DSN, source, "The data source was not set up.");
    refillList(dialog);
}

void removeSource(HWND dialog, const ChosenSource& source) {
    if (!isStillThere(dialog, source))
        return;
    if (source.scope == model::Scope::system) {
        removeFromSystem(dialog, source);
        return;
    }
    const bool isAlone = isTooLong(source) || isWithoutSetup(source) || isWithoutSection(source);
    const std::string path = model::pathOf(nameOf(model::FileKind::dataSources));
    if (!asksToDestroy(dialog,
                       "Remove the data source \"" + source.name +
                           "\"?\nIts settings are deleted and cannot be restored." +
                           (isAlone ? "\nNo setup library takes part: its entries in " + path + " are removed." : ""),
                       kSourcesTitle))
        return;
    if (isAlone)
        removeEntries(dialog, source);
    else
        configure(dialog, ODBC_REMOVE_DSN, source, "The data source was not removed.");
    refillList(dialog);
}

void viewSource(HWND dialog, const ChosenSource& source) {
    if (isStillThere(dialog, source))
        showValues(dialog, source);
}

void testSource(HWND dialog, const ChosenSource& source) {
    if (!isStillThere(dialog, source))
        return;
    const unsigned int before = JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor));
    const ConnectionText result = connectionText(source);
    JXW_SetCursor(before);
    say(dialog, result.text, "Test", result.isConnected ? MB_OK : MB_OK | MB_ICONEXCLAMATION);
}

void nameSource(HWND dialog, const ChosenSource& source, Naming naming) {
    if (!isStillThere(dialog, source))
        return;
    NewName wish{source, naming};
    if (showForm(nameForm(wish), dialog, nameProcedure, &wish) != 1)
        return;
    refillList(dialog);
    chooseSource(dialog, wish.source.name, wish.source.scope);
}

}  // namespace jx::assist
