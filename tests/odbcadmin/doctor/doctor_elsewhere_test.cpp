// doctor --as-user and --pid, run as their users run them.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <functional>
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

constexpr uid_t kNobody = 65534;

// OtherProcess: cat, which waits for input until the object is gone, with a few variables; become is called in it
// first.
class OtherProcess {
public:
    OtherProcess(const std::vector<std::string>& variables, const std::function<bool()>& become) {
        int input[2];
        int started[2];
        EXPECT_EQ(::pipe2(input, O_CLOEXEC) + ::pipe2(started, O_CLOEXEC), 0);
        process_ = ::fork();
        if (process_ == 0)
            run(variables, become, input[0]);
        ::close(input[0]);
        ::close(started[1]);
        input_ = input[1];
        // Its copy of the other end is closed when cat has begun.
        char byte = 0;
        EXPECT_EQ(::read(started[0], &byte, 1), 0);
        ::close(started[0]);
    }
    ~OtherProcess() {
        ::close(input_);
        ::waitpid(process_, nullptr, 0);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    std::string number() const { return std::to_string(process_); }

private:
    [[noreturn]] static void run(const std::vector<std::string>& variables, const std::function<bool()>& become,
                                 int input) {
        std::vector<char*> environment;
        for (const std::string& each : variables)
            environment.push_back(const_cast<char*>(each.c_str()));
        environment.push_back(nullptr);
        char name[] = "cat";
        char* const arguments[] = {name, nullptr};
        // Opened before become, which may lead to a place where it is not found.
        const int program = ::open("/bin/cat", O_PATH);
        if (::dup2(input, STDIN_FILENO) == 0 && become())
            ::fexecve(program, arguments, environment.data());
        ::_exit(1);
    }

    pid_t process_ = 0;
    int input_ = -1;
};

bool stay() {
    return true;
}

bool becomeNobody() {
    return ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0;
}

class DoctorElsewhere : public testing::Test {
protected:
    DoctorElsewhere() {
        home_.openToAll();
        home_.put(".odbc.ini",
                  "[ODBC Data Sources]\nSales=Small\n[Sales]\nDriver=" + home_.take("libdriver.so") + "\n");
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nSmall=Installed\n[Small]\nDriver=" + home_.file("libdriver.so") +
                                       "\nSetup=" + home_.take("libsetup.so") + "\n");
        for (const char* name : {".odbc.ini", ".odbcinst.ini", "libdriver.so", "libsetup.so"})
            ::chmod(home_.file(name).c_str(), 0755);
    }

    static bool isRoot() { return ::geteuid() == 0; }

    // Exit code, standard output and standard error; the home is called "~".
    std::string run(const std::vector<std::string>& arguments, As who = As::oneself) const {
        return runIn(home_, copy_.file("bin/odbcadmin"), arguments, who);
    }

    std::vector<std::string> homeVariable() const { return {"HOME=" + home_.path()}; }

    DoctorHome home_;
    InstalledCopy copy_;
};

TEST_F(DoctorElsewhere, AProcessOfOnesOwnIsExaminedWithItsVariables) {
    home_.put("other.ini", "[ODBC Data Sources]\nOther=Small\n[Other]\nDriver=\"/l/d.so\"\n");
    ::chmod(home_.file("other.ini").c_str(), 0600);
    const OtherProcess process({"HOME=" + home_.path(), "ODBCINI=" + home_.file("other.ini")}, stay);
    const std::string user = ::getpwuid(::geteuid())->pw_name;
    EXPECT_EQ(run({"doctor", "--pid", process.number(), "Other"}),
              "10\nExamined as process " + process.number() + " (cat) of user " + user + " (" +
                  std::to_string(::geteuid()) +
                  "), HOME=~ ODBCINI=~/other.ini\n"
                  "note files.shadowed ~/.odbc.ini\n"
                  "  ~/.odbc.ini is there and is not read: ~/other.ini counts instead.\n"
                  "  Look at odbcadmin paths for the reason.\n"
                  "error names.quoted-path data source Other\n"
                  "  ~/other.ini:4: the value of Driver stands in quotes, which belong to the value here.\n"
                  "  Write the line as: Driver=/l/d.so\n"
                  "1 error, 0 warnings, 1 note.\n");
    EXPECT_EQ(run({"doctor", "--pid", process.number(), "Sales"}).substr(0, 2), "3\n");
}

TEST_F(DoctorElsewhere, AServiceIsExaminedWithItsRights) {
    if (!isRoot())
        GTEST_SKIP() << "only root can start a process of another user";
    const OtherProcess process(homeVariable(), becomeNobody);
    const std::string user = ::getpwuid(kNobody)->pw_name;
    EXPECT_EQ(run({"doctor", "--pid", process.number(), "Sales", "-q"}).find("error"), std::string::npos);
    ::chmod(home_.file("libdriver.so").c_str(), 0700);
    const std::string told = run({"doctor", "--pid", process.number(), "Sales"});
    EXPECT_NE(
        told.find("error library.unreadable driver Small\n  ~/libdriver.so (-rwx------ root:root) cannot be read by "
                  "user " +
                  user +
                  " (65534): Permission denied.\n"
                  "  Let everybody who uses the library read it: chmod a+r ~/libdriver.so\n"),
        std::string::npos)
        << told;
    ::chmod(home_.file(".odbc.ini").c_str(), 0600);
    const std::string closed = run({"doctor", "--pid", process.number(), "Sales"});
    EXPECT_TRUE(closed.starts_with("7\n")) << closed;
    EXPECT_NE(closed.find("error files.unreadable ~/.odbc.ini\n"), std::string::npos) << closed;
    // Made with sudo, in a home directory of the user's own.
    ASSERT_EQ(::chown(home_.path().c_str(), kNobody, kNobody), 0);
    const std::string made = run({"doctor", "--pid", process.number(), "Sales"});
    EXPECT_NE(made.find("\n  Make it yours: sudo chown 65534 ~/.odbc.ini\n"), std::string::npos) << made;
}

TEST_F(DoctorElsewhere, AUserIsExaminedWithTheEnvironmentOfALogin) {
    if (!isRoot())
        GTEST_SKIP() << "only root can become another user";
    ::setenv("ODBCINI", home_.file(".odbc.ini").c_str(), 1);
    const ProgramResult result =
        jx::test::runProgram(copy_.file("bin/odbcadmin"), {"doctor", "--as-user", "nobody", "--json"});
    ::unsetenv("ODBCINI");
    const Json answer = Json::parse(result.out);
    EXPECT_EQ(answer["as"], "user nobody (65534)");
    const std::string home = ::getpwuid(kNobody)->pw_dir;
    EXPECT_EQ(answer["findings"][0]["subject"], home + "/.odbc.ini");
    EXPECT_EQ(result.out.find(home_.path()), std::string::npos) << result.out;
    EXPECT_NE(run({"doctor", "--as-user", "nobody", "--report"})
                  .find("\nuser nobody (65534)\nHOME=" + home + "\nODBCINI is not set\n"),
              std::string::npos);
}

TEST_F(DoctorElsewhere, WithoutTheRightsOfRootTheCommandIsGiven) {
    EXPECT_EQ(run({"doctor", "--as-user", "root", "--timeout", "5", "My Sales"}, As::nobody),
              "1\n--\nodbcadmin: Only root can look with the rights of user root (0)\n"
              "  Run: sudo odbcadmin doctor --as-user root --timeout 5 'My Sales'\n");
    if (!isRoot())
        GTEST_SKIP() << "no process of another user is known";
    const std::string number = std::to_string(::getpid());
    EXPECT_EQ(run({"doctor", "--pid", number, "Sales"}, As::nobody),
              "7\n--\nodbcadmin: /proc/" + number +
                  "/environ cannot be read: Permission denied\n  Run: sudo odbcadmin doctor --pid " + number +
                  " Sales\n");
}

TEST_F(DoctorElsewhere, AProcessWithARootDirectoryOfItsOwnIsNotExaminedOutsideOfIt) {
    if (!isRoot())
        GTEST_SKIP() << "only root can change the root directory";
    const std::string home = home_.path();
    // A process that runs nothing: no program is found there.
    int started[2];
    ASSERT_EQ(::pipe2(started, O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const bool isDone = ::chroot(home.c_str()) == 0 && ::write(started[1], "x", 1) == 1;
        ::pause();
        ::_exit(isDone ? 0 : 1);
    }
    char byte = 0;
    EXPECT_EQ(::read(started[0], &byte, 1), 1);
    const std::string told = run({"doctor", "--pid", std::to_string(child)});
    EXPECT_NE(told.find(" cannot run "), std::string::npos) << told;
    EXPECT_NE(told.find("\n  It sees other files than this program: install odbcadmin there, and run it there.\n"),
              std::string::npos)
        << told;
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(started[0]);
    ::close(started[1]);
}

TEST_F(DoctorElsewhere, AProcessWithMountsOfItsOwnIsExaminedInThem) {
    if (!isRoot())
        GTEST_SKIP() << "only root can make them";
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(::unshare(CLONE_NEWNS) == 0 ? 0 : 1);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0)
        GTEST_SKIP() << "this system forbids mounts";
    const OtherProcess process(homeVariable(), [] { return ::unshare(CLONE_NEWNS) == 0; });
    const std::string told = run({"doctor", "--pid", process.number(), "Sales"});
    EXPECT_TRUE(told.starts_with("0\nExamined as process ")) << told;
}

TEST_F(DoctorElsewhere, WhoIsNotThereIsTold) {
    const struct {
        std::vector<std::string> words;
        const char *code, *fact;
    } rows[] = {
        {{"--as-user", "nobody-at-all"}, "3\n", "There is no user nobody-at-all\n"},
        {{"--pid", "999999999"}, "3\n", "There is no process 999999999\n"},
        {{"--pid", "self"}, "", "--pid is not the number of a process: self\n"},
        {{"--pid", "-1"}, "", "--pid is not the number of a process: -1\n"},
        {{"--pid", "1", "--as-user", "root"}, "2\n", ""},
        {{"--home", "/", "--as-user", "root"},
         "2\n",
         "--home, --as-user and --pid each say whose files are looked at\n"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> words{"doctor"};
        words.insert(words.end(), row.words.begin(), row.words.end());
        const std::string told = run(words);
        EXPECT_TRUE(told.starts_with(row.code)) << told;
        EXPECT_NE(told.find(row.fact), std::string::npos) << told;
    }
}

}  // namespace
}  // namespace jx::doctor::test
