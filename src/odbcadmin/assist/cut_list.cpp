// Comparing the rows with the file.
#include "odbcadmin/assist/cut_list.h"

#include <control_ids.h>

#include "odbcadmin/assist/chosen_source.h"
#include "odbcadmin/assist/driver_lists.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/assist/scoped_files.h"
#include "odbcadmin/assist/system_rows.h"
#include "odbcadmin/model/configuration.h"
#include "rules/sections.h"

namespace jx::assist {

namespace {

struct Notice {
    HWND dialog = 0;
    bool isCut = false;
    std::string text;
};
thread_local Notice lastNotice;

// 1998 as "1,998".
std::string grouped(long number) {
    std::string text = std::to_string(number);
    for (std::size_t at = text.size(); at > 3; at -= 3)
        text.insert(at - 3, ",");
    return text;
}

// How many data sources a list shows, and how many there are.
struct Count {
    long usersShown = 0, systemsShown = 0, users = 0, systems = 0;

    std::string text() const {
        return grouped(usersShown + systemsShown) + " of " + grouped(users + systems) + " shown";
    }
};

// The user's default data source is in no list of the file and is not counted.
Count counted(HWND dialog, unsigned short list) {
    Count count;
    for (const std::string& row : rowsIn(dialog, list)) {
        const auto source = sourceInRow(row);
        if (withoutSystemMark(row))
            ++count.systemsShown;
        else if (!source || !rules::isDefaultName(source->name))
            ++count.usersShown;
    }
    for (const model::DataSource& source : model::Configuration::read().dataSources())
        count.users += source.isListed() ? 1 : 0;
    count.systems = static_cast<long>(systemSourceRows().size());
    return count;
}

// What of the filter the user sees no other way; empty when there is nothing.
std::string inWords(const Filter& filter) {
    std::string whose = filter.scope == model::Seen::both   ? ""
                        : filter.scope == model::Seen::user ? "User only"
                                                            : "System only";
    if (filter.text.empty())
        return whose;
    return "Filter \"" + filter.text + "\"" + (whose.empty() ? "" : ", " + whose);
}

std::string noticeOf(const Count& count, const Filter& filter, bool isCut) {
    const std::string words = inWords(filter);
    if (!isCut && words.empty())
        return {};
    return (words.empty() ? "" : words + ": ") + count.text() + (isCut ? "; F9 shows all." : "; F8 changes it.");
}

// That nothing of the system's is shown since its file cannot be read.
std::string troubleNotice(model::FileKind kind) {
    const model::Reason trouble = systemTrouble(kind);
    return trouble ? "Without the system's: " + trouble.fact + "." : "";
}

}  // namespace

void noteCutList(HWND dialog) {
    const unsigned short id = sourceList(dialog);
    if (driverList(dialog) == JxDriversList)
        lastNotice = {dialog, /*isCut=*/false, troubleNotice(model::FileKind::drivers)};
    if (id == 0)
        return;
    const Filter filter = filterOf(dialog);
    const Count count = counted(dialog, id);
    const bool isCut = filter.text.empty() && filter.scope != model::Seen::system && count.usersShown < count.users;
    lastNotice = {dialog, isCut, noticeOf(count, filter, isCut)};
    if (const std::string trouble = troubleNotice(model::FileKind::dataSources); !trouble.empty())
        lastNotice.text += (lastNotice.text.empty() ? "" : " ") + trouble;
}

std::string cutNotice(HWND dialog) {
    return dialog == lastNotice.dialog ? lastNotice.text : std::string();
}

bool isCut(HWND dialog) {
    return dialog == lastNotice.dialog && lastNotice.isCut;
}

}  // namespace jx::assist
