// Walking over a list of names, each ended by a NUL and the list by an empty name.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "config/text_bytes.h"

namespace jx {

// NameList: a read-only walk over the list in a buffer of sizeInBytes bytes.
// Use      call next until it returns an empty name.
// Safety   never reads past the buffer: a list that is cut, or has no end, ends with it.
// Ownership  the names point into the buffer, which must outlive them.
class NameList {
public:
    NameList(const unsigned char* list, std::size_t sizeInBytes) : rest_(asChars(list), sizeInBytes) {}

    // The next name; empty at the end of the list.
    std::string_view next() {
        const std::string_view name = rest_.substr(0, rest_.find('\0'));
        if (!name.empty())
            rest_.remove_prefix(std::min(name.size() + 1, rest_.size()));
        return name;
    }

    // How many names are left.
    std::size_t count() const {
        NameList walk(*this);
        std::size_t names = 0;
        while (!walk.next().empty())
            ++names;
        return names;
    }

    // The size of the names that are left, with a NUL for each but without the list's final NUL.
    std::size_t sizeInBytes() const {
        NameList walk(*this);
        std::size_t bytes = 0;
        for (std::string_view name = walk.next(); !name.empty(); name = walk.next())
            bytes += name.size() + 1;
        return bytes;
    }

private:
    std::string_view rest_;
};

}  // namespace jx
