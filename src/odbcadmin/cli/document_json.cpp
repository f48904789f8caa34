// Reading the JSON document, strictly: what is not understood is refused. And writing it.
#include "odbcadmin/cli/document_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <unordered_set>

#include "odbcadmin/model/trace_settings.h"
#include "rules/names.h"
#include "rules/utf8.h"

namespace jx::cli {

namespace {

using model::Document;
using model::DocumentEntry;
using model::DocumentKey;

// Reader: takes one document apart; the first fault ends it.
class Reader {
public:
    explicit Reader(std::string& fault) : fault_(fault) {}

    std::optional<Document> document(const Json& json) {
        Document document;
        const bool good =
            isObject(json, "the document") &&
            hasOnly(json, {"schema", "drivers", "translators", "dataSources", "tracing"}, "the document") &&
            schema(json) && entries(json, "drivers", rules::kDriver, document.drivers) &&
            entries(json, "translators", rules::kTranslator, document.translators) &&
            entries(json, "dataSources", nullptr, document.dataSources) && tracing(json, document.tracing);
        return good ? std::optional(document) : std::nullopt;
    }

private:
    bool fail(const std::string& what) {
        fault_ = what;
        return false;
    }

    bool isObject(const Json& json, const std::string& what) {
        return json.is_object() || fail(what + " is not an object");
    }

    bool hasOnly(const Json& json, const std::vector<std::string>& known, const std::string& what) {
        for (const auto& [name, value] : json.items())
            if (std::find(known.begin(), known.end(), name) == known.end())
                return fail(what + " has a member \"" + name + "\", which is not known");
        return true;
    }

    bool schema(const Json& json) {
        const auto member = json.find("schema");
        return (member != json.end() && *member == "odbcadmin/1") || fail("\"schema\" is not \"odbcadmin/1\"");
    }

    bool text(const Json& object, const char* member, const std::string& what, std::string& value) {
        const auto found = object.find(member);
        if (found == object.end() || !found->is_string() || found->get_ref<const std::string&>().empty())
            return fail(what + " has no text \"" + member + "\"");
        value = found->get<std::string>();
        return true;
    }

    // Absent means the user's.
    bool scope(const Json& object, const std::string& what, model::Scope& scope) {
        const auto found = object.find("scope");
        if (found == object.end() || *found == scopeWord(model::Scope::user))
            return true;
        scope = model::Scope::system;
        return *found == scopeWord(scope) || fail("\"scope\" of " + what + " is neither \"user\" nor \"system\"");
    }

    bool keys(const Json& object, const std::string& what, std::vector<DocumentKey>& keys) {
        const auto found = object.find("keys");
        if (found == object.end())
            return true;
        if (!isObject(*found, "\"keys\" of " + what))
            return false;
        std::unordered_set<std::string> names;
        for (const auto& [name, value] : found->items()) {
            if (!value.is_string() && !value.is_null())
                return fail("key \"" + name + "\" of " + what + " is neither text nor null");
            if (!names.insert(rules::foldedName(name)).second)
                return fail("key \"" + name + "\" of " + what + " is there twice");
            keys.push_back({name, value.is_null() ? std::nullopt : std::optional(value.get<std::string>())});
        }
        return true;
    }

    // The entries of a list, each of which comes once in a scope. Drivers and translators must have a library, data
    // sources a driver or a library.
    bool entries(const Json& json, const char* list, const char* library, std::vector<DocumentEntry>& all) {
        const auto found = json.find(list);
        if (found == json.end())
            return true;
        if (!found->is_array())
            return fail("\"" + std::string(list) + "\" is not a list");
        std::unordered_set<std::string> names;
        for (std::size_t i = 0; i < found->size(); ++i) {
            const std::string what = std::string(list) + "[" + std::to_string(i) + "]";
            DocumentEntry& entry = all.emplace_back();
            if (!this->entry((*found)[i], what, library, entry))
                return false;
            if (!names.insert(scopeWord(entry.scope) + (" " + rules::foldedName(entry.name))).second)
                return fail(what + ": \"" + entry.name + "\" is there twice");
        }
        return true;
    }

    bool entry(const Json& object, const std::string& what, const char* library, DocumentEntry& entry) {
        if (!isObject(object, what) || !text(object, "name", what, entry.name) || !scope(object, what, entry.scope))
            return false;
        if (library == nullptr)
            return hasOnly(object, {"name", "scope", "driver", "keys"}, what) && keys(object, what, entry.keys) &&
                   ((!object.contains("driver") && hasKey(entry, rules::kDriver)) ||
                    text(object, "driver", what, entry.driver));
        return hasOnly(object, {"name", "scope", "keys"}, what) && keys(object, what, entry.keys) &&
               (hasKey(entry, library) || fail(what + " has no key \"" + library + "\""));
    }

    // The settings of each scope, which have keys of their own only and no name.
    bool tracing(const Json& json, std::vector<DocumentEntry>& all) {
        const auto found = json.find("tracing");
        if (found == json.end())
            return true;
        if (!found->is_array())
            return fail("\"tracing\" is not a list");
        for (std::size_t i = 0; i < found->size(); ++i) {
            const std::string what = "tracing[" + std::to_string(i) + "]";
            DocumentEntry entry;
            const Json& object = (*found)[i];
            if (!isObject(object, what) || !hasOnly(object, {"scope", "keys"}, what) ||
                !scope(object, what, entry.scope) || !keys(object, what, entry.keys))
                return false;
            for (const DocumentKey& key : entry.keys)
                if (!model::isTraceKey(key.name) || !key.value)
                    return fail("key \"" + key.name + "\" of " + what + " is not a setting of tracing");
            if (std::any_of(all.begin(), all.end(), [&](const auto& each) { return each.scope == entry.scope; }))
                return fail(what + ": this scope is there twice");
            all.push_back(std::move(entry));
        }
        return true;
    }

    static bool hasKey(const DocumentEntry& entry, const char* library) {
        return std::any_of(entry.keys.begin(), entry.keys.end(), [&](const DocumentKey& key) {
            return rules::sameName(key.name, library) && key.value && !key.value->empty();
        });
    }

    std::string& fault_;
};

// The parser itself lets the last of two equal members count: here that is a fault.
std::optional<Json> parseWithoutTwins(const std::string& text, std::string& fault) {
    std::vector<std::unordered_set<std::string>> open;
    const auto look = [&](int, Json::parse_event_t event, Json& value) {
        if (event == Json::parse_event_t::object_start)
            open.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            open.pop_back();
        else if (event == Json::parse_event_t::key && !open.back().insert(value.get<std::string>()).second)
            fault = "member \"" + value.get<std::string>() + "\" is there twice in one object";
        return true;
    };
    try {
        Json json = Json::parse(text, look);
        return fault.empty() ? std::optional(std::move(json)) : std::nullopt;
    } catch (const Json::parse_error& error) {
        fault = error.what();
        fault.erase(0, fault.find("] ") + 2);  // the parser's own number for the kind of fault
        return std::nullopt;
    }
}

Json entryJson(const DocumentEntry& entry, std::string& notText) {
    if (!rules::isUtf8(entry.name) || !rules::isUtf8(entry.driver))
        notText = entry.name;
    Json keys = Json::object();
    for (const DocumentKey& key : entry.keys) {
        if (!rules::isUtf8(key.name) || !rules::isUtf8(key.value.value_or("")))
            notText = "key " + key.name;
        keys[key.name] = key.value ? Json(*key.value) : Json();
    }
    Json json = Json::object();
    if (!entry.name.empty())
        json["name"] = entry.name;
    if (entry.scope == model::Scope::system)
        json["scope"] = scopeWord(entry.scope);
    if (!entry.driver.empty())
        json["driver"] = entry.driver;
    json["keys"] = keys;
    return json;
}

}  // namespace

std::optional<Document> parseDocument(const std::string& text, std::string& fault) {
    fault.clear();
    const std::optional<Json> json = parseWithoutTwins(text, fault);
    return json ? Reader(fault).document(*json) : std::nullopt;
}

Json documentJson(const Document& document, std::string& notText) {
    const auto listJson = [&](const std::vector<DocumentEntry>& entries) {
        Json list = Json::array();
        for (const DocumentEntry& entry : entries)
            list.push_back(entryJson(entry, notText));
        return list;
    };
    Json json{{"drivers", listJson(document.drivers)},
              {"translators", listJson(document.translators)},
              {"dataSources", listJson(document.dataSources)}};
    if (!document.tracing.empty())
        json["tracing"] = listJson(document.tracing);
    return json;
}

}  // namespace jx::cli
