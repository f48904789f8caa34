// SQLInstallDriver with a keyword list.
#include <gtest/gtest.h>
#include <jxerrors.h>
#include <odbcinst.h>

#include <string>
#include <vector>

#include "guarded_buffer.h"
#include "message_box_script.h"
#include "page_edge.h"
#include "test_home.h"

namespace {

using namespace jx::test;
using namespace std::string_literals;

// The results of one call.
struct Answer {
    BOOL result;
    std::string path;
    unsigned length;

    friend bool operator==(const Answer&, const Answer&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Answer& answer) {
        return out << "{" << answer.result << ", \"" << answer.path << "\", " << answer.length << "}";
    }
};

// Installs from a list that ends where readable memory ends. The path of an unchanged buffer is "untouched".
Answer install(const std::string& list, WORD size = 64) {
    PageEdge edge(list);
    GuardedBuffer path(size);
    WORD length = 999;
    const BOOL result = SQLInstallDriver(nullptr, edge.data(), path.data(), size, &length);
    EXPECT_TRUE(path.isGuarded());
    EXPECT_EQ(std::string(edge.data(), list.size()), list) << "the caller's list was changed";
    return {result, path.isUntouched() ? "untouched" : path.text(), length};
}

const Answer kRefused{FALSE, "untouched", 999};
const Answer kLost{FALSE, "", 0};

TEST(InstallDriver, WritesBothLibrariesInTheTargetDirectoryAndReturnsIt) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/usr/lib/libdrv.so\0Setup=/usr/lib/libdrvs.so\0\0"s),
              (Answer{TRUE, "/usr/lib", 8}));
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/usr/lib/libdrv.so\nSetup=/usr/lib/libdrvs.so\n");
    EXPECT_EQ(home.names(), std::vector<std::string>{".odbcinst.ini"}) << "and no other file";
}

TEST(InstallDriver, BuildsTheEntriesFromTheCutDirectory) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/usr/lib/libdrv.so\0Setup=/usr/lib/libdrvs.so\0\0"s, 5), (Answer{TRUE, "/usr", 4}));
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/usr/libdrv.so\nSetup=/usr/libdrvs.so\n");
}

TEST(InstallDriver, BuildsTheEntriesFromAnEmptyDirectoryWhenTheBufferHoldsNoMore) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/usr/lib/libdrv.so\0\0"s, 1), (Answer{TRUE, "", 0}));
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/libdrv.so\nSetup=/libdrv.so\n");
}

TEST(InstallDriver, PutsTheSetupLibraryIntoTheDriversDirectory) {
    const TestHome home;
    install("Name\0Driver=/usr/lib/libdrv.so\0Setup=/opt/setup/libdrvs.so\0\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/usr/lib/libdrv.so\nSetup=/usr/lib/libdrvs.so\n");
}

TEST(InstallDriver, LeavesSetupEqualToDriverWithoutASetupPair) {
    for (const std::string& list : {"Name\0Driver=/l/d.so\0\0"s, "Name\0Driver=/l/d.so\0Setup\0\0"s}) {
        SCOPED_TRACE(list);
        const TestHome home;
        EXPECT_EQ(install(list).result, TRUE);
        EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/l/d.so\nSetup=/l/d.so\n");
    }
}

TEST(InstallDriver, TakesASetupPairInOtherLettersForAFurtherKeyThatTheStoreWritesOverTheEntry) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/l/d.so\0SETUP=/other/s.so\0\0"s).result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/l/d.so\nSetup=/other/s.so\n");
}

TEST(InstallDriver, IgnoresASetupPairThatIsNotTheThirdText) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/l/d.so\0APILevel=1\0Setup=/l/s.so\0\0"s).result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/l/d.so\nSetup=/l/d.so\nAPILevel=1\n");
}

TEST(InstallDriver, IgnoresASetupPairWhoseFileNameIsTooLong) {
    const std::string base(132, 'b');
    for (const std::string& file : {base + ".so", "libdrvs.soap"s}) {
        SCOPED_TRACE(file);
        const TestHome home;
        EXPECT_EQ(install("Name\0Driver=/l/d.so\0Setup=/l/"s + file + "\0SQLLevel=0\0\0"s), (Answer{TRUE, "/l", 2}));
        EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/l/d.so\nSetup=/l/d.so\nSQLLevel=0\n");
    }
}

TEST(InstallDriver, WritesNothingWhenTheDriversFileNameIsTooLong) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/l/"s + std::string(132, 'b') + ".so\0\0"s), kRefused);
    EXPECT_EQ(install("Name\0Driver=/l/libdrv.soap\0\0"s), kRefused);
    EXPECT_EQ(install("Name\0Driver=/l/"s + std::string(131, 'b') + ".soa\0\0"s).result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[Name]\nDriver=/l/" + std::string(131, 'b') + ".soa\nSetup=/l/" + std::string(131, 'b') + ".soa\n");
}

TEST(InstallDriver, KeepsTheDotOfAFileWithoutAnExtension) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/l/libdrv\0\0"s), (Answer{TRUE, "/l", 2}));
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/l/libdrv.\nSetup=/l/libdrv.\n");
}

TEST(InstallDriver, BuildsOddPathsFromOddDirectories) {
    struct Row {
        const char* file;
        const char* value;
    };
    constexpr Row rows[] = {{"libdrv.so", "/libdrv.so"}, {"/libdrv.so", "//libdrv.so"}, {"", "/."}, {"/l/", "/l/."}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.file);
        const TestHome home;
        EXPECT_EQ(install("Name\0Driver="s + row.file + "\0\0"s).result, TRUE);
        EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver="s + row.value + "\nSetup=" + row.value + "\n");
    }
}

TEST(InstallDriver, WritesEveryFurtherKeyInTheListsOrder) {
    const TestHome home;
    EXPECT_EQ(
        install("Name\0Driver=/l/d.so\0Setup=/l/s.so\0SQLLevel=1\0APILevel=2\0Color=blue\0no pair\0FileExtns=*.a,*.b\0"
                "Empty=\0Twice=1=2\0\0"s)
            .result,
        TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[Name]\nDriver=/l/d.so\nSetup=/l/s.so\nSQLLevel=1\nAPILevel=2\nColor=blue\nFileExtns=*.a,*.b\nEmpty=\n"
              "Twice=1=2\n");
    EXPECT_EQ(home.text(".odbc.ini"), "(absent)");
}

TEST(InstallDriver, CreatesTheDataSourcesOfCreateDSN) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/l/d.so\0CreateDSN=Sales, Accounts\0APILevel=1\0\0"s).result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/l/d.so\nSetup=/l/d.so\nAPILevel=1\n");
    EXPECT_EQ(
        home.text(".odbc.ini"),
        "[ODBC Data Sources]\nSales=Name\nAccounts=Name\n\n[Sales]\nDriver=/l/d.so\n\n[Accounts]\nDriver=/l/d.so\n");
}

TEST(InstallDriver, DoesNotEnterTheDriverInTheListOfDrivers) {
    const TestHome home({{".odbcinst.ini", "[ODBC Drivers]\nOther=Installed\n"}});
    install("Name\0Driver=/l/d.so\0\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[ODBC Drivers]\nOther=Installed\n\n[Name]\nDriver=/l/d.so\nSetup=/l/d.so\n");
}

TEST(InstallDriver, MergesWithAnOlderSectionAndKeepsEverythingElse) {
    const TestHome home(
        {{".odbcinst.ini", "; mine\r\n[Name]\r\nDriver = /old/d.so\r\nNote=keep\r\n\r\n[Other]\r\nx=1\r\n"}});
    install("Name\0Driver=/l/d.so\0Setup=/l/s.so\0Note=new\0\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "; mine\r\n[Name]\r\nDriver = /l/d.so\r\nNote=new\r\nSetup=/l/s.so\r\n\r\n[Other]\r\nx=1\r\n");
}

TEST(InstallDriver, CutsADescriptionAtItsEqualsSignForTheFurtherKeysOnly) {
    const TestHome home;
    EXPECT_EQ(install("My=Driver\0Driver=/l/d.so\0Setup=/l/s.so\0APILevel=1\0\0"s).result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"),
              "[My=Driver]\nDriver=/l/d.so\nSetup=/l/s.so\n\n[My]\nMy=Driver\nAPILevel=1\n");
}

TEST(InstallDriver, CreatesTheDataSourceOfADescriptionThatReadsAsCreateDSN) {
    const TestHome home;
    EXPECT_EQ(install("CreateDSN=Sales\0Driver=/l/d.so\0A=1\0\0"s).result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[CreateDSN=Sales]\nDriver=/l/d.so\nSetup=/l/d.so\n\n[CreateDSN]\nA=1\n");
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nSales=CreateDSN\n\n[Sales]\nDriver=NOT AVAILABLE\n");
}

TEST(InstallDriver, PassesOverFurtherDriverAndSetupPairs) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/l/d.so\0Setup=/l/s.so\0Driver=/x.so\0Setup=/y.so\0\0"s).result, TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/l/d.so\nSetup=/l/s.so\n");
}

TEST(InstallDriver, RecordsNoErrorWhateverWentWrong) {
    const TestHome home;
    const MessageBoxScript boxes;
    JxErrorKeeper::clear();
    char path[64];
    for (const std::string& list : {"Name\0Setup=/l/s.so\0\0"s, "Name\0Driver\0\0"s, "Name\0Driver2=/l/d.so\0\0"s,
                                    "Name\0Driver=/l/d.soap\0\0"s, "Name\0Driver=/l/d.so\0[bad=1\0\0"s})
        SQLInstallDriver(nullptr, list.c_str(), path, sizeof path, nullptr);
    SQLInstallDriver(nullptr, nullptr, path, sizeof path, nullptr);
    SQLInstallDriver(home.file("absent.inf").c_str(), "D", path, sizeof path, nullptr);
    EXPECT_EQ(JxErrorKeeper::count(), 0U);
}

TEST(InstallDriver, RefusesMissingArgumentsAndTouchesNothing) {
    const TestHome home;
    GuardedBuffer path(64);
    WORD length = 999;
    const char list[] = "Name\0Driver=/l/d.so\0";
    EXPECT_EQ(SQLInstallDriver(nullptr, nullptr, path.data(), 64, &length), FALSE);
    EXPECT_EQ(SQLInstallDriver(nullptr, list, nullptr, 64, &length), FALSE);
    EXPECT_EQ(SQLInstallDriver(nullptr, list, path.data(), 0, &length), FALSE);
    EXPECT_TRUE(path.isUntouched());
    EXPECT_EQ(length, 999);
    EXPECT_TRUE(home.names().empty());
}

TEST(InstallDriver, SkipsANullLengthOnEveryWay) {
    const TestHome home;
    char path[64];
    EXPECT_EQ(SQLInstallDriver(nullptr, "Name\0DriverODBCVer=/l/d.so\0", path, 64, nullptr), FALSE);
    EXPECT_STREQ(path, "");
    EXPECT_EQ(SQLInstallDriver(nullptr, "Name\0Driver=/l/d.so\0", path, 64, nullptr), TRUE);
    EXPECT_STREQ(path, "/l");
}

TEST(InstallDriver, ReportsWhatIsWrongWithTheSecondTextAndChangesNothing) {
    const TestHome home;
    for (const std::string& list :
         {"Name\0Setup=/l/s.so\0Driver=/l/d.so\0\0"s, "Name\0\0"s, "\0"s, "Name\0Driver\0\0"s}) {
        SCOPED_TRACE(list);
        const MessageBoxScript script;
        EXPECT_EQ(install(list), kRefused);
        ASSERT_EQ(script.boxes().size(), 1U);
        EXPECT_EQ(script.boxes()[0].owner, 0U);
        EXPECT_EQ(script.boxes()[0].title, "KALDERO ODBC Admin");
    }
    EXPECT_TRUE(home.names().empty());
}

TEST(InstallDriver, LosesThePathWhenTheSecondTextOnlyBeginsWithDriver) {
    const TestHome home;
    EXPECT_EQ(install("Name\0DriverODBCVer=/l/02.50\0Driver=/l/d.so\0\0"s), kLost);
    EXPECT_EQ(install("Name\0Driver2=/l/d.so\0\0"s), kLost);
    EXPECT_EQ(install("Name\0Driver =/l/d.so\0\0"s), kLost);
    EXPECT_TRUE(home.names().empty());
}

TEST(InstallDriver, TakesListsOf1024BytesAndNoMore) {
    const std::string head = "Name\0Driver=/l/d.so\0Note="s;
    for (const std::size_t size : {1023U, 1024U, 1025U, 32767U, 32768U, 65535U, 70000U}) {
        SCOPED_TRACE(size);
        const TestHome home;
        const std::string note(size - head.size() - 2, 'n');
        const bool fits = size <= 1024;
        EXPECT_EQ(install(head + note + "\0\0"s), fits ? (Answer{TRUE, "/l", 2}) : kRefused);
        EXPECT_EQ(home.text(".odbcinst.ini"),
                  fits ? "[Name]\nDriver=/l/d.so\nSetup=/l/d.so\nNote=" + note + "\n" : "(absent)");
    }
}

TEST(InstallDriver, RefusesAListWithoutItsFinalEmptyTextWithin1024Bytes) {
    const TestHome home;
    std::string list = "Name\0Driver=/l/d.so\0"s;
    while (list.size() < 1024)
        list += "Key=value\0"s;
    EXPECT_EQ(install(list.substr(0, 1024)), kRefused);
    EXPECT_EQ(install(std::string(1024, 'x')), kRefused);
    EXPECT_TRUE(home.names().empty());
}

TEST(InstallDriver, KeepsGoingWhenTheStoreRefusesAKey) {
    const TestHome home;
    EXPECT_EQ(install("Name\0Driver=/l/d.so\0[bad=1\0=nameless\0;bad=2\0APILevel=two\nlines\0SQLLevel=1\0\0"s).result,
              TRUE);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[Name]\nDriver=/l/d.so\nSetup=/l/d.so\nSQLLevel=1\n");
}

TEST(InstallDriver, ReportsSuccessEvenWhenTheFileCannotBeWritten) {
    const TestHome home;
    setenv("ODBCINSTINI", (home.path() + "/no/such/directory/odbcinst.ini").c_str(), 1);
    EXPECT_EQ(install("Name\0Driver=/l/d.so\0\0"s), (Answer{TRUE, "/l", 2}));
    unsetenv("ODBCINSTINI");
    EXPECT_TRUE(home.names().empty());
}

}  // namespace
