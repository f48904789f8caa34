// Proposing keys, taking the name, and adding the data source.
#include "odbcadmin/assist/new_source_form.h"

#include <algorithm>

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/key_editor.h"
#include "odbcadmin/assist/open_secret.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/known_driver.h"

namespace jx::assist {

namespace {

constexpr const char* kNewTitle = "New Data Source";

struct NewSource {
    std::string driver;
    const model::KnownDriver* known;  // null when nothing is known of it
    EditedKeys keys;
};

const model::KnownDriver* knownOf(const std::string& driver) {
    const model::Configuration configuration = configurationOf(model::Scope::system);
    const auto& registered = configuration.driver(driver);
    return registered ? model::knownDriverOf(registered->library.text) : nullptr;
}

void openNewSource(HWND dialog, NewSource& source) {
    JXW_SetWindowText(dialog, ("New Data Source of " + source.driver).c_str());
    JXW_CheckRadioButton(dialog, kNewForUser, kNewForSystem, kNewForUser);
    if (source.known != nullptr)
        for (const model::KnownKey& key : source.known->keys)
            source.keys.now.emplace_back(key.name, "");
    fillKeys(dialog, source.keys, -1);
}

// What is known of the chosen key.
void explainKey(HWND dialog, const NewSource& source) {
    const std::string chosen = chosenKey(dialog, source.keys);
    const model::KnownKey* key = source.known == nullptr || chosen.empty() ? nullptr : source.known->key(chosen);
    std::string says = key == nullptr || key->says.empty() ? "" : key->says + ".";
    if (key != nullptr && !key->initial.empty())
        says += (says.empty() ? "" : " ") + ("Without it: " + key->initial + ".");
    JXW_SetDlgItemText(dialog, kNewKeySays, says.c_str());
}

model::DataSourceWish wishOf(HWND dialog, const NewSource& source) {
    model::DataSourceWish wish{fieldText(dialog, kNewName), source.driver, source.keys.now};
    std::erase_if(wish.attributes, [](const auto& pair) { return pair.second.empty(); });
    return wish;
}

// The user's own data source may have the name of one of the system's, which it then shadows.
model::ChangeResult add(const model::DataSourceWish& wish, const model::ChangeWay& way) {
    const model::Configuration configuration = way.scope == model::Scope::system
                                                   ? configurationOf(model::Scope::system)
                                                   : model::Configuration::read({model::Seen::user, model::Seen::both});
    return model::addDataSource(configuration, wish, way);
}

model::RepeatedCommand commandFor(const model::DataSourceWish& wish) {
    model::RepeatedCommand command{{"--system", "dsn", "add", wish.name, "--driver", wish.driver}};
    for (const auto& [key, value] : wish.attributes)
        command.words.push_back(key + "=" + value);
    return command;
}

void finishNewSource(HWND dialog, NewSource& source) {
    if (!takeTyped(dialog, source.keys))
        return;
    const model::DataSourceWish wish = wishOf(dialog, source);
    const bool isForAll = JXW_IsDlgButtonChecked(dialog, kNewForSystem) != 0;
    const auto result = changeAsking(dialog, kNewTitle, isForAll ? model::Scope::system : model::Scope::user,
                                     [&](const model::ChangeWay& way) { return add(wish, way); });
    if (result && result->isDone()) {
        JXW_EndDialog(dialog, 1);
        return;
    }
    if (result)
        say(dialog, sentenceOf(result->reason, {commandFor(wish)}), kNewTitle, MB_OK | MB_ICONEXCLAMATION);
    fillKeys(dialog, source.keys, -1);
}

unsigned int newSourceProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        openNewSource(dialog, formRecord<NewSource>(dialog));
        return 1;
    }
    if (message != WM_COMMAND || wparam == IDCANCEL)
        return closedByCancel(dialog, message, wparam);
    auto& source = formRecord<NewSource>(dialog);
    if (wparam == IDOK) {
        finishNewSource(dialog, source);
        return 1;
    }
    followKeyControls(dialog, source.keys, wparam, static_cast<int>((lparam >> 16U) & 0xFFFFU));
    explainKey(dialog, source);
    return 1;
}

}  // namespace

bool makeSource(HWND owner, const std::string& driver) {
    NewSource source{driver, knownOf(driver), {kNewTitle, /*needsDriver=*/false, {}}};
    return showForm(kNewSourceForm, owner, newSourceProcedure, &source) == 1;
}

}  // namespace jx::assist
