// One look-up as a program makes it: the answer in the caller's buffer, and in the log.
//
//     return callOr(..., [&](ThreadState& state) { return giveProfileString(state, call, {buffer, size}); });
#pragma once

#include "api3/lookup_log.h"
#include "api3/text_output.h"

namespace jx::api3 {

struct ThreadState;

// Puts the value, the list or the default into the buffer; how much of it that holds. Texts that are not UTF-8 are
// refused with a record and give the default, which itself comes back as it is. std::bad_alloc may be thrown.
int giveProfileString(ThreadState& state, const LookUpCall& call, const TextOutput& output);

// The default alone, when the look-up cannot be made.
int giveDefault(const LookUpCall& call, const TextOutput& output);

}  // namespace jx::api3
