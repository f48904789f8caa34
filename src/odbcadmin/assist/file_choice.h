// Choosing a file in a window, where the screen has one for that.
#pragma once

#include <functional>
#include <string>

namespace jx::assist {

// Shows a file chooser that begins at a path, which may be empty; gives the chosen file, empty when the user cancels.
using FileChooser = std::function<std::string(const std::string& path)>;

// Sets what the calling thread's screen offers; a null one takes it away. A dialog's Browse button is grey without it.
void setFileChooser(FileChooser chooser);
bool canChooseFile();
std::string chooseFile(const std::string& path);

}  // namespace jx::assist
