// What a person is told about dialogs and their controls.
#pragma once

#include <jxscreen.h>

#include <string>

namespace jx::assist {

// A line about a dialog: what it lists or does, and from which file.
std::string headingOf(HWND dialog);

// What a control does; when it is grey, why and what to do about it. One or two sentences, never empty for a control a
// user can act on.
std::string helpOn(HWND dialog, int index);

// Everything about a dialog: what it is for, then a line for each control.
std::string helpOnAll(HWND dialog);

// A text without its access key's "&".
std::string withoutAccessKey(const std::string& text);

// The control that a letter means, without regard to case; a grey one only when it means no other. -1: none. Edit
// fields and lists take letters for themselves.
int controlOfAccessKey(HWND dialog, int letter);

// A control's text as it is read: without the mark of the access key, but data (JXW_PLAIN) as it stands.
std::string shownText(const JxwControlInfo& control);

}  // namespace jx::assist
