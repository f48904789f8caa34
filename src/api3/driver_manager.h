// The driver manager's own entry: how often it was installed.
//
//     return installDriverManager(state, output, pcbPathOut);
#pragma once

#include <jxodbc3/odbcinst.h>
#include "api3/text_output.h"

namespace jx::api3 {

struct ThreadState;

// Tells where the driver manager's libraries belong, and counts one installation more in the system's file. False with
// a record, and nothing counted.
bool installDriverManager(ThreadState& state, const TextOutput& output, WORD* length);

// Counts one less; at 0 the entry goes.
bool removeDriverManager(ThreadState& state, DWORD* count);

}  // namespace jx::api3
