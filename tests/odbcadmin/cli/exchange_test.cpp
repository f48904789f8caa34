// export and apply.
#include <sys/stat.h>

#include <filesystem>

#include "admin_test.h"

namespace jx::test {
namespace {

class Exchange : public AdminTest {
protected:
    static std::string document(const std::string& inside) { return R"({"schema": "odbcadmin/1", )" + inside + "}"; }
};

TEST_F(Exchange, ExportHoldsDriversTranslatorsAndDataSources) {
    out({"translator", "add", "Latin", "--lib", "/opt/latin.so"});
    out({"dsn", "default", "Accounts"});
    const auto all = nlohmann::ordered_json::parse(out({"export", "--show-secrets"}));
    EXPECT_EQ(all["schema"], "odbcadmin/1");
    EXPECT_EQ(all["drivers"][0]["keys"]["FileUsage"], "0");
    EXPECT_EQ(all["translators"][0]["keys"]["Translator"], "/opt/latin.so");
    EXPECT_EQ(all["dataSources"][0]["keys"], (nlohmann::ordered_json{{"Server", "db1"}, {"PWD", "geheim"}}));
    EXPECT_EQ(all["dataSources"][2]["name"], "Default");
}

TEST_F(Exchange, WhatExportWritesApplyMakesInAnotherHome) {
    out({"translator", "add", "Latin", "--lib", "/opt/latin.so"});
    out({"dsn", "add", "M\xC3\xBCller \"q\" /x", "--driver", "Plain", "Opt=a=b;[c]", "Empty="});
    out({"config", "set", ".odbc.ini", "Accounts", "Driver", "/another/lib.so"});
    out({"dsn", "default", "Sales"});
    const std::string all = out({"export", "--show-secrets"});
    mkdir(home_.file("other").c_str(), 0700);
    out({"apply", "-f", "-", "--home", home_.file("other")}, all);
    EXPECT_EQ(out({"export", "--show-secrets", "--home", home_.file("other")}), all);
    EXPECT_EQ(out({"apply", "-f", "-", "--home", home_.file("other")}, all), "unchanged: nothing to do\n");
    EXPECT_EQ(out({"apply", "-f", "-"}, all), "unchanged: nothing to do\n");
}

TEST_F(Exchange, SecretsAreLeftOutAndApplyKeepsThem) {
    const ProgramResult result = run({"export"});
    EXPECT_EQ(result.out.find("geheim"), std::string::npos);
    EXPECT_EQ(result.err, "odbcadmin: 1 secret is left out (null); --show-secrets includes it\n");
    EXPECT_EQ(out({"apply", "-f", "-"}, result.out), "unchanged: nothing to do\n");
    EXPECT_EQ(sources(), kSources);
}

TEST_F(Exchange, ApplyReadsAFileAndKeepsWhatItDoesNotName) {
    home_.put("in.json", document(R"("drivers": [{"name": "New", "keys": {"Driver": "/opt/new.so"}}],
        "dataSources": [{"name": "Stock", "driver": "New", "keys": {"Server": "db2"}},
                        {"name": "Sales", "driver": "Plain", "keys": {"Server": "db9"}}])"));
    EXPECT_EQ(out({"apply", "--file", home_.file("in.json")}), "Applied 1 driver, 0 translators, 2 data sources\n");
    EXPECT_EQ(sources(), with(with(kSources, "Accounts=Plain\n", "Accounts=Plain\nStock=New\n"), "db1", "db9") +
                             "\n[Stock]\nDriver=/opt/new.so\nServer=db2\n");
}

TEST_F(Exchange, ApplyRefusesEveryInvalidInputAndChangesNothing) {
    const std::vector<std::string> inputs{
        "",
        "{",
        "[]",
        "{}",
        "null",
        R"({"schema": "odbcadmin/2"})",
        R"({"schema": 1})",
        document(R"("extra": 1)"),
        document(R"("drivers": {})"),
        document(R"("drivers": [1])"),
        document(R"("drivers": [{"name": "A"}])"),
        document(R"("drivers": [{"name": "", "keys": {"Driver": "/x"}}])"),
        document(R"("drivers": [{"name": "A", "keys": {"Driver": ""}}])"),
        document(R"("drivers": [{"name": "A", "keys": {"Driver": 1}}])"),
        document(R"("drivers": [{"name": "A", "keys": []}])"),
        document(R"("drivers": [{"name": "A", "keys": {"Driver": "/x"}}, {"name": "a", "keys": {"Driver": "/x"}}])"),
        document(R"("drivers": [{"name": "A", "more": 1, "keys": {"Driver": "/x"}}])"),
        document(R"("dataSources": [{"name": "A"}])"),
        document(R"("dataSources": [{"name": "A", "driver": "Plain", "keys": {"a": "1", "A": "2"}}])"),
        document(R"("dataSources": [{"name": "A", "driver": "Plain", "keys": {"a": "1", "a": "2"}}])"),
        document(R"("dataSources": [{"name": "A", "name": "B", "driver": "Plain"}])"),
        document(R"("dataSources": [{"name": "A", "driver": "Plain", "keys": {"a": true}}])"),
        "{\"schema\": \"odbcadmin/1\", \"dataSources\": [{\"name\": \"\xFF\", \"driver\": \"Plain\"}]}"};
    for (const std::string& input : inputs) {
        SCOPED_TRACE(input);
        const ProgramResult result = run({"apply", "-f", "-"}, input);
        EXPECT_EQ(result.code, 6) << result.err;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err.find("exception"), std::string::npos) << result.err;
    }
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(Exchange, ApplyIsAllOrNothing) {
    const std::string good = R"({"name": "Stock", "driver": "Plain", "keys": {"a": "1"}})";
    const std::string driver = R"("drivers": [{"name": "New", "keys": {"Driver": "/x"}}], )";
    const auto apply = [&](const std::string& bad) {
        return run({"apply", "-f", "-"}, document(driver + R"("dataSources": [)" + good + ", " + bad + "]")).code;
    };
    EXPECT_EQ(apply(R"({"name": "ODBC", "driver": "Plain"})"), 5);
    EXPECT_EQ(apply(R"({"name": "a=b", "driver": "Plain"})"), 5);
    EXPECT_EQ(apply(R"({"name": "B", "driver": "Plain", "keys": {"k": "a\nb"}})"), 5);
    EXPECT_EQ(apply(R"({"name": "B", "driver": "Plain", "keys": {"k": "a\u0000b"}})"), 5);
    EXPECT_EQ(apply(R"({"name": "B", "driver": "Plain", "keys": {"[k": "a"}})"), 5);
    EXPECT_EQ(apply(R"({"name": "B", "driver": "Unknown"})"), 3);
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(Exchange, ApplyShowsBothFilesWithDryRunAndChecks) {
    const std::string all = document(R"("drivers": [{"name": "New", "keys": {"Driver": "/x"}}],
        "dataSources": [{"name": "Stock", "driver": "New"}])");
    const std::string shown = out({"apply", "-f", "-", "-n"}, all);
    EXPECT_NE(shown.find("+++ " + home_.file(".odbc.ini")), std::string::npos);
    EXPECT_NE(shown.find("+++ " + home_.file(".odbcinst.ini")), std::string::npos);
    EXPECT_NE(shown.find("+Driver=/x\n"), std::string::npos);
    EXPECT_EQ(run({"apply", "-f", "-", "--check"}, all).code, 9);
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(Exchange, ExportRefusesWhatJsonCannotHold) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nA=Plain\n[A]\nk=\xff\n");
    EXPECT_EQ(run({"export"}).code, 5);
}

TEST_F(Exchange, ExportOfWhatItCannotExpressFailsAndNamesIt) {
    home_.put(".odbc.ini", std::string(kSources) + "[Loose]\n[ODBC Data Sources]\nLoose=Unknown\n");
    const ProgramResult result = run({"export"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "odbcadmin: Cannot export data source Loose: its driver Unknown is not registered\n"
              "  See odbcadmin explain; odbcadmin export NAME... exports others without it.\n");
    const auto some = json({"export", "accounts"});
    EXPECT_EQ(some["dataSources"].size(), 1U);
    EXPECT_EQ(some["drivers"].size(), 1U);
    EXPECT_EQ(json({"export", "Plain"})["dataSources"].size(), 0U);
    EXPECT_EQ(run({"export", "Nothing"}).code, 3);
}

TEST_F(Exchange, DataSourcesWithALibraryOfTheirOwnGoThereAndBack) {
    const std::string loose =
        "[ODBC Data Sources]\nListed=Unknown\n\n[Listed]\nDriver=/opt/own.so\n\n"
        "[Unlisted]\nDriver=/opt/other.so\nPort=1\n";
    home_.put(".odbc.ini", loose);
    const std::string all = out({"export"});
    home_.put(".odbc.ini", "");
    out({"apply", "-f", "-"}, all);
    EXPECT_EQ(sources(), loose);
}

TEST_F(Exchange, WhatWasWrittenBeforeAFailureIsSaid) {
    std::filesystem::create_directory(home_.file(".odbc.ini.lock"));
    const std::string all = document(R"("drivers": [{"name": "New", "keys": {"Driver": "/x"}}],
        "dataSources": [{"name": "Stock", "driver": "New"}])");
    const ProgramResult result = run({"apply", "-f", "-"}, all);
    EXPECT_EQ(result.code, 7);
    EXPECT_NE(result.err.find("Written before that: " + home_.file(".odbcinst.ini") + ".\n"), std::string::npos)
        << result.err;
    EXPECT_NE(drivers().find("[New]\n"), std::string::npos);
}

TEST_F(Exchange, ApplyOfAFileThatIsNotThereIsFileTrouble) {
    EXPECT_EQ(run({"apply", "-f", home_.file("absent.json")}).code, 7);
    EXPECT_EQ(run({"apply", "-f", home_.path()}).code, 7);
    EXPECT_EQ(run({"apply"}).code, 2);
}

}  // namespace
}  // namespace jx::test
