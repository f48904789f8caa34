// Adding drivers from an installation script.
#pragma once

namespace jx::admin {

// Asks for the script's directory, again while it holds none and the user wants to, and runs the installation there.
// The result of SQLInstallODBC; 0 when the user gave up.
int AddDriver(unsigned int hwnd);

}  // namespace jx::admin
