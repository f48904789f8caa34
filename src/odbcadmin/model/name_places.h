// Finding names among many: a table of numbers that belong to names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace jx::model {

// NamePlaces: which place of a list of the caller's a name stands at. The names stay with the caller, who says whether
// the one at a place is the one looked for: a look-up takes no memory, and an entry sixteen bytes at most. Places are
// below 2^32 - 1.
//
//     NamePlaces places;
//     places.add(NamePlaces::hashOf(names[7]), 7);
//     places.find(NamePlaces::hashOf("Sales"), [&](std::size_t at) { return rules::sameName(names[at], "Sales"); });
class NamePlaces {
public:
    // Equal for names that match. seed: a number that is part of the name. Nobody outside the process can foresee it.
    static std::uint32_t hashOf(std::string_view name, std::uint64_t seed = 0);

    // Of several places that match the one that was added first.
    template <class IsSame>
    std::optional<std::size_t> find(std::uint32_t hash, IsSame isSame) const {
        if (slots_.empty())
            return std::nullopt;
        for (std::size_t at = hash & mask(); slots_[at].place != kFree; at = (at + 1) & mask())
            if (slots_[at].hash == hash && isSame(slots_[at].place))
                return slots_[at].place;
        return std::nullopt;
    }

    void add(std::uint32_t hash, std::size_t place);

    // Room for so many without growing.
    void reserve(std::size_t count);

    bool isEmpty() const { return count_ == 0; }

private:
    static constexpr std::uint32_t kFree = 0xFFFFFFFF;

    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t place = kFree;
    };

    std::size_t mask() const { return slots_.size() - 1; }
    void put(const Slot& slot);
    void grow(std::size_t size);

    std::vector<Slot> slots_;  // a power of two; at least half of them free
    std::size_t count_ = 0;
};

}  // namespace jx::model
