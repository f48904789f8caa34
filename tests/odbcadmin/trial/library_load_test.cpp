// Libraries loaded for real: each way in which that ends.
#include "odbcadmin/trial/library_load.h"

#include <gtest/gtest.h>

namespace jx::trial {
namespace {

using End = LoadReport::End;

std::string fixture(const std::string& name) {
    return std::string(JX_DOCTOR_FIXTURES) + "/lib" + name + ".so";
}

TEST(LibraryLoad, OffersTheFunctionsThatItHas) {
    const LoadReport report = tryLoading({fixture("driver"), {"SQLDriverConnect", "SQLNothing", "SQLGetInfo"}});
    EXPECT_EQ(report.end, End::loaded);
    EXPECT_TRUE(report.unloaded);
    EXPECT_EQ(report.offered, (std::set<std::string>{"SQLDriverConnect", "SQLGetInfo"}));
    EXPECT_EQ(report.output, "");
    EXPECT_EQ(report.unloadEnd, "");
}

TEST(LibraryLoad, EndsInManyWays) {
    const struct {
        std::string library;
        End end;
        int code;
        std::string sentence, output;
    } rows[] = {
        {"/none/x.so", End::refused, 0, "/none/x.so: cannot open shared object file: No such file or directory", ""},
        {fixture("undefined"), End::refused, 0, fixture("undefined") + ": undefined symbol: jxNobodyHasThis", ""},
        {fixture("crash_at_load"), End::crashed, 11, "", "about to fail\n"},
        {fixture("exit_at_load"), End::exited, 3, "", "No licence\n"},
        {JX_PRINTING, End::loaded, 0, "", "loaded\nunloaded\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.library);
        const LoadReport report = tryLoading({row.library, {"SQLConnect"}});
        EXPECT_EQ(report.end, row.end);
        EXPECT_EQ(report.code, row.code);
        EXPECT_EQ(report.sentence, row.sentence);
        std::string output = report.output;
        if (const std::size_t at = output.find("with a warning\n"); at != std::string::npos)
            output.erase(at, 15);
        EXPECT_EQ(output, row.output);
    }
}

TEST(LibraryLoad, GivesUpAfterItsLimit) {
    const LoadReport report = tryLoading({fixture("hang_at_load"), {}, {}, std::chrono::milliseconds(50)});
    EXPECT_EQ(report.end, End::timedOut);
    EXPECT_TRUE(report.offered.empty());
}

TEST(LibraryLoad, ACrashAtTheUnloadComesAfterWhatItOffered) {
    const LoadReport report = tryLoading({fixture("crash_at_unload"), {"ConfigDSN"}});
    EXPECT_EQ(report.end, End::loaded);
    EXPECT_FALSE(report.unloaded);
    EXPECT_EQ(report.unloadEnd, "signal 11 (Segmentation fault)");
    EXPECT_EQ(report.offered, (std::set<std::string>{"ConfigDSN"}));
}

TEST(LibraryLoad, ManyFunctionsCanBeAskedFor) {
    std::vector<std::string> names(5000, "SQLNothing");
    names.emplace_back("ConfigDSN");
    EXPECT_EQ(tryLoading({fixture("setup"), names}).offered, (std::set<std::string>{"ConfigDSN"}));
}

}  // namespace
}  // namespace jx::trial
