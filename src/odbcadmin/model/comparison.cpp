// Comparing entries of two configurations.
#include "odbcadmin/model/comparison.h"

#include <algorithm>

namespace jx::model {

namespace {

// Whether both have the same line in their list and the same keys, spelled the same.
template <class Row>
bool isSame(const Row& before, const Row& after) {
    if (before.listed.text != after.listed.text || (before.section == nullptr) != (after.section == nullptr) ||
        static_cast<bool>(before.listed) != static_cast<bool>(after.listed))
        return false;
    if (before.section == nullptr)
        return true;
    const auto& left = before.section->entries;
    const auto& right = after.section->entries;
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const IniEntry& a, const IniEntry& b) { return a.key == b.key && a.value == b.value; });
}

template <class Row, class LookUp>
std::vector<Compared> compare(const std::vector<Row>& rows, LookUp lookUpBefore) {
    std::vector<Compared> compared;
    for (const Row& row : rows) {
        const std::optional<Row> before = lookUpBefore(row.name);
        compared.push_back({row.name, !before                ? Compared::Status::added
                                      : isSame(*before, row) ? Compared::Status::unchanged
                                                             : Compared::Status::changed});
    }
    return compared;
}

}  // namespace

std::vector<Compared> compareRegistered(const RegisteredKind& kind, const Configuration& before,
                                        const Configuration& after) {
    return compare(after.all(kind), [&](const std::string& name) { return before.find(kind, name); });
}

std::vector<Compared> compareDataSources(const Configuration& before, const Configuration& after) {
    return compare(after.dataSources(), [&](const std::string& name) { return before.dataSource(name); });
}

const char* statusWord(Compared::Status status) {
    constexpr const char* kWords[] = {"unchanged", "changed", "added"};
    return kWords[static_cast<std::size_t>(status)];
}

}  // namespace jx::model
