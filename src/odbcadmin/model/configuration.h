// What is configured: data sources, drivers, translators and settings, each with the file and line where it stands.
//
//     const Configuration configuration = Configuration::read();
//     if (const Reason& trouble = configuration.trouble(FileKind::dataSources))
//         ... the file is there and cannot be read ...
//     if (const auto source = configuration.dataSource("Sales"))
//         ... source->driver, source->library.where() ...
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "odbcadmin/model/config_file.h"
#include "odbcadmin/model/ini_view.h"
#include "odbcadmin/model/reason.h"
#include "rules/sections.h"

namespace jx::model {

// Located: a text and the line of a file where it stands. False when it stands nowhere.
struct Located {
    std::string text;
    const ConfigFile* file = nullptr;
    std::size_t line = 0;

    explicit operator bool() const { return file != nullptr; }

    // "/home/anna/.odbc.ini:7"
    std::string where() const { return file->path + ":" + std::to_string(line); }
};

struct DataSource {
    std::string name;    // as its file spells it
    std::string driver;  // the driver's name; of one that is in no list what its section says under Driver
    bool isDefault = false;
    const ConfigFile* file = nullptr;  // that has its section; without one, that lists it
    const IniSection* section = nullptr;
    Located listed;   // its line in "ODBC Data Sources", or that of the default one's driver; text: the driver's name
    Located header;   // of its section
    Located library;  // "Driver" of its section, unless that is empty
    Located hides;    // header of the section that would answer without this one: the system's

    // The default data source never is.
    bool isListed() const { return listed && !isDefault; }
};

// What is registered: the names of its list and of the key of its library.
struct RegisteredKind {
    const char* word;
    const char* list;
    const char* key;
};
inline constexpr RegisteredKind kDriverKind{"driver", rules::kDriverList, rules::kDriver};
inline constexpr RegisteredKind kTranslatorKind{"translator", rules::kTranslatorList, rules::kTranslator};

// A driver or translator.
struct Registered {
    std::string name;  // as its file spells it
    const ConfigFile* file = nullptr;
    const IniSection* section = nullptr;
    Located listed;   // its line in the list
    Located header;   // of its section
    Located library;  // "Driver" or "Translator", unless that is empty
    Located setup;    // likewise
    Located hides;    // header of the section that would answer without this one: the system's
};

// Which files are looked at.
enum class Seen { both, user, system };

struct Scopes {
    Seen dataSources = Seen::both;
    Seen drivers = Seen::both;
};

// Configuration: files as they were when read. Several files of one kind are looked through in order: a section comes
// whole from the first file that has it, lists are joined. A file that cannot be read is as an empty one in all
// look-ups; whoever minds asks for trouble. What look-ups give points into the object and lives as long as it, wherever
// it is moved. Names are found as they are spelled, in any case; blanks around a name make it another. One thread at a
// time may use it.
class Configuration {
public:
    // The user's two files.
    static Configuration read();

    // The user's files, then the system's, or only those that are asked for. A file that both scopes have is the
    // user's.
    static Configuration read(const Scopes& scopes);

    explicit Configuration(std::vector<ConfigFile> files) : files_(std::move(files)) {}

    // In order; there is at least one of each kind.
    std::vector<const ConfigFile*> files(FileKind kind) const;

    // Where a new name of that kind goes.
    const ConfigFile& file(FileKind kind) const { return *files(kind).front(); }

    // Of all files.
    std::vector<std::string> paths() const;

    // Why the first file of a kind, or one of both kinds, cannot be read; of kind none when it could be. Without it
    // nothing is known; what a later file says is only left out.
    const Reason& trouble(FileKind kind) const;
    const Reason& trouble() const;

    // The same for files that are not the first of their kind.
    std::vector<Reason> furtherTroubles() const;

    // In the order of the list, then those that only have a section with a Driver, then the default one.
    std::vector<DataSource> dataSources() const;
    std::vector<DataSource> dataSourcesOf(std::string_view driver) const;

    // Also one whose section has no Driver.
    std::optional<DataSource> dataSource(std::string_view name) const;

    // The data sources whose sections are hidden by those of earlier files, as their own file alone has them.
    std::vector<DataSource> hiddenDataSources() const;

    // The same for drivers or translators; a section without the kind's key is none of them.
    std::vector<Registered> all(const RegisteredKind& kind) const;
    std::optional<Registered> find(const RegisteredKind& kind, std::string_view name) const;
    std::vector<Registered> hidden(const RegisteredKind& kind) const;

    std::vector<Registered> drivers() const { return all(kDriverKind); }

    // As find. The answer is kept, and lives as long as the object: thousands of data sources have the same few
    // drivers.
    const std::optional<Registered>& driver(std::string_view name) const;

    // The name of the default data source's driver.
    Located defaultDriver() const;

    // A key of section "ODBC".
    Located setting(std::string_view key) const;

    // All sections of files of that kind but the lists, the settings and "Default".
    std::vector<std::string> sectionNames(FileKind kind) const;

private:
    std::optional<DataSource> defaultSource() const;

    std::vector<ConfigFile> files_;
    mutable std::unordered_map<std::string, std::optional<Registered>> foundDrivers_;  // by the name asked for
};

template <class Rows>
std::vector<std::string> namesOf(const Rows& rows) {
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const auto& row : rows)
        names.push_back(row.name);
    return names;
}

// The files of that kind that were looked at and are there, or else the first one: "/home/a/.odbc.ini or
// /etc/odbc.ini".
std::string lookedAt(const Configuration& configuration, FileKind kind);

// That there is none of that name, with near matches; or that it stands in the file of a scope that was not looked at.
Reason noDataSource(const Configuration& configuration, std::string_view name);
Reason noneRegistered(const Configuration& configuration, const RegisteredKind& kind, std::string_view name);
Reason noDataSourceOrDriver(const Configuration& configuration, std::string_view name);

}  // namespace jx::model
