// Hashing names, and keeping their places.
#include "odbcadmin/model/name_places.h"

#include <sys/random.h>

#include <algorithm>
#include <bit>

#include "rules/names.h"

namespace jx::model {

namespace {

constexpr std::size_t kFewestSlots = 16;
constexpr std::uint64_t kOdd = 0x9E3779B97F4A7C15U;

// Drawn by the system for each process, so that no file can hold many names of one hash.
std::uint64_t secretOfProcess() {
    static const std::uint64_t kSecret = [] {
        std::uint64_t drawn = kOdd;
        const bool isDrawn = ::getrandom(&drawn, sizeof drawn, GRND_NONBLOCK) == sizeof drawn;
        return isDrawn ? drawn : kOdd;
    }();
    return kSecret;
}

// Both halves of a product of 128 bits, folded into one.
std::uint64_t mixed(std::uint64_t left, std::uint64_t right) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(left) * right;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

}  // namespace

std::uint32_t NamePlaces::hashOf(std::string_view name, std::uint64_t seed) {
    using namespace rules::name_words;
    const std::uint64_t secret = secretOfProcess();
    std::uint64_t hash = mixed(secret ^ name.size(), kOdd ^ seed);
    std::size_t at = 0;
    for (; at + 8 <= name.size(); at += 8)
        hash = mixed(hash ^ folded(wordAt(name.data() + at)), secret | 1U);
    hash = mixed(hash ^ folded(shortName(name.data() + at, name.size() - at)), secret | 1U);
    return static_cast<std::uint32_t>(hash ^ hash >> 32U);
}

void NamePlaces::put(const Slot& slot) {
    std::size_t at = slot.hash & mask();
    while (slots_[at].place != kFree)
        at = (at + 1) & mask();
    slots_[at] = slot;
}

void NamePlaces::grow(std::size_t size) {
    std::vector<Slot> old(size);
    old.swap(slots_);
    for (const Slot& slot : old)
        if (slot.place != kFree)
            put(slot);
}

void NamePlaces::reserve(std::size_t count) {
    const std::size_t size = std::bit_ceil(std::max(kFewestSlots, 2 * count));
    if (size > slots_.size())
        grow(size);
}

void NamePlaces::add(std::uint32_t hash, std::size_t place) {
    if (2 * (count_ + 1) > slots_.size())
        reserve(2 * (count_ + 1));
    put({hash, static_cast<std::uint32_t>(place)});
    ++count_;
}

}  // namespace jx::model
