// The checks of the two files: where they are, how their lines are written, where their names lead, tracing.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "doctor_fixture.h"
#include "odbcadmin/doctor/bug_report.h"
#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/examination.h"
#include "odbcadmin/doctor/explanation.h"
#include "odbcadmin/doctor/file_checks.h"
#include "odbcadmin/doctor/syntax_checks.h"
#include "odbcadmin/doctor/unknown_name.h"
#include "rules/valid_names.h"

namespace jx::doctor::test {
namespace {

using namespace std::string_literals;

// "identifier subject: fact" a line.
std::string brief(const Findings& findings) {
    std::string text;
    for (const Finding& each : findings)
        text.append(each.id + " " + each.subject + ": " + each.fact + "\n");
    return text;
}

struct SyntaxRow {
    std::string text;
    std::string told;
};

TEST(SyntaxChecks, TellEachFaultWithItsLine) {
    const SyntaxRow rows[] = {
        {"", ""},
        {"; nothing\n\n[A]\nx=1\n", ""},
        {"[A]\nx=1", ""},
        {"\xEF\xBB\xBF[A]\nx=1\n",
         "syntax.byte-order-mark f:1: The file begins with a byte order mark; here it is passed over, elsewhere it "
         "hides the first section.\n"},
        {"[A]\r\nx=1\r\n",
         "syntax.carriage-return f: 2 of 2 lines end with a carriage return; here it counts as part of the line end, "
         "elsewhere as part of the value.\n"},
        {"[A]\nx=1\ry\n", "syntax.carriage-return f:2: There is a carriage return inside the line.\n"},
        {"[A]\nx=1\0y\n"s,
         "syntax.nul f:2: There is a NUL byte in the line: a name that holds one is never found, and a value ends "
         "there.\n"},
        {"[A]\nx=gr\xFC\xDF\n", "syntax.not-utf8 f:2: The line is not UTF-8: programs differ in how they read it.\n"},
        {"[A]\nx\xC2\xA0=1\n",
         "syntax.invisible-character f:2: The line holds U+00A0 (no-break space), which is invisible or looks like a "
         "blank, but belongs to the text.\n"},
        {"[A]\nx=a\xE2\x80\x8B\n",
         "syntax.invisible-character f:2: The line holds U+200B (zero-width space), which is invisible or looks like a "
         "blank, but belongs to the text.\n"},
        {"[A]\nx=1 \n", "syntax.trailing-blanks f:2: Blanks at the end of the line are not part of its value.\n"},
        {"[A]\nx=1\n[B]\n[a]\ny=2\n",
         "syntax.duplicate-section f:4: The section \"a\" begins in line 1 already; here the two count as one, "
         "elsewhere one may hide the other.\n"},
        {"[A]\nx=1\nX=2\n", "syntax.duplicate-key f:3: The key \"X\" stands in line 2 already, and that one counts.\n"},
        {"x=1\n[A]\n",
         "syntax.key-before-section f:1: The key \"x\" stands before any section, so it belongs to none.\n"},
        {"[A]\nx\n", "syntax.no-equals f:2: The line \"x\" has no \"=\": it is a key with an empty value.\n"},
        {"[A]\nPWD geheim\n",
         "syntax.no-equals f:2: The line \"PWD\" has no \"=\": it is a key with an empty value.\n"},
        {"[A]\nPassword: geheim\n",
         "syntax.no-equals f:2: The line \"Password\" has no \"=\": it is a key with an empty value.\n"},
        {"[A]\n=1\n", "syntax.no-key f:2: There is no key before the \"=\": the line means nothing.\n"},
        {"[]\nx=1\n", "syntax.no-key f:1: The section has no name, so nobody can ask for its keys.\n"},
        {"[A\nx=1\n",
         "syntax.unclosed-bracket f:1: The header \"[A\" is never closed: the keys below it belong to the section "
         "above it.\n"},
        {"[B]\nx=1\n[A\nx=1\nx=2\n",
         "syntax.unclosed-bracket f:3: The header \"[A\" is never closed: the keys below it belong to the section "
         "above it.\nsyntax.duplicate-key f:5: The key \"x\" stands in line 4 already, and that one counts.\n"},
    };
    for (const SyntaxRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(brief(checkSyntaxOf("f", row.text)), row.told);
    }
}

TEST(SyntaxChecks, AFaultOfManyLinesIsToldFiveTimesAndCounted) {
    std::string text = "[A]\n";
    for (int i = 0; i < 9; ++i)
        text.append("k" + std::to_string(i) + "\n");
    const Findings findings = checkSyntaxOf("f", text);
    ASSERT_EQ(findings.size(), 5U);
    EXPECT_EQ(findings[4].fact, "The line \"k4\" has no \"=\": it is a key with an empty value. So are 4 more lines.");
}

// Whatever the bytes are, a finding or none comes of them.
// Few keys of a section are compared, many are looked up, and so are those of a section that comes again.
TEST(SyntaxChecks, AKeyThatStandsTwiceIsFoundInSectionsOfAnySize) {
    for (const int keys : {1, 2, 11, 12, 13, 14, 200}) {
        SCOPED_TRACE(keys);
        std::string section;
        for (int i = 0; i < keys; ++i)
            section += "k" + std::to_string(i) + "=1\n";
        const std::string line = std::to_string(keys + 2);
        EXPECT_EQ(brief(checkSyntaxOf("f", "[A]\n" + section + "[B]\n" + section)), "");
        EXPECT_EQ(
            brief(checkSyntaxOf("f", "[A]\n" + section + "K0=2\n")),
            "syntax.duplicate-key f:" + line + ": The key \"K0\" stands in line 2 already, and that one counts.\n");
        const std::string again = brief(checkSyntaxOf("f", "[A]\n" + section + "[B]\n[a]\nnew=1\nk0=2\nNEW=2\n"));
        EXPECT_NE(again.find("The key \"k0\" stands in line 2 already"), std::string::npos) << again;
        EXPECT_NE(again.find("The key \"NEW\" stands in line " + std::to_string(keys + 4) + " already"),
                  std::string::npos)
            << again;
    }
}

TEST(SyntaxChecks, TakeAnyBytes) {
    for (const std::size_t size : {0U, 1U, 2U, 255U, 32767U, 32768U, 65535U, 70000U}) {
        for (const char byte : {'\0', '[', '=', '\n', '\r', '\xEF', 'x'})
            checkSyntaxOf("f", std::string(size, byte));
    }
    SUCCEED();
}

class FileChecks : public testing::Test {
protected:
    std::string told() const { return replaced(brief(checkFiles(model::configPlaces())), home_.path(), "~"); }

    DoctorHome home_;
};

TEST_F(FileChecks, AbsentFilesAreANote) {
    EXPECT_EQ(told(),
              "files.missing ~/.odbc.ini: ~/.odbc.ini is not there: it is as if it were empty.\n"
              "files.missing ~/.odbcinst.ini: ~/.odbcinst.ini is not there: it is as if it were empty.\n");
}

TEST_F(FileChecks, VariablesAreLookedAt) {
    home_.put(".odbc.ini", "");
    home_.put(".odbcinst.ini", "");
    ::setenv("ODBCINI", "", 1);
    EXPECT_EQ(
        told(),
        "files.variable-empty ODBCINI: ODBCINI is set to nothing, which counts as not set: ~/.odbc.ini is the file.\n");
    ::setenv("ODBCINI", home_.file("other.ini").c_str(), 1);
    EXPECT_EQ(told(),
              "files.named-missing ~/other.ini: ODBCINI names ~/other.ini, which is not there.\n"
              "files.shadowed ~/.odbc.ini: ~/.odbc.ini is there and is not read: ~/other.ini counts instead.\n");
    ::setenv("ODBCINI", "some.ini", 1);
    EXPECT_TRUE(
        told().starts_with("files.variable-relative ODBCINI: ODBCINI is \"some.ini\", a path that means another "
                           "file in every directory a program is started in.\n"))
        << told();
}

TEST_F(FileChecks, AFileWithoutTheDotIsToldWithTheCommandThatMendsIt) {
    home_.put("odbc.ini", "[A]\n");
    home_.put(".odbcinst.ini", "");
    EXPECT_EQ(told(),
              "files.missing ~/.odbc.ini: ~/.odbc.ini is not there: it is as if it were empty.\n"
              "files.without-dot ~/odbc.ini: ~/odbc.ini is there and is not read: the name of the file begins with a "
              "dot.\n");
    home_.put(".odbc.ini", "");
    EXPECT_EQ(told().find("files.without-dot"), 0U);
}

TEST_F(FileChecks, ADirectoryThatIsNotThereIsNoFileThatTheFirstWriteMakes) {
    ::setenv("HOME", home_.file("gone").c_str(), 1);
    ::setenv("ODBCINI", home_.file("none/odbc.ini").c_str(), 1);
    EXPECT_EQ(told(),
              "files.no-directory ~/none/odbc.ini: ODBCINI names ~/none/odbc.ini, and there is no directory ~/none: "
              "nothing can be read or written there.\n"
              "files.no-directory ~/gone/.odbcinst.ini: The home directory is ~/gone, and there is no such directory: "
              "nothing can be read or written there.\n");
}

TEST_F(FileChecks, AFileOfTheSystemsIsToldAsOneThatTheOlderLibraryDoesNotRead) {
    home_.put(".odbc.ini", "");
    home_.put(".odbcinst.ini", "");
    home_.putSystem("odbcinst.ini", "[X]\n");
    EXPECT_EQ(told(),
              "files.system-wide-ignored ~.etc/odbcinst.ini: ~.etc/odbcinst.ini is there, the system's: programs that "
              "use libodbcinst.so.1 do not read it.\n");
    // With one file for both there is nothing to tell.
    ::setenv("ODBCINSTINI", home_.systemFile("odbcinst.ini").c_str(), 1);
    EXPECT_EQ(told().find("files.system-wide-ignored"), std::string::npos) << told();
}

TEST_F(FileChecks, AFileOfTheSystemsWithPasswordsForEverybodyIsTold) {
    home_.put(".odbc.ini", "");
    home_.put(".odbcinst.ini", "");
    home_.putSystem("odbc.ini", "[A]\nPWD=geheim\n");
    EXPECT_EQ(told().find("files.password-open ~.etc/odbc.ini: ~.etc/odbc.ini (-rw-r--r-- "), 0U) << told();
    std::filesystem::remove(home_.systemFile("odbc.ini"));
    std::filesystem::create_directory(home_.systemFile("odbc.ini"));
    EXPECT_EQ(told().find("files.not-regular ~.etc/odbc.ini: "), 0U) << told();
}

TEST_F(FileChecks, ADirectoryAPipeAndLinksThatLeadNowhereAreTold) {
    std::filesystem::create_directory(home_.file(".odbc.ini"));
    ::mkfifo(home_.file(".odbcinst.ini").c_str(), 0600);
    EXPECT_EQ(told().find("files.not-regular ~/.odbc.ini: "), 0U) << told();
    EXPECT_NE(told().find("files.not-regular ~/.odbcinst.ini: "), std::string::npos) << told();
    std::filesystem::remove(home_.file(".odbc.ini"));
    std::filesystem::remove(home_.file(".odbcinst.ini"));
    std::filesystem::create_symlink("gone.ini", home_.file(".odbc.ini"));
    std::filesystem::create_symlink(".odbcinst.ini", home_.file(".odbcinst.ini"));
    EXPECT_EQ(
        told(),
        "files.dangling-link ~/.odbc.ini: ~/.odbc.ini is a symbolic link to gone.ini, which is not there.\n"
        "files.dangling-link ~/.odbcinst.ini: ~/.odbcinst.ini is a symbolic link to .odbcinst.ini, which leads back to "
        "itself.\n");
}

TEST_F(FileChecks, APasswordInAFileThatOthersMayReadIsTold) {
    home_.put(".odbc.ini", "[A]\nPWD=geheim\n");
    home_.put(".odbcinst.ini", "[A]\nDriver=/x\n");
    ::chmod(home_.file(".odbcinst.ini").c_str(), 0644);
    EXPECT_EQ(told(), "");
    for (const char* harmless : {"", "; PWD=geheim\n", "[PWD=geheim]\n", "[A]\nPWD=\nServer=pwd\n", "PWD\n"}) {
        home_.put(".odbc.ini", harmless);
        ::chmod(home_.file(".odbc.ini").c_str(), 0644);
        EXPECT_EQ(told(), "") << harmless;
    }
    home_.put(".odbc.ini", "[A]\nPWD=geheim\n");
    ::chmod(home_.file(".odbc.ini").c_str(), 0644);
    const std::string text = told();
    EXPECT_EQ(text.find("files.password-open ~/.odbc.ini: ~/.odbc.ini (-rw-r--r-- "), 0U) << text;
    EXPECT_NE(text.find(") holds a password and can be read by everybody.\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("geheim"), std::string::npos);
}

class NameChecks : public testing::Test {
protected:
    std::string told(const std::string& sources, const std::string& drivers) {
        home_.put(".odbc.ini", sources);
        home_.put(".odbcinst.ini", drivers);
        Findings findings =
            lint(model::Configuration::read(), {model::configPlaces(), LintPlaces::Variables::seen, home_.file("etc")});
        std::erase_if(findings, [](const Finding& each) { return !each.id.starts_with("names."); });
        return home_.dump(findings);
    }

    DoctorHome home_;
    const std::string good_ = "[ODBC Drivers]\nD=Installed\n[D]\nDriver=/l/d.so\nSetup=/l/s.so\n";
};

TEST_F(NameChecks, NothingIsToldOfWhatIsInOrder) {
    EXPECT_EQ(told("[ODBC Data Sources]\nA=D\n[A]\nDriver=/l/d.so\n[ODBC]\nTrace=0\n", good_), "");
    EXPECT_EQ(told("", ""), "");
}

TEST_F(NameChecks, AnUnknownDriverIsToldWithNearMatches) {
    EXPECT_EQ(told("[ODBC Data Sources]\nA=SQLit3\n[A]\nDriver=/l/d.so\n",
                   "[ODBC Drivers]\nSQLite3=Installed\n[SQLite3]\nDriver=/l/d.so\nSetup=/l/s.so\n"),
              "error names.driver-unknown data source A\n"
              "  ~/.odbc.ini:2: its driver is \"SQLit3\", and ~/.odbcinst.ini has no such section.\n"
              "  Did you mean SQLite3?\n");
}

TEST_F(NameChecks, ListsAndSectionsThatDoNotMatchAreTold) {
    EXPECT_EQ(
        told("[ODBC Data Sources]\nSales=D\n[Salse]\nDriver=/l/d.so\n", good_),
        "error names.no-section data source Sales\n"
        "  ~/.odbc.ini:2 lists it, and ~/.odbc.ini has no section [Sales].\n"
        "  Did you mean Salse?\n"
        "warning names.not-listed data source Salse\n"
        "  ~/.odbc.ini:3 has its section, and [ODBC Data Sources] does not list it: programs that offer a choice leave "
        "it out.\n"
        "  List it: odbcadmin dsn ensure Salse --driver D\n");
    EXPECT_EQ(
        told("", "[ODBC Drivers]\nE=Installed\n[D]\nDriver=/l/d.so\n"),
        "error names.no-section driver E\n"
        "  ~/.odbcinst.ini:2 lists it, and there is no section [E].\n"
        "  Add it anew: odbcadmin driver ensure E --lib PATH, or take it off the list: odbcadmin driver remove E\n"
        "warning names.not-listed driver D\n"
        "  ~/.odbcinst.ini:3 has its section, and [ODBC Drivers] does not list it: programs that offer a choice leave "
        "it "
        "out.\n"
        "  List it: odbcadmin driver ensure D --lib /l/d.so\n"
        "note names.no-setup-key driver D\n"
        "  ~/.odbcinst.ini:3: the section has no value for Setup, so programs cannot add or change its data sources.\n"
        "  Name its setup library; if it brings none: odbcadmin driver ensure D --lib /l/d.so --setup libjxsetup.so\n");
}

TEST_F(NameChecks, RelativeStaleAndMissingPathsAreTold) {
    EXPECT_EQ(told("[ODBC Data Sources]\nA=D\nB=D\nC=D\n[A]\nDriver=d.so\n[B]\nDriver=lib/d.so\n[C]\nx=1\n", good_),
              "warning names.relative-path data source A\n"
              "  ~/.odbc.ini:6: Driver is \"d.so\", which the loader looks for where it looks for libraries.\n"
              "  Give the full path of the library; odbcadmin driver scan shows those that are there.\n"
              "warning names.stale-path data source A\n"
              "  ~/.odbc.ini:6: Driver is d.so; the driver D has /l/d.so (~/.odbcinst.ini:4).\n"
              "  Unless the other is meant, enter the driver's: odbcadmin dsn ensure A --driver D\n"
              "warning names.relative-path data source B\n"
              "  ~/.odbc.ini:8: Driver is \"lib/d.so\", which means another file in every directory a program is "
              "started in.\n"
              "  Give the full path of the library.\n"
              "warning names.stale-path data source B\n"
              "  ~/.odbc.ini:8: Driver is lib/d.so; the driver D has /l/d.so (~/.odbcinst.ini:4).\n"
              "  Unless the other is meant, enter the driver's: odbcadmin dsn ensure B --driver D\n"
              "error names.no-library-key data source C\n"
              "  ~/.odbc.ini:9: the section has no value for Driver.\n"
              "  Enter the full path of the library there: odbcadmin dsn ensure C --driver D\n");
}

TEST_F(NameChecks, TheCommonestMistakesInAPathAreToldWithTheLineAsItShouldBe) {
    const struct {
        const char *value, *id, *line;
    } rows[] = {
        {"\"/l/d.so\"", "error names.quoted-path", "Driver=/l/d.so"},
        {"'/l/d.so'", "error names.quoted-path", "Driver=/l/d.so"},
        {"~/d.so", "error names.unexpanded-path", "Driver=~/d.so"},
        {"$HOME/d.so", "error names.unexpanded-path", "Driver=~/d.so"},
        {"${HOME}/d.so", "error names.unexpanded-path", "Driver=~/d.so"},
        {"/l/d.so ; old", "error names.comment-in-value", "Driver=/l/d.so"},
        {"/l/d.so # old", "error names.comment-in-value", "Driver=/l/d.so"},
        {"d", "note names.driver-by-name", "Driver=/l/d.so"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value);
        const std::string text = told(std::string("[ODBC Data Sources]\nA=D\n[A]\nDriver=") + row.value + "\n", good_);
        EXPECT_TRUE(text.starts_with(std::string(row.id) + " data source A\n  ~/.odbc.ini:4: ")) << text;
        EXPECT_TRUE(text.ends_with(std::string("rite the line as: ") + row.line + "\n")) << text;
    }
}

TEST_F(NameChecks, AKeyForOneWordSizeIsNoLibrary) {
    EXPECT_EQ(told("[ODBC Data Sources]\nA=D\n[A]\nDriver64=/l/d.so\n", good_),
              "error names.no-library-key data source A\n"
              "  ~/.odbc.ini:3: the section has no value for Driver, and Driver64 is not read here.\n"
              "  Write the line as: Driver=/l/d.so\n");
}

TEST_F(NameChecks, ForbiddenLongAndReservedNamesAreTold) {
    const std::string longest(32, 'n');
    EXPECT_EQ(told("[ODBC Data Sources]\n" + longest + "=D\n[" + longest + "]\nDriver=/l/d.so\n", good_), "");
    const std::string text = told("[ODBC Data Sources]\na;b=D\n" + longest + "n=D\nODBC=D\n[a;b]\nDriver=/l/d.so\n[" +
                                      longest + "n]\nDriver=/l/d.so\n",
                                  good_);
    EXPECT_NE(
        text.find("warning names.forbidden-character data source a;b\n  ~/.odbc.ini:2: the name holds \";\", which the "
                  "standard forbids in names of data sources.\n"),
        std::string::npos)
        << text;
    EXPECT_NE(text.find("warning names.too-long data source " + longest + "n\n"), std::string::npos) << text;
    EXPECT_NE(text.find("~/.odbc.ini:3: the name has 33 bytes; the standard allows 32.\n"), std::string::npos) << text;
    EXPECT_NE(text.find("error names.reserved data source ODBC\n"), std::string::npos) << text;
}

TEST_F(NameChecks, ANameThatIsToldIsOneThatIsRefusedForNewOnes) {
    const std::string longest(rules::kLongestDialogName, 'n');
    for (const std::string& name : {std::string("Sales"), std::string("a b"), std::string("a:b"), std::string("a.b"),
                                    std::string("a;b"), std::string("a(b)"), std::string("a)b("), std::string("{a}"),
                                    std::string("a\\b"), std::string("a!b"), std::string("a\"b"), std::string("Trace"),
                                    std::string(32, 'n'), std::string(33, 'n'), longest, longest + "n"}) {
        SCOPED_TRACE(name);
        const std::string sources =
            told("[ODBC Data Sources]\n" + name + "=D\n[" + name + "]\nDriver=/l/d.so\n", good_);
        EXPECT_EQ(sources.empty(), rules::whyNoName(name, rules::kNewDataSource) == nullptr) << sources;
        const std::string drivers =
            told("", "[ODBC Drivers]\n" + name + "=Installed\n[" + name + "]\nDriver=/l/d.so\nSetup=/l/s.so\n");
        EXPECT_EQ(drivers.empty(), rules::whyNoName(name, rules::kNewDriver) == nullptr) << drivers;
    }
    EXPECT_EQ(told("", "[ODBC Drivers]\na;b=Installed\n[a;b]\nDriver=/l/d.so\nSetup=/l/s.so\n"),
              "warning names.forbidden-character driver a;b\n"
              "  ~/.odbcinst.ini:2: a new driver cannot have this name: it holds one of []{};=\"\\.\n"
              "  Add it under another name, then: odbcadmin driver remove 'a;b'\n");
}

TEST_F(NameChecks, ADriverInTheFileForAllUsersComesWithTheCommandThatAddsIt) {
    std::filesystem::create_directory(home_.file("etc"));
    home_.put("etc/odbcinst.ini", "[Acme DB]\nDriver=/opt/acme/libacme.so\nSetup=/opt/acme/libacmeS.so\n");
    EXPECT_EQ(told("[ODBC Data Sources]\nA=Acme DB\n[A]\nDriver=/opt/acme/libacme.so\n", ""),
              "error names.driver-unknown data source A\n"
              "  ~/.odbc.ini:2: its driver is \"Acme DB\", and ~/.odbcinst.ini has no such section.\n"
              "  ~/etc/odbcinst.ini has it, which this library does not read. Add it for this user: odbcadmin driver "
              "add 'Acme DB' --lib /opt/acme/libacme.so --setup /opt/acme/libacmeS.so\n");
}

TEST_F(NameChecks, NothingFollowsFromAHeaderThatIsNotClosed) {
    const std::string list = "[ODBC Data Sources]\nMy Sales=D\nOther=D\n";
    EXPECT_EQ(told(list + "[My Sales ; ours\nDriver=nowhere.so\n[Other]\nDriver=/l/d.so\n", good_), "");
    EXPECT_EQ(told(list + "[My Sales]\nDriver=/l/d.so\n[Other]\nDriver=/l/d.so\n",
                   "[ODBC Drivers]\nD=Installed\n[D\nDriver=/l/d.so\nSetup=/l/s.so\n"),
              "");
    // What has nothing to do with it is said all the same.
    EXPECT_EQ(told(list + "[My Sales\nDriver=/l/d.so\n[Other]\nDriver=d\n", good_).substr(0, 48),
              "note names.driver-by-name data source Other\n  ~/");
}

TEST(Explanation, OfAHeaderThatIsNotClosedAdvisesNothingElse) {
    const DoctorHome home;
    home.put(".odbc.ini", "[ODBC Data Sources]\nSales=D\n[Sales\nDriver=/l/d.so\n");
    home.put(".odbcinst.ini", "");
    const std::vector<Step> steps = explain(model::Configuration::read(), "Sales", home.file("etc"));
    ASSERT_GT(steps.size(), 1U);
    EXPECT_EQ(steps[1].where, home.file(".odbc.ini") + ":3");
    EXPECT_EQ(steps[1].value, "[Sales is never closed");
    EXPECT_EQ(steps[1].advice, "Add the \"]\" there.");
}

TEST(UnknownName, InTheFilesForAllUsersComesWithTheCommandThatAddsIt) {
    const DoctorHome home;
    home.put(".odbc.ini", "");
    home.put(".odbcinst.ini", "");
    std::filesystem::create_directory(home.file("etc"));
    home.put("etc/odbc.ini",
             "[ODBC Data Sources]\nSales=Acme\n[Sales]\nDriver=/opt/libacme.so\nServer=db 1\n"
             "PWD=geheim\n[Other]\nDriver=Acme DB\n[Bare]\nDriver=/opt/libacme.so\n");
    home.put("etc/odbcinst.ini", "[Acme]\nDriver=/opt/libacme.so\n[None]\nDescription=x\n");
    const struct {
        const char *name, *command;
    } rows[] = {{"sales", "odbcadmin dsn add sales --driver Acme 'Server=db 1'"},
                {"Other", "odbcadmin dsn add Other --driver 'Acme DB'"},
                {"Bare", "odbcadmin dsn add Bare --driver DRIVER"},
                {"Acme", "odbcadmin driver add Acme --lib /opt/libacme.so"},
                {"None", "odbcadmin driver add None --lib PATH"}};
    for (const auto& row : rows)
        EXPECT_EQ(whyUnknown(model::Configuration::read(), row.name, home.file("etc")).advice,
                  std::string("Add it for this user: ") + row.command);
    const model::Reason reason = whyUnknown(model::Configuration::read(), "Sales", home.file("etc"));
    EXPECT_EQ(reason.fact, "The data source Sales stands in " + home.file("etc/odbc.ini") +
                               " only, which this library does not read");
    // A list is no data source.
    EXPECT_EQ(whyUnknown(model::Configuration::read(), "ODBC Data Sources", home.file("etc")).advice,
              "See odbcadmin dsn list and odbcadmin driver list.");
}

TEST(EnvironmentChecks, TracingIsToldWithTheSizeOfItsFile) {
    const DoctorHome home;
    const auto told = [&](const std::string& settings) {
        home.put(".odbc.ini", "[ODBC]\n" + settings);
        return home.dump(checkEnvironment(model::Configuration::read()));
    };
    home.put("trace.log", std::string(1234, 'x'));
    EXPECT_EQ(told("Trace=0\nTraceFile=" + home.file("trace.log") + "\n"), "");
    EXPECT_EQ(told("Trace=1\nTraceFile=" + home.file("trace.log") + "\n"),
              "warning environment.tracing-on tracing\n"
              "  ~/.odbc.ini:2: tracing is on; its file ~/trace.log has 1234 bytes.\n"
              "  It slows every call down and records values: turn it off with odbcadmin trace off.\n");
    EXPECT_NE(told("Trace=1\nTraceFile=" + home.file("new.log") + "\n").find("~/new.log is not there yet."),
              std::string::npos);
}

TEST(BugReport, HidesSecretsWhereverTheyStand) {
    const DoctorHome home;
    home.put(".odbc.ini",
             "[A]\nPWD=geheim\n;Password=geheim\nPWD geheim\nConnection=Server=x;Pwd=geheim;Port=1\nDriver=/l/d.so\n");
    const std::string report = bugReport("1.2", model::configPlaces(), lint(model::Configuration::read()));
    EXPECT_EQ(report.find("geheim"), std::string::npos) << report;
    EXPECT_NE(report.find("PWD=********\n"), std::string::npos) << report;
    EXPECT_NE(report.find("Connection=Server=x;Pwd=********;Port=1\n"), std::string::npos) << report;
    EXPECT_NE(report.find("odbcadmin 1.2, "), std::string::npos) << report;
    EXPECT_TRUE(report.ends_with("---- end ----\n"));
}

std::string textOfFile(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(JX_SOURCE_FOLDER "/" + path).rdbuf();
    return text.str();
}

// docs/doctor.md has every identifier of checks.h, with its severity, and no other.
TEST(Documentation, ListsEveryIdentifier) {
    const std::string document = textOfFile("docs/doctor.md");
    const std::string header = textOfFile("src/odbcadmin/doctor/checks.h");
    const std::regex check("inline constexpr Check \\w+\\{\"([^\"]+)\", (\\w+)\\}");
    std::set<std::string> ids;
    for (std::sregex_iterator each(header.begin(), header.end(), check), end; each != end; ++each) {
        EXPECT_TRUE(ids.insert((*each)[1]).second) << (*each)[1];
        const std::string row = "| " + (*each)[1].str() + " | " + (*each)[2].str() + " | ";
        EXPECT_NE(document.find(row), std::string::npos) << row;
    }
    EXPECT_GT(ids.size(), 60U);
    const std::regex row("\\n\\| [a-z]+\\.[a-z0-9-]+ \\| ");
    const auto rows = std::distance(std::sregex_iterator(document.begin(), document.end(), row), {});
    EXPECT_EQ(static_cast<std::size_t>(rows), ids.size());
}

// What the table of complaints says is said is tested somewhere.
TEST(Documentation, NamesTestedIdentifiersForComplaints) {
    std::string tests;
    for (const auto& each : std::filesystem::recursive_directory_iterator(JX_SOURCE_FOLDER "/tests/odbcadmin"))
        if (each.path().extension() == ".cpp")
            tests += textOfFile(std::filesystem::relative(each.path(), JX_SOURCE_FOLDER));
    const std::string document = textOfFile("docs/doctor.md");
    const std::string table = document.substr(document.find("## What people complain of"));
    const std::regex identifier("`((files|syntax|names|values|library|environment)\\.[a-z0-9-]+)`");
    std::size_t count = 0;
    for (std::sregex_iterator each(table.begin(), table.end(), identifier), end; each != end; ++each, ++count)
        EXPECT_NE(tests.find((*each)[1].str()), std::string::npos) << (*each)[1];
    EXPECT_GT(count, 40U);
}

}  // namespace
}  // namespace jx::doctor::test
