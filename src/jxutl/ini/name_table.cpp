// Places, grows and empties the table.
#include "jxutl/ini/name_table.h"

#include <algorithm>

namespace jx::ini {

void NameTable::clear() noexcept {
    if (used_ == 0)
        return;
    // Clearing a table that is far too large would take longer than making a new one.
    if (slots_.size() > used_ * 16)
        std::vector<Slot>().swap(slots_);
    std::fill(slots_.begin(), slots_.end(), Slot());
    used_ = 0;
}

void NameTable::place(Slot slot) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = slot.hash & mask;
    while (slots_[at].number != kNone)
        at = (at + 1) & mask;
    slots_[at] = slot;
}

void NameTable::grow() {
    std::vector<Slot> old(std::max<std::size_t>(slots_.size() * 2, 16));
    old.swap(slots_);
    for (const Slot& slot : old)
        if (slot.number != kNone)
            place(slot);
}

void NameTable::insert(std::uint32_t hash, std::uint32_t number) {
    if ((used_ + 1) * 4 > slots_.size() * 3)
        grow();
    place({hash, number});
    ++used_;
}

}  // namespace jx::ini
