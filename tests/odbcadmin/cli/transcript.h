// Sessions at a shell, written down and played again.
#pragma once

#include <string>

#include "test_home.h"

namespace jx::test {

// Plays a session in a home directory and gives it back as it really went. A line that begins with "$ " is a command,
// run by sh in that directory, where odbcadmin is the program under test; what stands below it is its output: lines of
// standard output, then lines of standard error behind "! ", then "[CODE]" when it failed. The home is called "~". A
// session that went as it is written down is given back unchanged:
//
//     EXPECT_EQ(played(home_, kSession), kSession);
std::string played(const TestHome& home, const std::string& session);

}  // namespace jx::test
