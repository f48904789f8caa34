// Data sources, drivers and translators as the two files name them, each with file and line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include "rules/sections.h"

namespace jx::doctor {

// A value and where it stands.
struct Located {
    std::string text;
    std::string file;
    std::size_t line = 0;

    std::string where() const { return file + ":" + std::to_string(line); }
};

struct DataSourceRecord {
    std::string name;
    std::optional<Located> listed;   // text: the driver's name behind it
    std::optional<Located> section;  // text: the section's name
    std::optional<Located> library;  // text: what "Driver" of its section says
};

// A driver, or a translator.
struct DriverRecord {
    std::string name;
    std::optional<Located> listed;
    std::optional<Located> section;
    std::optional<Located> library;  // "Driver", or "Translator"
    std::optional<Located> setup;
};

struct Records {
    std::string odbcPath, odbcinstPath;
    std::vector<DataSourceRecord> dataSources;  // the listed ones in order, then sections that have a "Driver"
    std::vector<DriverRecord> drivers;          // the same
    std::vector<DriverRecord> translators;
    std::vector<std::string> dataSourceSections;  // all section names but the reserved ones
    std::vector<std::string> driverSections;
    std::optional<Located> trace, traceFile;

    // Null when there is none of that name.
    const DataSourceRecord* dataSource(std::string_view name) const;
    const DriverRecord* driver(std::string_view name) const;
};

// Reads both files of this process's user. A file that cannot be read is as an empty one: checkFiles tells that.
Records readRecords();

// The names in order.
std::vector<std::string> namesOf(const std::vector<DataSourceRecord>& records);
std::vector<std::string> namesOf(const std::vector<DriverRecord>& records);

}  // namespace jx::doctor
