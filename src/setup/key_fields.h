// The fields of the setup dialog in which one key and its value are edited.
#pragma once

#include <string>

#include <jxtypes.h>
#include "setup/data_source_request.h"

namespace jx::setup {

// The whole text of an edit field, however long.
std::string fieldText(HWND dialog, unsigned short id);

// Shows a pair; a secret's value goes into the field whose characters screens hide.
void showPair(HWND dialog, const Attribute& pair);

// What the fields hold, the key without outer blanks.
Attribute typedPair(HWND dialog);

// Enables the value's field that fits the key as it is typed and empties the other. A value in sight moves along when
// the key becomes a secret's; a hidden one is never brought into sight.
void followKey(HWND dialog);

}  // namespace jx::setup
