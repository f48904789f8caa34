// odbcadmin without arguments: the dialogs in the terminal.
#pragma once

namespace jx::terminal {

// Shows the Data Sources dialog and all that comes out of it until the user leaves. Gives the program's exit code: 0,
// or 2 after a short usage on standard error where there is no terminal to show dialogs on.
int runScreen();

}  // namespace jx::terminal
