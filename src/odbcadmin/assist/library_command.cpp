// The commands that are looked at, dialog by dialog.
#include "odbcadmin/assist/library_command.h"

#include <control_ids.h>
#include <jxscreen.h>

#include <string>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/driver_lists.h"
#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/general_setup.h"
#include "odbcadmin/assist/library_dialog.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/new_source_form.h"
#include "odbcadmin/assist/removal_form.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/assist/source_command.h"
#include "odbcadmin/assist/system_driver.h"
#include "odbcadmin/model/file_change.h"
#include "rules/sections.h"

namespace jx::assist {

namespace {

bool isMainCommand(const LibraryCommand& command) {
    const auto source = chosenSource(command.dialog);
    const bool isDoubleClick = command.control == JxDataSourcesList && command.notification == LBN_DBLCLK;
    const bool isRemoval = command.control == JxDeleteButton;
    if (!source || (command.control != JxSetupButton && !isRemoval && !isDoubleClick))
        return false;
    if (source->scope == model::Scope::system) {
        const auto act = isRemoval ? removeSource : setUpSource;
        act(command.dialog, *source);
        return true;
    }
    if (!isStillThere(command.dialog, *source))
        return true;
    if (isRemoval && (isTooLong(*source) || isWithoutSetup(*source))) {
        removeSource(command.dialog, *source);
        return true;
    }
    if (!isRemoval && (isTooLong(*source) || isSetUpHere(*source))) {
        setUpSource(command.dialog, *source);
        return true;
    }
    return !isRemoval && !hasSetupLibrary(command.dialog, source->driver);
}

// The dialog is left as by Cancel: the library has added nothing.
void addOfSystem(HWND dialog, const std::string& driver) {
    JxwDialogInfo info{};
    if (!makeSource(dialog, driver) || JXW_GetDialogInfo(dialog, &info) == 0)
        return;
    refillList(info.owner);
    JXW_PostMessage(dialog, WM_COMMAND, IDCANCEL, 0);
}

bool isAddCommand(const LibraryCommand& command) {
    const bool isDoubleClick = command.control == JxAddDataSourceList && command.notification == LBN_DBLCLK;
    const std::string driver = selectedRow(command.dialog, JxAddDataSourceList);
    if (driver.empty() || (command.control != IDOK && !isDoubleClick))
        return false;
    if (const auto ofSystem = withoutSystemMark(driver)) {
        addOfSystem(command.dialog, *ofSystem);
        return true;
    }
    return !hasSetupLibrary(command.dialog, driver);
}

bool isDriversCommand(const LibraryCommand& command) {
    const std::string driver = selectedRow(command.dialog, JxDriversList);
    if (command.control != JxDeleteDriverButton || driver.empty())
        return false;
    if (const auto ofSystem = withoutSystemMark(driver)) {
        unregisterSystemDriver(command.dialog, *ofSystem);
        refreshDriverLists();
        return true;
    }
    const Removal removal = askForRemoval(command.dialog, driver);
    if (removal == Removal::unregistered)
        refreshDriverLists();
    return removal != Removal::withFiles;
}

// Deliberate: the settings are written here first, all in one change, and then once more by the library, which finds
// nothing to change. It closes its dialog even when it could not write.
bool isOptionsCommand(const LibraryCommand& command) {
    if (command.control != IDOK)
        return false;
    const auto box = [&](unsigned short id) { return JXW_IsDlgButtonChecked(command.dialog, id) != 0 ? "1" : "0"; };
    const model::ChangeWay way;
    model::FileChange change(nameOf(model::FileKind::dataSources), way);
    change.set(rules::kSettings, "Trace", box(JxTraceBox));
    change.set(rules::kSettings, "TraceAutoStop", box(JxTraceAutoStopBox));
    change.set(rules::kSettings, "TraceFile", fieldText(command.dialog, JxTraceFileEdit));
    const model::ChangeResult result = change.finish();
    if (result.isDone())
        return false;
    say(command.dialog, "The settings were not stored. " + sentenceOf(result.reason), "Options", MB_OK | MB_ICONSTOP);
    return true;
}

}  // namespace

bool isAnswered(const LibraryCommand& command) {
    switch (command.templateId) {
        case JxDataSourcesDialog:
            return isMainCommand(command);
        case JxAddDataSourceDialog:
            return isAddCommand(command);
        case JxDriversDialog:
            return isDriversCommand(command);
        case JxOptionsDialog:
            return isOptionsCommand(command);
        default:
            return false;
    }
}

}  // namespace jx::assist
