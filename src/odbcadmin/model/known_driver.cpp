// Reading the files and judging keys by them.
#include "odbcadmin/model/known_driver.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <map>
#include <set>

#include "odbcadmin/model/data_folder.h"
#include "odbcadmin/model/ini_view.h"
#include "odbcadmin/model/near_matches.h"
#include "rules/names.h"
#include "rules/references.h"

namespace jx::model {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kKeyWord = "Key ";
constexpr const char* kFolder = "jxodbc/drivers";

std::string& ownDirectory() {
    static std::string directory;
    return directory;
}

// "libsqlite3odbc" of "/usr/lib/odbc/libsqlite3odbc-0.9998.so.1": what names of one library have in common.
std::string stemOf(const std::string& library) {
    std::string name = library.substr(library.rfind('/') + 1);
    name.erase(std::min(name.find(".so"), name.size()));
    const std::size_t dash = name.rfind('-');
    const bool isVersion =
        dash != std::string::npos && name.find_first_not_of("0123456789.", dash + 1) == std::string::npos;
    return isVersion ? name.substr(0, dash) : name;
}

Pairs entriesAsPairs(const IniSection* section) {
    Pairs pairs;
    if (section != nullptr)
        for (const IniEntry& entry : section->entries)
            pairs.emplace_back(entry.key, entry.value);
    return pairs;
}

KnownKey keyOf(const IniSection& section) {
    return {std::string(rules::trimmed(section.name.substr(kKeyWord.size()))), section.value("Says"),
            section.value("Default"), rules::sameName(section.value("Needed"), "yes")};
}

KnownDriver readDriver(const std::string& path, const IniView& file) {
    KnownDriver driver{file.value("Driver", "Name"),
                       path,
                       entriesAsPairs(file.section("Libraries")),
                       {},
                       entriesAsPairs(file.section("Other names"))};
    for (const IniSection& section : file.sections())
        if (rules::beginsWithName(section.name, kKeyWord))
            driver.keys.push_back(keyOf(section));
    return driver;
}

// The files of one directory, each directory once.
const std::deque<KnownDriver>& driversIn(const std::string& directory) {
    static std::map<std::string, std::deque<KnownDriver>> known;
    const auto [place, isNew] = known.try_emplace(directory);
    if (!isNew)
        return place->second;
    std::set<std::string> paths;
    std::error_code error;
    for (fs::directory_iterator each(directory, error), end; !error && each != end; each.increment(error))
        if (each->path().extension() == ".ini")
            paths.insert(each->path().string());
    for (const std::string& path : paths) {
        const std::optional<IniView> file = IniView::read(path);
        // What names no driver or none of its keys says nothing.
        KnownDriver driver = file ? readDriver(path, *file) : KnownDriver();
        if (!driver.name.empty() && !driver.keys.empty())
            place->second.push_back(std::move(driver));
    }
    return place->second;
}

// The key that a misspelt one is nearest to; one that resembles another name of a key means that key.
std::string nearKey(const KnownDriver& driver, const std::string& key) {
    std::vector<std::string> names;
    for (const KnownKey& each : driver.keys)
        names.push_back(each.name);
    for (const auto& [other, meant] : driver.otherNames)
        if (!meant.empty())
            names.push_back(other);
    const std::vector<std::string> near = nearMatches(key, names);
    if (near.empty())
        return {};
    for (const auto& [other, meant] : driver.otherNames)
        if (other == near.front())
            return meant;
    return near.front();
}

std::string ownFolder() {
    if (!ownDirectory().empty())
        return ownDirectory();
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / JX_DATA_FROM_PROGRAM / "drivers").lexically_normal().string();
}

const KnownDriver* findKnown(const std::string& library) {
    const std::string beside = dataFolderOf(library);
    for (const std::string& directory : {beside.empty() ? "" : (fs::path(beside) / kFolder).string(), ownFolder()}) {
        if (directory.empty())
            continue;
        for (const KnownDriver& driver : driversIn(directory))
            if (!driver.registeredName(library).empty())
                return &driver;
    }
    return nullptr;
}

std::map<std::string, const KnownDriver*>& answers() {
    static std::map<std::string, const KnownDriver*> known;
    return known;
}

}  // namespace

const KnownKey* KnownDriver::key(std::string_view wanted) const {
    const auto found = std::find_if(keys.begin(), keys.end(),
                                    [&](const KnownKey& each) { return rules::sameName(each.name, wanted); });
    return found == keys.end() ? nullptr : &*found;
}

std::string KnownDriver::registeredName(const std::string& library) const {
    for (const auto& [each, registered] : libraries)
        if (stemOf(each) == stemOf(library))
            return registered;
    return {};
}

const KnownDriver* knownDriverOf(const std::string& library) {
    // Thousands of data sources have a few libraries.
    const auto [place, isNew] = answers().try_emplace(library, nullptr);
    if (isNew && !library.empty())
        place->second = findKnown(library);
    return place->second;
}

std::optional<KeyMistake> mistakeIn(const KnownDriver& driver, std::string_view key) {
    const std::string_view referred = rules::referredKey(key);
    const std::string plain(referred.empty() ? key : referred);
    if (driver.key(plain) != nullptr || rules::sameName(plain, rules::kDriver) || rules::sameName(plain, "Description"))
        return std::nullopt;
    const std::string fact = driver.name + "'s driver never asks for " + plain;
    for (const auto& [other, meant] : driver.otherNames)
        if (rules::sameName(other, plain))
            return KeyMistake{KeyMistake::Kind::notAsked, fact + (meant.empty() ? "" : "; it asks for " + meant),
                              meant.empty() ? "Programs give it in the connection string." : "Use " + meant + "."};
    const std::string near = nearKey(driver, plain);
    if (near.empty())
        return KeyMistake{KeyMistake::Kind::notAsked, fact, "Remove the key, unless programs read it."};
    return KeyMistake{KeyMistake::Kind::misspelt, fact, "Did you mean " + near + "?"};
}

std::vector<std::string> missingKeys(const KnownDriver& driver, const std::vector<std::string>& given) {
    std::vector<std::string> missing;
    for (const KnownKey& each : driver.keys) {
        const auto isIt = [&](const std::string& name) {
            const std::string_view referred = rules::referredKey(name);
            return rules::sameName(each.name, referred.empty() ? name : referred);
        };
        if (each.isNeeded && std::none_of(given.begin(), given.end(), isIt))
            missing.push_back(each.name);
    }
    return missing;
}

void useKnownDrivers(const std::string& directory) {
    ownDirectory() = directory;
    answers().clear();
}

}  // namespace jx::model
