// Runs a program as a shell would and keeps what it wrote.
#pragma once

#include <string>
#include <vector>

namespace jx::test {

struct ProgramResult {
    int code = -1;  // the exit code; -1 when it did not end by itself
    std::string out;
    std::string err;
};

enum class As { oneself, nobody };

// Runs program (a path) with the arguments, this process's environment and input as standard input, and waits for its
// end. As::nobody: without the rights of root, for whom no permission would be refused.
ProgramResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input = {}, As who = As::oneself);

// The text as one word of a shell's line.
std::string shellQuoted(const std::string& text);

}  // namespace jx::test
