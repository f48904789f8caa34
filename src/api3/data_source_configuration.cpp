// Finds the setup routine and calls it.
#include "api3/data_source_configuration.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "api3/call.h"
#include "api3/data_source_entry.h"
#include "api3/driver_registry.h"
#include "api3/dsn_routine.h"
#include "api3/name_list.h"
#include "api3/profile_write.h"
#include "api3/text_conversion.h"
#include "rules/sections.h"

namespace jx::api3 {

namespace {

constexpr WORD kFirstSystemRequest = ODBC_ADD_SYS_DSN;

bool isForSystem(WORD request) {
    return request >= kFirstSystemRequest;
}

// The request as a setup routine knows it.
WORD plainRequest(WORD request) {
    return isForSystem(request) ? static_cast<WORD>(request - (kFirstSystemRequest - ODBC_ADD_DSN)) : request;
}

// The name that a list gives the data source; empty when it gives none.
std::string dataSourceIn(const char* attributes) {
    for (const std::string_view text : NamesIn(listOf(attributes))) {
        const std::size_t equals = text.find('=');
        if (equals != std::string_view::npos && rules::sameName(rules::trimmed(text.substr(0, equals)), "DSN"))
            return std::string(rules::trimmed(text.substr(equals + 1)));
    }
    return {};
}

// A user's change of what only the system's file has would make a second data source that hides the first.
bool mayChange(ThreadState& state, const ConfigurationRequest& request) {
    if (request.request != ODBC_CONFIG_DSN)
        return true;
    const std::string name = dataSourceIn(request.attributes);
    return name.empty() || mayHide(state, {name.c_str(), nullptr});
}

bool isKnown(WORD request) {
    return (request >= ODBC_ADD_DSN && request <= ODBC_REMOVE_DEFAULT_DSN) ||
           refuse(ODBC_ERROR_INVALID_REQUEST_TYPE,
                  "There is no request " + std::to_string(request) + " to configure a data source.");
}

std::optional<RegisteredDriver> prepare(ThreadState& state, const ConfigurationRequest& request) {
    if (!isKnown(request.request))
        return std::nullopt;
    std::optional<RegisteredDriver> driver = needDriver(state, request.driver, ODBC_ERROR_COMPONENT_NOT_FOUND);
    if (driver && !mayChange(state, request))
        driver.reset();
    return driver;
}

}  // namespace

bool configureDataSource(ThreadState& state, const ConfigurationRequest& request) {
    if (request.request == ODBC_REMOVE_DEFAULT_DSN)
        return guarded([&] { return removeDataSource(state, rules::kDefault); });
    const std::optional<RegisteredDriver> driver =
        guarded(std::optional<RegisteredDriver>(), [&] { return prepare(state, request); });
    if (!driver)
        return false;
    const OwnMode mode(state, isForSystem(request.request) ? Mode::system : Mode::user);
    return callDsnRoutine(state, *driver, {request.window, plainRequest(request.request), request.attributes});
}

}  // namespace jx::api3
