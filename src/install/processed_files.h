// The files a run has processed, in the record's list: each file name is processed once.
#pragma once

#include <cstdint>

#include "install/install_record.h"

namespace jx::install {

// 1 when a file of exactly the entry's file name is in the list, else 0.
unsigned int HasFileBeenProcessed(_Install* install, std::uint32_t item, std::uint32_t entry);

// Appends a copy of the entry's file name without looking whether it is there. 1, or 0 with the list unchanged when
// memory is short.
unsigned int AddFileToProcessedList(_Install* install, std::uint32_t item, std::uint32_t entry);

}  // namespace jx::install
