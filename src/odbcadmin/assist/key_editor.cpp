// Following the controls of keys and values.
#include "odbcadmin/assist/key_editor.h"

#include <algorithm>
#include <utility>

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/say.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/secrets.h"
#include "rules/sections.h"

namespace jx::assist {

namespace {

auto placeOf(model::Pairs& pairs, const std::string& key) {
    return std::find_if(pairs.begin(), pairs.end(), [&](const auto& pair) { return rules::sameName(pair.first, key); });
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

void followRow(HWND dialog, const EditedKeys& keys) {
    const int row = selectedKey(dialog);
    JXW_EnableWindow(JXW_GetDlgItem(dialog, kSectionRemove), row >= 0 ? 1 : 0);
    if (row < 0) {
        showPair(dialog, "", "");
        return;
    }
    const auto& [key, value] = keys.now[static_cast<std::size_t>(row)];
    showPair(dialog, key, value);
}

void refuseKey(HWND dialog, const EditedKeys& keys, const std::string& text) {
    say(dialog, text, keys.title, MB_OK | MB_ICONEXCLAMATION);
}

// Whether there is nothing in the fields that the list has not.
bool isTaken(const EditedKeys& keys, const std::pair<std::string, std::string>& typed) {
    if (typed.first.empty())
        return typed.second.empty();
    return std::any_of(keys.now.begin(), keys.now.end(), [&](const auto& pair) {
        return rules::sameName(pair.first, typed.first) && pair.second == typed.second;
    });
}

// A user who goes through the rows goes on from the one that was set; else the next pair is typed.
void setKey(HWND dialog, EditedKeys& keys) {
    const int row = selectedKey(dialog);
    const std::size_t before = keys.now.size();
    if (!takeTyped(dialog, keys))
        return;
    const bool isNew = keys.now.size() > before;
    fillKeys(dialog, keys, isNew ? -1 : row);
    JXW_SetFocus(JXW_GetDlgItem(dialog, isNew || row < 0 ? kSectionKey : kSectionList));
}

void removeKey(HWND dialog, EditedKeys& keys) {
    const int row = selectedKey(dialog);
    if (row < 0)
        return;
    const auto found = keys.now.begin() + row;
    if (keys.needsDriver && rules::sameName(found->first, rules::kDriver)) {
        refuseKey(dialog, keys, "A data source cannot be without its Driver.");
        return;
    }
    keys.now.erase(found);
    fillKeys(dialog, keys, std::min(row, static_cast<int>(keys.now.size()) - 1));
}

}  // namespace

bool hasKey(const model::Pairs& pairs, const std::string& key) {
    return std::any_of(pairs.begin(), pairs.end(), [&](const auto& pair) { return rules::sameName(pair.first, key); });
}

void fillKeys(HWND dialog, const EditedKeys& keys, int row) {
    JXW_SendDlgItemMessage(dialog, kSectionList, LB_RESETCONTENT, 0, 0);
    for (const auto& [key, value] : keys.now)
        addRow(dialog, kSectionList, model::printable(key + " = " + rules::masked(key, value)));
    JXW_SendDlgItemMessage(dialog, kSectionList, LB_SETCURSEL, row, 0);
    followRow(dialog, keys);
}

std::string chosenKey(HWND dialog, const EditedKeys& keys) {
    const int row = selectedKey(dialog);
    return row < 0 ? std::string() : keys.now[static_cast<std::size_t>(row)].first;
}

void followKeyControls(HWND dialog, EditedKeys& keys, int control, int notification) {
    if (control == kSectionList && notification == LBN_SELCHANGE)
        followRow(dialog, keys);
    else if (control == kSectionKey)
        followKey(dialog);
    else if (control == kSectionSet)
        setKey(dialog, keys);
    else if (control == kSectionRemove)
        removeKey(dialog, keys);
}

bool takeTyped(HWND dialog, EditedKeys& keys) {
    const auto typed = typedPair(dialog);
    if (isTaken(keys, typed))
        return true;
    if (typed.first.empty()) {
        refuseKey(dialog, keys, "The value has no key. Type one.");
        return false;
    }
    if (const model::Reason reason = model::whyNotStored({typed})) {
        refuseKey(dialog, keys, sentenceOf(reason));
        return false;
    }
    if (const auto found = placeOf(keys.now, typed.first); found != keys.now.end())
        found->second = typed.second;
    else
        keys.now.push_back(typed);
    return true;
}

}  // namespace jx::assist
