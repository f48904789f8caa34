// The commands that look for faults, run as their users run them.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "doctor_run.h"
#include "installed_copy.h"

namespace jx::doctor::test {
namespace {

using jx::test::InstalledCopy;
using jx::test::ProgramResult;
using Json = nlohmann::ordered_json;

// The text without the blanks that make columns equally wide: paths are of any length.
std::string squeezed(const std::string& text) {
    std::string shown;
    bool isIndent = true;
    for (const char byte : text) {
        isIndent = byte == '\n' || (isIndent && byte == ' ');
        if (isIndent || byte != ' ' || !shown.ends_with("  "))
            shown.push_back(byte);
    }
    return shown;
}

// DoctorCommands: a data source Sales that leads to a good driver; say makes it lead elsewhere.
class DoctorCommands : public testing::Test {
protected:
    DoctorCommands() {
        home_.take("libdriver.so");
        home_.take("libsetup.so");
        lead(home_.file("libdriver.so"));
    }

    // Every name that a driver of the fixtures treats in its own way.
    void lead(const std::string& library) const {
        std::string list = "[ODBC Data Sources]\n";
        std::string sections;
        for (const char* name : {"Sales", "Refuse", "Silent", "Hang", "Crash", "Repeat"}) {
            list.append(name).append("=Small\n");
            sections.append("[").append(name).append("]\nDriver=").append(library).append("\nPWD=geheim\n");
        }
        home_.put(".odbc.ini", list + sections);
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nSmall=Installed\n[Small]\nDriver=" + library +
                                       "\nSetup=" + home_.file("libsetup.so") + "\n");
    }

    // Exit code, standard output and standard error; the home is called "~".
    std::string run(const std::vector<std::string>& arguments, As who = As::oneself,
                    const std::string& program = JX_ODBCADMIN) const {
        return runIn(home_, program, arguments, who);
    }

    Json json(std::vector<std::string> arguments) const {
        arguments.emplace_back("--json");
        const ProgramResult result = jx::test::runProgram(JX_ODBCADMIN, arguments);
        Json object = Json::parse(result.out);
        EXPECT_EQ(object["schema"], "odbcadmin/1");
        EXPECT_EQ(object.begin().key(), "schema");
        return object;
    }

    // Apart from the note on files in the account's own home directory or in /etc, which a developer may well have.
    bool findsNothingHere(const char* command) const {
        const Json findings = json({command}).at("findings");
        return run({command}).starts_with("0\n") &&
               std::all_of(findings.begin(), findings.end(),
                           [](const Json& finding) { return finding.at("id") == "files.shadowed"; });
    }

    DoctorHome home_;
};

TEST_F(DoctorCommands, TestConnects) {
    EXPECT_EQ(run({"dsn", "test", "Sales"}), "0\nSales: connected, driver small driver 01.02\n");
    EXPECT_EQ(run({"dsn", "test", "Sales", "-q"}), "0\n");
    const Json object = json({"dsn", "test", "Sales"});
    EXPECT_EQ(object["connected"], true);
    EXPECT_EQ(object["driver"], "small driver 01.02");
    EXPECT_EQ(object["lib"], home_.file("libdriver.so"));
}

TEST_F(DoctorCommands, TestTellsStateNativeCodeMessageAndMeaning) {
    EXPECT_EQ(run({"dsn", "test", "Refuse"}),
              "11\n"
              "28000 (native 1001) Wrong password for anna, UID=anna;PWD=********;\n"
              "  means: user or password was refused. Check user and password of the data source, and the server's "
              "rights.\n"
              "08S01 (native 1002) The server\n  closed the connection\n"
              "  means: the connection to the server broke. Check network, firewall and encryption settings.\n"
              "--\n"
              "odbcadmin: Cannot connect to Refuse: SQLDriverConnect failed with result -1\n"
              "  See odbcadmin doctor Refuse\n");
    const Json object = json({"dsn", "test", "Refuse"});
    EXPECT_EQ(object["connected"], false);
    EXPECT_EQ(object["diagnostics"][1]["state"], "08S01");
    EXPECT_EQ(object["diagnostics"][1]["native"], 1002);
    EXPECT_EQ(object["diagnostics"][0]["message"], "Wrong password for anna, UID=anna;PWD=********;");
    EXPECT_NE(run({"dsn", "test", "Refuse", "--show-secrets"}).find("PWD=geheim"), std::string::npos);
    EXPECT_EQ(object["diagnostics"][1]["message"], "The server\nclosed the connection");
}

TEST_F(DoctorCommands, TestSurvivesWhatDriversDo) {
    const std::string advice = "\n  See odbcadmin doctor ";
    EXPECT_EQ(
        run({"dsn", "test", "Silent"}),
        "11\n--\nodbcadmin: Cannot connect to Silent: SQLDriverConnect failed with result -1" + advice +
            "Silent; the driver gave no reason, but this shows what it looks for: strace -f -e trace=file,network "
            "odbcadmin dsn test Silent\n");
    EXPECT_EQ(
        run({"dsn", "test", "Crash"}),
        "11\n--\nodbcadmin: Cannot connect to Crash: the driver crashed in SQLDriverConnect, with signal 6 (Aborted)" +
            advice + "Crash\n");
    EXPECT_EQ(
        run({"dsn", "test", "Hang", "--timeout", "0.05"}),
        "11\n--\nodbcadmin: Cannot connect to Hang: no answer within 0.05 s, in SQLDriverConnect" + advice + "Hang\n");
    lead(home_.file("libsetup.so"));
    EXPECT_EQ(run({"dsn", "test", "Sales"}),
              "11\n--\nodbcadmin: Cannot connect to Sales: the driver has no SQLAllocEnv" + advice + "Sales\n");
}

TEST_F(DoctorCommands, TestKnowsTheFunctionsOfTheSecondVersionAndTheWideOnes) {
    lead(home_.take("libdriver_old.so"));
    EXPECT_EQ(
        run({"dsn", "test", "Sales"}),
        "11\n"
        "08001 (native -7) No answer\n"
        "  means: the driver could not reach the server. Check host, port and network, and that the server runs.\n"
        "--\n"
        "odbcadmin: Cannot connect to Sales: SQLConnect failed with result -1\n"
        "  See odbcadmin doctor Sales\n");
    lead(home_.take("libdriver_wide.so"));
    EXPECT_NE(run({"dsn", "test", "Sales"}).find("HY000 (native 5) N\xC3\xB6 \xE2\x82\xAC \xF0\x9F\x98\x80\n"),
              std::string::npos);
    home_.put(".odbc.ini",
              "[ODBC Data Sources]\nG\xC3\xB6\xF0\x9F\x98\x80=Small\n[G\xC3\xB6\xF0\x9F\x98\x80]\nDriver=" +
                  home_.file("libdriver_wide.so") + "\n");
    EXPECT_EQ(run({"dsn", "test", "G\xC3\xB6\xF0\x9F\x98\x80"}), "0\nG\xC3\xB6\xF0\x9F\x98\x80: connected\n");
}

TEST_F(DoctorCommands, TestSaysHowToSeeWhatADriverLooksForThatGivesNoReason) {
    lead(home_.take("libdriver_mute.so"));
    EXPECT_EQ(run({"dsn", "test", "Sales"}),
              "11\n--\nodbcadmin: Cannot connect to Sales: SQLAllocHandle failed with result -1\n"
              "  See odbcadmin doctor Sales; the driver gave no reason, but this shows what it looks for: strace -f -e "
              "trace=file,network odbcadmin dsn test Sales\n");
}

TEST_F(DoctorCommands, TestNamesWhatIsMissing) {
    EXPECT_EQ(run({"dsn", "test", "Salse"}),
              "3\n--\nodbcadmin: There is no data source Salse in ~/.odbc.ini\n  Did you mean Sales?\n");
    EXPECT_EQ(run({"dsn", "test", "Sales", "--timeout", "soon"}),
              "2\n--\nodbcadmin: --timeout is not a number of seconds: soon\n  Try --timeout 5\n");
    for (const char* limit : {"0", "-1", "nan", "86401", "1x"})
        EXPECT_EQ(run({"dsn", "test", "Sales", "--timeout=" + std::string(limit)}).substr(0, 2), "2\n") << limit;
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Nobody\n");
    EXPECT_EQ(run({"dsn", "test", "Sales"}),
              "11\n--\nodbcadmin: The data source Sales has no section [Sales] in ~/.odbc.ini\n"
              "  See odbcadmin explain Sales\n");
    home_.put(".odbc.ini", "[My Sales]\nServer=a\n");
    EXPECT_EQ(run({"dsn", "test", "My Sales"}),
              "11\n--\nodbcadmin: The data source My Sales leads to no library\n"
              "  See odbcadmin explain 'My Sales'\n");
}

TEST_F(DoctorCommands, ANameThatIsNotThereIsToldBehindWhatIsWrongWithTheFiles) {
    EXPECT_EQ(run({"doctor", "Salse"}),
              "3\n--\nodbcadmin: There is no data source or driver Salse in ~/.odbc.ini and ~/.odbcinst.ini\n"
              "  Did you mean Sales?\n");
    std::filesystem::rename(home_.file(".odbc.ini"), home_.file("odbc.ini"));
    EXPECT_EQ(run({"doctor", "Sales"}),
              "3\nwarning files.without-dot ~/odbc.ini\n"
              "  ~/odbc.ini is there and is not read: the name of the file begins with a dot.\n"
              "  Rename it: mv ~/odbc.ini ~/.odbc.ini\n"
              "0 errors, 1 warning, 0 notes.\n"
              "--\nodbcadmin: There is no data source or driver Sales in ~/.odbc.ini and ~/.odbcinst.ini\n"
              "  See odbcadmin dsn list and odbcadmin driver list.\n");
}

TEST_F(DoctorCommands, ADriverWithoutALibraryIsNotOk) {
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nSmall=Installed\n[Small]\nDriver64=/l/d.so\n");
    EXPECT_EQ(run({"driver", "check", "Small"}),
              "10\nerror names.no-library-key driver Small\n"
              "  ~/.odbcinst.ini:3: the section has no value for Driver, and Driver64 is not read here.\n"
              "  Write the line as: Driver=/l/d.so\n"
              "1 error, 0 warnings, 0 notes.\n");
}

TEST_F(DoctorCommands, ALibraryThatIsNowhereIsToldOnce) {
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nSmall=Installed\n[Small]\nDriver=libjxnowhere.so\nSetup=" +
                                   home_.file("libsetup.so") + "\n");
    const std::string told = run({"driver", "check", "Small"});
    EXPECT_TRUE(told.starts_with("10\nerror library.missing driver Small\n  libjxnowhere.so is in none of ")) << told;
    EXPECT_TRUE(told.ends_with("\n1 error, 0 warnings, 0 notes.\n")) << told;
    EXPECT_NE(run({"lint"}).find("warning names.relative-path driver Small\n"), std::string::npos);
}

TEST_F(DoctorCommands, ExplainNamesTheMistakeInAPathInsteadOfLookingForIt) {
    home_.put(".odbc.ini",
              "[ODBC Data Sources]\nSales=Small\n[Sales]\nDriver=\"" + home_.file("libdriver.so") + "\"\n");
    home_.put(".odbcinst.ini",
              "[ODBC Drivers]\nSmall=Installed\n[Small]\nDriver64=" + home_.file("libdriver.so") + "\n");
    EXPECT_EQ(squeezed(run({"explain", "Sales"})),
              "0\ndata source Sales\n"
              "  ok  listed  for the driver Small  ~/.odbc.ini:2\n"
              "  ok  section  [Sales]  ~/.odbc.ini:3\n"
              "  broken  Driver  \"~/libdriver.so\" stands in quotes, which belong to the value here  ~/.odbc.ini:4\n"
              "          Write the line as: Driver=~/libdriver.so\n"
              "driver Small\n"
              "  ok  listed  Installed  ~/.odbcinst.ini:2\n"
              "  ok  section  [Small]  ~/.odbcinst.ini:3\n"
              "  broken  Driver  no value; Driver64 is not read here  ~/.odbcinst.ini\n"
              "          Write the line as: Driver=~/libdriver.so\n");
}

TEST_F(DoctorCommands, CheckTellsOfDriversByNameAndOfLibrariesByPath) {
    EXPECT_EQ(run({"driver", "check"}), "0\nSmall: ok\n");
    EXPECT_EQ(run({"driver", "check", "small", home_.file("libsetup.so")}), "0\nSmall: ok\n~/libsetup.so: ok\n");
    EXPECT_EQ(run({"driver", "check", "Smlal"}),
              "3\n--\nodbcadmin: There is no driver Smlal in ~/.odbcinst.ini\n  Did you mean Small?\n");
    home_.put("text.so", "hello\n");
    const Json object = json({"driver", "check", home_.file("text.so")});
    EXPECT_EQ(object["findings"][0]["id"], "library.text");
    EXPECT_EQ(object["findings"][0]["severity"], "error");
    EXPECT_EQ(object["checked"][0], home_.file("text.so"));
    EXPECT_EQ(run({"driver", "check", home_.file("text.so"), "-q"}),
              "10\nerror library.text ~/text.so\nnote library.loader-says ~/text.so\n");
}

TEST_F(DoctorCommands, CheckGivesUpAfterTheLimit) {
    lead(home_.take("libhang_at_load.so"));
    EXPECT_EQ(run({"driver", "check", "--timeout", "0.05"}),
              "10\n"
              "error library.load-timed-out driver Small\n"
              "  ~/libhang_at_load.so was not loaded within 50 ms.\n"
              "  Its own start-up code waits: for a server, a lock or a network file system.\n"
              "1 error, 0 warnings, 0 notes.\n");
}

TEST_F(DoctorCommands, ScanPrintsTheLinesThatAddWhatIsNotRegistered) {
    std::filesystem::create_directory(home_.file("it's"));
    home_.take("libdriver.so", "it's/libacme.so");
    home_.take("libsetup.so", "it's/libacmeS.so");
    home_.put("it's/libtext.so", "no library\n");
    EXPECT_EQ(run({"driver", "scan", home_.path(), home_.file("it's")}),
              "0\nodbcadmin driver add acme --lib '~/it'\\''s/libacme.so' --setup '~/it'\\''s/libacmeS.so'\n"
              "# ~/libdriver.so is registered: Small, ~/.odbcinst.ini:4\n");
    EXPECT_EQ(run({"driver", "scan", home_.path()}),
              "0\n# ~/libdriver.so is registered: Small, ~/.odbcinst.ini:4\n--\nodbcadmin: All drivers found are "
              "registered already: ~\n");
    EXPECT_EQ(run({"driver", "scan", "-q", home_.path()}), "0\n");
    EXPECT_EQ(run({"driver", "scan", home_.file("none")}),
              "7\n--\nodbcadmin: There is no directory ~/none\n  Give directories that exist.\n");
    const Json object = json({"driver", "scan", home_.path()});
    EXPECT_EQ(object["drivers"][0]["registered"], true);
    EXPECT_EQ(object["drivers"][0]["lib"], home_.file("libdriver.so"));
    EXPECT_EQ(home_.text(".odbcinst.ini").find("acme"), std::string::npos);
}

TEST_F(DoctorCommands, ExplainShowsEveryStepWithFileAndLine) {
    EXPECT_EQ(squeezed(run({"explain", "sales"})),
              "0\n"
              "data source Sales\n"
              "  ok  listed  for the driver Small  ~/.odbc.ini:2\n"
              "  ok  section  [Sales]  ~/.odbc.ini:8\n"
              "  ok  Driver  ~/libdriver.so  ~/.odbc.ini:9\n"
              "driver Small\n"
              "  ok  listed  Installed  ~/.odbcinst.ini:2\n"
              "  ok  section  [Small]  ~/.odbcinst.ini:3\n"
              "  ok  Driver  ~/libdriver.so  ~/.odbcinst.ini:4\n"
              "  ok  Setup  ~/libsetup.so  ~/.odbcinst.ini:5\n"
              "~/libdriver.so\n"
              "  ok  library  ok\n");
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Smlal\n[Salse]\n");
    EXPECT_EQ(squeezed(run({"explain", "Sales"})),
              "0\n"
              "data source Sales\n"
              "  ok  listed  for the driver Smlal  ~/.odbc.ini:2\n"
              "  broken  section  no section [Sales]  ~/.odbc.ini\n"
              "          Did you mean Salse?\n"
              "driver Smlal\n"
              "  broken  section  no driver of that name  ~/.odbcinst.ini\n"
              "          Did you mean Small?\n");
    EXPECT_EQ(run({"explain", "Bales"}),
              "3\n--\nodbcadmin: There is no data source or driver Bales in ~/.odbc.ini and ~/.odbcinst.ini\n  Did you "
              "mean Sales?\n");
    EXPECT_EQ(json({"explain", "Sales"})["steps"][1]["ok"], false);
}

TEST_F(DoctorCommands, PathsShowEveryFileAndWhichOneCounts) {
    const std::string shown = run({"paths"});
    EXPECT_NE(shown.find("  * ~/.odbc.ini "), std::string::npos) << shown;
    EXPECT_NE(shown.find("in the directory that HOME names\n"), std::string::npos) << shown;
    EXPECT_NE(shown.find("/etc/odbcinst.ini"), std::string::npos) << shown;
    EXPECT_EQ(run({"paths", "-q"}), "0\n~/.odbc.ini\n~/.odbcinst.ini\n");
    const Json object = json({"paths"});
    EXPECT_EQ(object["files"][2]["path"], home_.file(".odbcinst.ini"));
    EXPECT_EQ(object["files"][2]["candidates"][0]["wins"], true);
    EXPECT_EQ(object["files"][2]["candidates"][0]["rights"].get<std::string>().substr(0, 10), "-rw-------");
}

TEST_F(DoctorCommands, LintLooksAtTheTwoFilesOrAtThoseGiven) {
    EXPECT_TRUE(findsNothingHere("lint"));
    home_.put("fine.ini", "[A]\nx=1\n");
    EXPECT_EQ(run({"lint", home_.file("fine.ini")}), "0\nNo problems were found.\n");
    home_.put("x.ini", "[A\nx=1\n");
    EXPECT_EQ(run({"lint", home_.file("x.ini"), "-q"}), "10\nerror syntax.unclosed-bracket ~/x.ini:1\n");
    EXPECT_EQ(run({"lint", home_.file("none.ini")}).substr(0, 2), "7\n");
}

TEST_F(DoctorCommands, DoctorLooksAtWhatIsNamedAndWhatBelongsToIt) {
    EXPECT_TRUE(findsNothingHere("doctor"));
    lead(home_.file("gone.so"));
    const std::string told = run({"doctor", "Sales"});
    EXPECT_EQ(told.substr(0, 3), "10\n");
    EXPECT_NE(told.find("error library.missing driver Small\n"
                        "  There is no ~/gone.so; its directory is there.\n"
                        "  Install the library there, or correct the path.\n"
                        "1 error, 0 warnings, "),
              std::string::npos)
        << told;
    EXPECT_EQ(run({"doctor", "Salse"}),
              "3\n--\nodbcadmin: There is no data source or driver Salse in ~/.odbc.ini and ~/.odbcinst.ini\n  Did you "
              "mean Sales?\n");
}

TEST_F(DoctorCommands, DoctorKeepsTheOrderOfTheChecks) {
    lead(home_.file("gone.so"));
    home_.put(".odbc.ini", home_.text(".odbc.ini") + "[ODBC]\nTrace=1 \nTraceFile=/x\n[Lost]\nDriver=/y\n");
    ::chmod(home_.file(".odbc.ini").c_str(), 0644);
    std::string parts;
    const Json object = json({"doctor"});
    for (const Json& each : object["findings"]) {
        const std::string id = each["id"];
        const std::string part = id.substr(0, id.find('.')) + " ";
        if (!parts.ends_with(part))
            parts += part;
    }
    EXPECT_EQ(parts, "files syntax names library environment ");
}

TEST_F(DoctorCommands, ReportHoldsNoSecretWhateverTheOptions) {
    const std::string report = run({"doctor", "--report", "--show-secrets"});
    EXPECT_EQ(report.substr(0, 37), "0\n---- odbcadmin doctor --report ----");
    EXPECT_EQ(report.find("geheim"), std::string::npos);
    EXPECT_NE(report.find("PWD=********\n"), std::string::npos);
    EXPECT_NE(json({"doctor", "--report"})["report"].get<std::string>().find("---- end ----\n"), std::string::npos);
}

TEST_F(DoctorCommands, WhatOneMayNotReadIsTold) {
    home_.openToAll();
    ::chmod(home_.file(".odbc.ini").c_str(), 0);
    const InstalledCopy copy;
    const std::string told = run({"doctor", "--json"}, As::nobody, copy.file("bin/odbcadmin"));
    EXPECT_EQ(told.substr(0, 3), "10\n") << told;
    EXPECT_NE(told.find("\"files.unreadable\""), std::string::npos) << told;
}

// One question has one answer, whoever is asked.
TEST_F(DoctorCommands, ListExplainCheckAndDoctorAgreeOnALibrary) {
    const struct {
        std::string library, state;
        bool isGood;
    } rows[] = {
        {home_.take("libdriver.so"), "ok", true},
        {home_.take("libcrash_at_load.so"), "broken", false},
        {home_.take("libundefined.so"), "broken", false},
        {home_.take("libsetup.so"), "broken", false},
        {home_.take("libforeign.so"), "wrong architecture", false},
        {home_.file("none.so"), "missing", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.library);
        lead(row.library);
        EXPECT_EQ(json({"driver", "list"})["drivers"][0]["state"], row.state);
        EXPECT_EQ(json({"driver", "show", "Small"})["state"], row.state);
        bool isExplained = false;
        const Json explained = json({"explain", "Sales"});
        for (const Json& step : explained["steps"])
            isExplained |= step["where"] == "" && step["value"] == row.state;
        EXPECT_TRUE(isExplained);
        for (const std::vector<std::string>& verb :
             {std::vector<std::string>{"driver", "check", "Small"}, {"doctor", "Sales"}, {"doctor"}})
            EXPECT_EQ(jx::test::runProgram(JX_ODBCADMIN, verb).code, row.isGood ? 0 : 10);
    }
}

TEST_F(DoctorCommands, AFileThatCannotBeReadIsSaidToBeOneAndNotAnAbsentName) {
    home_.put(".odbc.ini", "");
    std::filesystem::remove(home_.file(".odbc.ini"));
    std::filesystem::create_directory(home_.file(".odbc.ini"));
    for (const std::vector<std::string>& verb :
         {std::vector<std::string>{"explain", "Sales"}, {"dsn", "test", "Sales"}, {"doctor", "Sales"}}) {
        SCOPED_TRACE(verb[0]);
        const ProgramResult result = jx::test::runProgram(JX_ODBCADMIN, verb);
        EXPECT_EQ(result.code, 7);
        EXPECT_NE(result.err.find(home_.file(".odbc.ini")), std::string::npos) << result.err;
        EXPECT_EQ(result.err.find("There is no data source"), std::string::npos);
    }
    EXPECT_EQ(jx::test::runProgram(JX_ODBCADMIN, {"driver", "list"}).code, 0);
    EXPECT_EQ(jx::test::runProgram(JX_ODBCADMIN, {"driver", "show", "Small"}).code, 0);
}

TEST_F(DoctorCommands, AMessageKeepsItsLinesAndLosesThePassword) {
    EXPECT_EQ(run({"dsn", "test", "Repeat"}),
              "11\n"
              "01000 (native 1001) ******** (********)\n"
              "  ungeheim was refused?[31m\n"
              "  means: a remark of the driver. Read its message; the cause may stand in it or in the next one.\n"
              "--\n"
              "odbcadmin: Cannot connect to Repeat: SQLDriverConnect failed with result -1\n"
              "  See odbcadmin doctor Repeat\n");
    EXPECT_EQ(run({"dsn", "test", "Repeat", "--json"}).find("(geheim"), std::string::npos);
    EXPECT_NE(run({"dsn", "test", "Repeat", "--show-secrets"}).find("geheim (geheim)\n"), std::string::npos);
}

TEST_F(DoctorCommands, ADriversNameInPlaceOfAPathLeadsToItsLibrary) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Small\n[Sales]\nDriver=small\n");
    EXPECT_EQ(run({"dsn", "test", "Sales"}), "0\nSales: connected, driver small driver 01.02\n");
    EXPECT_EQ(jx::test::runProgram(JX_ODBCADMIN, {"doctor", "Sales"}).code, 0);
    EXPECT_EQ(run({"explain", "Sales"}).find("broken"), std::string::npos) << run({"explain", "Sales"});
}

TEST_F(DoctorCommands, AMistakeInAPathIsTheOnlyErrorThereIs) {
    const std::string library = home_.file("libdriver.so");
    for (const std::string& value : {'"' + library + '"', library + " ; the old one"}) {
        SCOPED_TRACE(value);
        home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Small\n[Sales]\nDriver=" + value + "\n");
        std::size_t errors = 0;
        const Json findings = json({"doctor", "Sales"}).at("findings");
        for (const Json& each : findings)
            errors += each.at("severity") == "error" ? 1 : 0;
        EXPECT_EQ(errors, 1U) << run({"doctor", "Sales"});
        const std::string tested = run({"dsn", "test", "Sales"});
        EXPECT_TRUE(tested.starts_with("11\n")) << tested;
        EXPECT_NE(tested.find("Write the line as: Driver=~/libdriver.so\n"), std::string::npos) << tested;
    }
}

TEST_F(DoctorCommands, OfAHeaderThatIsNotClosedNothingFollows) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Small\n[Sales\nDriver=/opt/x.so\nSales=1\n");
    const std::string told = run({"lint"});
    EXPECT_NE(told.find("error syntax.unclosed-bracket ~/.odbc.ini:3\n"), std::string::npos) << told;
    EXPECT_NE(told.find("1 error, 0 warnings, "), std::string::npos) << told;
    EXPECT_EQ(told.find("dsn remove"), std::string::npos);
}

TEST_F(DoctorCommands, AFileThatMayNotBeReadIsToldWithTheReason) {
    home_.openToAll();
    ::chmod(home_.file(".odbc.ini").c_str(), 0);
    const InstalledCopy copy;
    const std::string told = run({"lint"}, As::nobody, copy.file("bin/odbcadmin"));
    EXPECT_NE(told.find("): Permission denied."), std::string::npos) << told;
    EXPECT_EQ(told.find("Success"), std::string::npos);
}

}  // namespace
}  // namespace jx::doctor::test
