// Stores a driver's settings and hands requests on.
#include "api3/driver_configuration.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "api3/call.h"
#include "api3/profile_write.h"
#include "api3/quoted.h"
#include "rules/sections.h"

namespace jx::api3 {

namespace {

// Those that are neither known nor the driver's own.
bool isReserved(WORD request) {
    return request == 0 || (request > ODBC_CONFIG_DRIVER && request <= ODBC_CONFIG_DRIVER_MAX);
}

bool isKnown(WORD request) {
    return !isReserved(request) ||
           refuse(ODBC_ERROR_INVALID_REQUEST_TYPE, "There is no request " + std::to_string(request) + " to a driver.");
}

bool isNumberFromZero(std::string_view text) {
    DWORD number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

// The number in "CPTimeout=number"; nothing when the text is another.
std::optional<std::string> timeoutIn(const char* text) {
    const std::string_view setting = text == nullptr ? "" : text;
    const std::size_t equals = setting.find('=');
    if (equals == std::string_view::npos ||
        !rules::sameName(rules::trimmed(setting.substr(0, equals)), rules::kPoolTimeout))
        return std::nullopt;
    const std::string_view value = rules::trimmed(setting.substr(equals + 1));
    return isNumberFromZero(value) ? std::optional<std::string>(value) : std::nullopt;
}

bool storeTimeout(ThreadState& state, const RegisteredDriver& driver, const char* text) {
    const std::optional<std::string> timeout = timeoutIn(text);
    if (!timeout)
        return refuse(ODBC_ERROR_INVALID_KEYWORD_VALUE,
                      "Driver " + quoted(driver.name) + " was not configured: the text is not CPTimeout=SECONDS.");
    return writeProfile(state, {driver.name.c_str(), rules::kPoolTimeout, timeout->c_str()}, "odbcinst.ini");
}

}  // namespace

bool configureDriver(ThreadState& state, const DriverRequest& request, const char* driver,
                     const DriverMessage& message) {
    const std::optional<RegisteredDriver> found = guarded(std::optional<RegisteredDriver>(), [&] {
        return isKnown(request.request) ? needDriver(state, driver, ODBC_ERROR_COMPONENT_NOT_FOUND) : std::nullopt;
    });
    if (!found)
        return false;
    if (request.request == ODBC_CONFIG_DRIVER)
        return guarded([&] { return storeTimeout(state, *found, request.text); });
    const DriverOutcome outcome = callDriverRoutine(state, *found, request, message);
    return outcome == DriverOutcome::done || outcome == DriverOutcome::none;
}

}  // namespace jx::api3
