// The controls that edit the keys of a data source in a dialog of our own: the list, the fields below it, Set and
// Remove.
#pragma once

#include <jxdialog.h>

#include <string>

#include "odbcadmin/model/file_change.h"

namespace jx::assist {

// EditedKeys: keys and values while a user edits them. A dialog that has the controls kSectionList to kSectionHidden
// (forms.h) keeps one in its record:
//
//     fillKeys(dialog, keys, -1);                    // when it opens
//     followKeyControls(dialog, keys, control, notification);
//     if (takeTyped(dialog, keys))                   // on OK: what was typed counts, also without Set
//         ... store keys.now ...
//
// The list shows secrets as stars, and a secret is typed where it cannot be seen.
struct EditedKeys {
    std::string title;         // of boxes that say why something cannot be stored
    bool needsDriver = false;  // the key Driver cannot be removed
    model::Pairs now;
};

bool hasKey(const model::Pairs& pairs, const std::string& key);

// Fills the list and selects a row; -1: none.
void fillKeys(HWND dialog, const EditedKeys& keys, int row);

// The key of the selected row; empty when there is none.
std::string chosenKey(HWND dialog, const EditedKeys& keys);

// What one of the controls does, if it is one.
void followKeyControls(HWND dialog, EditedKeys& keys, int control, int notification);

// Puts the key and value that are typed among the others. False, after a box, when they cannot be stored.
bool takeTyped(HWND dialog, EditedKeys& keys);

}  // namespace jx::assist
