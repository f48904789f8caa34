// The settings of section "ODBC" by which a driver manager traces calls, as the Options dialog writes them.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"

namespace jx::model {

// The keys of these settings.
inline constexpr std::array kTraceKeys{"Trace", "TraceAutoStop", "TraceFile"};
bool isTraceKey(std::string_view key);

struct TraceSettings {
    bool isOn = false;
    bool stopsByItself = false;
    std::string file;  // "sql.log" when none is named
    Located trace;     // where it says whether calls are traced
};

TraceSettings traceSettings(const Configuration& configuration);

// Where nothing says that tracing is on, turning it off changes nothing.
ChangeResult turnTraceOn(const std::string& file, const ChangeWay& way);
ChangeResult turnTraceOff(const ChangeWay& way);

}  // namespace jx::model
