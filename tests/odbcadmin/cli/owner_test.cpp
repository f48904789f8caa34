// Whose the files are that root makes in the homes of others.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "admin_test.h"
#include "installed_copy.h"

namespace jx::test {
namespace {

constexpr uid_t kDaemon = 1;
constexpr uid_t kBin = 2;

class NewFiles : public AdminTest {
protected:
    NewFiles() { std::filesystem::create_directory(service_); }

    static bool isRoot() { return ::geteuid() == 0; }

    uid_t ownerOf(const std::string& name) const {
        struct stat state {};
        EXPECT_EQ(::lstat((service_ + "/" + name).c_str(), &state), 0) << name;
        EXPECT_EQ(state.st_mode & 0777U, 0600U);
        return state.st_uid;
    }

    const std::string service_ = home_.file("service");
};

TEST_F(NewFiles, AreTheirDirectorysOwnersUnlessOneIsNamed) {
    if (!isRoot())
        GTEST_SKIP() << "only root can give files away";
    ASSERT_EQ(::chown(service_.c_str(), kDaemon, kDaemon), 0);
    out({"--home", service_, "driver", "add", "D", "--lib", "/opt/d.so", "--no-setup", "-q"});
    EXPECT_EQ(ownerOf(".odbcinst.ini"), kDaemon);
    out({"--home", service_, "--owner", "bin", "dsn", "add", "S", "--driver", "D", "-q"});
    EXPECT_EQ(ownerOf(".odbc.ini"), kBin);
    out({"--home", service_, "--owner", "daemon", "dsn", "set", "S", "a=b", "-q"});
    EXPECT_EQ(ownerOf(".odbc.ini"), kBin);
}

TEST_F(NewFiles, AreAlsoGivenAwayWhenASetupLibraryMadeThem) {
    if (!isRoot())
        GTEST_SKIP() << "only root can give files away";
    const InstalledCopy copy;
    out({"--home", service_, "driver", "add", "D", "--lib", "/opt/d.so", "--setup", copy.file("lib/libjxsetup.so"),
         "-q"});
    for (const char* name : {"", "/.odbcinst.ini"})
        ASSERT_EQ(::chown((service_ + name).c_str(), kDaemon, kDaemon), 0);
    ::chmod(home_.path().c_str(), 0755);
    const ProgramResult result = run({"--home", service_, "dsn", "add", "S", "--driver", "D"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "odbcadmin: the setup library had the rights of daemon, not those of root\n");
    EXPECT_EQ(ownerOf(".odbc.ini"), kDaemon);
}

TEST_F(NewFiles, OfAnOwnerThatThereIsNotAreRefused) {
    const ProgramResult result = run({"--owner", "nobody-has-this-name", "dsn", "set", "Sales", "a=b"});
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "odbcadmin: There is no user nobody-has-this-name\n  Give --owner the name of an account.\n");
    EXPECT_EQ(sources(), kSources);
}

}  // namespace
}  // namespace jx::test
