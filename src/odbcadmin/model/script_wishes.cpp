// Reading wishes out of a script and looking whether they came true.
#include "odbcadmin/model/script_wishes.h"

#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::model {

namespace {

// What the installer reads of a list of names, each ended by a NUL.
constexpr std::size_t kListRead = 1023;

std::string quoted(const std::string& name) {
    return "\"" + name + "\"";
}

// The file name in a line of the script; empty when there is none.
std::string fileOf(const IniView& script, const std::string& section, const char* role) {
    const std::string value = script.value(section, quoted(role));
    const std::size_t first = value.find(',');
    if (first == std::string::npos)
        return {};
    return std::string(rules::trimmed(value.substr(first + 1, value.find(',', first + 1) - first - 1)));
}

class Looking {
public:
    Looking(const ScriptWishes& wishes, const Configuration& after, const Reason& failure)
        : wishes_(wishes), after_(after), failure_(failure) {}

    void registered(const RegisteredKind& kind, const std::string& name) {
        const std::string what = std::string(kind.word) + " " + name;
        const std::string file = fileOf(wishes_.script, name, kind.key);
        const std::string setup = fileOf(wishes_.script, name, rules::kSetup);
        const auto entry = after_.find(kind, name);
        if (file.empty())
            return add(what, "its section in the script has no line \"" + std::string(kind.key) +
                                 "\" whose second field names the library");
        if (!entry || !entry->listed || entry->library.text != pathOf(file))
            return add(what, whyNotEntered());
        if (!setup.empty() && entry->setup.text != pathOf(setup))
            add("setup library of " + what, whyNotEntered());
    }

    // Names beyond what the installer reads of the list.
    void translators() {
        std::size_t length = 0;
        for (const std::string& name : wishes_.translators) {
            length += quoted(name).size() + 1;
            if (length > kListRead && !after_.find(kTranslatorKind, name))
                add("translator " + name, "its name lies beyond the first 1023 bytes of the script's list");
            else
                registered(kTranslatorKind, name);
        }
    }

    void dataSourcesOf(const std::string& driver) {
        std::string list = wishes_.script.value(driver + "-Keys", "CreateDSN");
        while (!list.empty()) {
            const std::size_t end = std::min(list.find(','), list.size());
            const std::string name(rules::trimmed(list.substr(0, end)));
            list.erase(0, end + 1);
            if (!name.empty() && !after_.dataSource(name))
                add("data source " + name, whyNotEntered());
        }
    }

    std::vector<Unfulfilled> found;

private:
    std::string pathOf(const std::string& file) const {
        return wishes_.directory + (wishes_.directory.ends_with('/') ? "" : "/") + file;
    }

    std::string whyNotEntered() const {
        return failure_ ? failure_.fact
                        : "the installer library did not enter it, since its lines in the script are not complete";
    }

    void add(const std::string& what, const std::string& why) { found.push_back({what, why}); }

    const ScriptWishes& wishes_;
    const Configuration& after_;
    const Reason& failure_;
};

}  // namespace

std::vector<std::string> offeredBy(const IniView& script, const char* list) {
    std::vector<std::string> names;
    if (const IniSection* section = script.section(list))
        for (const std::string& key : section->keys())
            names.push_back(withoutQuotes(key));
    std::erase(names, "");
    return names;
}

std::vector<Unfulfilled> unfulfilled(const ScriptWishes& wishes, const Configuration& after, const Reason& failure) {
    Looking looking(wishes, after, failure);
    for (const std::string& name : wishes.drivers) {
        looking.registered(kDriverKind, name);
        looking.dataSourcesOf(name);
    }
    looking.translators();
    return looking.found;
}

}  // namespace jx::model
