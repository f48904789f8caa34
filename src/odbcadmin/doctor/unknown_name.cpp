// Looking for a name where it would not count.
#include "odbcadmin/doctor/unknown_name.h"

#include <optional>

#include "odbcadmin/model/ini_view.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/secrets.h"

namespace jx::doctor {

namespace {

using model::IniEntry;
using model::IniSection;
using model::IniView;
using model::Reason;
using model::shellWord;

// The options and operands that make the section anew; a password is entered by itself.
std::string pairsOf(const IniSection& section) {
    std::string words;
    for (const IniEntry& entry : section.entries)
        if (!rules::sameName(entry.key, rules::kDriver) && rules::masked(entry.key, entry.value) == entry.value)
            words += " " + shellWord(std::string(entry.key) + "=" + std::string(entry.value));
    return words;
}

// The driver of a data source in a file for all users: the list's word, or a name that stands where a path may.
std::string driverIn(const IniView& file, const IniSection& section, std::string_view name) {
    const IniSection* list = file.section(rules::kDataSourceList);
    const std::string listed = list != nullptr ? list->value(name) : "";
    const std::string value = section.value(rules::kDriver);
    if (!listed.empty() || value.find('/') != std::string::npos || value.empty())
        return listed.empty() ? "DRIVER" : shellWord(listed);
    return shellWord(value);
}

std::string commandForDriver(const std::string& name, const IniSection* section) {
    const std::string library = section != nullptr ? section->value(rules::kDriver) : "";
    const std::string setup = section != nullptr ? section->value(rules::kSetup) : "";
    return "odbcadmin driver add " + shellWord(name) + " --lib " + (library.empty() ? "PATH" : shellWord(library)) +
           (setup.empty() ? "" : " --setup " + shellWord(setup));
}

Reason onlyForAll(const std::string& what, const std::string& path, const std::string& command) {
    return {Reason::Kind::notFound, what + " stands in " + path + " only, which this library does not read",
            "Add it for this user: " + command};
}

Reason whyOnlyForAll(std::string_view name, const std::string& systemFolder) {
    const std::string sources = systemFolder + "/odbc.ini";
    const std::optional<IniView> file = IniView::read(sources);
    const bool hasMeaning = rules::isReservedSection(name);
    if (const IniSection* section = file && !hasMeaning ? file->section(name) : nullptr)
        return onlyForAll("The data source " + std::string(name), sources,
                          "odbcadmin dsn add " + shellWord(std::string(name)) + " --driver " +
                              driverIn(*file, *section, name) + pairsOf(*section));
    const std::string drivers = systemFolder + "/odbcinst.ini";
    const std::optional<IniView> registered = IniView::read(drivers);
    if (const IniSection* section = registered && !hasMeaning ? registered->section(name) : nullptr)
        return onlyForAll("The driver " + std::string(name), drivers, commandForDriver(std::string(name), section));
    return {};
}

}  // namespace

Reason whyUnknown(const model::Configuration& configuration, std::string_view name, const std::string& systemFolder) {
    if (configuration.trouble())
        return configuration.trouble();
    if (const Reason reason = whyOnlyForAll(name, systemFolder))
        return reason;
    return model::noDataSourceOrDriver(configuration, name);
}

std::string adviceForDriver(const model::Configuration& configuration, const std::string& name,
                            const std::string& systemFolder) {
    const std::string path = systemFolder + "/odbcinst.ini";
    const std::optional<IniView> file = IniView::read(path);
    const IniSection* section = file ? file->section(name) : nullptr;
    if (section != nullptr)
        return path +
               " has it, which this library does not read. Add it for this user: " + commandForDriver(name, section);
    return model::adviceFor(name, namesOf(configuration.drivers()), "Add it: " + commandForDriver(name, nullptr));
}

}  // namespace jx::doctor
