// A hash table of names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace jx::ini {

// NameTable: finds numbers by the hash of a name; open addressing, at most three quarters full.
class NameTable {
public:
    static constexpr std::uint32_t kNone = UINT32_MAX;

    void clear() noexcept;
    std::size_t memory() const { return slots_.capacity() * sizeof(Slot); }

    // The first number inserted with this hash for which matches is true, or kNone.
    template <class Matches>
    std::uint32_t find(std::uint32_t hash, Matches matches) const {
        if (slots_.empty())
            return kNone;
        const std::size_t mask = slots_.size() - 1;
        for (std::size_t at = hash & mask; slots_[at].number != kNone; at = (at + 1) & mask)
            if (slots_[at].hash == hash && matches(slots_[at].number))
                return slots_[at].number;
        return kNone;
    }

    void insert(std::uint32_t hash, std::uint32_t number);

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = kNone;
    };

    void place(Slot slot);
    void grow();

    std::vector<Slot> slots_;  // a power of two, or none
    std::size_t used_ = 0;
};

}  // namespace jx::ini
