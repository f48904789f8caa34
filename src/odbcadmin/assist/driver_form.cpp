// The dialog that registers a driver: its template and its procedure.
#include "odbcadmin/assist/driver_form.h"

#include <dlfcn.h>
#include <jxwindow.h>
#include <odbcinst.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

#include "odbcadmin/assist/driver_entry.h"

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
    const std::string whole = text.data();
    const std::size_t begin = whole.find_first_not_of(" \t");
    return begin == std::string::npos ? "" : whole.substr(begin, whole.find_last_not_of(" \t") - begin + 1);
}

unsigned int say(HWND dialog, const std::string& text, unsigned int style) {
    return guiMessageBox(dialog, reinterpret_cast<const unsigned char*>(text.c_str()),
                         reinterpret_cast<const unsigned char*>(kTitle), style);
}

std::string tryWithPatience(const DriverEntry& entry) {
    const unsigned int before = JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor));
    std::string trouble = tryLibraries(entry);
    JXW_SetCursor(before);
    return trouble;
}

// Whether the user wants it entered after all that is said about it.
bool isWanted(HWND dialog, const DriverEntry& entry) {
    if (isRegistered(entry.name) &&
        say(dialog, "A driver called " + entry.name + " is registered already. Replace its libraries?",
            MB_YESNO | MB_ICONQUESTION) != IDYES)
        return false;
    const std::string trouble = tryWithPatience(entry);
    return trouble.empty() ||
           say(dialog, trouble + "\n\nRegister the driver all the same?", MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

void confirm(HWND dialog) {
    const DriverEntry entry{textOf(dialog, kFormName), textOf(dialog, kFormLibrary), textOf(dialog, kFormSetup)};
    const std::string why = whyNot(entry);
    if (!why.empty()) {
        say(dialog, why, MB_OK | MB_ICONEXCLAMATION);
        return;
    }
    if (!isWanted(dialog, entry))
        return;
    const std::string failure = enter(entry);
    if (!failure.empty()) {
        say(dialog, failure, MB_OK | MB_ICONSTOP);
        return;
    }
    say(dialog, entry.name + " is registered.\nNext: Add... in the Data Sources dialog makes a data source for it.",
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
    Dl_info place{};
    const void* function = dlsym(RTLD_DEFAULT, "SQLManageDataSources");
    if (function == nullptr || dladdr(function, &place) == 0 || place.dli_fname == nullptr)
        return {};
    std::array<char, 4096> resolved{};
    std::string path = realpath(place.dli_fname, resolved.data()) != nullptr ? resolved.data() : place.dli_fname;
    path.replace(path.rfind('/') + 1, std::string::npos, "libjxsetup.so");
    return access(path.c_str(), R_OK) == 0 ? path : "";
}

bool registerDriver(HWND owner) {
    JXW_RegisterModule(kFormModule, nullptr, kTemplates);
    return JXW_DialogBox(kFormModule, kFormDialog, owner, procedure, nullptr) == 1;
}

}  // namespace jx::assist
