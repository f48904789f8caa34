// How large everything is drawn.
#pragma once

#include <functional>
#include <string>

namespace jx::desktop {

// The value of a setting by its name; empty: not set.
using Setting = std::function<std::string(const char* name)>;

// The factor that the user's desktop asks for: the largest of the X resource Xft.dpi (96 is 1) and the variables
// GDK_SCALE and QT_SCALE_FACTOR, as far as they are set to a number above 0; 1 when none is. Desktops set several of
// them for one and the same screen, so they are not multiplied. Never below 0.5 or above 8.
double wantedScale(const Setting& resource, const Setting& variable);

// Draws everything from here on larger by that factor: call it once, before the first window.
void setScale(double factor);

// A length on the screen, of one that is meant for a screen of 96 dots to the inch.
int scaled(int pixels);

// The length of dialog units on the screen.
int dots(int units);

}  // namespace jx::desktop
