// Prints what made-up installations leave, to compare two builds of the library:
//
//     installation_outcomes FIRST COUNT [SHOWN]
//
// prints a line with a sum for each number; with a third argument the call and its outcome in full.
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>

#include "random_installation.h"

int main(int count, char** arguments) {
    if (count < 3)
        return 2;
    const unsigned long first = std::strtoul(arguments[1], nullptr, 10);
    const unsigned long end = first + std::strtoul(arguments[2], nullptr, 10);
    for (unsigned long number = first; number < end; ++number) {
        const jx::test::RandomInstallation installation(static_cast<unsigned>(number));
        const std::string outcome = installation.outcome();
        std::string line = std::to_string(number) + " ";
        if (count > 3)
            line += installation.text() + "\n=== outcome\n" + outcome;
        else
            line += std::to_string(std::hash<std::string>{}(outcome));
        line += '\n';
        std::fwrite(line.data(), 1, line.size(), stdout);
    }
    return 0;
}
