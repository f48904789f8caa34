// The toolkit, set up the way this program uses it.
#pragma once

#include <FL/Fl_Window.H>

#include <string>

#include "odbcadmin/desktop/placement.h"

namespace jx::desktop {

// The program as desktops know it: in titles, as the windows' class, and the name of its desktop file and icon.
inline constexpr const char* kProgramName = "xodbcadmin";

// Opens the display that DISPLAY names, takes over the desktop's scale and colours, and keeps the toolkit from leaving
// files of its own in the home folder. Call it once, before other threads are started: the environment is changed for a
// moment. False when there is no display.
bool openToolkit();

// The part of the screen that windows may cover, less the room for a title.
Place workArea();

// Puts a window that is not shown yet at a place, or so near to it that all of it is on the screen.
void standOnScreen(Fl_Window& window, int x, int y);

// A window's title: that of its dialog and the program's name.
std::string titleOf(const std::string& dialogTitle);

}  // namespace jx::desktop
