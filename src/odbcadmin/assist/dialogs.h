// The library's dialogs and controls as a program sees them: their numbers are part of the interface.
#pragma once

namespace jx::assist {

inline constexpr unsigned short kAddDataSourceDialog = 100;
inline constexpr unsigned short kAddDataSourceList = 101;
inline constexpr unsigned short kDataSourcesDialog = 102;
inline constexpr unsigned short kDataSourcesList = 103;
inline constexpr unsigned short kOptionsDialog = 110;
inline constexpr unsigned short kDriversDialog = 115;
inline constexpr unsigned short kDriversDelete = 116;
inline constexpr unsigned short kDriversList = 117;
inline constexpr unsigned short kAdvancedDialog = 120;
inline constexpr unsigned short kInstallDialog = 129;
inline constexpr unsigned short kAddDriverDialog = 132;
inline constexpr unsigned short kVersionsDialog = 136;
inline constexpr unsigned short kTranslatorDialog = 143;
inline constexpr unsigned short kAboutDialog = 145;

// The dialog of libjxsetup.so.
inline constexpr char kSetupModule[] = "jxsetup";
inline constexpr unsigned short kSetupDialog = 200;

}  // namespace jx::assist
