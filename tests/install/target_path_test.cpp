// The directory that SQLInstallDriver returns.
#include <gtest/gtest.h>
#include <jxtypes.h>

#include <initializer_list>
#include <string>

#include "config/text_bytes.h"
#include "guarded_buffer.h"
#include "install/target_path.h"
#include "message_box_script.h"
#include "page_edge.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using jx::asBytes;
using namespace jx::test;
using namespace std::string_literals;

constexpr char kNoDriver[] = "Driver keyword was not found in the lpszDriver parameter";
constexpr char kNoEquals[] = "Missing '=' after 'Driver' keyword the lpszDriver parameter";

const Boxes& oneBox(const char* text) {
    static Boxes boxes;
    boxes = {{0, text, "KALDERO ODBC Admin", 0}};
    return boxes;
}

TEST(TargetPath, IsTheDirectoryOfTheListsDriverFile) {
    struct Row {
        const char* path;
        const char* directory;
    };
    constexpr Row rows[] = {{"/usr/lib/libdrv.so", "/usr/lib"},
                            {"/libdrv.so", "/"},
                            {"libdrv.so", ""},
                            {"lib/libdrv.so", "lib"},
                            {"/usr/lib/", "/usr/lib"},
                            {"/opt/a.b/libdrv", "/opt/a.b"},
                            {"", ""},
                            {"/a=b/libdrv.so", "/a=b"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        PageEdge list("Name\0Driver="s + row.path + "\0\0"s);
        GuardedBuffer path(64);
        unsigned short length = 999;
        EXPECT_EQ(GetTargetPath(nullptr, list.bytes(), path.bytes(), 64, &length), 0U);
        EXPECT_EQ(path.text(), row.directory);
        EXPECT_EQ(length, path.text().size());
        EXPECT_TRUE(path.isGuarded());
    }
}

TEST(TargetPath, IsCutToTheBufferAndTheLengthIsThatOfTheCutText) {
    struct Row {
        unsigned short size;
        const char* directory;
        unsigned short length;
    };
    constexpr Row rows[] = {{64, "/usr/lib", 8}, {10, "/usr/lib", 8}, {9, "/usr/lib", 8}, {8, "/usr/li", 7},
                            {5, "/usr", 4},      {2, "/", 1},         {1, "", 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.size);
        GuardedBuffer path(row.size);
        unsigned short length = 999;
        EXPECT_EQ(GetTargetPath(nullptr, asBytes("Name\0Driver=/usr/lib/libdrv.so\0"), path.bytes(), row.size, &length),
                  0U);
        EXPECT_EQ(path.text(), row.directory);
        EXPECT_EQ(length, row.length);
        EXPECT_TRUE(path.isGuarded());
    }
}

TEST(TargetPath, NeedsADriverPairAsTheSecondTextAndReportsWhatIsMissing) {
    struct Row {
        std::string list;
        const char* message;
    };
    const Row rows[] = {
        {"Name\0Setup=/l/s.so\0\0"s, kNoDriver},
        {"Name\0driver=/l/d.so\0\0"s, kNoDriver},
        {"Name\0Drive\0\0"s, kNoDriver},
        {"Name\0\0"s, kNoDriver},
        {"\0"s, kNoDriver},
        {"Name\0 Driver=/l/d.so\0\0"s, kNoDriver},
        {"Name\0Driver\0\0"s, kNoEquals},
        {"Name\0DriverODBCVer\0Driver=/l/d.so\0\0"s, kNoEquals},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.list);
        const MessageBoxScript script;
        PageEdge list(row.list);
        GuardedBuffer path(64);
        unsigned short length = 999;
        EXPECT_EQ(GetTargetPath(nullptr, list.bytes(), path.bytes(), 64, &length), 1U);
        EXPECT_EQ(script.boxes(), oneBox(row.message));
        EXPECT_TRUE(path.isUntouched());
        EXPECT_EQ(length, 999);
    }
}

TEST(TargetPath, ComparesOnlySixCharactersSoThatDriverODBCVerPasses) {
    const MessageBoxScript script;
    GuardedBuffer path(64);
    unsigned short length = 0;
    EXPECT_EQ(GetTargetPath(nullptr, asBytes("Name\0DriverODBCVer=/a/02.50\0"), path.bytes(), 64, &length), 0U);
    EXPECT_EQ(path.text(), "/a");
    EXPECT_EQ(script.boxes(), Boxes{});
}

TEST(TargetPath, IsTheRegisteredDriversDirectoryWithAScript) {
    const TestHome home({{".odbcinst.ini", "[My Driver]\nDriver=/opt/odbc/lib/libold.so\n"},
                         {"odbc.inf", "[My Driver]\n\"Driver\"=1,libnew.so,,\nDriver=/not/this/one.so\n"}});
    GuardedBuffer path(64);
    unsigned short length = 0;
    EXPECT_EQ(GetTargetPath(asBytes(home.file("odbc.inf").c_str()), asBytes("My Driver"), path.bytes(), 64, &length),
              0U);
    EXPECT_EQ(path.text(), "/opt/odbc/lib");
    EXPECT_EQ(length, 13);
}

TEST(TargetPath, IsTheTextNotAvailableForADriverThatIsNotRegistered) {
    const TestHome home;
    for (const WORD size : std::initializer_list<WORD>{64, 14, 13, 4}) {
        SCOPED_TRACE(size);
        GuardedBuffer path(size);
        unsigned short length = 0;
        EXPECT_EQ(GetTargetPath(asBytes("absent.inf"), asBytes("My Driver"), path.bytes(), size, &length), 0U);
        EXPECT_EQ(path.text(), "NOT AVAILABLE"s.substr(0, size - 1U));
        EXPECT_EQ(length, path.text().size());
        EXPECT_TRUE(path.isGuarded());
    }
}

TEST(TargetPath, FailsForFileNamesThatAreTooLongButNotForRegisteredOnes) {
    const std::string longBase(132, 'b');
    const TestHome home({{".odbcinst.ini", "[Long]\nDriver=/l/" + longBase + ".so\n[Wide]\nDriver=/l/d.soap\n"}});
    GuardedBuffer path(64);
    unsigned short length = 999;
    PageEdge list("Name\0Driver=/l/"s + longBase + ".so\0\0"s);
    EXPECT_EQ(GetTargetPath(nullptr, list.bytes(), path.bytes(), 64, &length), 1U);
    EXPECT_EQ(GetTargetPath(nullptr, asBytes("Name\0Driver=/l/d.soap\0"), path.bytes(), 64, &length), 1U);
    EXPECT_TRUE(path.isUntouched());
    EXPECT_EQ(length, 999);
    for (const char* driver : {"Long", "Wide"}) {
        EXPECT_EQ(GetTargetPath(asBytes("x.inf"), asBytes(driver), path.bytes(), 64, &length), 0U);
        EXPECT_EQ(path.text(), "/l");
    }
}

TEST(TargetPath, SkipsANullLength) {
    GuardedBuffer path(64);
    EXPECT_EQ(GetTargetPath(nullptr, asBytes("Name\0Driver=/l/d.so\0"), path.bytes(), 64, nullptr), 0U);
    EXPECT_EQ(path.text(), "/l");
}

}  // namespace
