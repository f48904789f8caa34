// Removing a driver's or translator's entry: first its count, and at 0 the entry.
//
//     ComponentRemoval removal(state, kDrivers, "PG");
//     if (!removal.countDown()) return false;
//     if (removal.count() == 0) ... removal.removeEntry() ...
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "api3/component.h"
#include "api3/driver_registry.h"

namespace jx::api3 {

struct ThreadState;

// ComponentRemoval: two changes of the system's file, with time between them for a setup routine that may write the
// same file. Use      countDown, then, when count() is 0, removeEntry; or putBack, after which the file is as it was.
// Others   may install the component meanwhile: then its count is not 0 any more, and the entry stays.
// Failure  false with a record.
class ComponentRemoval {
public:
    ComponentRemoval(ThreadState& state, const ComponentKind& kind, std::string name);

    // ODBC_ERROR_COMPONENT_NOT_FOUND when the system's file does not have it, USAGE_UPDATE_FAILED when it cannot be
    // written.
    bool countDown();

    std::uint32_t count() const { return count_; }

    // What the system's file says of it; after countDown.
    const RegisteredDriver& component() const { return component_; }

    // Removes the section and the entry in the list, unless the count has risen.
    bool removeEntry();

    void putBack();

private:
    const Place& place() const;
    bool refuseAbsent() const;

    ThreadState& state_;
    const ComponentKind& kind_;
    ChangeSubject subject_;
    RegisteredDriver component_;
    std::optional<std::uint32_t> countBefore_;
    bool hadSection_ = false;
    std::uint32_t count_ = 0;
};

}  // namespace jx::api3
