// The additions to boxes and lists.
#include "odbcadmin/assist/assistant.h"

#include <control_ids.h>
#include <dlfcn.h>
#include <jxfiles.h>
#include <jxini.h>
#include <odbcinst.h>
#include <text_ids.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "odbcadmin/assist/cut_list.h"
#include "odbcadmin/assist/driver_form.h"
#include "odbcadmin/assist/driver_lists.h"
#include "odbcadmin/assist/help.h"
#include "odbcadmin/assist/library_text.h"
#include "odbcadmin/assist/list_keys.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/say.h"
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
    say(dialog, helpOnAll(dialog), "Help", MB_OK);
    return {};
}

// Whether the library says in that box that a setup library did not do what it was to do, and no more.
bool isAboutFailure(const std::string& text) {
    constexpr std::array<unsigned short, 3> kFailures{JxTextRemoveFailed, JxTextChangeFailed, JxTextAddFailed};
    return std::any_of(kFailures.begin(), kFailures.end(), [&](unsigned short id) { return libraryText(id) == text; });
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

void Assistant::opened(HWND dialog) {
    noteCutList(dialog);
    noteFilled(dialog);
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
        return enteredSince(*beforeScript_) + "\n\nThe installer ends with: " + text;
    const std::string sentence = loaderSentence();
    forgetLoaderSentence();
    if (!sentence.empty() && text.find(sentence) == std::string::npos)
        return text + "\n\nThe loader says:\n" + sentence;
    if (sentence.empty() && isAboutFailure(text) && jxIniLastFailure().step != JxIniStepNone)
        return text + "\n\n" + sentenceOf(model::lastFailure());
    return text;
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
    const std::vector<FunctionKey> others = listKeys(dialog);
    keys.insert(keys.end(), others.begin(), others.end());
    return keys;
}

void Assistant::registerDriver(HWND owner) {
    if (isForm(owner))
        return;
    if (assist::registerDriver(owner))
        refreshDriverLists();
}

}  // namespace jx::assist
