// Entries of drivers and translators.
#include "odbcadmin/cli/registration.h"
#include "rules/sections.h"

#include <odbcinst.h>

#include <algorithm>

namespace jx::admin {

const RegisteredKind& driverKind() {
    static const RegisteredKind kKind{"driver", INS_ODBCINI_DRIVERS, INS_ODBCINI_DRIVER};
    return kKind;
}

const RegisteredKind& translatorKind() {
    static const RegisteredKind kKind{"translator", INS_ODBCINST_TRANSLATORS, kTranslatorKey};
    return kKind;
}

ExitCode checkRegisteredName(const Session& session, const RegisteredKind& kind, const std::string& name) {
    std::string why = rules::isReservedSection(name) || rules::isDefaultName(name) ? "the section has another use"
                                                                                   : whyNoSection(name);
    if (why.empty())
        why = whyNoKey(name);
    if (why.empty())
        return ExitCode::done;
    return session.fail(ExitCode::invalid, "No " + std::string(kind.word) + " can be called \"" + name + "\": " + why,
                        "Choose another name.");
}

bool composeRegistration(FileChange& change, const RegisteredKind& kind, const RegistrationWish& wish) {
    if (!change.set(kind.list, wish.name, kInstalled))
        return false;
    if (!wish.library.empty() && !change.set(wish.name, kind.key, wish.library))
        return false;
    if (!wish.setup.empty() && !change.set(wish.name, kSetupKey, wish.setup))
        return false;
    return std::all_of(wish.keys.begin(), wish.keys.end(),
                       [&](const auto& pair) { return change.set(wish.name, pair.first, pair.second); });
}

bool composeUnregistration(FileChange& change, const RegisteredKind& kind, const std::string& name) {
    if (change.before().find(kind.list, name) != nullptr && !change.erase(kind.list, name))
        return false;
    return change.eraseSection(name);
}

}  // namespace jx::admin
