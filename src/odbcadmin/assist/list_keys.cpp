// What each key does.
#include "odbcadmin/assist/list_keys.h"

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/cut_list.h"
#include "odbcadmin/assist/driver_lists.h"
#include "odbcadmin/assist/filter_form.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/source_command.h"
#include "odbcadmin/assist/sources_form.h"

namespace jx::assist {

namespace {

FunctionKey sourceKey(int number, const char* label, const char* working, void (*act)(HWND, const ChosenSource&)) {
    return {number, label, working, [act](HWND dialog) -> std::string {
                const auto source = chosenSource(dialog);
                if (!source)
                    return "Choose a data source in the list first.";
                act(dialog, *source);
                return {};
            }};
}

FunctionKey listKey(int number, const char* label, void (*act)(HWND)) {
    return {number, label, "", [act](HWND dialog) -> std::string {
                act(dialog);
                return {};
            }};
}

FunctionKey reloadKey() {
    return {5, "reload", "", [](HWND dialog) -> std::string {
                refillList(dialog);
                return "The list is read again.";
            }};
}

}  // namespace

std::vector<FunctionKey> listKeys(HWND dialog) {
    if (driverList(dialog) != 0)
        return {reloadKey()};
    if (sourceList(dialog) == 0)
        return {};
    std::vector<FunctionKey> keys{
        sourceKey(3, "test", "the connection", testSource),
        sourceKey(4, "view", "", viewSource),
        reloadKey(),
        sourceKey(6, "copy", "",
                  [](HWND owner, const ChosenSource& source) { nameSource(owner, source, Naming::copy); }),
        sourceKey(7, "rename", "",
                  [](HWND owner, const ChosenSource& source) { nameSource(owner, source, Naming::rename); }),
        listKey(8, "filter", askForFilter)};
    if (isCut(dialog))
        keys.push_back(listKey(9, "all", showSources));
    return keys;
}

}  // namespace jx::assist
