// UTF-8 and the UTF-16 of wide driver functions.
#pragma once

#include <string>
#include <string_view>

namespace jx::trial {

// What is not valid becomes U+FFFD.
std::u16string wideText(std::string_view utf8);
std::string narrowText(std::u16string_view utf16);

}  // namespace jx::trial
