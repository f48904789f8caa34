// Removes drivers and translators.
#include "api3/driver_removal.h"

#include <optional>
#include <utility>

#include "api3/call.h"
#include "api3/component_removal.h"
#include "api3/driver_data_sources.h"
#include "api3/driver_routine.h"

namespace jx::api3 {

namespace {

bool isNamed(const char* name, const ComponentKind& kind) {
    return (name != nullptr && *name != '\0') ||
           refuse(ODBC_ERROR_INVALID_NAME, std::string(kind.noun) + " to be removed: none is named.");
}

std::optional<ComponentRemoval> begin(ThreadState& state, const ComponentKind& kind, const char* name) {
    return guarded(std::optional<ComponentRemoval>(), [&] {
        std::optional<ComponentRemoval> removal;
        if (isNamed(name, kind) && !removal.emplace(state, kind, name).countDown())
            removal.reset();
        return removal;
    });
}

// PutBack: puts the count back when its scope is left without a word that all went well, also by an exception of the
// setup library.
class PutBack {
public:
    explicit PutBack(ComponentRemoval& removal) : removal_(&removal) {}
    ~PutBack() {
        if (removal_ != nullptr)
            guarded([this] {
                removal_->putBack();
                return true;
            });
    }
    PutBack(const PutBack&) = delete;
    PutBack& operator=(const PutBack&) = delete;

    void isNotNeeded() { removal_ = nullptr; }

private:
    ComponentRemoval* removal_;
};

// The driver's own part in its removal; a setup library that does not load has none.
bool askSetupLibrary(ThreadState& state, const RegisteredDriver& driver) {
    const std::size_t recordsBefore = state.errors.count();
    const DriverOutcome outcome = callDriverRoutine(state, driver, {nullptr, ODBC_REMOVE_DRIVER, nullptr}, {});
    if (outcome == DriverOutcome::failed)
        return false;
    state.errors.keep(recordsBefore);
    return true;
}

bool end(ComponentRemoval& removal, DWORD* count) {
    if (removal.count() == 0 && !guarded([&] { return removal.removeEntry(); }))
        return false;
    if (count != nullptr)
        *count = removal.count();
    return true;
}

}  // namespace

bool removeDriver(ThreadState& state, const char* name, WithDataSources withDataSources, DWORD* count) {
    std::optional<ComponentRemoval> removal = begin(state, kDrivers, name);
    if (!removal)
        return false;
    if (removal->count() == 0) {
        PutBack untilDone(*removal);
        if (!askSetupLibrary(state, removal->component()))
            return false;
        if (withDataSources == WithDataSources::yes)
            removeDataSourcesOf(state, removal->component());
        untilDone.isNotNeeded();
    }
    return end(*removal, count);
}

bool removeTranslator(ThreadState& state, const char* name, DWORD* count) {
    std::optional<ComponentRemoval> removal = begin(state, kTranslators, name);
    return removal && end(*removal, count);
}

}  // namespace jx::api3
