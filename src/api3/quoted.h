// Names as sentences show them.
//
//     "Driver " + quoted(name) + " is not registered."
#pragma once

#include <string>
#include <string_view>

namespace jx::api3 {

// The name in quotation marks. std::bad_alloc may be thrown.
inline std::string quoted(std::string_view name) {
    std::string shown;
    shown.reserve(name.size() + 2);
    return shown.append(1, '"').append(name).append(1, '"');
}

// "The key "Server" of section "Sales"", or with a null key "Section "Sales"", as a sentence begins.
inline std::string keyOrSection(std::string_view section, const char* key) {
    if (key == nullptr)
        return "Section " + quoted(section);
    return "The key " + quoted(key) + " of section " + quoted(section);
}

}  // namespace jx::api3
