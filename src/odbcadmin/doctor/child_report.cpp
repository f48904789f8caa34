// Writing and reading a child's reports.
#include "odbcadmin/doctor/child_report.h"

#include "odbcadmin/doctor/child.h"

namespace jx::doctor {

void report(int descriptor, char kind, const std::string& text) {
    std::string record(1, kind);
    record.append(text).push_back('\0');
    writeWhole(descriptor, record);
}

void eachReport(std::string_view result, const std::function<void(char kind, const std::string& text)>& take) {
    while (!result.empty()) {
        const std::size_t end = result.find('\0');
        if (end == std::string_view::npos)
            return;
        if (end > 0)
            take(result.front(), std::string(result.substr(1, end - 1)));
        result.remove_prefix(end + 1);
    }
}

}  // namespace jx::doctor
