// Reading the two files into records.
#include "odbcadmin/doctor/records.h"

#include <jxini.h>

#include <algorithm>
#include <array>

#include "odbcadmin/cli/ini_view.h"
#include "odbcadmin/cli/text.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::doctor {

namespace {

using admin::IniEntry;
using admin::IniSection;
using admin::IniView;

constexpr const char* kDataSources = "ODBC Data Sources";
constexpr const char* kDrivers = "ODBC Drivers";
constexpr const char* kTranslators = "ODBC Translators";
constexpr const char* kDefault = "Default";

// One of the two files; an empty one when it cannot be read.
class File {
public:
    explicit File(const char* name) : view_(IniView::read(name)), path_(jxIniPath(name, nullptr, 0), '\0') {
        jxIniPath(name, path_.data(), path_.size() + 1);
        if (!view_)
            view_ = IniView::parse("");
    }

    const std::string& path() const { return path_; }

    const std::vector<IniSection>& sections() const {
        static const std::vector<IniSection> kNone;
        return view_ ? view_->sections() : kNone;
    }

    const IniSection* section(std::string_view name) const { return view_ ? view_->section(name) : nullptr; }

    std::optional<Located> header(std::string_view name) const {
        const IniSection* found = section(name);
        return found == nullptr ? std::nullopt : std::optional(Located{std::string(found->name), path_, found->line});
    }

    std::optional<Located> value(std::string_view name, std::string_view key) const {
        const IniSection* found = section(name);
        const IniEntry* entry = found == nullptr ? nullptr : found->find(key);
        return entry == nullptr ? std::nullopt : std::optional(located(*entry));
    }

    Located located(const IniEntry& entry) const { return {std::string(entry.value), path_, entry.line}; }

private:
    std::optional<IniView> view_;
    std::string path_;
};

template <typename Record>
bool holds(const std::vector<Record>& records, std::string_view name) {
    return std::any_of(records.begin(), records.end(),
                       [&](const Record& each) { return rules::sameName(each.name, name); });
}

void complete(DataSourceRecord& record, const File& file) {
    record.section = file.header(record.name);
    record.library = file.value(record.name, "Driver");
    if (record.library && record.library->text.empty())
        record.library.reset();
}

void complete(DriverRecord& record, const File& file, const char* libraryKey) {
    record.section = file.header(record.name);
    record.library = file.value(record.name, libraryKey);
    record.setup = file.value(record.name, "Setup");
    for (std::optional<Located>* each : {&record.library, &record.setup})
        if (*each && (*each)->text.empty())
            each->reset();
}

// The default data source has its driver's name in the other file, and is in no list.
void addDefault(const File& odbc, const File& odbcinst, Records& records) {
    DataSourceRecord record;
    record.name = kDefault;
    record.listed = odbcinst.value(kDefault, "Driver");
    complete(record, odbc);
    if (record.listed || record.section)
        records.dataSources.push_back(record);
}

void addDataSources(const File& odbc, Records& records) {
    if (const IniSection* list = odbc.section(kDataSources))
        for (const IniEntry& entry : list->entries) {
            DataSourceRecord& record = records.dataSources.emplace_back();
            record.name = entry.key;
            record.listed = odbc.located(entry);
            complete(record, odbc);
        }
    for (const IniSection& section : odbc.sections()) {
        if (rules::isReservedSection(section.name) || rules::sameName(section.name, kDefault))
            continue;
        records.dataSourceSections.emplace_back(section.name);
        if (section.find("Driver") == nullptr || holds(records.dataSources, section.name))
            continue;
        DataSourceRecord& record = records.dataSources.emplace_back();
        record.name = section.name;
        complete(record, odbc);
    }
}

std::vector<DriverRecord> driversOf(const File& file, const char* listName, const char* libraryKey) {
    std::vector<DriverRecord> records;
    if (const IniSection* list = file.section(listName))
        for (const IniEntry& entry : list->entries) {
            DriverRecord& record = records.emplace_back();
            record.name = entry.key;
            record.listed = file.located(entry);
            complete(record, file, libraryKey);
        }
    for (const IniSection& section : file.sections()) {
        if (section.find(libraryKey) == nullptr || rules::isReservedSection(section.name) ||
            rules::sameName(section.name, kDefault) || holds(records, section.name))
            continue;
        DriverRecord& record = records.emplace_back();
        record.name = section.name;
        complete(record, file, libraryKey);
    }
    return records;
}

template <typename Record>
const Record* find(const std::vector<Record>& records, std::string_view name) {
    const std::string_view wanted = rules::trimmed(name);
    const auto found = std::find_if(records.begin(), records.end(),
                                    [&](const Record& each) { return rules::sameName(each.name, wanted); });
    return found == records.end() ? nullptr : &*found;
}

template <typename Record>
std::vector<std::string> names(const std::vector<Record>& records) {
    std::vector<std::string> found;
    found.reserve(records.size());
    for (const Record& each : records)
        found.push_back(each.name);
    return found;
}

}  // namespace

const DataSourceRecord* Records::dataSource(std::string_view name) const {
    return find(dataSources, name);
}

const DriverRecord* Records::driver(std::string_view name) const {
    return find(drivers, name);
}

Records readRecords() {
    const File odbc(".odbc.ini");
    const File odbcinst(".odbcinst.ini");
    Records records;
    records.odbcPath = odbc.path();
    records.odbcinstPath = odbcinst.path();
    addDataSources(odbc, records);
    addDefault(odbc, odbcinst, records);
    records.drivers = driversOf(odbcinst, kDrivers, "Driver");
    records.translators = driversOf(odbcinst, kTranslators, "Translator");
    for (const IniSection& section : odbcinst.sections())
        if (!rules::isReservedSection(section.name))
            records.driverSections.emplace_back(section.name);
    records.trace = odbc.value("ODBC", "Trace");
    records.traceFile = odbc.value("ODBC", "TraceFile");
    return records;
}

std::vector<std::string> namesOf(const std::vector<DataSourceRecord>& records) {
    return names(records);
}

std::vector<std::string> namesOf(const std::vector<DriverRecord>& records) {
    return names(records);
}

}  // namespace jx::doctor
