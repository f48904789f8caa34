// What is entered in the user's two files, and what came in between two looks at them.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace jx::assist {

// The names of a list section in the file's order; none when the file cannot be read.
std::vector<std::string> namesIn(const char* file, const char* list);

// Names with all that their sections say.
using Entries = std::map<std::string, std::string>;

// Inventory: drivers, translators and data sources as they were when take was called.
struct Inventory {
    Entries drivers;
    Entries translators;
    Entries dataSources;

    static Inventory take();
};

// A few sentences about what is in after and was not so in before: names that are new, and names whose sections say
// something else. Tells so when there is none.
std::string tellEntered(const Inventory& before, const Inventory& after);

}  // namespace jx::assist
