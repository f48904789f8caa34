// Texts of the installer library.
#pragma once

#include <string>

namespace jx::assist {

// The text of that id (text_ids.h); empty while the library is not loaded.
std::string libraryText(unsigned short id);

}  // namespace jx::assist
