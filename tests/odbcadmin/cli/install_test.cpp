// install: what a script enters, what a preview shows, what is refused.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "admin_test.h"
#include "installed_copy.h"

namespace jx::test {
namespace {

constexpr const char* kScript = R"([ODBC Drivers]
"Small"=
"Other"=
"Empty"=
[ODBC Translators]
"Latin"=
[Small]
"Driver"=1,libsmall.so,,,,2024-01-15,,,,,,,,,,0,,,,,
[Small-Keys]
FileUsage=0
CreateDSN=Notes
[Other]
"Driver"=1,libother.so,,,,2024-01-15,,,,,,,,,,0,,,,,
[Latin]
"Translator"=1,liblatin.so,,,,2024-01-15,,,,,,,,,,0,,,,,
[Empty]
)";

class Install : public AdminTest {
protected:
    Install() {
        home_.put("odbc.inf", kScript);
        home_.put("libsmall.so", "no library");
    }

    const std::string script_ = home_.file("odbc.inf");
};

TEST_F(Install, EntersADriverAndTellsWhatWasEntered) {
    const std::string shown = out({"install", script_, "small"});
    EXPECT_EQ(shown, "driver       Small  added  " + home_.file("libsmall.so") +
                         "  broken\n"
                         "translator   Latin  added  " +
                         home_.file("liblatin.so") +
                         "  missing\n"
                         "data source  Notes  added  Small\n"
                         "Installed from " +
                         script_ + "\n");
    EXPECT_EQ(out({"driver", "list", "-q"}), "Plain\nSmall\n");
    EXPECT_EQ(out({"dsn", "get", "Notes", "Driver"}), home_.file("libsmall.so") + "\n");
    EXPECT_NE(sources().find("; the shop\n[Sales]\n"), std::string::npos);
    out({"install", script_, "Small", "-q"});
    EXPECT_EQ(out({"install", script_, "Small", "-q"}), "");
    const auto object = json({"install", script_, "Small"});
    EXPECT_EQ(object["result"], "unchanged");
    EXPECT_EQ(object["drivers"][0]["status"], "unchanged");
    EXPECT_EQ(object["dataSources"].size(), 0U);
}

TEST_F(Install, FromSaysWhereTheLibrariesLie) {
    out({"install", script_, "Other", "--from", home_.path() + "/", "-q"});
    EXPECT_EQ(out({"driver", "show", "Other", "-q"}), "[Other]\nDriver=" + home_.file("libother.so") + "\n");
    const ProgramResult none = run({"install", script_, "--from", home_.file("none")});
    EXPECT_EQ(none.code, 7);
    EXPECT_EQ(none.err, "odbcadmin: There is no directory " + home_.file("none") +
                            "\n  Give --from the directory where the libraries lie.\n");
}

TEST_F(Install, APreviewWritesNothingAndShowsBothFiles) {
    const std::string shown = out({"install", script_, "Small", "-n"});
    EXPECT_EQ(shown.find("--- " + home_.file(".odbcinst.ini") + "\n+++ " + home_.file(".odbcinst.ini") + "\n"), 0U);
    EXPECT_NE(shown.find("\n+Small=Installed\n"), std::string::npos) << shown;
    EXPECT_NE(shown.find("\n--- " + home_.file(".odbc.ini") + "\n"), std::string::npos) << shown;
    EXPECT_NE(shown.find("\n+Notes=Small\n"), std::string::npos) << shown;
    EXPECT_EQ(run({"install", script_, "Small", "--check"}).code, 9);
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(Install, ForAllUsersItEntersIntoTheSystemsFilesOnly) {
    home_.putSystem("odbcinst.ini", "; shared\n");
    const std::string shown = out({"install", script_, "Small", "--system", "-n"});
    EXPECT_NE(shown.find("--- " + home_.systemFile("odbcinst.ini") + "\n"), std::string::npos) << shown;
    EXPECT_NE(shown.find("\n--- " + home_.systemFile("odbc.ini") + "\n"), std::string::npos) << shown;
    EXPECT_EQ(run({"install", script_, "Small", "--system", "--check"}).code, 9);
    EXPECT_EQ(home_.systemText("odbc.ini"), "(absent)");
    const mode_t mask = umask(S_IWGRP | S_IWOTH);
    const auto object = json({"install", script_, "Small", "--system"});
    umask(mask);
    EXPECT_EQ(object["files"].dump(),
              "[\"" + home_.systemFile("odbcinst.ini") + "\",\"" + home_.systemFile("odbc.ini") + "\"]");
    EXPECT_EQ(object["drivers"][0]["name"], "Small");
    EXPECT_EQ(object["dataSources"][0]["name"], "Notes");
    EXPECT_EQ(home_.systemText("odbc.ini"),
              "[ODBC Data Sources]\nNotes=Small\n\n[Notes]\nDriver=" + home_.file("libsmall.so") + "\n");
    EXPECT_EQ(home_.systemText("odbcinst.ini").substr(0, 25), "; shared\n\n[ODBC Drivers]\n");
    EXPECT_EQ(std::filesystem::status(home_.systemFile("odbc.ini")).permissions(), std::filesystem::perms(0644));
    EXPECT_EQ(out({"install", script_, "Small", "--system", "-q"}), "");
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(drivers(), kDrivers);
}

// The sentence with sudo needs a user who has less rights than the tests may have.
TEST_F(Install, WithoutTheRightTheSystemsCommandIsGivenWithSudo) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can run a program as another user";
    const InstalledCopy copy;  // the build may lie where nobody else may go
    const std::string program = copy.file("bin/odbcadmin");
    std::filesystem::permissions(home_.path(), std::filesystem::perms::all);
    std::filesystem::permissions(script_, std::filesystem::perms(0644));
    home_.putSystem("odbc.ini", "");
    const ProgramResult result = runProgram("/usr/bin/setpriv", {"--reuid=65534", "--regid=65534", "--clear-groups",
                                                                 program, "install", script_, "Small", "--system"});
    EXPECT_EQ(result.code, 7);
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find("  Run it with the right to: sudo ODBCSYSINI=" + home_.systemPath() + " " + program +
                              " install " + script_ + " Small --system\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(home_.systemText("odbc.ini"), "");
}

TEST_F(Install, ADriverThatDoesNotGetInIsAFailure) {
    const ProgramResult result = run({"install", script_});
    EXPECT_EQ(result.code, 1);
    EXPECT_NE(result.out.find("driver       Other  added"), std::string::npos) << result.out;
    EXPECT_EQ(result.err,
              "odbcadmin: Not installed from " + script_ +
                  ": driver Empty (its section in the script has no line \"Driver\" whose second field names "
                  "the library)\n  Mend what is named and install again; what is entered already stays.\n");
    EXPECT_EQ(result.out.find("Installed from"), std::string::npos);
    const ProgramResult asJson = run({"install", script_, "--json"});
    EXPECT_EQ(asJson.code, 1);
    EXPECT_EQ(nlohmann::ordered_json::parse(asJson.out)["missing"][0]["what"], "driver Empty");
}

TEST_F(Install, AFileThatCannotBeWrittenIsTheReasonAndNothingIsEntered) {
    for (const char* file : {".odbcinst.ini", ".odbc.ini"}) {
        SCOPED_TRACE(file);
        std::filesystem::create_directory(home_.file(std::string(file) + ".jxlock"));
        const ProgramResult result = run({"install", script_, "Small"});
        EXPECT_EQ(result.code, 7);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err.find(std::string("Cannot ")), std::string::npos) << result.err;
        EXPECT_NE(result.err.find(file), std::string::npos) << result.err;
        std::filesystem::remove(home_.file(std::string(file) + ".jxlock"));
    }
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(Install, TranslatorsThatWereNotEnteredAreNamed) {
    std::string list = "[ODBC Translators]\n";
    std::string sections;
    for (int i = 100; i < 160; ++i) {
        const std::string name = "Translator number " + std::to_string(i);
        list += "\"" + name + "\"=\n";
        sections += "[" + name + "]\n\"Translator\"=1,lib.so,,,,2024-01-15,,,,,,,,,,0,,,,,\n";
    }
    home_.put("odbc.inf", list + "\"Bare\"=\n" + sections);
    const ProgramResult many = run({"install", script_});
    EXPECT_EQ(many.code, 1);
    EXPECT_NE(
        many.err.find("translator Translator number 159 (its name lies beyond the first 1023 bytes of the script's "
                      "list)"),
        std::string::npos)
        << many.err;
    EXPECT_EQ(many.err.find("number 100"), std::string::npos);
    home_.put("odbc.inf", "[ODBC Translators]\n\"Bare\"=\n");
    EXPECT_NE(
        run({"install", script_}).err.find("translator Bare (its section in the script has no line \"Translator\""),
        std::string::npos);
}

TEST_F(Install, ANameThatWouldBeReadBackCutIsRefusedBeforeAnythingIsWritten) {
    for (const char* name : {"New #1", "New ;1"}) {
        SCOPED_TRACE(name);
        home_.put("odbc.inf", std::string("[ODBC Drivers]\n\"") + name + "\"=\n[" + name +
                                  "]\n\"Driver\"=1,lib.so,,,,,,,,,,,,,,,,,,,,\n");
        const ProgramResult result = run({"install", script_});
        EXPECT_EQ(result.code, 5);
        EXPECT_EQ(result.err.substr(0, 11 + 11), std::string("odbcadmin: \"") + name + "\" of");
        EXPECT_EQ(drivers(), kDrivers);
    }
}

TEST_F(Install, RefusesWhatTheScriptDoesNotOffer) {
    const ProgramResult unknown = run({"install", script_, "Smlal"});
    EXPECT_EQ(unknown.code, 3);
    EXPECT_EQ(unknown.err, "odbcadmin: There is no driver Smlal in " + script_ + "\n  Did you mean Small?\n");
    EXPECT_EQ(run({"install", home_.file("none.inf")}).code, 7);
    EXPECT_EQ(run({"install", home_.path()}).code, 7);
    home_.put("odbc.inf", "[Small]\n");
    EXPECT_EQ(run({"install", script_}).code, 3);
    EXPECT_EQ(run({"install"}).code, 2);
    home_.put("odbc.inf", "[ODBC Drivers]\n\"\"=\n\"A\n[A]\n");
    EXPECT_EQ(run({"install", script_}).code, 1);
    EXPECT_EQ(drivers().find("[A]\nDriver"), std::string::npos);
}

}  // namespace
}  // namespace jx::test
