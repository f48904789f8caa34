// The dialog of module "jxsetup": its template and the ids of its controls.
//
// Positions are multiples of a terminal's cell, 4 units wide and 8 high, with an empty line between buttons.
#pragma once

#include <jxdialog.h>

namespace jx::setup {

inline constexpr char kModule[] = "jxsetup";

enum DialogId : unsigned short { kSetupDialog = 200 };

enum ControlId : unsigned short {
    kNameEdit = 201,
    kDriverText = 202,
    kKeyList = 203,
    kAddButton = 204,
    kChangeButton = 205,
    kRemoveButton = 206,
    kKeyEdit = 207,
    kValueEdit = 208,
    kHiddenEdit = 209  // for the value while the key is a secret's
};

inline constexpr JxwControl kSetupControls[] = {
    {JXW_LABEL, 0, 8, 8, 72, 8, "Data source &name:", 0},
    {JXW_EDIT, kNameEdit, 84, 8, 188, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 24, 72, 8, "Driver:", 0},
    {JXW_LABEL, kDriverText, 84, 24, 188, 8, nullptr, JXW_PLAIN},
    {JXW_LABEL, 0, 8, 40, 184, 8, "Key&s and values:", 0},
    {JXW_LISTBOX, kKeyList, 8, 48, 184, 56, nullptr, 0},
    {JXW_BUTTON, kAddButton, 204, 48, 68, 14, "&Add", 0},
    {JXW_BUTTON, kChangeButton, 204, 64, 68, 14, "&Change", JXW_GREY},
    {JXW_BUTTON, kRemoveButton, 204, 80, 68, 14, "&Remove", JXW_GREY},
    {JXW_LABEL, 0, 8, 112, 60, 8, "&Key:", 0},
    {JXW_EDIT, kKeyEdit, 72, 112, 120, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 128, 60, 8, "&Value:", 0},
    {JXW_EDIT, kValueEdit, 72, 128, 120, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 144, 60, 8, "&Hidden value:", 0},
    {JXW_EDIT, kHiddenEdit, 72, 144, 120, 12, nullptr, JXW_PASSWORD | JXW_GREY},
    {JXW_BUTTON, IDOK, 204, 112, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 128, 68, 14, "Cancel", 0},
    {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};

inline constexpr JxwTemplate kSetupTemplates[] = {{kSetupDialog, "Data Source Setup", 280, 160, kSetupControls},
                                                  {0, nullptr, 0, 0, nullptr}};

}  // namespace jx::setup
