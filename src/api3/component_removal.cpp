// Counts components down and removes them.
#include "api3/component_removal.h"

#include <utility>

#include "api3/call.h"
#include "api3/profile_lookup.h"
#include "rules/valid_names.h"

namespace jx::api3 {

ComponentRemoval::ComponentRemoval(ThreadState& state, const ComponentKind& kind, std::string name)
    : state_(state), kind_(kind), subject_{subjectOf(kind, name), ODBC_ERROR_USAGE_UPDATE_FAILED} {
    component_.name = std::move(name);
}

const Place& ComponentRemoval::place() const {
    return state_.places.find(Scope::system, FileKind::drivers, readEnvironment());
}

// A user's own entry is not counted, and not removed here.
bool ComponentRemoval::refuseAbsent() const {
    const Place& users = state_.places.find(Scope::user, FileKind::drivers, readEnvironment());
    const Look look = lookAt(users, {component_.name.c_str(), nullptr});
    JxIniPart part{};
    const char* name = component_.name.c_str();
    const bool isUsers = look.view != nullptr && (ask(look.view, kind_.list, name, part) == JxIniFound ||
                                                  ask(look.view, name, kind_.libraryKey, part) == JxIniFound);
    return refuse(ODBC_ERROR_COMPONENT_NOT_FOUND,
                  subject_.name + " is not in the system's file " + place().path() +
                      (isUsers ? "; it stands in the user's file " + users.path() + " only." : "."));
}

bool ComponentRemoval::countDown() {
    const std::string& name = component_.name;
    const bool canExist = rules::whyNoName(name, rules::kAnyDriver) == nullptr;
    bool isThere = canExist;
    const bool done = canExist && changeFile(place(), subject_, [&](FileChange& change) {
                          const FileText text = change.before();
                          isThere = isInstalled(kind_, text, name);
                          if (!isThere)
                              return false;
                          hadSection_ = text.hasSection(name);
                          countBefore_ = countOf(text, name);
                          count_ = countOneLess(countBefore_);
                          component_.library = text.value(name, kind_.libraryKey).value_or("");
                          component_.setup = text.value(name, rules::kSetup).value_or("");
                          return setCount(change, name, count_);
                      });
    return isThere ? done : refuseAbsent();
}

bool ComponentRemoval::removeEntry() {
    return changeFile(place(), subject_, [&](FileChange& change) {
        count_ = countOf(change.before(), component_.name).value_or(0);
        return count_ > 0 || (change.set(kind_.list, component_.name.c_str(), nullptr) &&
                              change.set(component_.name, nullptr, nullptr));
    });
}

void ComponentRemoval::putBack() {
    const std::string& name = component_.name;
    changeFile(place(), subject_, [&](FileChange& change) {
        const std::uint32_t now = countOf(change.before(), name).value_or(0);
        if (now > 0)
            return setCount(change, name, countOneMore(now, /*wasInstalled=*/true));
        if (countBefore_)
            return setCount(change, name, *countBefore_);
        return change.set(name, hadSection_ ? rules::kUsageCount : nullptr, nullptr);
    });
}

}  // namespace jx::api3
