// Names in the two configuration files, and which sections are reserved.
//
//     if (rules::isReservedSection(name)) ...   // not allowed for a data source, driver or translator
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "rules/names.h"

namespace jx::rules {

inline constexpr char kDataSourceFile[] = ".odbc.ini";
inline constexpr char kDriverFile[] = ".odbcinst.ini";

inline constexpr char kSettings[] = "ODBC";                     // the trace settings, in .odbc.ini
inline constexpr char kDataSourceList[] = "ODBC Data Sources";  // in .odbc.ini
inline constexpr char kDriverList[] = "ODBC Drivers";           // in .odbcinst.ini
inline constexpr char kTranslatorList[] = "ODBC Translators";   // in .odbcinst.ini
inline constexpr char kCore[] = "ODBC Core";                    // the driver manager's own, beside the drivers
inline constexpr char kDefault[] = "Default";  // the default data source, whose driver's name is in .odbcinst.ini

// Keys of data sources, drivers and translators.
inline constexpr char kDriver[] = "Driver";
inline constexpr char kSetup[] = "Setup";
inline constexpr char kTranslator[] = "Translator";

// Of drivers and translators: how many programs installed it; and of drivers, for how long connections are kept.
inline constexpr char kUsageCount[] = "UsageCount";
inline constexpr char kPoolTimeout[] = "CPTimeout";

// The value of each driver and translator in its list.
inline constexpr char kInstalled[] = "Installed";

// Whether the section of that name holds settings or a list, so that nothing else may have the name. Case and blanks
// around it make no difference.
inline bool isReservedSection(std::string_view name) {
    constexpr std::array<std::string_view, 5> kReserved{kSettings, kDataSourceList, kDriverList, kTranslatorList,
                                                        kCore};
    return std::any_of(kReserved.begin(), kReserved.end(),
                       [bare = trimmed(name)](std::string_view each) { return sameName(bare, each); });
}

// Whether a section of that name, in any case, is a list of names: those of several files are one list.
inline bool isListSection(std::string_view name) {
    constexpr std::array<std::string_view, 3> kLists{kDataSourceList, kDriverList, kTranslatorList};
    return std::any_of(kLists.begin(), kLists.end(),
                       [bare = trimmed(name)](std::string_view each) { return sameName(bare, each); });
}

// Whether name is the default data source's, likewise.
inline bool isDefaultName(std::string_view name) {
    return sameName(trimmed(name), kDefault);
}

}  // namespace jx::rules
