// Reading templates and registering what they hold.
#include "odbcadmin/model/driver_template.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "odbcadmin/model/ini_view.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::model {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kTemplateName = "odbcinst.ini";

Registration registrationOf(const IniSection& section) {
    Registration wish{std::string(section.name), section.value(rules::kDriver), {}, {}};
    if (const std::string setup = section.value(rules::kSetup); !setup.empty())
        wish.setup = setup;
    for (const IniEntry& entry : section.entries)
        if (!entry.value.empty() && !rules::sameName(entry.key, rules::kDriver) &&
            !rules::sameName(entry.key, rules::kSetup))
            wish.keys.emplace_back(entry.key, entry.value);
    return wish;
}

bool isDriver(const IniSection& section) {
    return !rules::isReservedSection(section.name) && !rules::isDefaultName(section.name) &&
           !section.value(rules::kDriver).empty();
}

// Whether another file than the one that changes go to has it: a section here would hide that one.
bool isElsewhere(const Configuration& configuration, const Registration& wish) {
    const std::optional<Registered>& present = configuration.driver(wish.name);
    return present && present->file != &configuration.file(FileKind::drivers) && present->library.text == wish.library;
}

Registration withoutKeysThere(const Configuration& configuration, Registration wish) {
    const std::optional<Registered>& present = configuration.driver(wish.name);
    if (!present)
        return wish;
    wish.name = present->name;
    std::erase_if(wish.keys, [&](const auto& pair) {
        return present->section != nullptr && present->section->find(pair.first) != nullptr;
    });
    return wish;
}

}  // namespace

std::optional<DriverTemplate> DriverTemplate::read(const std::string& path) {
    const std::optional<IniView> file = IniView::read(path);
    if (!file)
        return std::nullopt;
    DriverTemplate made{path, {}};
    for (const IniSection& section : file->sections())
        if (isDriver(section))
            made.drivers.push_back(registrationOf(section));
    return made;
}

const Registration* DriverTemplate::find(std::string_view name) const {
    const auto found = std::find_if(drivers.begin(), drivers.end(),
                                    [&](const Registration& each) { return rules::sameName(each.name, name); });
    return found == drivers.end() ? nullptr : &*found;
}

std::vector<DriverTemplate> templatesIn(const std::string& dataFolder) {
    std::set<std::string> paths;
    std::error_code error;
    for (fs::directory_iterator folder(dataFolder, error), end; !error && folder != end; folder.increment(error)) {
        std::error_code inner;
        for (fs::directory_iterator each(folder->path(), inner); !inner && each != end; each.increment(inner))
            if (each->path().filename().string().starts_with(kTemplateName) && each->is_regular_file(inner))
                paths.insert(each->path().string());
    }
    std::vector<DriverTemplate> templates;
    for (const std::string& path : paths)
        if (std::optional<DriverTemplate> file = DriverTemplate::read(path))
            templates.push_back(std::move(*file));
    return templates;
}

ChangeResult registerFromTemplate(const Configuration& configuration, const std::vector<Registration>& drivers,
                                  const ChangeWay& way) {
    for (const Registration& each : drivers)
        if (Reason reason = whyNotRegister(configuration, kDriverKind, each))
            return {std::move(reason)};
    FileChange change(rules::kDriverFile, way);
    for (const Registration& each : drivers)
        if (!isElsewhere(configuration, each))
            composeRegistration(change, kDriverKind, withoutKeysThere(configuration, each));
    return change.finish();
}

}  // namespace jx::model
