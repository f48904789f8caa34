// The templates of our own dialogs.
#include "odbcadmin/assist/forms.h"

#include <jxscreen.h>
#include <jxtemplate.h>
#include <jxwindow.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "rules/names.h"

namespace jx::assist {

namespace {

constexpr const char* kRecord = "record";
constexpr JxwControl kEnd{JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0};

constexpr JxwControl kRegistration[] = {
    {JXW_LABEL, 0, 8, 8, 264, 8, "&Drivers found on this system:", 0},
    {JXW_LISTBOX, kFormFound, 8, 16, 264, 32, nullptr, 0},
    {JXW_LABEL, 0, 8, 56, 64, 8, "&Name:", 0},
    {JXW_EDIT, kFormName, 72, 56, 200, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 72, 64, 8, "Driver &library:", 0},
    {JXW_EDIT, kFormLibrary, 72, 72, 200, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 88, 64, 8, "&Setup library:", 0},
    {JXW_EDIT, kFormSetup, 72, 88, 200, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 104, 264, 8, "Both libraries are tried before anything is written.", 0},
    {JXW_BUTTON, kFormBrowse, 8, 120, 68, 14, "&Browse...", 0},
    {JXW_BUTTON, IDOK, 128, 120, 68, 14, "OK", JXW_DEFAULT},
    {JXW_BUTTON, IDCANCEL, 204, 120, 68, 14, "Cancel", 0},
    kEnd};

constexpr JxwControl kRemoval[] = {
    {JXW_LABEL, kRemovalDriver, 8, 8, 264, 8, "", JXW_PLAIN},
    {JXW_LABEL, kRemovalUsers, 8, 24, 264, 16, "", JXW_PLAIN},
    {JXW_LABEL, 0, 8, 48, 264, 8, "Delete &Files removes from the disk and from your files, for good:", 0},
    {JXW_LISTBOX, kRemovalList, 8, 56, 264, 40, nullptr, 0},
    {JXW_BUTTON, kRemovalUnregister, 8, 104, 84, 14, "&Unregister Only", 0},
    {JXW_BUTTON, kRemovalDelete, 98, 104, 84, 14, "D&elete Files...", 0},
    {JXW_BUTTON, IDCANCEL, 188, 104, 84, 14, "Cancel", JXW_DEFAULT},
    kEnd};

constexpr JxwControl kSources[] = {{JXW_LABEL, 0, 8, 8, 200, 8, "&Data sources (driver):", 0},
                                   {JXW_LISTBOX, kSourcesList, 8, 16, 196, 112, nullptr, 0},
                                   {JXW_BUTTON, kSourcesSetup, 212, 16, 60, 14, "&Setup...", JXW_DEFAULT},
                                   {JXW_BUTTON, kSourcesView, 212, 40, 60, 14, "&View", 0},
                                   {JXW_BUTTON, kSourcesTest, 212, 64, 60, 14, "&Test", 0},
                                   {JXW_BUTTON, kSourcesRemove, 212, 88, 60, 14, "D&elete", 0},
                                   {JXW_BUTTON, IDCANCEL, 212, 112, 60, 14, "&Close", 0},
                                   kEnd};

constexpr JxwControl kValues[] = {{JXW_LABEL, kValuesWhere, 8, 8, 264, 16, "", JXW_PLAIN},
                                  {JXW_LABEL, 0, 8, 24, 264, 8, "Key&s and values:", 0},
                                  {JXW_LISTBOX, kValuesList, 8, 32, 264, 80, nullptr, 0},
                                  {JXW_BUTTON, IDCANCEL, 204, 120, 68, 14, "&Close", JXW_DEFAULT},
                                  kEnd};

constexpr JxwControl kLine[] = {{JXW_LABEL, kLineAbout, 8, 8, 224, 16, "", 0},
                                {JXW_EDIT, kLineText, 8, 32, 224, 12, nullptr, 0},
                                {JXW_BUTTON, IDOK, 88, 56, 68, 14, "OK", JXW_DEFAULT},
                                {JXW_BUTTON, IDCANCEL, 164, 56, 68, 14, "Cancel", 0},
                                kEnd};

constexpr JxwControl kFiles[] = {{JXW_LABEL, kFilesDirectory, 8, 8, 264, 16, "", JXW_PLAIN},
                                 {JXW_LISTBOX, kFilesList, 8, 24, 264, 88, nullptr, 0},
                                 {JXW_BUTTON, IDOK, 128, 120, 68, 14, "&Open", JXW_DEFAULT},
                                 {JXW_BUTTON, IDCANCEL, 204, 120, 68, 14, "Cancel", 0},
                                 kEnd};

constexpr JxwControl kFilter[] = {{JXW_LABEL, kLineAbout, 8, 8, 224, 8, "", 0},
                                  {JXW_EDIT, kLineText, 8, 16, 224, 12, nullptr, 0},
                                  {JXW_RADIO, kFilterBoth, 8, 40, 96, 8, "&User and system", 0},
                                  {JXW_RADIO, kFilterUser, 104, 40, 60, 8, "U&ser", 0},
                                  {JXW_RADIO, kFilterSystem, 164, 40, 68, 8, "S&ystem", 0},
                                  {JXW_BUTTON, IDOK, 88, 56, 68, 14, "OK", JXW_DEFAULT},
                                  {JXW_BUTTON, IDCANCEL, 164, 56, 68, 14, "Cancel", 0},
                                  kEnd};

constexpr JxwControl kCopy[] = {{JXW_LABEL, kLineAbout, 8, 8, 224, 8, "", 0},
                                {JXW_EDIT, kLineText, 8, 16, 224, 12, nullptr, 0},
                                {JXW_RADIO, kCopyToUser, 8, 40, 92, 8, "For &you alone", 0},
                                {JXW_RADIO, kCopyToSystem, 104, 40, 128, 8, "For &all users (system)", 0},
                                {JXW_BUTTON, IDOK, 88, 56, 68, 14, "OK", JXW_DEFAULT},
                                {JXW_BUTTON, IDCANCEL, 164, 56, 68, 14, "Cancel", 0},
                                kEnd};

// What stands below the list of keys in both dialogs that edit them.
constexpr JxwControl kKeyFields[] = {{JXW_LABEL, 0, 8, 112, 60, 8, "K&ey:", 0},
                                     {JXW_EDIT, kSectionKey, 72, 112, 120, 12, nullptr, 0},
                                     {JXW_LABEL, 0, 8, 128, 60, 8, "&Value:", 0},
                                     {JXW_EDIT, kSectionValue, 72, 128, 120, 12, nullptr, 0},
                                     {JXW_LABEL, 0, 8, 144, 60, 8, "&Hidden value:", 0},
                                     {JXW_EDIT, kSectionHidden, 72, 144, 120, 12, nullptr, JXW_PASSWORD | JXW_GREY},
                                     {JXW_BUTTON, IDOK, 204, 112, 68, 14, "OK", JXW_DEFAULT},
                                     {JXW_BUTTON, IDCANCEL, 204, 128, 68, 14, "Cancel", 0},
                                     kEnd};

template <std::size_t First, std::size_t Rest>
constexpr std::array<JxwControl, First + Rest> followedBy(const JxwControl (&first)[First],
                                                          const JxwControl (&rest)[Rest]) {
    std::array<JxwControl, First + Rest> all{};
    std::copy(std::begin(first), std::end(first), all.begin());
    std::copy(std::begin(rest), std::end(rest), all.begin() + First);
    return all;
}

constexpr JxwControl kSectionTop[] = {{JXW_LABEL, kSectionWhere, 8, 8, 264, 16, "", JXW_PLAIN},
                                      {JXW_LABEL, 0, 8, 32, 184, 8, "&Keys and values:", 0},
                                      {JXW_LISTBOX, kSectionList, 8, 40, 184, 64, nullptr, 0},
                                      {JXW_BUTTON, kSectionSet, 204, 40, 68, 14, "&Set", 0},
                                      {JXW_BUTTON, kSectionRemove, 204, 56, 68, 14, "&Remove", JXW_GREY}};
constexpr auto kSection = followedBy(kSectionTop, kKeyFields);

constexpr JxwControl kNewSourceTop[] = {{JXW_LABEL, 0, 8, 8, 60, 8, "&Name:", 0},
                                        {JXW_EDIT, kNewName, 72, 8, 120, 12, nullptr, 0},
                                        {JXW_RADIO, kNewForUser, 204, 8, 72, 8, "For &you alone", 0},
                                        {JXW_RADIO, kNewForSystem, 204, 24, 72, 8, "For &all users", 0},
                                        {JXW_LABEL, kNewKeySays, 8, 24, 184, 16, "", JXW_PLAIN},
                                        {JXW_LABEL, 0, 8, 40, 184, 8, "&Keys and values:", 0},
                                        {JXW_LISTBOX, kSectionList, 8, 48, 184, 56, nullptr, 0},
                                        {JXW_BUTTON, kSectionSet, 204, 48, 68, 14, "&Set", 0},
                                        {JXW_BUTTON, kSectionRemove, 204, 64, 68, 14, "&Remove", JXW_GREY}};
constexpr auto kNewSource = followedBy(kNewSourceTop, kKeyFields);

constexpr JxwTemplate kTemplates[] = {{kFormDialog, "Register a Driver", 280, 140, kRegistration},
                                      {kRemovalForm, "Remove a Driver", 280, 124, kRemoval},
                                      {kSourcesForm, "All Data Sources", 280, 136, kSources},
                                      {kValuesForm, "Values", 280, 140, kValues},
                                      {kLineForm, "Name", 240, 76, kLine},
                                      {kFilesForm, "Choose a File", 280, 140, kFiles},
                                      {kFilterForm, "What Is Shown", 240, 76, kFilter},
                                      {kCopyForm, "Copy a Data Source", 240, 76, kCopy},
                                      {kSectionForm, "Data Source of the System", 280, 160, kSection.data()},
                                      {kNewSourceForm, "New Data Source", 280, 160, kNewSource.data()},
                                      {0, nullptr, 0, 0, nullptr}};

}  // namespace

int showForm(unsigned short form, HWND owner, JxwProcedure procedure, void* record) {
    static const bool isRegistered = JXW_RegisterModule(kFormModule, nullptr, kTemplates) != 0;
    return isRegistered ? JXW_DialogBox(kFormModule, form, owner, procedure, record) : -1;
}

unsigned int closedByCancel(HWND dialog, int message, int wparam) {
    const bool isCancel = message == WM_COMMAND && wparam == IDCANCEL;
    if (isCancel)
        JXW_EndDialog(dialog, 0);
    return isCancel ? 1 : 0;
}

void keepFormRecord(HWND dialog, uintptr_t record) {
    JXW_SetProp(dialog, kRecord, record);
}

uintptr_t keptFormRecord(HWND dialog) {
    return JXW_GetProp(dialog, kRecord);
}

void addRow(HWND dialog, unsigned short list, const std::string& row) {
    JXW_SendDlgItemMessage(dialog, list, LB_ADDSTRING, 0, reinterpret_cast<uintptr_t>(row.c_str()));
}

std::string wholeText(HWND dialog, unsigned short field) {
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &control) != 0; ++index)
        if (control.id == field)
            return control.text;
    return {};
}

std::string fieldText(HWND dialog, unsigned short field) {
    const std::string text = wholeText(dialog, field);
    return std::string(rules::trimmed(text));
}

}  // namespace jx::assist
