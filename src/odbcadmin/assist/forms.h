// The dialogs of our own: their ids and those of their controls.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// The module of all of them.
inline constexpr const char* kFormModule = "odbcadmin";

// Registering a driver (driver_form.h).
inline constexpr unsigned short kFormDialog = 1;
inline constexpr unsigned short kFormName = 11;
inline constexpr unsigned short kFormLibrary = 12;
inline constexpr unsigned short kFormSetup = 13;
inline constexpr unsigned short kFormFound = 14;
inline constexpr unsigned short kFormBrowse = 15;

// Removing a driver (removal_form.h).
inline constexpr unsigned short kRemovalForm = 2;
inline constexpr unsigned short kRemovalDriver = 21;
inline constexpr unsigned short kRemovalUsers = 22;
inline constexpr unsigned short kRemovalList = 23;
inline constexpr unsigned short kRemovalUnregister = 24;
inline constexpr unsigned short kRemovalDelete = 25;

// All data sources (sources_form.h).
inline constexpr unsigned short kSourcesForm = 3;
inline constexpr unsigned short kSourcesList = 31;
inline constexpr unsigned short kSourcesSetup = 32;
inline constexpr unsigned short kSourcesView = 33;
inline constexpr unsigned short kSourcesTest = 34;
inline constexpr unsigned short kSourcesRemove = 35;

// The values of a data source (values_form.h).
inline constexpr unsigned short kValuesForm = 4;
inline constexpr unsigned short kValuesWhere = 41;
inline constexpr unsigned short kValuesList = 42;

// One line of text: the name of a copy, a new name, what rows must hold (line_form.h).
inline constexpr unsigned short kLineForm = 5;
inline constexpr unsigned short kLineAbout = 51;
inline constexpr unsigned short kLineText = 52;

// Choosing a file (file_form.h).
inline constexpr unsigned short kFilesForm = 6;
inline constexpr unsigned short kFilesDirectory = 61;
inline constexpr unsigned short kFilesList = 62;

// What of a list is shown (filter_form.h), with the two controls of the line form.
inline constexpr unsigned short kFilterForm = 7;
inline constexpr unsigned short kFilterBoth = 71;
inline constexpr unsigned short kFilterUser = 72;
inline constexpr unsigned short kFilterSystem = 73;

// The name of a copy, and the scope that it goes to (source_command.h); likewise.
inline constexpr unsigned short kCopyForm = 8;
inline constexpr unsigned short kCopyToUser = 81;
inline constexpr unsigned short kCopyToSystem = 82;

// The keys of a data source of the system (section_form.h).
inline constexpr unsigned short kSectionForm = 9;
inline constexpr unsigned short kSectionWhere = 91;
inline constexpr unsigned short kSectionList = 92;
inline constexpr unsigned short kSectionSet = 93;
inline constexpr unsigned short kSectionRemove = 94;
inline constexpr unsigned short kSectionKey = 95;
inline constexpr unsigned short kSectionValue = 96;
inline constexpr unsigned short kSectionHidden = 97;

// Making a data source of one of the system's drivers (new_source_form.h), with the controls for keys of the form
// above.
inline constexpr unsigned short kNewSourceForm = 10;
inline constexpr unsigned short kNewName = 101;
inline constexpr unsigned short kNewForUser = 102;
inline constexpr unsigned short kNewForSystem = 103;
inline constexpr unsigned short kNewKeySays = 104;

// Shows one of them on the thread's screen until it ends, and returns its result; -1 when it could not be shown. owner
// may be 0. The record is what WM_INITDIALOG gets.
int showForm(unsigned short form, HWND owner, JxwProcedure procedure, void* record);

// What a procedure returns for a message that it does not know: Cancel ends the dialog with 0.
unsigned int closedByCancel(HWND dialog, int message, int wparam);

// Keeps that record with the dialog, and gives it back.
void keepFormRecord(HWND dialog, uintptr_t record);
uintptr_t keptFormRecord(HWND dialog);

template <class Record>
Record& formRecord(HWND dialog) {
    return *reinterpret_cast<Record*>(keptFormRecord(dialog));  // NOLINT(performance-no-int-to-ptr): a property
}

void addRow(HWND dialog, unsigned short list, const std::string& row);

// The text of a field, without the blanks around it, and as it is.
std::string fieldText(HWND dialog, unsigned short field);
std::string wholeText(HWND dialog, unsigned short field);

}  // namespace jx::assist
