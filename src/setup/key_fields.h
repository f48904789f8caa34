// The fields of the setup dialog in which the user edits one key and its value.
#pragma once

#include <string>

#include <jxtypes.h>
#include "setup/data_source_request.h"

namespace jx::setup {

// The whole text of an edit field.
std::string fieldText(HWND dialog, unsigned short id);

// Shows a pair; the value of a secret goes into the field that screens hide.
void showPair(HWND dialog, const Attribute& pair);

// The pair that was typed, its key without outer blanks.
Attribute typedPair(HWND dialog);

// Call it when the key changes: enables the field for its value, visible or hidden, and empties the other. A visible
// value moves to the hidden field when the key becomes a secret's; a hidden value is never made visible.
void followKey(HWND dialog);

}  // namespace jx::setup
