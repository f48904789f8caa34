// Messages on standard error that cannot control the terminal they appear on.
#pragma once

namespace jx::dialog {

// Writes "title: text" and a line break to standard error. Control characters are written as "?": bytes below 32 (but
// line breaks of text), 127, and the range 128 to 159, alone or in UTF-8. Other bytes go out as they are, UTF-8 or not.
// Nothing is allocated. A message of up to 1000 bytes is one write, so messages of two threads do not mix. A write
// error is ignored.
void writeMessage(const char* title, const char* text);

}  // namespace jx::dialog
