// Whoever is left to say that a setup library has ended the program.
#pragma once

#include <functional>
#include <string>

namespace jx::desktop {

// Notes whose code runs from now on, such as "The setup library x.so of driver X"; empty: this program's own.
using NoteWorker = std::function<void(const std::string& worker)>;

// Runs show in a child process and waits for it. Returns, in both processes, what the program shall return. arguments
// are those of main.
//
// A setup library runs in that child, since it opens dialogs there. If it crashes or calls exit, the windows go with
// it, and a program that was started from a menu has nobody who reads its standard error: this process then names the
// library in a window of its own, and starts the program anew if the user wants that. If he does not, it ends as the
// child did, by signal or code.
//
// The child ends with this process. Call it before the display is opened and before other threads are started. Where no
// child can be made, show runs in this process.
int runWatched(char** arguments, const std::function<int(const NoteWorker&)>& show);

}  // namespace jx::desktop
