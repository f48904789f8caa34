// Walking over a list of NUL-ended names that an empty name ends.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "config/text_bytes.h"

namespace jx {

// NameList: a read-only walk over the list in a buffer of sizeInBytes bytes.
// Use      call next until it gives an empty name.
// Safety   never looks beyond the buffer: a list cut inside a name, or without its end, ends with the buffer.
// Ownership the names lie in the buffer, which must outlive them.
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

    // The names still to come.
    std::size_t count() const {
        NameList walk(*this);
        std::size_t names = 0;
        while (!walk.next().empty())
            ++names;
        return names;
    }

    // The bytes of the names still to come with one NUL each; the list's final NUL is not counted.
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
