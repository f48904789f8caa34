// Running the commands of a session.
#include "transcript.h"

#include <sstream>

#include "run_program.h"

// The build says where the command lies.
#ifndef JX_ODBCADMIN
#define JX_ODBCADMIN "odbcadmin"
#endif

namespace jx::test {

namespace {

std::string marked(const std::string& text, const std::string& mark) {
    std::string all;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        all += mark + line + "\n";
    return all;
}

std::string withHomeAs(const std::string& name, std::string text, const std::string& home) {
    for (std::size_t at = text.find(home); at != std::string::npos; at = text.find(home, at + name.size()))
        text.replace(at, home.size(), name);
    return text;
}

}  // namespace

std::string played(const TestHome& home, const std::string& session) {
    std::string text;
    std::istringstream lines(session);
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("$ "))
            continue;
        const ProgramResult result =
            runProgram("/bin/sh", {"-c", "odbcadmin() { " + shellQuoted(JX_ODBCADMIN) + " \"$@\"; }\ncd " +
                                             shellQuoted(home.path()) + "\n" + line.substr(2)});
        text += line + "\n" + marked(result.out, "") + marked(result.err, "! ");
        if (result.code != 0)
            text += "[" + std::to_string(result.code) + "]\n";
    }
    return withHomeAs("~", text, home.path());
}

}  // namespace jx::test
