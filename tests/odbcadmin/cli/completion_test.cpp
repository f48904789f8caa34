// What the shells are offered, and their scripts.
#include <filesystem>
#include <optional>

#include "../terminal/pty.h"
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

TEST_F(Completion, OffersNamesOfTheScopeThatIsAskedFor) {
    home_.putSystem("odbc.ini", "[Stock]\nDriver=Wide\nPort=1\n");
    home_.putSystem("odbcinst.ini", "[Wide]\nDriver=/opt/libwide.so\n");
    EXPECT_EQ(offered({"dsn", "show", ""}), "Sales|Accounts|Stock");
    EXPECT_EQ(offered({"--system", "dsn", "show", ""}), "Stock");
    EXPECT_EQ(offered({"dsn", "show", "--user", ""}), "Sales|Accounts");
    EXPECT_EQ(offered({"dsn", "unset", "--system", "Stock", ""}), "Driver|Port");
    EXPECT_EQ(offered({"--system", "driver", "show", ""}), "Wide");
    EXPECT_EQ(offered({"config", "get", "--system", ".odbcinst.ini", ""}), "Wide");
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

TEST_F(Completion, OffersTheValueOfAnOptionInItsWord) {
    EXPECT_EQ(offered({"dsn", "add", "X", "--driver="}), "--driver=Plain");
    EXPECT_EQ(offered({"dsn", "add", "X", "--driver=Pl"}), "--driver=Plain");
    EXPECT_EQ(offered({"dsn", "add", "X", "--driver=x"}), "");
    EXPECT_EQ(offered({"driver", "add", "X", "--lib=/u"}), ":FILE");
    EXPECT_EQ(offered({"dsn", "add", "X", "--direct="}), "");
    EXPECT_EQ(offered({"--home=/", "dsn", "show", ""}), "");
    EXPECT_EQ(offered({"dsn", "add", "--driver=Plain", "X", "--js"}), "--json");
}

TEST_F(Completion, AKeyThatTakesAValueComesWithItsEqualsSign) {
    EXPECT_EQ(offered({"dsn", "set", "Sales", ""}), "Driver=|Server=|PWD=");
    EXPECT_EQ(offered({"dsn", "set", "Sales", "Server=b", "P"}), "PWD=");
    EXPECT_EQ(offered({"dsn", "unset", "Sales", "S"}), "Server");
}

// InBash: a real bash at a terminal, with the completion and nothing else of a user's.
class InBash : public Completion {
protected:
    InBash() {
        std::string folder = JX_ODBCADMIN;
        folder.resize(folder.rfind('/'));
        home_.put(".bashrc", "PATH=" + shellQuoted(folder) +
                                 ":$PATH PS1='ready ' HISTFILE=\n"
                                 "bind 'set enable-bracketed-paste off'\nbind 'set bell-style none'\n"
                                 "source " +
                                 shellQuoted(JX_COMPLETIONS "/odbcadmin.bash") +
                                 "\n"
                                 "bind -x '\"\\C-o\": printf \"\\n<%s>\\n\" \"$READLINE_LINE\"'\n"
                                 "cd ~\n");
        home_.put(".odbc.ini",
                  "[ODBC Data Sources]\nSales=Plain\na:b=Plain\na:c d=Plain\nIt's $1=Plain\n"
                  "[Sales]\nServer=x\nSection=y\nPort=1\n[a:b]\nMy Key=1\n");
        // What is typed before bash reads lines itself is not completed.
        bash_.emplace("/bin/bash", std::vector<std::string>{"HOME=" + home_.path(), "TERM=dumb", "INPUTRC=/dev/null"},
                      200);
        EXPECT_TRUE(bash_->waitFor("ready "));
        bash_->take();
    }

    // The line after the Tab key was pressed behind it.
    std::string completed(const std::string& line) {
        bash_->send(line + "\t\x0F");
        std::string screen;
        const bool isShown = bash_->waitFor(">\r\n");
        screen = bash_->take();
        bash_->send("\x15");
        const std::size_t begin = screen.rfind("\n<");
        return isShown && begin != std::string::npos ? screen.substr(begin + 2, screen.rfind(">\r\n") - begin - 2)
                                                     : screen;
    }

    std::optional<Pty> bash_;
};

TEST_F(InBash, ATabCompletesNamesAndQuotesThem) {
    const struct {
        const char *typed, *line;
    } rows[] = {
        {"odbcadmin dsn sho", "odbcadmin dsn show "},
        {"odbcadmin dsn show Sa", "odbcadmin dsn show Sales "},
        {"odbcadmin dsn show \"Sa", "odbcadmin dsn show \"Sales\" "},
        {"odbcadmin dsn show 'Sa", "odbcadmin dsn show 'Sales' "},
        {"odbcadmin dsn show It", "odbcadmin dsn show It\\'s\\ \\$1 "},
        {"odbcadmin dsn show It\\'s\\ ", "odbcadmin dsn show It\\'s\\ \\$1 "},
        {"odbcadmin dsn show \"It", "odbcadmin dsn show \"It's \\$1\" "},
        {"odbcadmin dsn show 'It", "odbcadmin dsn show 'It'\\''s $1' "},
        {"true; odbcadmin dsn show Sa", "true; odbcadmin dsn show Sales "},
    };
    for (const auto& row : rows)
        EXPECT_EQ(completed(row.typed), row.line);
}

TEST_F(InBash, ATabCompletesNamesWithAColon) {
    EXPECT_EQ(completed("odbcadmin dsn show a"), "odbcadmin dsn show a:");
    EXPECT_EQ(completed("odbcadmin dsn show a:b"), "odbcadmin dsn show a:b ");
    EXPECT_EQ(completed("odbcadmin dsn show a:c"), "odbcadmin dsn show a:c\\ d ");
    EXPECT_EQ(completed("odbcadmin dsn show \"a:c"), "odbcadmin dsn show \"a:c d\" ");
    EXPECT_EQ(completed("odbcadmin dsn get a:b M"), "odbcadmin dsn get a:b My\\ Key ");
}

TEST_F(InBash, ATabCompletesOptionsAndTheirValues) {
    EXPECT_EQ(completed("odbcadmin dsn add X --driver=P"), "odbcadmin dsn add X --driver=Plain ");
    EXPECT_EQ(completed("odbcadmin dsn add X --driver="), "odbcadmin dsn add X --driver=Plain ");
    EXPECT_EQ(completed("odbcadmin dsn add X --driver=\"P"), "odbcadmin dsn add X --driver=\"Plain\" ");
    EXPECT_EQ(completed("odbcadmin dsn add X --driver P"), "odbcadmin dsn add X --driver Plain ");
    EXPECT_EQ(completed("odbcadmin driver add X --lib=.odbci"), "odbcadmin driver add X --lib=.odbcinst.ini ");
    EXPECT_EQ(completed("odbcadmin driver add X --lib " + home_.file(".odbci")),
              "odbcadmin driver add X --lib " + home_.file(".odbcinst.ini") + " ");
}

TEST_F(InBash, ATabCompletesNamesOfUsers) {
    EXPECT_EQ(completed("odbcadmin doctor --as-user nobod"), "odbcadmin doctor --as-user nobody ");
    EXPECT_EQ(completed("odbcadmin doctor --as-user=nobod"), "odbcadmin doctor --as-user=nobody ");
    EXPECT_EQ(completed("odbcadmin doctor Sales --as-user no-such-us"), "odbcadmin doctor Sales --as-user no-such-us");
    EXPECT_EQ(completed("odbcadmin --owner nobod"), "odbcadmin --owner nobody ");
    // A directory of that name is none.
    std::filesystem::create_directory(home_.file("nobody.d"));
    EXPECT_EQ(completed("odbcadmin doctor --as-user " + home_.file("nob")),
              "odbcadmin doctor --as-user " + home_.file("nob"));
}

TEST_F(InBash, NoBlankFollowsAKeyThatTakesAValue) {
    EXPECT_EQ(completed("odbcadmin dsn set Sales Po"), "odbcadmin dsn set Sales Port=");
    EXPECT_EQ(completed("odbcadmin dsn set Sales Server=b Po"), "odbcadmin dsn set Sales Server=b Port=");
    EXPECT_EQ(completed("odbcadmin dsn set Sales Se"), "odbcadmin dsn set Sales Se");
    EXPECT_EQ(completed("odbcadmin dsn unset Sales Po"), "odbcadmin dsn unset Sales Port ");
}

TEST_F(Completion, FishOffers) {
    const ProgramResult present = runProgram("/usr/bin/fish", {"--version"});
    if (present.code != 0)
        return;  // no fish on this system
    std::string folder = JX_ODBCADMIN;
    folder.resize(folder.rfind('/'));
    const ProgramResult result = runProgram(
        "/usr/bin/fish",
        {"-N", "-c",
         "set -x PATH " + shellQuoted(folder) + " $PATH\nsource " + shellQuoted(JX_COMPLETIONS "/odbcadmin.fish") +
             "\ncomplete -C 'odbcadmin dsn show S'\ncomplete -C 'odbcadmin dsn add X --driver=P'\n"
             "complete -C 'odbcadmin dsn set Sales S'\ncomplete -C 'odbcadmin doctor --as-user nobod' | cut -f1\n"
             "complete -C 'odbcadmin doctor --as-user=nobod' | cut -f1"});
    EXPECT_EQ(result.out, "Sales\tPlain\n--driver=Plain\t/opt/libplain.so\nServer=\nnobody\n--as-user=nobody\n")
        << result.err;
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
