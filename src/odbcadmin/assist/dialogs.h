// The dialog of libjxsetup.so as a program sees it; those of the installer library are in control_ids.h.
#pragma once

#include <control_ids.h>

namespace jx::assist {

inline constexpr char kSetupModule[] = "jxsetup";
inline constexpr unsigned short kSetupDialog = 200;

}  // namespace jx::assist
