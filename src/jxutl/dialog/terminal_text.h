// Messages on standard error that cannot steer the terminal which shows them.
#pragma once

namespace jx::dialog {

// Writes "title: text" and a line break to standard error. Control characters are written as "?": bytes below 32 (but
// line breaks of text), 127, and the range 128 to 159, alone or in UTF-8. Other bytes go out as they are, UTF-8 or not.
// Nothing is allocated; a message up to a thousand bytes is one write, so messages of two threads do not mix. A failed
// write is given up.
void writeMessage(const char* title, const char* text);

}  // namespace jx::dialog
