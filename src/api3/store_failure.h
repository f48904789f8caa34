// What the store says of its last failure, in sentences for error records.
//
//     return refuse(ODBC_ERROR_REQUEST_FAILED, "Data source \"Sales\" was not written: " + storeReason());
#pragma once

#include <string>

#include "api3/file_places.h"

namespace jx::api3 {

// The store's own sentence with a full stop: "Cannot open /etc/odbc.ini: Permission denied."
std::string storeReason();

// Why a file that is there cannot be read, or its place is not known.
std::string whyNotRead(const Place& place);

// Why a file cannot be written that has no place.
std::string whyNowhere(const Place& place);

}  // namespace jx::api3
