// The names in the two configuration files. The installer library exports them as data, but another library in the
// process may export the same names and would be read instead.
#pragma once

namespace jx::setup {

inline constexpr char kDataSourceFile[] = ".odbc.ini";
inline constexpr char kDriverFile[] = ".odbcinst.ini";
inline constexpr char kDataSourceList[] = "ODBC Data Sources";
inline constexpr char kDriverList[] = "ODBC Drivers";
inline constexpr char kTranslatorList[] = "ODBC Translators";
inline constexpr char kSettings[] = "ODBC";
inline constexpr char kDefault[] = "Default";
inline constexpr char kDriver[] = "Driver";

}  // namespace jx::setup
