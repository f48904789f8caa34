// Showing the keys, taking what is typed, and storing what has changed.
#include "odbcadmin/assist/section_form.h"

#include <algorithm>
#include <vector>

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/open_secret.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/secrets.h"
#include "rules/sections.h"

namespace jx::assist {

namespace {

constexpr const char* kSectionTitle = "Data Source of the System";

// A data source, its keys as they were found, and as the user wants them.
struct SectionEdit {
    std::string name;
    model::Pairs before, now;
};

auto placeOf(model::Pairs& pairs, std::string_view key) {
    return std::find_if(pairs.begin(), pairs.end(), [&](const auto& pair) { return rules::sameName(pair.first, key); });
}

bool hasKey(const model::Pairs& pairs, std::string_view key) {
    return std::any_of(pairs.begin(), pairs.end(), [&](const auto& pair) { return rules::sameName(pair.first, key); });
}

// A key that stands twice counts once, as in every look-up.
model::Pairs pairsIn(const model::IniSection* section) {
    model::Pairs pairs;
    if (section != nullptr)
        for (const model::IniEntry& entry : section->entries)
            if (!hasKey(pairs, entry.key))
                pairs.emplace_back(entry.key, entry.value);
    return pairs;
}

bool isEnabled(HWND dialog, unsigned short id) {
    return JXW_IsWindowEnabled(JXW_GetDlgItem(dialog, id)) != 0;
}

// A value is typed where it can be seen, or, if it is a secret, where it cannot.
void useValueField(HWND dialog, bool isHidden) {
    JXW_EnableWindow(JXW_GetDlgItem(dialog, kSectionHidden), isHidden ? 1 : 0);
    JXW_EnableWindow(JXW_GetDlgItem(dialog, kSectionValue), isHidden ? 0 : 1);
    JXW_SetDlgItemText(dialog, isHidden ? kSectionValue : kSectionHidden, "");
}

unsigned short valueField(HWND dialog) {
    return isEnabled(dialog, kSectionHidden) ? kSectionHidden : kSectionValue;
}

bool isSecret(const std::string& key, const std::string& value) {
    return rules::masked(key, value) != value || rules::isSecretKey(key);
}

void showPair(HWND dialog, const std::string& key, const std::string& value) {
    JXW_SetDlgItemText(dialog, kSectionKey, key.c_str());
    useValueField(dialog, isSecret(key, value));
    JXW_SetDlgItemText(dialog, valueField(dialog), value.c_str());
}

std::pair<std::string, std::string> typedPair(HWND dialog) {
    return {fieldText(dialog, kSectionKey), wholeText(dialog, valueField(dialog))};
}

// While a key is typed that names a secret, its value goes to the hidden field.
void followKey(HWND dialog) {
    const auto [key, value] = typedPair(dialog);
    const bool isHidden = isSecret(key, value);
    if (isHidden == isEnabled(dialog, kSectionHidden))
        return;
    if (isHidden)
        JXW_SetDlgItemText(dialog, kSectionHidden, value.c_str());
    useValueField(dialog, isHidden);
}

int selectedKey(HWND dialog) {
    return JXW_SendDlgItemMessage(dialog, kSectionList, LB_GETCURSEL, 0, 0);
}

void followRow(HWND dialog, const SectionEdit& edit) {
    const int row = selectedKey(dialog);
    JXW_EnableWindow(JXW_GetDlgItem(dialog, kSectionRemove), row >= 0 ? 1 : 0);
    if (row < 0) {
        showPair(dialog, "", "");
        return;
    }
    const auto& [key, value] = edit.now[static_cast<std::size_t>(row)];
    showPair(dialog, key, value);
}

void fillKeys(HWND dialog, const SectionEdit& edit, int row) {
    JXW_SendDlgItemMessage(dialog, kSectionList, LB_RESETCONTENT, 0, 0);
    for (const auto& [key, value] : edit.now)
        addRow(dialog, kSectionList, model::printable(key + " = " + rules::masked(key, value)));
    JXW_SendDlgItemMessage(dialog, kSectionList, LB_SETCURSEL, row, 0);
    followRow(dialog, edit);
}

void openSection(HWND dialog, SectionEdit& edit) {
    JXW_SetWindowText(dialog, ("Setup of " + edit.name + " (System)").c_str());
    const model::Configuration configuration = configurationOf(model::Scope::system);
    const auto source = configuration.dataSource(edit.name);
    if (!source)
        return;
    edit.before = edit.now = pairsIn(source->section);
    const std::string where = source->header ? source->header.where() : source->file->path;
    JXW_SetDlgItemText(dialog, kSectionWhere, ("For all users of this machine, in " + where + ".").c_str());
    fillKeys(dialog, edit, -1);
}

void refuse(HWND dialog, const std::string& text) {
    say(dialog, text, kSectionTitle, MB_OK | MB_ICONEXCLAMATION);
}

// Whether there is nothing in the fields that the list has not.
bool isTaken(const SectionEdit& edit, const std::pair<std::string, std::string>& typed) {
    if (typed.first.empty())
        return typed.second.empty();
    return std::any_of(edit.now.begin(), edit.now.end(), [&](const auto& pair) {
        return rules::sameName(pair.first, typed.first) && pair.second == typed.second;
    });
}

// Puts the pair that was typed into the list. False, after a message, when it cannot be stored.
bool takeTyped(HWND dialog, SectionEdit& edit) {
    const auto typed = typedPair(dialog);
    if (isTaken(edit, typed))
        return true;
    if (typed.first.empty()) {
        refuse(dialog, "The value has no key. Type one.");
        return false;
    }
    if (const model::Reason reason = model::whyNotSet(configurationOf(model::Scope::system), edit.name, {typed})) {
        refuse(dialog, sentenceOf(reason));
        return false;
    }
    if (const auto found = placeOf(edit.now, typed.first); found != edit.now.end())
        found->second = typed.second;
    else
        edit.now.push_back(typed);
    return true;
}

void setKey(HWND dialog, SectionEdit& edit) {
    if (!takeTyped(dialog, edit))
        return;
    fillKeys(dialog, edit, -1);
    JXW_SetFocus(JXW_GetDlgItem(dialog, kSectionKey));  // for the next pair
}

void removeKey(HWND dialog, SectionEdit& edit) {
    const int row = selectedKey(dialog);
    if (row < 0)
        return;
    const auto found = edit.now.begin() + row;
    if (rules::sameName(found->first, rules::kDriver)) {
        refuse(dialog, "A data source cannot be without its Driver.");
        return;
    }
    edit.now.erase(found);
    fillKeys(dialog, edit, std::min(row, static_cast<int>(edit.now.size()) - 1));
}

struct SectionChange {
    model::Pairs set;
    std::vector<std::string> unset;
};

SectionChange changeOf(const SectionEdit& edit) {
    SectionChange change;
    for (const auto& pair : edit.now)
        if (std::find(edit.before.begin(), edit.before.end(), pair) == edit.before.end())
            change.set.push_back(pair);
    for (const auto& [key, value] : edit.before)
        if (!hasKey(edit.now, key))
            change.unset.push_back(key);
    return change;
}

model::ChangeResult write(const std::string& name, const SectionChange& wished, const model::ChangeWay& way) {
    const model::Configuration configuration = configurationOf(model::Scope::system);
    return model::asOneChange(way, [&] {
        model::ChangeResult result;
        if (!wished.set.empty())
            result.add(model::setKeys(configuration, name, wished.set, way));
        if (result.isDone() && !wished.unset.empty())
            result.add(model::unsetKeys(configuration, name, wished.unset, way));
        return result;
    });
}

// What odbcadmin takes to do the same.
std::vector<model::RepeatedCommand> commandsFor(const std::string& name, const SectionChange& wished) {
    std::vector<model::RepeatedCommand> commands;
    if (!wished.set.empty()) {
        commands.push_back({{"--system", "dsn", "set", name}});
        for (const auto& [key, value] : wished.set)
            commands.back().words.push_back(key + "=" + value);
    }
    if (!wished.unset.empty()) {
        commands.push_back({{"--system", "dsn", "unset", name}});
        commands.back().words.insert(commands.back().words.end(), wished.unset.begin(), wished.unset.end());
    }
    return commands;
}

bool storeSection(HWND dialog, const SectionEdit& edit) {
    const SectionChange wished = changeOf(edit);
    const auto result = changeAsking(dialog, kSectionTitle, model::Scope::system,
                                     [&](const model::ChangeWay& way) { return write(edit.name, wished, way); });
    if (result && !result->isDone())
        say(dialog, "Nothing was stored. " + sentenceOf(result->reason, commandsFor(edit.name, wished)), kSectionTitle,
            MB_OK | MB_ICONSTOP);
    return result && result->isDone();
}

void finish(HWND dialog, SectionEdit& edit) {
    if (!takeTyped(dialog, edit))
        return;
    if (storeSection(dialog, edit))
        JXW_EndDialog(dialog, 1);
    else
        fillKeys(dialog, edit, -1);
}

void commandOf(HWND dialog, SectionEdit& edit, int control, int notification) {
    if (control == kSectionList && notification == LBN_SELCHANGE)
        followRow(dialog, edit);
    else if (control == kSectionKey)
        followKey(dialog);
    else if (control == kSectionSet)
        setKey(dialog, edit);
    else if (control == kSectionRemove)
        removeKey(dialog, edit);
    else if (control == IDOK)
        finish(dialog, edit);
    else if (control == IDCANCEL)
        JXW_EndDialog(dialog, 0);
}

unsigned int sectionProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        openSection(dialog, formRecord<SectionEdit>(dialog));
    } else if (message == WM_COMMAND) {
        commandOf(dialog, formRecord<SectionEdit>(dialog), wparam, static_cast<int>((lparam >> 16U) & 0xFFFFU));
    } else {
        return 0;
    }
    return 1;
}

}  // namespace

void editSystemSource(HWND owner, const std::string& dataSource) {
    SectionEdit edit{dataSource, {}, {}};
    showForm(kSectionForm, owner, sectionProcedure, &edit);
}

}  // namespace jx::assist
