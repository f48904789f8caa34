// Recognizing what a driver would be surprised by.
#include "odbcadmin/doctor/value_checks.h"

#include <optional>

#include "odbcadmin/doctor/path_mistakes.h"
#include "rules/names.h"
#include "rules/secrets.h"

namespace jx::doctor {

namespace {

bool isLookedAt(std::string_view key) {
    for (const char* other : {rules::kDriver, rules::kSetup, "Description"})
        if (rules::sameName(key, other))
            return false;
    return true;
}

void tellWrapping(const model::DataSource& source, const model::IniEntry& entry, const Wrapping& wrapping,
                  const Subject& subject) {
    const std::string key(entry.key);
    const model::Located line{key, source.file, entry.line};
    const bool isSecret = rules::masked(key, entry.value) != entry.value;
    subject.tell(*wrapping.check,
                 line.where() + ": the value of " + key + " " + wrapping.fact + ", which the driver gets as well.",
                 isSecret ? "Unless it is meant so, write the value of " + key + " without."
                          : "Unless it is meant so, write the line as: " + key + "=" + wrapping.inner);
}

}  // namespace

void checkValues(const model::DataSource& source, const Subject& subject) {
    if (source.section == nullptr)
        return;
    for (const model::IniEntry& entry : source.section->entries) {
        const auto wrapping = isLookedAt(entry.key) ? wrappingOf(entry.value) : std::nullopt;
        if (wrapping)
            tellWrapping(source, entry, *wrapping, subject);
    }
}

}  // namespace jx::doctor
