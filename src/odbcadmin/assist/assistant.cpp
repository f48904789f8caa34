// The additions to boxes and lists.
#include "odbcadmin/assist/assistant.h"

#include <control_ids.h>
#include <dlfcn.h>
#include <jxfiles.h>
#include <odbcinst.h>

#include <algorithm>
#include <string_view>

#include "odbcadmin/assist/cut_list.h"
#include "odbcadmin/assist/driver_form.h"
#include "odbcadmin/assist/help.h"
#include "odbcadmin/model/comparison.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

namespace {

// How the library's boxes about the end of a script installation begin.
constexpr std::string_view kInstallation = "Installation ";

bool isLibraryDialog(HWND dialog, unsigned short templateId) {
    JxwDialogInfo info{};
    return JXW_GetDialogInfo(dialog, &info) != 0 && info.templateId == templateId &&
           std::string_view(info.module) == trial::kInstallerModule;
}

std::string loaderSentence() {
    return reinterpret_cast<const char*>(bosLastLoadError());
}

// A load that succeeds makes the library forget the last failure; the C library is always there.
void forgetLoaderSentence() {
    if (loaderSentence().empty())
        return;
    void* library = bosLoadLibrary(reinterpret_cast<const unsigned char*>("libc.so.6"), 0);
    if (library != nullptr)
        dlclose(library);
}

std::string rowAt(HWND dialog, unsigned short list, int row) {
    const int length = JXW_SendDlgItemMessage(dialog, list, LB_GETTEXTLEN, row, 0);
    std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
    JXW_SendDlgItemMessage(dialog, list, LB_GETTEXT, row, reinterpret_cast<uintptr_t>(text.data()));
    return text;
}

void refresh(HWND dialog, unsigned short list, unsigned short button) {
    std::vector<std::string> missing;
    for (const model::Registered& driver : model::Configuration::read().drivers())
        if (driver.listed)
            missing.push_back(driver.name);
    for (int row = JXW_SendDlgItemMessage(dialog, list, LB_GETCOUNT, 0, 0) - 1; row >= 0; --row) {
        if (std::erase(missing, rowAt(dialog, list, row)) == 0)
            JXW_SendDlgItemMessage(dialog, list, LB_DELETESTRING, row, 0);
    }
    for (const std::string& name : missing)
        JXW_SendDlgItemMessage(dialog, list, LB_ADDSTRING, 0, reinterpret_cast<uintptr_t>(name.c_str()));
    const bool isEmpty = JXW_SendDlgItemMessage(dialog, list, LB_GETCOUNT, 0, 0) == 0;
    if (!isEmpty && JXW_SendDlgItemMessage(dialog, list, LB_GETCURSEL, 0, 0) < 0)
        JXW_SendDlgItemMessage(dialog, list, LB_SETCURSEL, 0, 0);
    JXW_EnableWindow(JXW_GetDlgItem(dialog, button), isEmpty ? 0 : 1);
}

std::string enteredOf(const char* kind, const std::vector<model::Compared>& entries) {
    using Status = model::Compared::Status;
    std::string names;
    for (const model::Compared& each : entries)
        if (each.status != Status::unchanged)
            names += (names.empty() ? "" : ", ") + each.name + (each.status == Status::changed ? " (changed)" : "");
    return names.empty() ? "" : "\n" + std::string(kind) + ": " + names;
}

std::string enteredSince(const model::Configuration& before) {
    const model::Configuration after = model::Configuration::read();
    const std::string entered = enteredOf("Drivers", compareRegistered(model::kDriverKind, before, after)) +
                                enteredOf("Translators", compareRegistered(model::kTranslatorKind, before, after)) +
                                enteredOf("Data sources", compareDataSources(before, after));
    return entered.empty() ? "Compared with before, nothing new is in your files."
                           : "Your files show what was really entered:" + entered;
}

bool isForm(HWND dialog) {
    JxwDialogInfo info{};
    return JXW_GetDialogInfo(dialog, &info) != 0 && std::string_view(info.module) == kFormModule;
}

std::string showHelp(HWND dialog) {
    guiMessageBox(dialog, reinterpret_cast<const unsigned char*>(helpOnAll(dialog).c_str()),
                  reinterpret_cast<const unsigned char*>("Help"), MB_OK);
    return {};
}

// The only driver there is needs no choosing.
void chooseOnly(HWND dialog, unsigned short list) {
    if (JXW_SendDlgItemMessage(dialog, list, LB_GETCOUNT, 0, 0) == 1)
        JXW_SendDlgItemMessage(dialog, list, LB_SETCURSEL, 0, 0);
}

}  // namespace

bool asksWhetherCancelled(std::string_view text) {
    return text.find("If you did not cancel it") != std::string_view::npos;
}

void refreshDriverLists() {
    for (HWND dialog = JXW_NextDialog(0); dialog != 0; dialog = JXW_NextDialog(dialog)) {
        if (isLibraryDialog(dialog, JxDriversDialog))
            refresh(dialog, JxDriversList, JxDeleteDriverButton);
        else if (isLibraryDialog(dialog, JxAddDataSourceDialog))
            refresh(dialog, JxAddDataSourceList, IDOK);
    }
}

void Assistant::opened(HWND dialog) {
    noteCutList(dialog);
    if (isLibraryDialog(dialog, JxAddDriverDialog))
        beforeScript_ = model::Configuration::read();
    else if (isLibraryDialog(dialog, JxAddDataSourceDialog))
        chooseOnly(dialog, JxAddDataSourceList);
}

void Assistant::beforeAction() {
    forgetLoaderSentence();
}

std::string Assistant::boxText(const std::string& text) {
    if (beforeScript_ && text.starts_with(kInstallation))
        return text + "\n\n" + enteredSince(*beforeScript_);
    const std::string sentence = loaderSentence();
    forgetLoaderSentence();
    if (sentence.empty() || text.find(sentence) != std::string::npos)
        return text;
    return text + "\n\nThe loader says:\n" + sentence;
}

void Assistant::boxClosed() {
    refreshDriverLists();
}

std::vector<FunctionKey> Assistant::functionKeys(HWND dialog) {
    std::vector<FunctionKey> keys{{1, "help", "", showHelp}};
    if (!isForm(dialog)) {
        keys.push_back({2, "new driver", "", [this](HWND owner) {
                            registerDriver(owner);
                            return std::string();
                        }});
    }
    return keys;
}

void Assistant::registerDriver(HWND owner) {
    if (isForm(owner))
        return;
    if (assist::registerDriver(owner))
        refreshDriverLists();
}

}  // namespace jx::assist
