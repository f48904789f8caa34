// What the states that drivers answer with mean, and what to do about them.
#pragma once

#include <string_view>

namespace jx::trial {

struct StateMeaning {
    const char* meaning;
    const char* advice;
};

// That of a state of five letters and digits as the standard lists it, or else of its class, the first two of them.
// Texts for an unknown or malformed state say so.
// outcome: what came of the connection; a remark means another thing when there is none.
enum class Outcome { connected, refused };
StateMeaning meaningOf(std::string_view state, Outcome outcome);

}  // namespace jx::trial
