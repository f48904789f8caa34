// Composing entries of drivers and translators.
#include "odbcadmin/model/registration.h"

#include <utility>

#include "rules/valid_names.h"

namespace jx::model {

namespace {

using Kind = Reason::Kind;

constexpr std::size_t kLongestPath = 1023;  // what the installer reads

// Why a name is taken, if it is: a section of that name may belong to something else.
Reason alreadyThere(const IniView& file, const RegisteredKind& kind, const std::string& name, Scope scope) {
    const bool isDriver = std::string_view(kind.word) == kDriverKind.word;
    const std::string where = " " + name + " in " + pathOf(rules::kDriverFile, scope);
    if (isDriver && (file.find(kind.list, name) != nullptr || file.find(name, kind.key) != nullptr))
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
    if (Reason reason = whyNotRegister(configuration, kind, wish))
        return {std::move(reason)};
    if (Reason reason = whyOnlySystems(configuration, kind, wish.name, present))
        return {std::move(reason)};
    FileChange change(rules::kDriverFile, way);
    if (present == WhenPresent::fail)
        change.fail(alreadyThere(change.before(), kind, wish.name, way.scope));
    if (wish.library.empty() && change.before().value(wish.name, kind.key).empty())
        change.fail({Kind::incomplete, std::string("The ") + kind.word + " " + wish.name + " has no library yet",
                     "Give it with --lib."});
    composeRegistration(change, kind, wish);
    return change.finish();
}

ChangeResult unregisterEntry(const Configuration& configuration, const RegisteredKind& kind, const std::string& name,
                             const ChangeWay& way) {
    if (Reason reason = whyNameRefused(kind, name, rules::kAnyDriver))
        return {std::move(reason)};
    if (!configuration.find(kind, name))
        return {noneRegistered(configuration, kind, name)};
    if (Reason reason = whyOnlySystems(configuration, kind, name, WhenPresent::change))
        return {std::move(reason)};
    FileChange change(rules::kDriverFile, way);
    composeUnregistration(change, kind, name);
    return change.finish();
}

}  // namespace jx::model
