// Seen through directories.
#include "odbcadmin/doctor/driver_scan.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "odbcadmin/doctor/directory.h"
#include "odbcadmin/doctor/installer_search.h"
#include "odbcadmin/doctor/library_checks.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/model/data_folder.h"
#include "odbcadmin/model/known_driver.h"
#include "odbcadmin/model/root_directory.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

bool isSharedLibraryName(const std::string& name) {
    const std::size_t at = name.find(".so");
    return at != std::string::npos && (at + 3 == name.size() || name[at + 3] == '.');
}

// The driver manager offers the functions of drivers, and has this name wherever it comes from.
bool isManagerName(const std::string& name) {
    return name.starts_with("libodbc.so");
}

bool offers(const LibraryFile& file, LibraryRole role) {
    return file.state == LibraryFile::State::library && missingFunctions(role, file.functions).empty();
}

// Drivers have the word in their name, or lie in a directory of drivers or of one product.
bool isLikely(const fs::path& path) {
    const std::string directory = path.parent_path().string();
    return path.filename().string().find("odbc") != std::string::npos || directory.ends_with("/odbc") ||
           !(directory.starts_with("/lib") || directory.starts_with("/usr/lib"));
}

// "libsqlite3odbc.so.0.1" is called "sqlite3odbc".
std::string plainName(const fs::path& path) {
    std::string name = path.filename().string();
    name.erase(name.find(".so"));
    return name.starts_with("lib") ? name.substr(3) : name;
}

// Setup libraries are called as their driver with an S or the word setup behind.
std::string setupBeside(const fs::path& driver) {
    const std::string name = driver.filename().string();
    const std::string base = name.substr(0, name.find(".so"));
    for (const char* ending : {"S.so", "_setup.so", "setup.so", "-setup.so"}) {
        std::string candidate = (driver.parent_path() / (base + ending)).string();
        if (offers(readLibraryFile(candidate), LibraryRole::setup))
            return candidate;
    }
    return {};
}

// A file that lies there under several names is known by the shortest.
using ByRealPath = std::map<std::string, fs::path>;

void collect(const std::string& directory, ByRealPath& found, const std::function<void()>& waiting) {
    for (const fs::path& path : entriesOf(directory)) {
        waiting();
        const std::string name = path.filename().string();
        std::error_code error;
        if (!isSharedLibraryName(name) || isManagerName(name) || !fs::is_regular_file(path, error))
            continue;
        const std::string real = fs::canonical(path, error).string();
        const auto [place, isNew] = found.try_emplace(real, path);
        if (!isNew && path.string().size() < place->second.string().size())
            place->second = path;
    }
}

// The templates of each data folder, read once.
class Templates {
public:
    // The entry for that library, by its file name.
    const model::Registration* find(const std::string& library, std::string& templatePath) {
        const std::string folder = model::dataFolderOf(library);
        const auto [place, isNew] = byFolder_.try_emplace(folder);
        if (isNew && !folder.empty())
            place->second = model::templatesIn(folder);
        const std::string file = fs::path(library).filename().string();
        for (const model::DriverTemplate& each : place->second)
            for (const model::Registration& driver : each.drivers)
                if (fs::path(driver.library).filename() == file) {
                    templatePath = each.path;
                    return &driver;
                }
        return nullptr;
    }

private:
    std::map<std::string, std::vector<model::DriverTemplate>> byFolder_;
};

FoundDriver describe(const fs::path& path, const std::string& setup, Templates& templates, const LoaderPlaces& places) {
    FoundDriver found{plainName(path), path.string(), setup};
    if (const model::KnownDriver* known = model::knownDriverOf(found.path))
        found.name = known->registeredName(found.path);
    std::string file;
    const model::Registration* entry = templates.find(found.path, file);
    if (entry == nullptr)
        return found;
    found.name = entry->name;
    found.keys = entry->keys;
    if (found.setup.empty() && entry->setup)
        found.setup = libraryOfTemplate(file, *entry->setup, places);
    return found;
}

FoundDriver asInImage(FoundDriver found, const std::string& root) {
    for (std::string* path : {&found.path, &found.setup})
        *path = model::pathInImage(root, *path).value_or(*path);
    return found;
}

// The directories of libraries below the prefix whose data folder holds the template, in the loader's order.
std::vector<std::string> librariesBeside(const fs::path& templatePath, const LoaderPlaces& places) {
    const fs::path prefix = templatePath.parent_path().parent_path().parent_path();
    std::vector<std::string> directories;
    for (const char* below : {"odbc", ""})
        for (const std::string& each : places.defaults) {
            const fs::path standard = each.starts_with("/usr/") ? each.substr(5) : each.substr(1);
            directories.push_back((prefix / standard / below / "").string());
        }
    return directories;
}

void addPresent(const fs::path& directory, std::vector<std::string>& directories, std::set<std::string>& known) {
    std::error_code error;
    const fs::path real = fs::canonical(directory, error);
    if (!error && fs::is_directory(real, error) && known.insert(real.string()).second)
        directories.push_back(directory.string());
}

}  // namespace

std::string libraryOfTemplate(const std::string& templatePath, const std::string& value, const LoaderPlaces& places) {
    if (value.find('/') != std::string::npos)
        return value;
    for (const std::string& directory : librariesBeside(templatePath, places)) {
        std::error_code ignored;
        const std::optional<std::string> path = model::pathInImage(places.root, directory + value);
        if (path && fs::is_regular_file(directory + value, ignored))
            return *path;
    }
    return inDriverDirectories(value, places);
}

std::vector<model::Registration> placedDrivers(const model::DriverTemplate& file, const LoaderPlaces& places,
                                               std::vector<std::string>& missing) {
    std::vector<model::Registration> placed;
    for (model::Registration driver : file.drivers) {
        const std::string library = libraryOfTemplate(file.path, driver.library, places);
        if (library.empty()) {
            missing.push_back(driver.name + " (" + driver.library + ")");
            continue;
        }
        driver.library = library;
        if (driver.setup)
            driver.setup = libraryOfTemplate(file.path, *driver.setup, places);
        if (driver.setup && driver.setup->empty())
            driver.setup.reset();
        placed.push_back(std::move(driver));
    }
    return placed;
}

std::optional<model::Registered> registeredWith(const model::Configuration& configuration, const std::string& library,
                                                const std::string& root) {
    for (const model::Registered& each : configuration.drivers())
        if (each.library && isSameFile(root + each.library.text, root + library))
            return each;
    return std::nullopt;
}

std::vector<std::string> usualDriverDirectories(const LoaderPlaces& places) {
    std::vector<std::string> directories;
    std::set<std::string> known;
    std::vector<std::string> roots = places.environment;
    roots.insert(roots.end(), places.defaults.begin(), places.defaults.end());
    roots.insert(roots.end(), {"/usr/local/lib", "/usr/local/lib64"});
    for (std::string& each : roots)
        each.insert(0, places.root);
    for (const fs::path& product : entriesOf(places.root + "/opt")) {
        roots.insert(roots.end(), {product / "lib", product / "lib64"});
        for (const fs::path& version : entriesOf(product))
            roots.insert(roots.end(), {version / "lib", version / "lib64"});
    }
    for (const std::string& root : roots) {
        addPresent(root.empty() ? "." : root, directories, known);
        addPresent(fs::path(root) / "odbc", directories, known);
    }
    return directories;
}

std::vector<FoundDriver> scanForDrivers(const std::vector<std::string>& directories,
                                        const std::function<void(const std::string&)>& progress,
                                        const std::function<void()>& waiting, Candidates candidates,
                                        const LoaderPlaces& places) {
    ByRealPath libraries;
    for (const std::string& directory : directories) {
        progress("Reading " + directory);
        collect(directory, libraries, waiting);
    }
    if (candidates == Candidates::likely)
        std::erase_if(libraries, [](const auto& each) { return !isLikely(each.second); });
    std::vector<FoundDriver> drivers;
    Templates templates;
    for (const auto& [real, path] : libraries) {
        waiting();
        const LibraryFile file = readLibraryFile(real);
        if (file.isForOtherSystem() || !offers(file, LibraryRole::driver))
            continue;
        const std::string setup = offers(file, LibraryRole::setup) ? path.string() : setupBeside(path);
        drivers.push_back(asInImage(describe(path, setup, templates, places), places.root));
    }
    std::sort(drivers.begin(), drivers.end(),
              [](const FoundDriver& left, const FoundDriver& right) { return left.path < right.path; });
    return drivers;
}

}  // namespace jx::doctor
