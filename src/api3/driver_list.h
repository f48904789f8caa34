// The list of drivers as a program gets it.
//
//     return giveDriverList(state, {lpszBuf, cbBufMax}, pcbBufOut);
#pragma once

#include <jxodbc3/odbcinst.h>
#include "api3/text_output.h"

namespace jx::api3 {

struct ThreadState;

// Puts the list in; the length is that of the whole list, at most 65 535. False with a record without a buffer or a
// driver.
bool giveDriverList(ThreadState& state, const TextOutput& output, WORD* length);

}  // namespace jx::api3
