// What is another now than it was before: for installations, which write the files by themselves.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"

namespace jx::model {

struct Compared {
    enum class Status { unchanged, changed, added };

    std::string name;
    Status status = Status::unchanged;
};

// What became of everything of a kind that is there now, in the order of all or dataSources: it is compared by its line
// in the list and by the keys of its section.
std::vector<Compared> compareRegistered(const RegisteredKind& kind, const Configuration& before,
                                        const Configuration& after);
std::vector<Compared> compareDataSources(const Configuration& before, const Configuration& after);

// "unchanged", "changed", "added"
const char* statusWord(Compared::Status status);

}  // namespace jx::model
