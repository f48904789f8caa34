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

// Null for what is hidden: stars could be taken for the value.
static Json shownJson(const Session& session, const model::IniEntry& entry) {
    const bool isHidden = session.shown(entry.key, entry.value) != entry.value;
    return isHidden ? Json(nullptr) : Json(std::string(entry.value));
}

Json keysJson(const Session& session, const model::IniSection* section) {
    Json keys = Json::object();
    if (section != nullptr)
        for (const model::IniEntry& entry : section->entries)
            keys[std::string(entry.key)] = shownJson(session, entry);
    return keys;
}

ExitCode printValue(const Session& session, const model::IniSection* section, const std::string& key,
                    const std::string& fact, const std::string& otherwise, const Json& object) {
    const model::IniEntry* entry = section == nullptr ? nullptr : section->find(key);
    if (entry == nullptr)
        return session.fail(
            ExitCode::notFound, fact,
            model::adviceFor(key, section == nullptr ? std::vector<std::string>() : section->keys(), otherwise));
    const Json shown = shownJson(session, *entry);
    if (session.json) {
        Json whole = object;
        whole.update(Json{{"key", entry->key}, {"value", shown}, {"masked", shown.is_null()}, {"line", entry->line}});
        session.printJson(whole);
        return ExitCode::done;
    }
    if (shown.is_null())
        return session.fail(ExitCode::failed, "The value of " + std::string(entry->key) + " is a secret",
                            "--show-secrets prints it.");
    session.printOfFile(entry->value);
    return ExitCode::done;
}

}  // namespace jx::cli
