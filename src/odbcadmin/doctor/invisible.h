// Characters that nobody sees.
#pragma once

#include <string>
#include <string_view>

namespace jx::doctor {

// "U+00A0 (no-break space)" for the first character of a UTF-8 text that shows as nothing or as a blank without being
// one; "" when there is none. Bytes that are not UTF-8 are passed over.
std::string firstInvisible(std::string_view text);

}  // namespace jx::doctor
