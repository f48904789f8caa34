// Reading and showing JSON, compiled once for all tests of the command.
#include "admin_test.h"

namespace nlohmann {

void PrintTo(const ordered_json& value, std::ostream* out) {
    *out << value.dump();
}

}  // namespace nlohmann

namespace jx::test {

nlohmann::ordered_json AdminTest::json(std::vector<std::string> arguments) {
    arguments.emplace_back("--json");
    return nlohmann::ordered_json::parse(out(arguments));
}

}  // namespace jx::test
