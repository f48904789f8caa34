// Registers drivers with the tests' setup libraries.
#include "setup_home.h"

namespace jx::test {

std::string SetupHome::driver(const std::string& name, const std::string& setup) {
    return "[" + name + "]\nDriver=/opt/" + setup + ".so\nSetup=" JX_SETUP_LIBRARIES "/libsetup_" + setup + ".so\n";
}

}  // namespace jx::test
