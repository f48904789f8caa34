// Writes and removes entries of data sources.
#include "api3/data_source_entry.h"

#include <optional>

#include "api3/call.h"
#include "api3/driver_registry.h"
#include "api3/file_change.h"
#include "api3/profile_write.h"
#include "api3/quoted.h"
#include "rules/sections.h"
#include "rules/valid_names.h"

namespace jx::api3 {

namespace {

ChangeSubject subjectOf(const std::string& name) {
    return {"Data source " + quoted(name)};
}

bool refuseName(const std::string& name, rules::Why why) {
    return refuse(ODBC_ERROR_INVALID_DSN, "No data source can be called " + quoted(name) + ": " + why + ".");
}

bool canBeEntered(const char* name) {
    if (name == nullptr)
        return refuse(ODBC_ERROR_INVALID_DSN, "No data source is named.");
    const rules::Why why = rules::whyNoCharacterName(name);
    return why == nullptr || refuseName(name, why);
}

bool canBeRemoved(const char* name) {
    if (name == nullptr)
        return refuse(ODBC_ERROR_INVALID_DSN, "No data source is named.");
    const rules::Why why = rules::whyNoName(name, rules::kAnyDataSource);
    return why == nullptr || refuseName(name, why);
}

// The old entry goes first, which may be spelled in another case.
bool enter(FileChange& change, const std::string& name, const RegisteredDriver& driver) {
    const char* key = name.c_str();
    if (!rules::isDefaultName(name) && (!change.set(rules::kDataSourceList, key, nullptr) ||
                                        !change.set(rules::kDataSourceList, key, driver.name.c_str())))
        return false;
    return change.set(name, nullptr, nullptr) && change.set(name, rules::kDriver, driverValue(driver).c_str());
}

bool writeEntry(ThreadState& state, const std::string& name, const RegisteredDriver& driver) {
    return changeFile(writtenDataSources(state), subjectOf(name),
                      [&](FileChange& change) { return enter(change, name, driver); });
}

// DefaultDriver: the section that names the default data source's driver.
class DefaultDriver {
public:
    explicit DefaultDriver(ThreadState& state) : place_(writtenDefaultDriver(state)) {}

    // A null driver removes the section.
    bool write(const char* driver) {
        return place_ != nullptr && changeFile(*place_, subject_, [&](FileChange& change) {
                   const FileText text = change.before();
                   hadSection_ = text.hasSection(rules::kDefault);
                   before_ = text.value(rules::kDefault, rules::kDriver);
                   return change.set(rules::kDefault, driver == nullptr ? nullptr : rules::kDriver, driver);
               });
    }

    // Makes it again what it was before write; false.
    bool putBack() {
        const char* key = hadSection_ ? rules::kDriver : nullptr;
        const char* value = before_ ? before_->c_str() : nullptr;
        changeFile(*place_, subject_, [&](FileChange& change) { return change.set(rules::kDefault, key, value); });
        return false;
    }

private:
    const ChangeSubject subject_{"The driver of the default data source"};

    const Place* place_;
    bool hadSection_ = false;
    std::optional<std::string> before_;
};

}  // namespace

bool isValidDsn(const char* name) {
    return name != nullptr && rules::whyNoCharacterName(name) == nullptr;
}

const Place* writtenDefaultDriver(ThreadState& state) {
    return writtenDrivers(state, {rules::kDefault, rules::kDriver, nullptr});
}

bool enterDataSource(ThreadState& state, const char* name, const char* driver) {
    if (!canBeEntered(name))
        return false;
    const std::optional<RegisteredDriver> registered = needDriver(state, driver, ODBC_ERROR_INVALID_NAME);
    if (!registered || !mayWriteDataSource(state, {name, nullptr}))
        return false;
    if (!rules::isDefaultName(name))
        return writeEntry(state, name, *registered);
    DefaultDriver section(state);
    return section.write(registered->name.c_str()) && (writeEntry(state, name, *registered) || section.putBack());
}

bool removeDataSource(ThreadState& state, const char* name) {
    if (!canBeRemoved(name) || !mayWriteDataSource(state, {name, nullptr}))
        return false;
    if (rules::isDefaultName(name) && !DefaultDriver(state).write(nullptr))
        return false;
    const std::string removed = name;
    return changeFile(writtenDataSources(state), subjectOf(removed), [&](FileChange& change) {
        return change.set(rules::kDataSourceList, removed.c_str(), nullptr) && change.set(removed, nullptr, nullptr);
    });
}

}  // namespace jx::api3
