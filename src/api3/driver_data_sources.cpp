// Finds and removes a driver's data sources.
#include "api3/driver_data_sources.h"

#include <string>
#include <string_view>
#include <vector>

#include "api3/call.h"
#include "api3/dsn_routine.h"
#include "api3/name_list.h"
#include "api3/profile_lookup.h"
#include "api3/quoted.h"
#include "rules/sections.h"
#include "rules/valid_names.h"

namespace jx::api3 {

namespace {

using Names = std::vector<std::string>;

// Whether another driver is registered with the same library: whose data source is whose, the path cannot tell then.
bool sharesLibrary(ThreadState& state, const RegisteredDriver& driver) {
    const std::string names = driverNames(state).value_or("");
    for (const std::string_view name : NamesIn(names))
        if (!rules::sameName(name, driver.name) &&
            findDriver(state, std::string(name)).driver.library == driver.library)
            return true;
    return false;
}

// Ownership: which data sources of a file are the driver's.
class Ownership {
public:
    Ownership(ThreadState& state, const RegisteredDriver& driver)
        : driver_(driver), goesByLibrary_(!driver.library.empty() && !sharesLibrary(state, driver)) {}

    bool holds(JxIniView* view, const std::string& name) const {
        const std::string listed = value(view, rules::kDataSourceList, name.c_str());
        const std::string library = value(view, name.c_str(), rules::kDriver);
        return rules::sameName(listed, driver_.name) || rules::sameName(library, driver_.name) ||
               (goesByLibrary_ && library == driver_.library);
    }

private:
    static std::string value(JxIniView* view, const char* section, const char* key) {
        JxIniPart part{};
        return ask(view, section, key, part) == JxIniFound ? std::string(part.text, part.length) : std::string();
    }

    const RegisteredDriver& driver_;
    bool goesByLibrary_;
};

// Every name that a data source of the file has, in the list or as a section.
std::string namesIn(JxIniView* view) {
    NameList names;
    for (const char* section : {static_cast<const char*>(rules::kDataSourceList), static_cast<const char*>(nullptr)}) {
        JxIniPart part{};
        if (ask(view, section, nullptr, part) != JxIniFound)
            continue;
        const std::string list(part.text, part.length);
        for (const std::string_view name : NamesIn(list))
            if (rules::whyNoName(name, rules::kAnyDataSource) == nullptr)
                names.add(name);
    }
    return std::move(names).text();
}

Names dataSourcesIn(JxIniView* view, const Ownership& ownership) {
    Names owned;
    const std::string names = namesIn(view);
    for (const std::string_view name : NamesIn(names))
        if (std::string owner(name); ownership.holds(view, owner))
            owned.push_back(std::move(owner));
    return owned;
}

// Removal: what is to go from one file, and what stayed.
struct Removal {
    Scope scope;
    std::string path;
    Names names;
    std::string left;    // names, with commas
    std::string reason;  // the first record's sentence, or why none could be tried
};

void leave(Removal& removal, const std::string& name, const std::string& reason) {
    removal.left.append(removal.left.empty() ? "" : ", ").append(quoted(name));
    if (removal.reason.empty())
        removal.reason = reason;
}

Removal find(ThreadState& state, Scope scope, const Ownership& ownership) {
    const Place& place = state.places.find(scope, FileKind::dataSources, readEnvironment());
    Removal removal{scope, place.path(), {}, {}, {}};
    const std::size_t recordsBefore = state.errors.count();
    const Look look = lookAt(place, {nullptr, nullptr});
    if (look.view != nullptr)
        removal.names = dataSourcesIn(look.view, ownership);
    if (look.failed) {
        removal.left = "whatever it holds";
        removal.reason = state.errors.record(state.errors.count())->sentence();
        state.errors.keep(recordsBefore);
    }
    return removal;
}

bool isAllowed(Mode mode, Scope scope) {
    return mode == Mode::both || (mode == Mode::user) == (scope == Scope::user);
}

// One data source, through the routine: no memory of ours may run short around that.
void removeOne(ThreadState& state, const RegisteredDriver& driver, Removal& removal, const std::string& name) {
    const std::size_t recordsBefore = state.errors.count();
    std::string list;
    if (!guarded([&] {
            list = "DSN=" + name + '\0';
            return true;
        }))
        return;
    const OwnMode mode(state, removal.scope == Scope::user ? Mode::user : Mode::system);
    if (callDsnRoutine(state, driver, {nullptr, ODBC_REMOVE_DSN, list.c_str()}))
        return;
    guarded([&] {
        const ErrorRecord* record = state.errors.record(recordsBefore + 1);
        leave(removal, name, record == nullptr ? "" : record->sentence());
        return true;
    });
    state.errors.keep(recordsBefore);
}

void remove(ThreadState& state, const RegisteredDriver& driver, Removal& removal) {
    const bool isInReach = isAllowed(modeOf(state), removal.scope);
    for (const std::string& name : removal.names)
        if (isInReach)
            removeOne(state, driver, removal, name);
        else
            guarded([&] {
                leave(removal, name, "The configuration mode is the other scope's.");
                return true;
            });
    if (!removal.left.empty())
        guarded([&] {
            return refuse(ODBC_ERROR_REMOVE_DSN_FAILED, "Data sources of driver " + quoted(driver.name) +
                                                            " were left in " + removal.path + ": " + removal.left +
                                                            ". " + removal.reason);
        });
}

}  // namespace

void removeDataSourcesOf(ThreadState& state, const RegisteredDriver& driver) {
    std::vector<Removal> removals;
    guarded([&] {
        const Ownership ownership(state, driver);
        for (const Scope scope : {Scope::user, Scope::system})
            removals.push_back(find(state, scope, ownership));
        return true;
    });
    for (Removal& removal : removals)
        remove(state, driver, removal);
}

}  // namespace jx::api3
