// Our own list of all data sources, for more than the library's list has room for.
#pragma once

#include <jxdialog.h>

namespace jx::assist {

// Shows it on the thread's screen until the user closes it. Each data source can be set up, viewed, tested and removed.
void showSources(HWND owner);

}  // namespace jx::assist
