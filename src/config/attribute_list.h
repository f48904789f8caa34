// The attribute list of one configuration request.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "config/name_list.h"
#include "config/text_bytes.h"

namespace jx {

// AttributeList: a copy of a caller's keyword=value list.
// Use      take the list, then ask for the data source.
// Limits   1024 bytes with the final empty text; a longer list is refused.
// Ownership  the object owns the copy; what dataSource returns points into it.
class AttributeList {
public:
    // Whether a caller's list is null or has no items.
    static bool isEmpty(const unsigned char* list) { return list == nullptr || *list == 0; }

    // Copies a list that has items; false when it is too long. Reads no byte past the end of the list.
    bool take(const unsigned char* list) {
        for (std::size_t end = 1; end < kSize; ++end) {
            if (list[end] == 0 && list[end - 1] == 0) {
                std::memcpy(bytes_, list, end + 1);
                return true;
            }
        }
        return false;
    }

    // The value of the first item whose keyword is exactly "DSN". Null when there is none, or when an item without "="
    // comes before it.
    const unsigned char* dataSource() const {
        NameList items(bytes_, sizeof bytes_);
        for (std::string_view item = items.next(); !item.empty(); item = items.next()) {
            const std::size_t equals = item.find('=');
            if (equals == std::string_view::npos)
                return nullptr;
            if (item.substr(0, equals) == "DSN")
                return asBytes(item.data() + equals + 1);
        }
        return nullptr;
    }

private:
    static constexpr std::size_t kSize = 1024;
    unsigned char bytes_[kSize]{};
};

}  // namespace jx
