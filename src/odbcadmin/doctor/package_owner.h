// The package that a file belongs to.
#pragma once

#include <string>

namespace jx::doctor {

// "libssl3:amd64", as dpkg or rpm has it, whichever is there and knows; empty when neither does. Starts a program.
std::string packageOf(const std::string& path);

// "PATH (package NAME)", or the path alone.
std::string withPackage(const std::string& path);

}  // namespace jx::doctor
