// Starting a program of the user's: in place of this one, or as a child whose look-ups are handed on line by line.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace jx::trial {

// How a program ended, or why it could not be started.
struct ProgramEnd {
    int error = 0;   // errno; it did not start
    int code = 0;    // its exit code
    int signal = 0;  // or the signal that ended it
};

// Becomes the program at path, with words as its name and arguments: its process id, signals and exit code are then
// this process's. Returns only when that fails, with the errno.
int becomeProgram(const std::string& path, const std::vector<std::string>& words);

// Runs it as a child with the same streams, whose JXODBC_LOG is a pipe; take gets each line of the log, without its
// end, as it comes. Signals that are sent to this process alone are sent on, it stops when the child stops, and the
// child ends when this process is killed. Returns when the child has ended; what others write into the log afterwards
// is lost. For a process with one thread.
ProgramEnd superviseProgram(const std::string& path, const std::vector<std::string>& words,
                            const std::function<void(std::string_view line)>& take);

// Ends this process as the program ended: by its signal, without a core file of its own, or with its exit code, which
// is returned.
int endLike(const ProgramEnd& end);

}  // namespace jx::trial
