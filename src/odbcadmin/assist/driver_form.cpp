// Filling the dialog, trying the libraries, entering the driver.
#include "odbcadmin/assist/driver_form.h"

#include <control_ids.h>
#include <jxscreen.h>

#include <optional>
#include <vector>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/file_form.h"
#include "odbcadmin/assist/path_completion.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/doctor/driver_scan.h"
#include "odbcadmin/model/registration.h"
#include "odbcadmin/trial/installer_library.h"
#include "odbcadmin/trial/library_load.h"

namespace jx::assist {

namespace {

constexpr const char* kTitle = "Register a Driver";

using Found = std::vector<doctor::FoundDriver>;

thread_local std::optional<std::vector<std::string>> directoriesOfTest;

std::string endText(const trial::LoadReport& report) {
    using End = trial::LoadReport::End;
    switch (report.end) {
        case End::refused:
            return "cannot be loaded. The loader says:\n" + report.sentence;
        case End::crashed:
            return "crashes when it is loaded: " + trial::signalText(report.code) + ".";
        case End::exited:
            return "ends the program that loads it, with code " + std::to_string(report.code) + ".";
        case End::timedOut:
            return "was not loaded within 10 seconds.";
        case End::withheld:
            return "was not tried, since this is root: " + report.why + ".";
        case End::notStarted:
            return "could not be tried: " + report.why + ".";
        case End::loaded:
            break;
    }
    return report.unloaded ? "" : "cannot be unloaded: " + report.unloadEnd + ".";
}

// What speaks against a library, as a sentence; empty when nothing does. It must have at least one of the functions.
std::string troubleWith(const char* what, const std::string& path, const std::vector<std::string>& functions) {
    if (path.empty())
        return {};
    const trial::LoadReport report = trial::tryLoading({path, functions});
    std::string trouble = endText(report);
    if (trouble.empty() && report.offered.empty())
        trouble = "can be loaded, but has no function " + functions.front() + ": is it the right file?";
    return trouble.empty() ? "" : std::string("The ") + what + " " + trouble + "\n\n";
}

std::string tryLibraries(const model::Registration& wish) {
    const unsigned int before = JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor));
    std::string trouble = troubleWith("driver's library", wish.library,
                                      {"SQLConnect", "SQLConnectW", "SQLDriverConnect", "SQLDriverConnectW"}) +
                          troubleWith("setup library", *wish.setup, {"ConfigDSN", "CONFIGDSN"});
    JXW_SetCursor(before);
    return trouble;
}

// What to do next, if there is anything to be done in these dialogs.
std::string nextStep(const model::Registration& wish) {
    if (wish.setup->empty())
        return "\nWithout a setup library its data sources are made by: odbcadmin dsn add";
    for (HWND dialog = JXW_NextDialog(0); dialog != 0; dialog = JXW_NextDialog(dialog))
        if (sourceList(dialog) == JxDataSourcesList)
            return "\nNext: Add... in the Data Sources dialog makes a data source for it.";
    return {};
}

// Whether the user wants it entered after all that is said about it.
bool isWanted(HWND dialog, const model::Configuration& configuration, const model::Registration& wish) {
    if (configuration.driver(wish.name) &&
        say(dialog, "A driver called " + wish.name + " is registered already. Replace its libraries?", kTitle,
            MB_YESNO | MB_ICONQUESTION) != IDYES)
        return false;
    const std::string trouble = tryLibraries(wish);
    return trouble.empty() || asksToDestroy(dialog, trouble + "Register the driver all the same?", kTitle);
}

void confirm(HWND dialog) {
    const model::Registration wish{fieldText(dialog, kFormName),
                                   expandedPath(fieldText(dialog, kFormLibrary)),
                                   expandedPath(fieldText(dialog, kFormSetup)),
                                   {}};
    const model::Configuration configuration = model::Configuration::read();
    model::Reason why = model::whyNotRegister(configuration, model::kDriverKind, wish);
    if (!why && wish.library.empty())
        why = {model::Reason::Kind::incomplete, "The driver has no library",
               "Name it, such as /usr/lib/odbc/libsqlite3odbc.so."};
    if (why) {
        say(dialog, sentenceOf(why), kTitle, MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    if (!isWanted(dialog, configuration, wish))
        return;
    const model::ChangeResult result =
        model::registerEntry(configuration, model::kDriverKind, wish, model::WhenPresent::change, model::ChangeWay());
    if (!result.isDone()) {
        say(dialog, "The driver was not entered. " + sentenceOf(result.reason), kTitle, MB_OK | MB_ICONSTOP);
        return;
    }
    say(dialog, wish.name + " is registered." + nextStep(wish), kTitle, MB_OK);
    JXW_EndDialog(dialog, 1);
}

// The driver's name, its library and its setup library, from the list to the fields.
void takeFound(HWND dialog, const Found& found) {
    const int row = JXW_SendDlgItemMessage(dialog, kFormFound, LB_GETCURSEL, 0, 0);
    if (row < 0 || static_cast<std::size_t>(row) >= found.size())
        return;
    const doctor::FoundDriver& driver = found[static_cast<std::size_t>(row)];
    JXW_SetDlgItemText(dialog, kFormName, driver.name.c_str());
    JXW_SetDlgItemText(dialog, kFormLibrary, driver.path.c_str());
    JXW_SetDlgItemText(dialog, kFormSetup,
                       (driver.setup.empty() ? trial::generalSetupLibrary() : driver.setup).c_str());
}

void browse(HWND dialog) {
    const std::string path = chooseFile(dialog, expandedPath(fieldText(dialog, kFormLibrary)));
    if (!path.empty())
        JXW_SetDlgItemText(dialog, kFormLibrary, path.c_str());
}

void open(HWND dialog, Found& found) {
    JXW_SetDlgItemText(dialog, kFormSetup, trial::generalSetupLibrary().c_str());
    const unsigned int before = JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor));
    found = doctor::scanForDrivers(
        directoriesOfTest ? *directoriesOfTest : doctor::usualDriverDirectories(doctor::loaderPlaces()),
        [](const std::string&) {}, [] {}, doctor::Candidates::likely);
    JXW_SetCursor(before);
    for (const doctor::FoundDriver& driver : found)
        addRow(dialog, kFormFound, driver.path);
    JXW_SetFocus(JXW_GetDlgItem(dialog, found.empty() ? kFormName : kFormFound));
}

void command(HWND dialog, int control) {
    switch (control) {
        case kFormFound:
            takeFound(dialog, formRecord<const Found>(dialog));
            break;
        case kFormBrowse:
            browse(dialog);
            break;
        case IDOK:
            confirm(dialog);
            break;
        case IDCANCEL:
            JXW_EndDialog(dialog, 0);
            break;
        default:
            break;
    }
}

unsigned int driverProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        open(dialog, formRecord<Found>(dialog));
    } else if (message == WM_COMMAND) {
        command(dialog, wparam);
    } else {
        return 0;
    }
    return 1;
}

}  // namespace

void lookForDriversIn(const std::vector<std::string>& directories) {
    directoriesOfTest = directories;
}

bool registerDriver(HWND owner) {
    Found found;
    return showForm(kFormDialog, owner, driverProcedure, &found) == 1;
}

}  // namespace jx::assist
