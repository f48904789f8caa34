// The dialog templates of module "odbcinst".
//
// Positions are in dialog units, 4 to a column and 8 to a line of a terminal. All are multiples of these, with an empty
// line between buttons, and each dialog fits into a terminal of 80 columns and 24 lines.
#pragma once

#include <control_ids.h>
#include <jxdialog.h>

namespace jx {

inline constexpr JxwControl kEndOfControls = {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0};

inline constexpr JxwControl kAddDataSourceControls[] = {
    {JXW_LABEL, 0, 8, 8, 184, 8, "&Driver for the new data source:", 0},
    {JXW_LISTBOX, JxAddDataSourceList, 8, 16, 184, 88, nullptr, 0},
    {JXW_BUTTON, IDOK, 204, 16, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 32, 68, 14, "Cancel", 0},
    kEndOfControls};

// The default button does what a double click does.
inline constexpr JxwControl kDataSourcesControls[] = {
    {JXW_LABEL, 0, 8, 8, 184, 8, "&Data sources (driver):", 0},
    {JXW_LISTBOX, JxDataSourcesList, 8, 16, 184, 104, nullptr, 0},
    {JXW_BUTTON, JxSetupButton, 204, 16, 68, 14, "&Setup...", JXW_DEFAULT},
    {JXW_BUTTON, JxDeleteButton, 204, 32, 68, 14, "D&elete", 0},
    {JXW_BUTTON, JxAddButton, 204, 48, 68, 14, "&Add...", 0},
    {JXW_BUTTON, JxDriversButton, 204, 64, 68, 14, "D&rivers...", 0},
    {JXW_BUTTON, JxOptionsButton, 204, 80, 68, 14, "&Options...", 0},
    {JXW_BUTTON, JxCloseButton, 204, 104, 68, 14, "&Close", JXW_CLOSE},
    kEndOfControls};

inline constexpr JxwControl kOptionsControls[] = {
    {JXW_GROUPBOX, 0, 8, 8, 264, 88, "Call tracing", 0},
    {JXW_CHECKBOX, JxTraceBox, 16, 24, 244, 8, "&Trace the calls of the driver manager", 0},
    {JXW_CHECKBOX, JxTraceAutoStopBox, 16, 40, 244, 8, "&Stop tracing by itself", 0},
    {JXW_LABEL, 0, 16, 56, 60, 8, "Trace &file:", 0},
    {JXW_EDIT, JxTraceFileEdit, 76, 56, 184, 12, nullptr, 0},
    {JXW_BUTTON, JxTraceFileButton, 76, 72, 184, 14, "&Choose a file (not available)", 0},
    {JXW_BUTTON, IDOK, 128, 104, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 104, 68, 14, "Cancel", 0},
    kEndOfControls};

// Close is the default button, since Delete also deletes files.
inline constexpr JxwControl kDriversControls[] = {
    {JXW_LABEL, JxDriversLabel, 8, 8, 184, 8, "&Installed drivers:", 0},
    {JXW_LISTBOX, JxDriversList, 8, 16, 184, 88, nullptr, 0},
    {JXW_BUTTON, JxAddDriverButton, 204, 16, 68, 14, "&Add...", 0},
    {JXW_BUTTON, JxDeleteDriverButton, 204, 32, 68, 14, "D&elete...", 0},
    {JXW_BUTTON, JxCloseButton, 204, 88, 68, 14, "&Close", JXW_DEFAULT | JXW_CLOSE},
    kEndOfControls};

// Nothing reads the three values yet, as the labels say.
inline constexpr JxwControl kAdvancedOptionsControls[] = {
    {JXW_CHECKBOX, JxOptionFlagBox, 8, 8, 264, 8, "&Option: on (kept, but has no effect yet)", 0},
    {JXW_GROUPBOX, 0, 8, 24, 128, 64, "1st choice (no effect yet)", 0},
    {JXW_RADIO, JxFirstChoice0, 16, 40, 112, 8, "First: value &0", 0},
    {JXW_RADIO, JxFirstChoice1, 16, 56, 112, 8, "First: value &1", 0},
    {JXW_RADIO, JxFirstChoice2, 16, 72, 112, 8, "First: value &2", 0},
    {JXW_GROUPBOX, 0, 144, 24, 128, 64, "2nd choice (no effect yet)", 0},
    {JXW_RADIO, JxSecondChoice0, 152, 40, 112, 8, "S&econd: value 0", 0},
    {JXW_RADIO, JxSecondChoice1, 152, 56, 112, 8, "Se&cond: value 1", 0},
    {JXW_RADIO, JxSecondChoice2, 152, 72, 112, 8, "Seco&nd: value 2", 0},
    {JXW_BUTTON, JxVersionsButton, 8, 96, 80, 14, "&Versions...", 0},
    {JXW_BUTTON, IDOK, 128, 96, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 96, 68, 14, "Cancel", 0},
    kEndOfControls};

inline constexpr JxwControl kInstallDriversControls[] = {
    {JXW_LABEL, 0, 8, 8, 184, 8, "&Drivers in the installation script:", 0},
    {JXW_LISTBOX, JxInstallDriversList, 8, 16, 184, 88, nullptr, 0},
    {JXW_BUTTON, IDOK, 204, 16, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 32, 68, 14, "Cancel", 0},
    {JXW_BUTTON, JxAdvancedButton, 204, 56, 68, 14, "&Advanced...", 0},
    kEndOfControls};

inline constexpr JxwControl kAddDriverControls[] = {
    {JXW_LABEL, JxDirectoryText, 8, 8, 264, 8, "The directory must hold the installation script odbc.inf.", JXW_PLAIN},
    {JXW_LABEL, 0, 8, 24, 48, 8, "&Directory:", 0},
    {JXW_EDIT, JxDirectoryEdit, 56, 24, 216, 12, nullptr, 0},
    {JXW_BUTTON, IDOK, 128, 48, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 48, 68, 14, "Cancel", 0},
    kEndOfControls};

// OK does nothing in this dialog, so Close is the default button.
inline constexpr JxwControl kVersionsControls[] = {
    {JXW_LABEL, 0, 8, 8, 184, 8, "&Drivers in the installation script:", 0},
    {JXW_LISTBOX, JxVersionsList, 8, 16, 184, 48, nullptr, 0},
    {JXW_BUTTON, IDCANCEL, 204, 16, 88, 14, "Close", JXW_DEFAULT},
    {JXW_BUTTON, IDOK, 204, 32, 88, 14, "OK (no effect)", 0},
    {JXW_LABEL, 0, 8, 72, 48, 8, "File name:", 0},
    {JXW_LABEL, JxVersionFileName, 60, 72, 232, 8, nullptr, JXW_PLAIN},
    {JXW_LABEL, 0, 8, 80, 48, 8, "Kind:", 0},
    {JXW_LABEL, JxVersionRole, 60, 80, 232, 8, nullptr, JXW_PLAIN},
    {JXW_LABEL, 0, 8, 88, 48, 8, "Version:", 0},
    {JXW_LABEL, JxVersionNumber, 60, 88, 232, 8, nullptr, JXW_PLAIN},
    {JXW_LABEL, 0, 8, 96, 48, 8, "Date:", 0},
    {JXW_LABEL, JxVersionDate, 60, 96, 232, 8, nullptr, JXW_PLAIN},
    {JXW_LABEL, 0, 8, 104, 48, 8, "Size:", 0},
    {JXW_LABEL, JxVersionSize, 60, 104, 232, 8, nullptr, JXW_PLAIN},
    kEndOfControls};

inline constexpr JxwControl kSelectTranslatorControls[] = {
    {JXW_LABEL, 0, 8, 8, 184, 8, "&Translators:", 0},
    {JXW_LISTBOX, JxTranslatorsList, 8, 16, 184, 72, nullptr, 0},
    {JXW_BUTTON, IDOK, 204, 16, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 32, 68, 14, "Cancel", 0},
    {JXW_LABEL, 0, 8, 96, 264, 8, "Cancel chooses no translator.", 0},
    kEndOfControls};

// The caller decides what the eight texts mean.
inline constexpr JxwControl kAboutControls[] = {{JXW_GROUPBOX, 0, 8, 8, 264, 88, "About", 0},
                                                {JXW_LABEL, 146, 16, 24, 248, 8, nullptr, JXW_PLAIN},
                                                {JXW_LABEL, 147, 16, 32, 248, 8, nullptr, JXW_PLAIN},
                                                {JXW_LABEL, 148, 16, 40, 248, 8, nullptr, JXW_PLAIN},
                                                {JXW_LABEL, 149, 16, 48, 248, 8, nullptr, JXW_PLAIN},
                                                {JXW_LABEL, 150, 16, 56, 248, 8, nullptr, JXW_PLAIN},
                                                {JXW_LABEL, 151, 16, 64, 248, 8, nullptr, JXW_PLAIN},
                                                {JXW_LABEL, 152, 16, 72, 248, 8, nullptr, JXW_PLAIN},
                                                {JXW_LABEL, 153, 16, 80, 248, 8, nullptr, JXW_PLAIN},
                                                {JXW_BUTTON, IDOK, 204, 104, 68, 14, "OK", JXW_DEFAULT | JXW_CLOSE},
                                                kEndOfControls};

inline constexpr JxwTemplate kTemplates[] = {
    {JxAddDataSourceDialog, "Add Data Source", 280, 112, kAddDataSourceControls},
    {JxDataSourcesDialog, "Data Sources", 280, 128, kDataSourcesControls},
    {JxOptionsDialog, "Options", 280, 128, kOptionsControls},
    {JxDriversDialog, "ODBC Drivers", 280, 112, kDriversControls},
    {JxAdvancedOptionsDialog, "Advanced Installation Options", 280, 120, kAdvancedOptionsControls},
    {JxInstallDriversDialog, "Install Drivers", 280, 112, kInstallDriversControls},
    {JxAddDriverDialog, "Add Driver", 280, 72, kAddDriverControls},
    {JxVersionsDialog, "Versions", 300, 120, kVersionsControls},
    {JxSelectTranslatorDialog, "Select Translator", 280, 112, kSelectTranslatorControls},
    {JxAboutDialog, "About", 280, 128, kAboutControls},
    {0, nullptr, 0, 0, nullptr}};

}  // namespace jx
