// What the shells are offered, and their scripts.
#include "admin_test.h"

namespace jx::test {
namespace {

class Completion : public AdminTest {
protected:
    // The candidates for the last word, without what is said about them.
    std::string offered(std::vector<std::string> words) {
        words.insert(words.begin(), {"__complete", "--"});
        std::string names;
        std::string line;
        for (const char byte : out(words)) {
            if (byte != '\n') {
                line.push_back(byte);
                continue;
            }
            names.append(names.empty() ? "" : "|").append(line.substr(0, line.find('\t')));
            line.clear();
        }
        return names;
    }

    // What a shell prints that is given a script; JX_ODBCADMIN's folder is in front of its PATH.
    static std::string shell(const std::string& program, const std::vector<std::string>& options,
                             const std::string& script) {
        std::string folder = JX_ODBCADMIN;
        folder.resize(folder.rfind('/'));
        std::vector<std::string> arguments = options;
        arguments.push_back("PATH=" + shellQuoted(folder) + ":$PATH\n" + script);
        const ProgramResult result = runProgram(program, arguments);
        EXPECT_EQ(result.code, 0) << result.err;
        return result.out;
    }
};

TEST_F(Completion, OffersCommandsAndOptions) {
    EXPECT_EQ(offered({"dr"}), "driver");
    EXPECT_EQ(offered({"dsn", "re"}), "remove|rename");
    EXPECT_EQ(offered({"dsn", "list", "--js"}), "--json");
    EXPECT_EQ(offered({"dsn", "add", "X", "--dri"}), "--driver");
    EXPECT_EQ(offered({"--json", "dsn", "sh"}), "show");
    EXPECT_EQ(offered({"__"}), "");
}

TEST_F(Completion, OffersNamesFromTheFiles) {
    EXPECT_EQ(offered({"dsn", "show", ""}), "Sales|Accounts");
    EXPECT_EQ(offered({"dsn", "show", "Sa"}), "Sales");
    EXPECT_EQ(offered({"dsn", "remove", "Sales", "A"}), "Accounts");
    EXPECT_EQ(offered({"dsn", "get", "Sales", ""}), "Driver|Server|PWD");
    EXPECT_EQ(offered({"dsn", "get", "Sales", "PWD", ""}), "");
    EXPECT_EQ(offered({"dsn", "add", "X", "--driver", ""}), "Plain");
    EXPECT_EQ(offered({"driver", "show", ""}), "Plain");
    EXPECT_EQ(offered({"driver", "add", "X", "--lib", ""}), ":FILE");
    EXPECT_EQ(offered({"--home", ""}), ":DIR");
    EXPECT_EQ(offered({"--home", "/", "dsn", "show", ""}), "");
    EXPECT_EQ(offered({"dsn", "show", "--", ""}), "Sales|Accounts");
}

TEST_F(Completion, OffersWhatStandsInTheFileNamed) {
    const std::string file = home_.file("some.ini");
    home_.put("some.ini", "[ODBC Drivers]\n\"Small driver\"=\n[Other]\nServer=x\n");
    EXPECT_EQ(offered({"config", "get", file, ""}), "ODBC Drivers|Other");
    EXPECT_EQ(offered({"config", "get", file, "Other", ""}), "Server");
    EXPECT_EQ(offered({"config", "get", ".odbcinst.ini", "Pl"}), "Plain");
    EXPECT_EQ(offered({"install", file, "Sm"}), "Small driver");
    EXPECT_EQ(offered({"config", "get", home_.file("none"), ""}), "");
    EXPECT_EQ(offered({"config", "set", file, "Other", "Server", ""}), "");
    EXPECT_EQ(offered({"doctor", ""}), "Sales|Accounts|Plain");
    EXPECT_EQ(offered({"explain", "P"}), "Plain");
}

TEST_F(Completion, ValuesNeverShow) {
    EXPECT_EQ(out({"__complete", "--", "dsn", "get", "Sales", "P"}), "PWD\t\n");
}

TEST_F(Completion, ANameThatWouldBreakTheListIsLeftOut) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nA\tB=Plain\nC=Pl\tain\n");
    EXPECT_EQ(out({"__complete", "--", "dsn", "show", ""}), "C\tPl?ain\n");
}

TEST_F(Completion, AnUnreadableFileOffersNothing) {
    home_.put(".odbc.ini", "");
    home_.put(".odbcinst.ini", "");
    EXPECT_EQ(offered({"dsn", "show", ""}), "");
}

TEST_F(Completion, BashOffersAndQuotes) {
    out({"dsn", "copy", "Sales", "Two $words"});
    const std::string script = "source " + shellQuoted(JX_COMPLETIONS "/odbcadmin.bash") +
                               "\n"
                               "ask() { COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); COMPREPLY=()\n"
                               "    _odbcadmin odbcadmin \"${!#}\"; printf '<%s>' \"${COMPREPLY[@]}\"; }\n";
    const auto ask = [&](const std::string& line) {
        return shell("/bin/bash", {"-c"}, script + "ask odbcadmin " + line);
    };
    EXPECT_EQ(ask("dsn show S"), "<Sales>");
    EXPECT_EQ(ask("dsn show T"), "<Two\\ \\$words>");
    EXPECT_EQ(ask("dsn get 'Two\\ \\$words' Se"), "<Server>");
    EXPECT_EQ(ask("dsn show \\\"T"), "<Two $words>");
    EXPECT_EQ(ask("driver add X --lib " + home_.file(".odbci")), "<" + home_.file(".odbcinst.ini") + ">");
}

TEST_F(Completion, FishOffers) {
    const ProgramResult present = runProgram("/usr/bin/fish", {"--version"});
    if (present.code != 0)
        return;  // no fish on this system
    std::string folder = JX_ODBCADMIN;
    folder.resize(folder.rfind('/'));
    const ProgramResult result = runProgram(
        "/usr/bin/fish", {"-N", "-c",
                          "set -x PATH " + shellQuoted(folder) + " $PATH\nsource " +
                              shellQuoted(JX_COMPLETIONS "/odbcadmin.fish") + "\ncomplete -C 'odbcadmin dsn show S'"});
    EXPECT_EQ(result.out, "Sales\tPlain\n") << result.err;
}

// zsh completes only at a terminal: what is tested is that it reads the function.
TEST_F(Completion, ZshReadsItsFunction) {
    const ProgramResult present = runProgram("/usr/bin/zsh", {"--version"});
    if (present.code != 0)
        return;  // no zsh on this system
    EXPECT_EQ(runProgram("/usr/bin/zsh", {"-n", JX_COMPLETIONS "/_odbcadmin"}).code, 0);
}

}  // namespace
}  // namespace jx::test
