// Says why the common setup routine cannot do something, and lets it do the rest.
#include "api3/generic_setup.h"

#include <cstdint>
#include <string>

#include "api3/call.h"
#include "api3/data_source_entry.h"
#include "api3/file_change.h"
#include "api3/profile_lookup.h"
#include "api3/profile_write.h"
#include "api3/quoted.h"
#include "api3/store_failure.h"
#include "rules/valid_names.h"
#include "setup/data_source_request.h"
#include "setup/setup_routine.h"

namespace jx::api3 {

namespace {

using setup::DataSourceRequest;

setup::SetupFile setupFile(const Place& place) {
    return {place.path(), place.isShared() ? setup::NewFile::forEverybody : setup::NewFile::forItsOwner};
}

// A window of the dialog layer is a number; a pointer to anything else is none of its windows.
setup::SetupUser userAt(HWND window) {
    const auto number = reinterpret_cast<std::uintptr_t>(window);
    return {window != nullptr, number <= UINT32_MAX ? static_cast<std::uint32_t>(number) : 0};
}

bool isStorable(const DataSourceRequest& request) {
    for (const auto& [keyword, value] : request.attributes)
        if (const rules::Refusal refused = rules::exactRefusalOf(request.name, keyword, value);
            refused && refused.what != rules::Text::section)
            return refuse(ODBC_ERROR_INVALID_KEYWORD_VALUE,
                          "The " + std::string(refused.what == rules::Text::key ? "keyword" : "value of keyword") +
                              " " + quoted(keyword) + " cannot be stored: " + refused.why + ".");
    return true;
}

bool hasValidName(const DataSourceRequest& request, WORD plainRequest) {
    if (request.name.empty())
        return refuse(ODBC_ERROR_INVALID_DSN, "The attributes name no data source: DSN=NAME is missing.");
    const rules::Why why = plainRequest == setup::kAdd ? rules::whyNoCharacterName(request.name)
                                                       : rules::whyNoName(request.name, rules::kAnyDataSource);
    return why == nullptr ||
           refuse(ODBC_ERROR_INVALID_DSN, "No data source can be called " + quoted(request.name) + ": " + why + ".");
}

// Whether the data source that is to be changed or removed is in the file.
bool isThere(const Place& place, const DataSourceRequest& request, WORD plainRequest) {
    if (plainRequest == setup::kAdd)
        return true;
    JxIniPart part{};
    const char* name = request.name.c_str();
    const Look look = lookAt(place, {name, nullptr});
    if (look.failed)
        return false;
    if (look.view != nullptr &&
        (ask(look.view, name, nullptr, part) == JxIniFound ||
         (plainRequest == setup::kRemove && ask(look.view, rules::kDataSourceList, name, part) == JxIniFound)))
        return true;
    return refuse(ODBC_ERROR_REQUEST_FAILED,
                  "There is no data source " + quoted(request.name) + " in " + place.path() + ".");
}

// Says why the routine did not do it, as far as that can be told from outside; else what the store said.
bool refuseWithReason(const Place& place, const GenericRequest& request, const std::string& reason) {
    const std::optional<DataSourceRequest> parsed = setup::parseNamelessRequest(request.attributes);
    if (!parsed)
        return refuse(ODBC_ERROR_INVALID_KEYWORD_VALUE,
                      "The attributes are not a list of KEYWORD=VALUE texts in which no keyword stands twice.");
    return hasValidName(*parsed, request.request) && isStorable(*parsed) && isThere(place, *parsed, request.request) &&
           refuse(ODBC_ERROR_REQUEST_FAILED,
                  "Data source " + quoted(parsed->name) + " was not written to " + place.path() + ": " + reason);
}

}  // namespace

bool configureWithoutLibrary(ThreadState& state, const GenericRequest& request, const RegisteredDriver& driver) {
    const Place& place = writtenDataSources(state);
    if (!place.isThere())
        return refuse(ODBC_ERROR_REQUEST_FAILED, whyNowhere(place));
    const Place* drivers = writtenDefaultDriver(state);
    if (drivers == nullptr)
        return false;
    const setup::SetupFiles files{setupFile(place), setupFile(*drivers),
                                  [&driver](const char*) { return std::optional(driverValue(driver)); },
                                  rules::whyNoCharacterName};
    switch (setup::configureDataSource(files, userAt(request.window),
                                       {request.request, driver.name.c_str(), request.attributes})) {
        case setup::SetupOutcome::done:
            return true;
        case setup::SetupOutcome::givenUp:
            return refuse(ODBC_ERROR_USER_CANCELED, "The user gave up.");
        case setup::SetupOutcome::failed:
            break;
    }
    return refuseWithReason(place, request, storeReason());
}

}  // namespace jx::api3
