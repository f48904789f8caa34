// Calls ConfigDSN.
#include "api3/dsn_routine.h"

#include <optional>
#include <string>
#include <vector>

#include "api3/call.h"
#include "api3/generic_setup.h"
#include "api3/quoted.h"
#include "api3/setup_routines.h"
#include "api3/text_conversion.h"

namespace jx::api3 {

namespace {

// Arguments: what the routine is given, in the form that it takes.
struct Arguments {
    ConfigDsnW* wide = nullptr;
    ConfigDsn* narrow = nullptr;
    std::vector<SQLWCHAR> wideDriver;
    std::vector<SQLWCHAR> wideList;
    std::string list;  // ends with two NULs, also when it is empty
};

Arguments argumentsFor(const SetupRoutines& routines, const RegisteredDriver& driver, const char* attributes) {
    Arguments arguments;
    arguments.list = std::string(listOf(attributes)) + '\0';
    arguments.wide = routines.find<ConfigDsnW>("ConfigDSNW");
    arguments.narrow = routines.find<ConfigDsn>("ConfigDSN");
    if (arguments.wide != nullptr) {
        arguments.wideDriver = toUtf16(driver.name);
        arguments.wideList = toUtf16(arguments.list);
    }
    return arguments;
}

// The routine's own part: nothing of ours that could throw is in here.
bool run(const Arguments& arguments, const RegisteredDriver& driver, const DsnRequest& request) {
    if (arguments.wide != nullptr)
        return arguments.wide(request.window, request.request, arguments.wideDriver.data(),
                              arguments.wideList.data()) != FALSE;
    return arguments.narrow(request.window, request.request, driver.name.c_str(), arguments.list.c_str()) != FALSE;
}

bool refuseForRoutine(const RegisteredDriver& driver) {
    return guarded([&] {
        return refuse(ODBC_ERROR_REQUEST_FAILED,
                      "The setup library of driver " + quoted(driver.name) + " failed and gave no reason.");
    });
}

bool callCommonRoutine(ThreadState& state, const RegisteredDriver& driver, const DsnRequest& request,
                       const std::string& list) {
    return guarded([&] {
        return configureWithoutLibrary(state, {request.window, request.request, list.c_str()}, driver);
    });
}

bool load(ThreadState& state, const RegisteredDriver& driver, const DsnRequest& request,
          std::optional<SetupRoutines>& routines, Arguments& arguments) {
    return guarded([&] {
        routines.emplace(state, driver.setup);
        arguments = argumentsFor(*routines, driver, request.attributes);
        return true;
    });
}

}  // namespace

bool callDsnRoutine(ThreadState& state, const RegisteredDriver& driver, const DsnRequest& request) {
    const std::size_t recordsBefore = state.errors.count();
    bool done = false;
    {
        const RoutineScope nestedCallsBelongHere(state);
        std::optional<SetupRoutines> routines;
        Arguments arguments;
        if (!load(state, driver, request, routines, arguments))
            return false;
        const bool hasRoutine = arguments.wide != nullptr || arguments.narrow != nullptr;
        done = hasRoutine ? run(arguments, driver, request) : callCommonRoutine(state, driver, request, arguments.list);
    }
    if (done)
        state.errors.keep(recordsBefore);
    else if (state.errors.count() == recordsBefore)
        refuseForRoutine(driver);
    return done;
}

}  // namespace jx::api3
