// Composing entries of drivers and translators.
#include "odbcadmin/model/registration.h"

#include <utility>

#include "rules/names.h"
#include "rules/valid_names.h"

namespace jx::model {

namespace {

using Kind = Reason::Kind;

constexpr std::size_t kLongestPath = 1023;  // what the installer reads

bool isDriver(const RegisteredKind& kind) {
    return std::string_view(kind.word) == kDriverKind.word;
}

// Why a name is taken, if it is: a section of that name may belong to something else.
Reason alreadyThere(const IniView& file, const RegisteredKind& kind, const std::string& name, Scope scope) {
    const std::string where = " " + name + " in " + pathOf(rules::kDriverFile, scope);
    if (isDriver(kind) && (file.find(kind.list, name) != nullptr || file.find(name, kind.key) != nullptr))
        return {Kind::exists, "There is a driver" + where, "Use odbcadmin driver ensure to change it."};
    if (file.section(name) != nullptr || file.find(kind.list, name) != nullptr)
        return {Kind::exists, "There is something called" + where, "Remove it first, or choose another name."};
    return {};
}

Reason whyNotPath(const std::string& what, const std::string& path) {
    if (path.size() > kLongestPath)
        return {Kind::refused, "The path of the " + what + " is too long", "At most 1023 bytes are possible."};
    if (path.find('/') != std::string::npos && path.front() != '/')
        return {Kind::refused, "The path of the " + what + " does not begin with /", "Give its full path."};
    return {};
}

// Why a change of one that is there cannot go where changes go: it would hide all of the system's section. Adding one
// of the user's own is another matter.
Reason whyOnlySystems(const Configuration& configuration, const RegisteredKind& kind, const std::string& name,
                      WhenPresent present) {
    const ConfigFile& own = configuration.file(FileKind::drivers);
    const std::optional<Registered> entry = configuration.find(kind, name);
    if (present == WhenPresent::fail || !entry || entry->file->scope == own.scope)
        return {};
    const std::string word = kind.word;
    return {Kind::refused,
            "The " + word + " " + entry->name + " is the system's: a change in " + own.path + " would hide all of [" +
                entry->name + "] in " + entry->file->path,
            "--system changes it for all users; odbcadmin " + word + " add registers one of your own."};
}

Reason whyNameRefused(const RegisteredKind& kind, const std::string& name, const rules::NameRules& rules) {
    const std::string word = kind.word;
    if (name.empty())
        return {Kind::refused, "The " + word + " has no name", "Give it one."};
    if (const rules::Why why = rules::whyNoName(name, rules))
        return {Kind::refused, "No " + word + " can be called \"" + name + "\": " + why, "Choose another name."};
    return {};
}

Reason whyNotThere(const Configuration& configuration, const RegisteredKind& kind, const std::string& name) {
    if (Reason reason = whyNameRefused(kind, name, rules::kAnyDriver))
        return reason;
    return configuration.find(kind, name) ? whyOnlySystems(configuration, kind, name, WhenPresent::change)
                                          : noneRegistered(configuration, kind, name);
}

Reason whyNotRemoved(const Configuration& configuration, const RegisteredKind& kind, const std::string& name) {
    Reason reason = whyNotThere(configuration, kind, name);
    const std::optional<Registered> entry = configuration.find(kind, name);
    if (reason && entry && entry->file->scope != configuration.file(FileKind::drivers).scope)
        return {
            reason.kind,
            "The " + std::string(kind.word) + " " + entry->name + " is the system's: it stands in " + entry->file->path,
            "--system removes it for all users."};
    return reason;
}

// What another file has, or another program removed since the configuration was read, is not made anew by a change.
Reason whyNotIn(const IniView& file, const RegisteredKind& kind, const std::string& name) {
    if (file.section(name) != nullptr || file.find(kind.list, name) != nullptr)
        return {};
    return {Kind::notFound, "There is no " + std::string(kind.word) + " " + name + " in " + pathOf(rules::kDriverFile),
            "See odbcadmin " + std::string(kind.word) + " list."};
}

Reason whyNotSet(const RegisteredKind& kind, const Pairs& keys) {
    for (const auto& [key, value] : keys) {
        Reason reason = whyHidden(key, value);
        if (!reason && rules::sameName(key, kind.key) && value.empty())
            reason = {Kind::refused, std::string("A ") + kind.word + " cannot be without its library",
                      "Give a path, or remove the " + std::string(kind.word) + "."};
        if (!reason && rules::sameName(key, kind.key))
            reason = whyNotPath(std::string(kind.word) + "'s library", value);
        if (!reason && rules::sameName(key, rules::kSetup))
            reason = whyNotPath("setup library", value);
        if (reason)
            return reason;
    }
    return {};
}

// Every place where a value of one of these sections is the name, in any case.
void replaceName(FileChange& change, const IniSection* section, std::string_view onlyKey, const std::string& from,
                 const std::string& to) {
    if (section == nullptr)
        return;
    for (const IniEntry& entry : section->entries)
        if ((onlyKey.empty() || rules::sameName(entry.key, onlyKey)) && rules::sameName(entry.value, from))
            change.set(std::string(section->name), std::string(entry.key), to);
}

ChangeResult renameInDrivers(const Registered& entry, const RegisteredKind& kind, const std::string& to,
                             const ChangeWay& way) {
    FileChange change(rules::kDriverFile, way);
    const IniView& before = change.before();
    change.fail(whyNotIn(before, kind, entry.name));
    if (!rules::sameName(entry.name, to))
        change.fail(alreadyThere(before, kind, to, way.scope));
    Pairs keys;
    if (const IniSection* section = before.section(entry.name))
        for (const IniEntry& each : section->entries)
            keys.emplace_back(each.key, each.value);
    const IniEntry* listed = before.find(kind.list, entry.name);
    const std::string value(listed == nullptr ? std::string_view() : listed->value);
    if (listed != nullptr)
        change.erase(kind.list, entry.name);
    change.eraseSection(entry.name);
    if (listed != nullptr)
        change.set(kind.list, to, value);
    change.set(to, keys);
    if (isDriver(kind))
        replaceName(change, before.section(rules::kDefault), kind.key, entry.name, to);
    return change.finish();
}

ChangeResult renameInDataSources(const std::string& from, const std::string& to, Scope scope, ChangeWay way) {
    way.scope = scope;
    FileChange change(rules::kDataSourceFile, way);
    for (const IniSection& section : change.before().sections()) {
        const bool isList = rules::sameName(section.name, rules::kDataSourceList);
        if (isList || !rules::isReservedSection(section.name))
            replaceName(change, &section, isList ? "" : rules::kDriver, from, to);
    }
    return change.finish();
}

}  // namespace

Reason whyNoRegisteredName(const Configuration& configuration, const RegisteredKind& kind, const std::string& name) {
    return whyNameRefused(kind, name, configuration.find(kind, name) ? rules::kAnyDriver : rules::kNewDriver);
}

Reason whyNotRegister(const Configuration& configuration, const RegisteredKind& kind, const Registration& wish) {
    Reason reason = whyNoRegisteredName(configuration, kind, wish.name);
    if (!reason)
        reason = whyNotPath(std::string(kind.word) + "'s library", wish.library);
    for (const auto& [key, value] : wish.keys)
        if (!reason)
            reason = whyHidden(key, value);
    return reason ? reason : whyNotPath("setup library", wish.setup.value_or(""));
}

void composeRegistration(FileChange& change, const RegisteredKind& kind, const Registration& wish) {
    change.set(kind.list, wish.name, rules::kInstalled);
    if (!wish.library.empty())
        change.set(wish.name, kind.key, wish.library);
    if (wish.setup && wish.setup->empty())
        change.erase(wish.name, rules::kSetup);
    else if (wish.setup)
        change.set(wish.name, rules::kSetup, *wish.setup);
    change.set(wish.name, wish.keys);
}

void composeUnregistration(FileChange& change, const RegisteredKind& kind, const std::string& name) {
    if (change.before().find(kind.list, name) != nullptr)
        change.erase(kind.list, name);
    change.eraseSection(name);
}

ChangeResult registerEntry(const Configuration& configuration, const RegisteredKind& kind, const Registration& wish,
                           WhenPresent present, const ChangeWay& way) {
    return registerEntries(configuration, kind, {{wish, present}}, way);
}

ChangeResult registerEntries(const Configuration& configuration, const RegisteredKind& kind,
                             const std::vector<Entering>& entries, const ChangeWay& way) {
    for (const auto& [wish, present] : entries) {
        Reason reason = whyNotRegister(configuration, kind, wish);
        if (!reason)
            reason = whyOnlySystems(configuration, kind, wish.name, present);
        if (reason)
            return {std::move(reason)};
    }
    FileChange change(rules::kDriverFile, way);
    for (const auto& [wish, present] : entries) {
        if (present == WhenPresent::fail)
            change.fail(alreadyThere(change.before(), kind, wish.name, way.scope));
        if (wish.library.empty() && change.before().value(wish.name, kind.key).empty())
            change.fail({Kind::incomplete, std::string("The ") + kind.word + " " + wish.name + " has no library yet",
                         "Give it with --lib."});
        composeRegistration(change, kind, wish);
    }
    return change.finish();
}

ChangeResult unregisterEntry(const Configuration& configuration, const RegisteredKind& kind, const std::string& name,
                             const ChangeWay& way) {
    if (Reason reason = whyNotRemoved(configuration, kind, name))
        return {std::move(reason)};
    FileChange change(rules::kDriverFile, way);
    composeUnregistration(change, kind, name);
    return change.finish();
}

ChangeResult setRegisteredKeys(const Configuration& configuration, const RegisteredKind& kind, const std::string& name,
                               const Pairs& keys, const ChangeWay& way) {
    if (Reason reason = whyNotThere(configuration, kind, name))
        return {std::move(reason)};
    if (Reason reason = whyNotSet(kind, keys))
        return {std::move(reason)};
    FileChange change(rules::kDriverFile, way);
    change.fail(whyNotIn(change.before(), kind, name));
    change.set(name, keys);
    return change.finish();
}

ChangeResult unsetRegisteredKeys(const Configuration& configuration, const RegisteredKind& kind,
                                 const std::string& name, const std::vector<std::string>& keys, const ChangeWay& way) {
    if (Reason reason = whyNotThere(configuration, kind, name))
        return {std::move(reason)};
    FileChange change(rules::kDriverFile, way);
    change.fail(whyNotIn(change.before(), kind, name));
    for (const std::string& key : keys) {
        if (rules::sameName(rules::trimmed(key), kind.key))
            change.fail({Kind::refused, std::string("A ") + kind.word + " cannot be without its library",
                         "Set another one, or remove the " + std::string(kind.word) + "."});
        change.erase(name, key);
    }
    return change.finish();
}

ChangeResult renameRegistered(const Configuration& configuration, const RegisteredKind& kind, const std::string& from,
                              const std::string& to, const std::vector<Scope>& sources, const ChangeWay& way) {
    if (Reason reason = whyNotThere(configuration, kind, from))
        return {std::move(reason)};
    if (Reason reason = whyNameRefused(kind, to, rules::kNewDriver))
        return {std::move(reason)};
    const Registered entry = *configuration.find(kind, from);
    if (entry.name == to)
        return {};
    const auto renameAll = [&] {
        ChangeResult result = renameInDrivers(entry, kind, to, way);
        for (const Scope scope : sources)
            if (result.isDone() && isDriver(kind))
                result.add(renameInDataSources(entry.name, to, scope, way));
        return result;
    };
    return asOneChange(way, renameAll);
}

}  // namespace jx::model
