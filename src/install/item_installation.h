// Walking the components of a run and their files.
#pragma once

#include <cstdint>

#include "install/install_record.h"

namespace jx::install {

// Processes the files of the selected components: each file name once, whatever component names it. No file is copied;
// what a run leaves is in the configuration files, where every file is recorded under targetDir. An entry without a
// file name, or with paths of more than 1023 bytes, is passed over. The exported work buffers hold memory while the
// files are processed. Always 1.
unsigned int InstallItems(unsigned int hwnd, _Install* install);

// The hooks of the file transfer: they do nothing. CopyDisk returns 0, which means go on.
unsigned int VersionCheck(unsigned int hwnd, _Install* install, std::uint32_t item, std::uint32_t entry);
unsigned int CopyDisk(unsigned int hwnd, _Install* install, std::uint32_t item, std::uint32_t entry);

// 1 when a file of exactly the entry's file name is in the list of processed files, else 0.
unsigned int HasFileBeenProcessed(_Install* install, std::uint32_t item, std::uint32_t entry);

// Appends a copy of the entry's file name to that list without looking whether it is there. 1, or 0 with the list
// unchanged when memory is short.
unsigned int AddFileToProcessedList(_Install* install, std::uint32_t item, std::uint32_t entry);

}  // namespace jx::install
