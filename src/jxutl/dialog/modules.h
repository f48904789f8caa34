// The texts and dialog templates that modules registered.
#pragma once

#include "jxutl/dialog/dialog_template.h"

namespace jx::dialog {

// Template id of module; null when there is none. It stays valid for ever.
const DialogTemplate* findTemplate(const char* module, unsigned short id);

}  // namespace jx::dialog
