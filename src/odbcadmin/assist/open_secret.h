// Changes that would put a secret into a file that everybody may read.
#pragma once

#include <jxdialog.h>

#include <functional>
#include <optional>
#include <string>

#include "odbcadmin/model/file_change.h"

namespace jx::assist {

using MakeChange = std::function<model::ChangeResult(const model::ChangeWay& way)>;

// Makes a change of files of that scope. If nothing but such a secret speaks against it, asks whether it is to be
// stored all the same, and makes it if so. Nothing when the user does not want that; nothing was changed then.
std::optional<model::ChangeResult> changeAsking(HWND dialog, const std::string& title, model::Scope scope,
                                                const MakeChange& make);

}  // namespace jx::assist
