// Hands the list of drivers out.
#include "api3/driver_list.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "api3/call.h"
#include "api3/driver_registry.h"

namespace jx::api3 {

bool giveDriverList(ThreadState& state, const TextOutput& output, WORD* length) {
    if (!output.isThere())
        return refuse(ODBC_ERROR_INVALID_BUFF_LEN, "There is no buffer for the list of drivers.");
    const std::optional<std::string> names = driverNames(state);
    if (!names)
        return false;
    if (names->empty())
        return refuse(ODBC_ERROR_COMPONENT_NOT_FOUND,
                      "No driver is registered: neither the user's nor the system's odbcinst.ini has one.");
    const Placed placed = output.placeList(*names);
    if (length != nullptr)
        *length = static_cast<WORD>(std::min<std::size_t>(placed.length, UINT16_MAX));
    return true;
}

}  // namespace jx::api3
