// Removing a driver: its count, what its setup library does about it, its data sources, its entry.
//
//     return removeDriver(*state, lpszDriver, WithDataSources::yes, lpdwUsageCount);
#pragma once

#include <cstdint>

#include <jxodbc3/odbcinst.h>

namespace jx::api3 {

struct ThreadState;

enum class WithDataSources : std::uint8_t { no, yes };

// False with a record, and the driver as it was. True with records ODBC_ERROR_REMOVE_DSN_FAILED when data sources were
// left. What a setup routine throws passes through, and the driver is as it was.
bool removeDriver(ThreadState& state, const char* name, WithDataSources withDataSources, DWORD* count);

// A translator has no routine to ask.
bool removeTranslator(ThreadState& state, const char* name, DWORD* count);

}  // namespace jx::api3
