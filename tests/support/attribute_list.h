// Attribute lists as programs hand them to installer functions.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace jx::test {

// The items, each ended with NUL, and a NUL more (the text's own), for example list({"DSN=Sales", "Server=a"}).c_str().
inline std::string list(std::initializer_list<std::string_view> items) {
    std::string joined;
    for (const std::string_view item : items)
        joined.append(item).push_back('\0');
    return joined;
}

}  // namespace jx::test
