// Reading and writing the settings.
#include "odbcadmin/model/trace_settings.h"

#include <algorithm>
#include <iterator>

#include "rules/names.h"
#include "rules/sections.h"

namespace jx::model {

namespace {

constexpr const char* kTrace = kTraceKeys[0];
constexpr const char* kTraceAutoStop = kTraceKeys[1];
constexpr const char* kTraceFile = kTraceKeys[2];
constexpr const char* kUsualTraceFile = "sql.log";

// The dialog writes numbers; words are what people write.
bool isOn(const std::string& value) {
    constexpr const char* kWords[] = {"on", "yes", "true"};
    return (!value.empty() && value[0] >= '1' && value[0] <= '9') ||
           std::any_of(std::begin(kWords), std::end(kWords),
                       [&](const char* word) { return rules::sameName(value, word); });
}

}  // namespace

bool isTraceKey(std::string_view key) {
    return std::any_of(kTraceKeys.begin(), kTraceKeys.end(),
                       [&](const char* known) { return rules::sameName(key, known); });
}

TraceSettings traceSettings(const Configuration& configuration) {
    const Located trace = configuration.setting(kTrace);
    const Located file = configuration.setting(kTraceFile);
    return {isOn(trace.text), isOn(configuration.setting(kTraceAutoStop).text),
            file.text.empty() ? kUsualTraceFile : file.text, trace};
}

ChangeResult turnTraceOn(const std::string& file, const ChangeWay& way) {
    FileChange change(rules::kDataSourceFile, way);
    change.set(rules::kSettings, kTrace, "1");
    change.set(rules::kSettings, kTraceFile, file);
    return change.finish();
}

ChangeResult turnTraceOff(const ChangeWay& way) {
    FileChange change(rules::kDataSourceFile, way);
    if (isOn(change.before().value(rules::kSettings, kTrace)))
        change.set(rules::kSettings, kTrace, "0");
    return change.finish();
}

}  // namespace jx::model
