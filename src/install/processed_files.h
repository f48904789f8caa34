// The files a run has processed, in the record's list: each file name is processed once.
#pragma once

#include <cstdint>

#include "install/install_record.h"

namespace jx::install {

// 1 when the list has a file of exactly this name, else 0.
unsigned int HasFileBeenProcessed(_Install* install, std::uint32_t item, std::uint32_t entry);

// Appends a copy of the entry's file name, even if it is in the list already. Returns 1, or 0 with the list unchanged
// when memory is short.
unsigned int AddFileToProcessedList(_Install* install, std::uint32_t item, std::uint32_t entry);

}  // namespace jx::install
