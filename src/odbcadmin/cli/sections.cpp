// Showing sections.
#include "odbcadmin/cli/sections.h"

#include <nlohmann/json.hpp>

#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

using model::printable;

void printHeader(const Session& session, std::string_view name) {
    session.print("[" + printable(name) + "]");
}

void printKeys(const Session& session, const model::IniSection* section) {
    if (section != nullptr)
        for (const model::IniEntry& entry : section->entries)
            session.print(printable(entry.key) + "=" + printable(session.shown(entry.key, entry.value)));
}

Json keysJson(const Session& session, const model::IniSection* section) {
    Json keys = Json::object();
    if (section != nullptr)
        for (const model::IniEntry& entry : section->entries)
            keys[std::string(entry.key)] = session.shown(entry.key, entry.value);
    return keys;
}

ExitCode printValue(const Session& session, const model::IniSection* section, const std::string& key,
                    const std::string& fact, const std::string& otherwise, const Json& object) {
    const model::IniEntry* entry = section == nullptr ? nullptr : section->find(key);
    if (entry == nullptr)
        return session.fail(
            ExitCode::notFound, fact,
            model::adviceFor(key, section == nullptr ? std::vector<std::string>() : section->keys(), otherwise));
    const std::string shown = session.shown(entry->key, entry->value);
    if (session.json) {
        Json whole = object;
        whole.update(Json{{"key", entry->key}, {"value", shown}, {"line", entry->line}});
        session.printJson(whole);
    } else {
        session.print(shown);
    }
    if (shown != entry->value)
        session.warn("the value is hidden; --show-secrets shows it");
    return ExitCode::done;
}

}  // namespace jx::cli
