// The user's two files read together: data sources, drivers and translators as the installer sees them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "odbcadmin/cli/ini_view.h"
#include "odbcadmin/cli/session.h"
#include "rules/sections.h"

namespace jx::admin {

using Pairs = std::vector<std::pair<std::string, std::string>>;

// Keys that the headers give no name.
inline constexpr const char* kSetupKey = "Setup";
inline constexpr const char* kTranslatorKey = "Translator";
inline constexpr const char* kInstalled = "Installed";

struct DataSource {
    std::string name;
    std::string driver;    // the driver's description; of an unlisted one what its section says under Driver
    bool isListed = true;  // in "ODBC Data Sources"; the default data source never is
    bool isDefault = false;
};

// A driver or translator.
struct Registered {
    std::string name;
    std::string library;
    std::string setup;
    bool isListed = true;
};

// Configuration: both files as they were when read.
class Configuration {
public:
    // Tells what went wrong and sets code; nothing then.
    static std::optional<Configuration> read(const Session& session, ExitCode& code);

    Configuration(IniView sources, IniView drivers) : sources_(std::move(sources)), drivers_(std::move(drivers)) {}

    const IniView& sourcesFile() const { return sources_; }
    const IniView& driversFile() const { return drivers_; }

    // In the order of the list, then those that only have a section with a driver, then the default one.
    std::vector<DataSource> dataSources() const;
    std::optional<DataSource> dataSource(std::string_view name) const;
    std::vector<std::string> dataSourceNames() const;
    std::vector<std::string> dataSourcesOf(std::string_view driver) const;

    std::vector<Registered> drivers() const;
    std::optional<Registered> driver(std::string_view name) const;
    std::vector<std::string> driverNames() const;

    std::vector<Registered> translators() const;
    std::optional<Registered> translator(std::string_view name) const;

    // The default data source's driver; empty when there is no default data source.
    std::string defaultDriver() const;

private:
    IniView sources_;
    IniView drivers_;
};

// Tell that there is none of that name, with near matches; give 3.
ExitCode noDataSource(const Session& session, const Configuration& configuration, std::string_view name);
ExitCode noDriver(const Session& session, const Configuration& configuration, std::string_view name);

// Takes KEY=VALUE operands apart. Tells what is wrong with one and gives 2; keys in reserved are refused.
ExitCode takePairs(const Session& session, const std::vector<std::string>& texts, Pairs& pairs,
                   const std::vector<std::string_view>& reserved);

}  // namespace jx::admin
