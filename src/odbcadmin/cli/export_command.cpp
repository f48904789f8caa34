// export: everything the two files say, as apply takes it.
#include <odbcinst.h>

#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/file_change.h"
#include "odbcadmin/cli/text.h"
#include "rules/names.h"
#include "rules/secrets.h"
#include "rules/utf8.h"

namespace jx::admin {

namespace {

// Exporter: turns sections into JSON, counts the secrets it leaves out and remembers what JSON cannot hold.
struct Exporter {
    const Session& session;
    std::size_t secrets = 0;
    std::string notText{};

    void take(Json& keys, const IniEntry& entry) {
        if (!rules::isUtf8(entry.key) || !rules::isUtf8(entry.value))
            notText = std::string(entry.key);
        const bool hides = !session.showSecrets && rules::masked(entry.key, entry.value) != entry.value;
        secrets += hides ? 1 : 0;
        keys[std::string(entry.key)] = hides ? Json() : Json(entry.value);
    }

    // All keys but the one called leftOut when it has this value.
    Json keysOf(const IniSection* section, const std::string& leftOut, const std::string& value) {
        Json keys = Json::object();
        if (section == nullptr)
            return keys;
        for (const IniEntry& entry : section->entries)
            if (!rules::sameName(entry.key, leftOut) || entry.value != value)
                take(keys, entry);
        return keys;
    }

    Json registered(const IniView& file, const std::vector<Registered>& all) {
        Json list = Json::array();
        for (const Registered& each : all)
            if (!each.library.empty())
                list.push_back({{"name", each.name}, {"keys", keysOf(file.section(each.name), {}, {})}});
        return list;
    }

    // The path of the driver's library goes with the driver, not with each data source.
    Json dataSources(const Configuration& configuration) {
        Json list = Json::array();
        for (const DataSource& source : configuration.dataSources()) {
            const std::optional<Registered> driver = configuration.driver(source.driver);
            if (!driver || driver->library.empty()) {
                session.warn("data source " + source.name + " is left out: its driver " + source.driver +
                             " is not registered");
                continue;
            }
            const IniSection* section = configuration.sourcesFile().section(source.name);
            list.push_back({{"name", source.name},
                            {"driver", source.driver},
                            {"keys", keysOf(section, INS_ODBCINI_DRIVER, driver->library)}});
        }
        return list;
    }
};

bool areUtf8(const std::vector<std::string>& names) {
    return std::all_of(names.begin(), names.end(), rules::isUtf8);
}

ExitCode exportAll(const Session& session) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    Exporter exporter{session};
    Json json;
    json["drivers"] = exporter.registered(configuration->driversFile(), configuration->drivers());
    json["translators"] = exporter.registered(configuration->driversFile(), configuration->translators());
    json["dataSources"] = exporter.dataSources(*configuration);
    if (!exporter.notText.empty() || !areUtf8(configuration->dataSourceNames()) ||
        !areUtf8(configuration->driverNames()))
        return session.fail(ExitCode::invalid,
                            "A name or value is not UTF-8, which JSON cannot hold" +
                                (exporter.notText.empty() ? "" : ": key " + exporter.notText),
                            "Change it, or copy the files themselves.");
    session.printJson(json);
    if (exporter.secrets > 0)
        session.warn(std::to_string(exporter.secrets) + " secrets are left out (null); --show-secrets puts them in");
    return ExitCode::done;
}

}  // namespace

void addExportCommand(CLI::App& app, Session& session) {
    onRun(
        addVerb(app, "export", "Print drivers, translators and data sources as JSON that apply takes",
                "odbcadmin export > odbc.json\nodbcadmin export --show-secrets | odbcadmin apply -f - --home /srv/app"),
        session, exportAll);
}

}  // namespace jx::admin
