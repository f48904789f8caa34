// What the tests of the command share: a home with two files, and the command run in it.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

#include "run_program.h"
#include "sample_sources.h"
#include "test_home.h"

namespace nlohmann {
// googletest prints with this; its own way through all that a JSON value can be costs seconds in every test file.
void PrintTo(const ordered_json& value, std::ostream* out);
}  // namespace nlohmann

// The build says where the command lies.
#ifndef JX_ODBCADMIN
#define JX_ODBCADMIN "odbcadmin"
#endif

namespace jx::test {

inline constexpr const char* kDrivers = R"([ODBC Drivers]
Plain=Installed

[Plain]
Driver=/opt/libplain.so
FileUsage=0
)";

// AdminTest: the files above in a home of the test's own; run gives what the command did there.
class AdminTest : public testing::Test {
protected:
    ProgramResult run(const std::vector<std::string>& arguments, const std::string& input = {}) {
        return runProgram(JX_ODBCADMIN, arguments, input);
    }

    // Runs, expects success and gives standard output.
    std::string out(const std::vector<std::string>& arguments, const std::string& input = {}) {
        const ProgramResult result = run(arguments, input);
        EXPECT_EQ(result.code, 0) << result.err;
        return result.out;
    }

    // out with --json, read.
    nlohmann::ordered_json json(std::vector<std::string> arguments);

    std::string sources() const { return home_.text(".odbc.ini"); }
    std::string drivers() const { return home_.text(".odbcinst.ini"); }

    // Registers a driver with this setup library.
    void addDriverWithSetup(const std::string& name, const std::string& setup) {
        out({"driver", "add", name, "--lib", "/opt/lib.so", "--setup", setup, "-q"});
    }

    TestHome home_{{".odbc.ini", kSources}, {".odbcinst.ini", kDrivers}};
};

// The text with one part replaced, which must be there.
inline std::string with(std::string text, const std::string& part, const std::string& replacement) {
    const std::size_t at = text.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    return at == std::string::npos ? text : text.replace(at, part.size(), replacement);
}

}  // namespace jx::test
