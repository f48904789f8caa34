// Boxes of our own: a text, its title and a choice.
#pragma once

#include <jxdialog.h>

#include <string>
#include <vector>

#include "odbcadmin/model/more_rights.h"
#include "odbcadmin/model/reason.h"

namespace jx::assist {

// Shows a message box on the thread's screen and returns the button chosen; style as in guiMessageBox.
unsigned int say(HWND owner, const std::string& text, const std::string& title, unsigned int style);

// Asks a question whose Yes destroys nothing: the user begins at Yes.
bool asksToGoOn(HWND owner, const std::string& text, const std::string& title);

// Asks a question whose Yes destroys something: the user begins at No.
bool asksToDestroy(HWND owner, const std::string& text, const std::string& title);

// What happened and what to do about it, as one line.
std::string sentenceOf(const model::Reason& reason);

// The same about a change of the system's files, where these commands do what was wanted: whoever lacks the right gets
// them with sudo, to paste.
std::string sentenceOf(const model::Reason& reason, const std::vector<model::RepeatedCommand>& commands);

// The question of asksToGoOn that is being asked on this thread; empty when there is none.
const std::string& questionToGoOn();

}  // namespace jx::assist
