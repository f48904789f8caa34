// The dialog that registers a driver: its template and its procedure.
#include "odbcadmin/assist/driver_form.h"

#include <jxwindow.h>
#include <odbcinst.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

#include "odbcadmin/model/registration.h"
#include "odbcadmin/trial/installer_library.h"
#include "odbcadmin/trial/library_load.h"
#include "rules/names.h"

namespace jx::assist {

namespace {

constexpr const char* kTitle = "Register a Driver";

constexpr JxwControl kControls[] = {
    {JXW_LABEL, 0, 8, 8, 64, 8, "&Name:", 0},
    {JXW_EDIT, kFormName, 72, 8, 200, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 24, 64, 8, "Driver &library:", 0},
    {JXW_EDIT, kFormLibrary, 72, 24, 200, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 40, 64, 8, "&Setup library:", 0},
    {JXW_EDIT, kFormSetup, 72, 40, 200, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 56, 264, 16, "Both libraries are tried before anything is written.", 0},
    {JXW_BUTTON, IDOK, 128, 80, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 80, 68, 14, "Cancel", 0},
    {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};

constexpr JxwTemplate kTemplates[] = {{kFormDialog, kTitle, 280, 104, kControls}, {0, nullptr, 0, 0, nullptr}};

std::string textOf(HWND dialog, unsigned short id) {
    std::array<char, 4096> text{};
    JXW_GetDlgItemText(dialog, id, text.data(), static_cast<int>(text.size()));
    return std::string(rules::trimmed(text.data()));
}

unsigned int say(HWND dialog, const std::string& text, unsigned int style) {
    return guiMessageBox(dialog, reinterpret_cast<const unsigned char*>(text.c_str()),
                         reinterpret_cast<const unsigned char*>(kTitle), style);
}

std::string sentence(const model::Reason& reason) {
    return reason.fact + ". " + reason.advice;
}

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

// Whether the user wants it entered after all that is said about it.
bool isWanted(HWND dialog, const model::Configuration& configuration, const model::Registration& wish) {
    if (configuration.driver(wish.name) &&
        say(dialog, "A driver called " + wish.name + " is registered already. Replace its libraries?",
            MB_YESNO | MB_ICONQUESTION) != IDYES)
        return false;
    const std::string trouble = tryLibraries(wish);
    return trouble.empty() ||
           say(dialog, trouble + "Register the driver all the same?", MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

void confirm(HWND dialog) {
    const model::Registration wish{
        textOf(dialog, kFormName), textOf(dialog, kFormLibrary), textOf(dialog, kFormSetup), {}};
    const model::Configuration configuration = model::Configuration::read();
    model::Reason why = model::whyNotRegister(configuration, model::kDriverKind, wish);
    if (!why && wish.library.empty())
        why = {model::Reason::Kind::incomplete, "The driver has no library",
               "Name it, such as /usr/lib/odbc/libsqlite3odbc.so."};
    if (why) {
        say(dialog, sentence(why), MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    if (!isWanted(dialog, configuration, wish))
        return;
    const model::ChangeResult result =
        model::registerEntry(configuration, model::kDriverKind, wish, model::WhenPresent::change, model::ChangeWay());
    if (!result.isDone()) {
        say(dialog, "The driver was not entered. " + sentence(result.reason), MB_OK | MB_ICONSTOP);
        return;
    }
    say(dialog, wish.name + " is registered.\nNext: Add... in the Data Sources dialog makes a data source for it.",
        MB_OK);
    JXW_EndDialog(dialog, 1);
}

unsigned int procedure(HWND dialog, int message, int wparam, uintptr_t /*lparam*/) {
    if (message == WM_INITDIALOG)
        JXW_SetDlgItemText(dialog, kFormSetup, proposedSetup().c_str());
    else if (message == WM_COMMAND && wparam == IDOK)
        confirm(dialog);
    else if (message == WM_COMMAND && wparam == IDCANCEL)
        JXW_EndDialog(dialog, 0);
    else
        return 0;
    return 1;
}

}  // namespace

std::string proposedSetup() {
    const std::string installer = trial::installerPath();
    if (installer.empty())
        return {};
    std::array<char, 4096> resolved{};
    std::string path = realpath(installer.c_str(), resolved.data()) != nullptr ? resolved.data() : installer;
    path.replace(path.rfind('/') + 1, std::string::npos, "libjxsetup.so");
    return access(path.c_str(), R_OK) == 0 ? path : "";
}

bool registerDriver(HWND owner) {
    JXW_RegisterModule(kFormModule, nullptr, kTemplates);
    return JXW_DialogBox(kFormModule, kFormDialog, owner, procedure, nullptr) == 1;
}

}  // namespace jx::assist
