// Connecting through drivers that do what drivers do.
#include "odbcadmin/trial/connection.h"

#include <gtest/gtest.h>

namespace jx::trial {
namespace {

using End = ConnectReport::End;

std::string fixture(const std::string& name) {
    return std::string(JX_DOCTOR_FIXTURES) + "/lib" + name + ".so";
}

std::string dump(const ConnectReport& report) {
    std::string text;
    for (const Diagnostic& each : report.diagnostics)
        text += each.state + " " + std::to_string(each.native) + " " + each.message + "\n";
    return text;
}

TEST(Connection, SaysWhatTheDriverSaysOfItself) {
    const ConnectReport report = tryConnecting({fixture("driver"), "Sales"});
    EXPECT_EQ(report.end, End::connected);
    EXPECT_EQ(report.driver, "small driver 01.02");
    EXPECT_EQ(report.database, "");
    EXPECT_EQ(dump(report), "");
    EXPECT_EQ(report.function, "SQLDriverConnect");
}

TEST(Connection, EndsInManyWays) {
    const struct {
        std::string library, dataSource;
        End end;
        int code;
        std::string function, diagnostics;
    } rows[] = {
        {fixture("driver"), "Refuse", End::refused, -1, "SQLDriverConnect",
         "28000 1001 Wrong password for anna, UID=anna;PWD=geheim;\n08S01 1002 The server\nclosed the connection\n"},
        {fixture("driver"), "Silent", End::refused, -1, "SQLDriverConnect", ""},
        {fixture("driver"), "Crash", End::crashed, 6, "SQLDriverConnect", ""},
        {fixture("driver"), "Hang", End::timedOut, 0, "SQLDriverConnect", ""},
        {fixture("driver_old"), "Sales", End::refused, -1, "SQLConnect", "08001 -7 No answer\n"},
        {fixture("driver_wide"), "Sales", End::refused, -1, "SQLDriverConnectW",
         "HY000 5 N\xC3\xB6 \xE2\x82\xAC \xF0\x9F\x98\x80\n"},
        {fixture("driver_wide"), "G\xC3\xB6\xF0\x9F\x98\x80", End::connected, 0, "SQLDriverConnectW", ""},
        {fixture("setup"), "Sales", End::noFunction, 0, "SQLAllocEnv", ""},
        {fixture("crash_at_load"), "Sales", End::crashed, 11, "", ""},
        {fixture("exit_at_load"), "Sales", End::exited, 3, "", ""},
        {"/none/x.so", "Sales", End::notLoaded, 0, "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.library + " " + row.dataSource);
        const std::chrono::milliseconds limit{row.end == End::timedOut ? 50 : 60000};
        const ConnectReport report = tryConnecting({row.library, row.dataSource, {}, limit});
        EXPECT_EQ(report.end, row.end);
        EXPECT_EQ(report.code, row.code);
        EXPECT_EQ(report.function, row.function);
        EXPECT_EQ(dump(report), row.diagnostics);
    }
    EXPECT_EQ(tryConnecting({"/none/x.so", "Sales"}).sentence,
              "/none/x.so: cannot open shared object file: No such file or directory");
    EXPECT_EQ(tryConnecting({fixture("exit_at_load"), "Sales"}).output, "No licence\n");
}

// The driver gets what a driver manager would hand it: no window, a whole text, no dialog.
TEST(Connection, NamesWithCharactersThatEndAValueStandInBraces) {
    const struct {
        std::string dataSource, given;
    } rows[] = {
        {"Sales", "DSN=Sales"},         {"Two words", "DSN=Two words"}, {"a;b", "DSN={a;b}"},
        {"{x}", "DSN={{x}}}"},          {"a}b", "DSN={a}}b}"},          {"a=b", "DSN={a=b}"},
        {"M\xC3\xBC", "DSN=M\xC3\xBC"}, {"a'b\"c", "DSN=a'b\"c"},       {"@!?*()[],", "DSN={@!?*()[],}"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.dataSource);
        const ConnectReport report = tryConnecting({JX_ECHO, row.dataSource});
        ASSERT_EQ(report.diagnostics.size(), 3U);
        EXPECT_EQ(report.diagnostics[0].message, row.given + " (window 0, length -3, size 1024, completion 0)");
    }
}

TEST(Connection, OddDiagnosticsArriveWithinTheirBuffers) {
    const ConnectReport report = tryConnecting({JX_ECHO, "Sales"});
    ASSERT_EQ(report.diagnostics.size(), 3U);
    EXPECT_EQ(report.diagnostics[1].native, -2147483647 - 1);
    EXPECT_EQ(report.diagnostics[1].message, "");
    EXPECT_EQ(report.diagnostics[2].message, std::string(1024, 'x'));
}

}  // namespace
}  // namespace jx::trial
