// dsn connstr: a data source as a connection string.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/connection_string.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/references.h"
#include "rules/secrets.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::DataSource;
using model::Reason;

// What comes of a data source.
struct Attributes {
    model::Pairs written;
    std::vector<std::string> secrets;     // keys that were left out
    std::vector<std::string> references;  // likewise: no driver follows one in a connection string
    Reason reason;
};

// The driver's name where it is registered, else the path that the section names.
std::string driverOf(const Configuration& configuration, const DataSource& source) {
    const auto& named = configuration.driver(source.driver);
    if (named)
        return named->name;
    for (const model::Registered& driver : configuration.drivers())
        if (source.library && driver.library.text == source.library.text)
            return driver.name;
    return source.library.text;
}

// A driver manager would take these for its own.
bool isManagers(std::string_view key) {
    return rules::sameName(key, rules::kDriver) || rules::sameName(key, "DSN") || rules::sameName(key, "FILEDSN") ||
           rules::sameName(key, "SAVEFILE");
}

Attributes withoutName(const Session& session, const Configuration& configuration, const DataSource& source) {
    Attributes attributes;
    const std::string driver = driverOf(configuration, source);
    if (driver.empty()) {
        attributes.reason = {Reason::Kind::failed, "The driver of data source " + source.name + " cannot be found",
                             "See odbcadmin explain " + model::shellWord(source.name)};
        return attributes;
    }
    attributes.written.emplace_back("DRIVER", model::bracedValue(driver));
    if (source.section == nullptr)
        return attributes;
    for (const model::IniEntry& entry : source.section->entries) {
        const std::string key(entry.key);
        if (isManagers(key))
            continue;
        if (!rules::referredKey(key).empty()) {
            attributes.references.push_back(key);
            continue;
        }
        if (const char* why = model::whyNoKeyword(key)) {
            attributes.reason = {Reason::Kind::refused,
                                 "The key \"" + key + "\" cannot stand in a connection string: " + why,
                                 "Use --dsn, which leaves the keys in the file."};
            return attributes;
        }
        if (session.showSecrets || rules::masked(key, entry.value) == entry.value)
            attributes.written.emplace_back(key, model::connectionValue(entry.value));
        else
            attributes.secrets.push_back(key);
    }
    return attributes;
}

ExitCode showConnectionString(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const auto source = configuration.dataSource(name);
    if (!source)
        return session.fail(model::noDataSource(configuration, name));
    const Attributes attributes = line.has("--dsn")
                                      ? Attributes{{{"DSN", model::connectionValue(source->name)}}, {}, {}, {}}
                                      : withoutName(session, configuration, *source);
    if (attributes.reason)
        return session.fail(attributes.reason);
    const std::string text = model::joinedAttributes(attributes.written);
    if (session.json)
        session.printJson({{"name", source->name},
                           {"connectionString", text},
                           {"leftOut", attributes.secrets},
                           {"references", attributes.references}});
    else
        session.printOfFile(text);
    if (!attributes.secrets.empty())
        session.warn(model::joined(attributes.secrets) + " left out: --show-secrets prints secrets, too");
    if (!attributes.references.empty())
        session.warn(model::joined(attributes.references) +
                     " left out: drivers follow it in a data source only; --dsn leaves it there");
    return ExitCode::done;
}

}  // namespace

void addDsnConnstr(CLI::App& app, Session& session) {
    addVerb(app, session, "dsn connstr", "Print a data source as a connection string",
            "odbcadmin dsn connstr Sales\nodbcadmin dsn connstr Sales --show-secrets\n"
            "odbcadmin dsn connstr Sales --dsn")
        .operand("NAME", "Data source", kOne, Complete::dsn)
        .flag("--dsn", "Only its name, as DSN=NAME; without it DRIVER={...} and all its keys")
        .onRead(Needs::bothFiles, showConnectionString);
}

}  // namespace jx::cli
