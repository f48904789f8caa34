// The sections of the two configuration files that have a use of their own, and the files themselves.
//
//     if (rules::isReservedSection(name)) ...   // no data source, driver or translator can be called so
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

// What a list says behind a driver or translator.
inline constexpr char kInstalled[] = "Installed";

// Whether a section of that name, in any case, holds settings or a list: nothing else may be called so. Blanks around
// the name are no part of it.
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

// Whether name, in any case, is the default data source's.
inline bool isDefaultName(std::string_view name) {
    return sameName(trimmed(name), kDefault);
}

}  // namespace jx::rules
