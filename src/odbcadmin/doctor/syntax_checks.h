// How the lines of a configuration file are written.
#pragma once

#include <string>
#include <string_view>

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/model/ini_view.h"

namespace jx::doctor {

// Looks at every line of a file that can be read; subjects are "PATH:LINE". A fault that many lines have is told for
// the first five of them. Nothing about a file that cannot be read: see checkFiles.
Findings checkSyntax(const std::string& path);

// The same for a text, or one that was read; path only names it.
Findings checkSyntaxOf(const std::string& path, std::string_view text);
Findings checkSyntaxOf(const std::string& path, const model::IniView& view);

}  // namespace jx::doctor
