// A data source file as the tests of the administrator begin with it.
#pragma once

namespace jx::test {

inline constexpr const char* kSources = R"(; our data sources
[ODBC Data Sources]
Sales=Plain
Accounts=Plain

; the shop
[Sales]
Driver=/opt/libplain.so
Server = db1
PWD=geheim

[Accounts]
Driver=/opt/libplain.so

[ODBC]
Trace=0
)";

}  // namespace jx::test
