// SQLInstallDriver with an installation script.
#include <gtest/gtest.h>
#include <odbcinst.h>
#include <sys/stat.h>

#include <cstdio>
#include <string>

#include "guarded_buffer.h"
#include "page_edge.h"
#include "test_home.h"

namespace {

using namespace jx::test;
using namespace std::string_literals;

// The results of a call with the script odbc.inf in the test's home.
struct Call {
    BOOL result;
    std::string path;
    unsigned length;
};

Call install(const TestHome& home, const std::string& driver, WORD size = 64) {
    PageEdge name(driver + "\0"s);
    GuardedBuffer path(size);
    WORD length = 999;
    const BOOL result = SQLInstallDriver(home.file("odbc.inf").c_str(), name.data(), path.data(), size, &length);
    EXPECT_TRUE(path.isGuarded());
    return {result, path.isUntouched() ? "untouched" : path.text(), length};
}

void expectLost(const Call& call) {
    EXPECT_EQ(call.result, FALSE);
    EXPECT_EQ(call.path, "");
    EXPECT_EQ(call.length, 0U);
}

constexpr char kScript[] =
    "[My Driver]\n\"Driver\"=1, libdrv.so,,,,1995-03-15\n\"Setup\"=2,  libdrvs.so,more\n"
    "[My Driver-Keys]\nSQLLevel=0\nAPILevel=1\nCreateDSN=Sales, Accounts\nOther=never read\nFileUsage=0\n";

TEST(InstallDriverFromScript, TakesFileNamesAndKeysFromTheScriptAndTheDirectoryFromTheRegisteredDriver) {
    const TestHome home({{"odbc.inf", kScript}, {".odbcinst.ini", "[My Driver]\nDriver=/opt/odbc/libold.so\n"}});
    const Call call = install(home, "My Driver");
    EXPECT_EQ(call.result, TRUE);
    EXPECT_EQ(call.path, "/opt/odbc");
    EXPECT_EQ(call.length, 9U);
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[My Driver]\nDriver=/opt/odbc/libdrv.so\nSetup=/opt/odbc/libdrvs.so\nAPILevel=1\n"
              "CreateDSN=Sales, Accounts\nFileUsage=0\nSQLLevel=0\n");
    EXPECT_EQ(home.text("odbc.inf"), kScript);
}

TEST(InstallDriverFromScript, UsesTheTextNotAvailableAsTheDirectoryOfANewDriver) {
    const TestHome home({{"odbc.inf", "[My Driver]\n\"Driver\"=1,libdrv.so,,\n"}});
    const Call call = install(home, "My Driver");
    EXPECT_EQ(call.result, TRUE);
    EXPECT_EQ(call.path, "NOT AVAILABLE");
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[My Driver]\nDriver=NOT AVAILABLE/libdrv.so\nSetup=NOT AVAILABLE/libdrv.so\n");
}

TEST(InstallDriverFromScript, StoresCreateDSNAsAKeyAndCreatesNoDataSource) {
    const TestHome home({{"odbc.inf", kScript}});
    install(home, "My Driver");
    EXPECT_NE(home.text(".odbcinst.ini").find("\nCreateDSN=Sales, Accounts\n"), std::string::npos);
    EXPECT_EQ(home.text(".odbc.ini"), "(absent)");
}

TEST(InstallDriverFromScript, CreatesADataSourceForAValueThatReadsCreateDSN) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=1,d.so,\n[D-Keys]\nFileUsage=CreateDSN\nSQLLevel=1\n"},
                         {".odbcinst.ini", "[D]\nDriver=/l/o.so\n"}});
    EXPECT_EQ(install(home, "D").result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/l/d.so\nSetup=/l/d.so\nSQLLevel=1\n");
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nCreateDSN=D\n\n[CreateDSN]\nDriver=/l/d.so\n");
}

TEST(InstallDriverFromScript, LosesThePathWhenTheScriptsDriverLineIsUseless) {
    for (const char* script : {
             "",
             "[Other]\n\"Driver\"=1,d.so,\n",
             "[D]\nDriver=1,d.so,\n",
             "[D]\n\"Setup\"=1,d.so,\n",
             "[D]\n\"Driver\"=NOT AVAILABLE\n",
             "[D]\n\"Driver\"=\n",
             "[D]\n\"Driver\"=libdrv.so\n",
             "[D]\n\"Driver\"=1,libdrv.so\n",
             "[D]\n\"Driver\"=,\n",
             "[D]\n\"Driver\"=1,libdrv.soap,\n",
         }) {
        SCOPED_TRACE(script);
        const TestHome home({{"odbc.inf", script}});
        expectLost(install(home, "D"));
        EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
    }
}

TEST(InstallDriverFromScript, PassesOverAUselessSetupLine) {
    for (const char* line :
         {"", "\"Setup\"=s.so\n", "\"Setup\"=1,s.so\n", "\"Setup\"=1,s.soap,\n", "Setup=1,s.so,\n"}) {
        SCOPED_TRACE(line);
        const TestHome home(
            {{"odbc.inf", "[D]\n\"Driver\"=1,d.so,\n"s + line}, {".odbcinst.ini", "[D]\nDriver=/l/o.so\n"}});
        EXPECT_EQ(install(home, "D").result, TRUE);
        EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/l/d.so\nSetup=/l/d.so\n");
    }
}

TEST(InstallDriverFromScript, TakesAnEmptyFileNameAsItStands) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=1,   ,\n"}, {".odbcinst.ini", "[D]\nDriver=/l/o.so\n"}});
    EXPECT_EQ(install(home, "D").result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/l/.\nSetup=/l/.\n");
}

TEST(InstallDriverFromScript, DropsTheDirectoryOfTheScriptsFileName) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=1,disk1/d.so,\n"}, {".odbcinst.ini", "[D]\nDriver=/l/o.so\n"}});
    EXPECT_EQ(install(home, "D").result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/l/d.so\nSetup=/l/d.so\n");
}

TEST(InstallDriverFromScript, WritesNoKeysWithoutAKeysSection) {
    const TestHome home(
        {{"odbc.inf", "[D]\n\"Driver\"=1,d.so,\n[D-Keys]\n"}, {".odbcinst.ini", "[D]\nDriver=/l/o.so\n"}});
    EXPECT_EQ(install(home, "D").result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/l/d.so\nSetup=/l/d.so\n");
}

TEST(InstallDriverFromScript, NeedsOnlyTheDirectoryOfARegisteredLibrary) {
    const struct {
        std::string registered, directory;
    } rows[] = {{"/opt/libold.so.2.3.1234", "/opt"},
                {"/opt/" + std::string(500, 'n') + ".soap", "/opt"},
                {"/opt//libold.soap", "/opt"},
                {"/libold.soap", "/"},
                {"libold.soap", ""},
                {"/opt/odbc/", "/opt/odbc"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.registered);
        const TestHome home(
            {{"odbc.inf", "[D]\n\"Driver\"=1,d.so,\n"}, {".odbcinst.ini", "[D]\nDriver=" + row.registered + "\n"}});
        const Call call = install(home, "D");
        EXPECT_EQ(call.result, TRUE);
        EXPECT_EQ(call.path, row.directory);
        EXPECT_EQ(home.text(".odbcinst.ini"),
                  "[D]\nDriver=" + row.directory + "/d.so\nSetup=" + row.directory + "/d.so\n");
    }
}

TEST(InstallDriverFromScript, PassesOverBlanksBehindAFileName) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=1, d.so  ,\n\"Setup\"=1,s.so      ,\n"},
                         {".odbcinst.ini", "[D]\nDriver=/l/o.so\n"}});
    EXPECT_EQ(install(home, "D").result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/l/d.so\nSetup=/l/s.so\n");
}

TEST(InstallDriverFromScript, TakesADirectoryOrAFifoInThePlaceOfTheDriverFileForAnEmptyOne) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=1,d.so,\n"}});
    for (const bool isFifo : {false, true}) {
        const std::string file = home.file(".odbcinst.ini");
        ASSERT_EQ(isFifo ? mkfifo(file.c_str(), 0600) : mkdir(file.c_str(), 0700), 0);
        const Call call = install(home, "D");
        EXPECT_EQ(call.result, TRUE);
        EXPECT_EQ(call.path, "NOT AVAILABLE");
        ASSERT_EQ(std::remove(file.c_str()), 0);
    }
}

TEST(InstallDriverFromScript, TakesNamesOf1023BytesAndNoMore) {
    for (const std::size_t length : {1022U, 1023U, 1024U, 1025U, 32768U, 70000U}) {
        SCOPED_TRACE(length);
        const std::string name(length, 'n');
        const TestHome home({{"odbc.inf", "[" + name + "]\n\"Driver\"=1,d.so,\n[" + name + "-Keys]\nAPILevel=1\n"}});
        const bool fits = length <= 1023;
        const Call call = install(home, name);
        EXPECT_EQ(call.result, fits ? TRUE : FALSE);
        EXPECT_EQ(call.path, fits ? "NOT AVAILABLE" : "untouched");
        EXPECT_EQ(
            home.text(".odbcinst.ini"),
            fits ? "[" + name + "]\nDriver=NOT AVAILABLE/d.so\nSetup=NOT AVAILABLE/d.so\nAPILevel=1\n" : "(absent)");
    }
}

TEST(InstallDriverFromScript, FindsNothingInAScriptThatIsNoFile) {
    const TestHome home;
    ASSERT_EQ(mkdir(home.file("odbc.inf").c_str(), 0700), 0);
    expectLost(install(home, "D"));
    ASSERT_EQ(rmdir(home.file("odbc.inf").c_str()), 0);
    ASSERT_EQ(mkfifo(home.file("odbc.inf").c_str(), 0600), 0);
    expectLost(install(home, "D"));
    EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
}

TEST(InstallDriverFromScript, SurvivesAScriptOfGarbage) {
    std::string garbage;
    for (int byte = 0; byte < 70000; ++byte)
        garbage.push_back(static_cast<char>((byte * 31 + byte / 7) % 256));
    const TestHome home({{"odbc.inf", garbage + "\n[D]\n\"Driver\"=1,d.so,\n"}});
    EXPECT_EQ(install(home, "D").result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=NOT AVAILABLE/d.so\nSetup=NOT AVAILABLE/d.so\n");
}

}  // namespace
