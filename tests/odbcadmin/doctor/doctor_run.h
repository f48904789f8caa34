// Runs of the command in a home directory, as texts.
#pragma once

#include <string>
#include <vector>

#include "doctor_fixture.h"
#include "run_program.h"

namespace jx::doctor::test {

using jx::test::As;

// Exit code, standard output and standard error of a run; the home is called "~".
inline std::string runIn(const DoctorHome& home, const std::string& program, const std::vector<std::string>& arguments,
                         As who) {
    const jx::test::ProgramResult result = jx::test::runProgram(program, arguments, {}, who);
    return replaced(std::to_string(result.code) + "\n" + result.out + (result.err.empty() ? "" : "--\n" + result.err),
                    home.path(), "~");
}

}  // namespace jx::doctor::test
