// SQLGetInstalledDrivers.
#include <gtest/gtest.h>

#include "guarded_buffer.h"
#include "installer_home.h"

using namespace jx::test;
using namespace std::string_literals;

namespace {

TEST(DriverList, IsTheKeysOfTheListAndEverySectionWithADriverLessTheReservedOnes) {
    const InstallerHome home{
        {kUserDrivers, "[ODBC Drivers]\nMine=Installed\n[Own]\nDriver=o.so\n[Default]\nDriver=PG\n"},
        {kSystemDrivers,
         "[ODBC Drivers]\nPG=Installed\nMINE=Installed\n[pg]\nDriver=pg.so\n[SQLite3]\nDescription=x\nDriver=sq.so\n"
         "[ODBC]\nDriver=no.so\n[ODBC Core]\nDriver=no.so\n[Setting]\nk=v\n[T]\nTranslator=t.so\n"}};
    GuardedBuffer buffer(64);
    WORD length = 0;
    EXPECT_EQ(SQLGetInstalledDrivers(buffer.data(), 64, &length), TRUE) << record(1);
    EXPECT_EQ(buffer.all().substr(0, 22), "Mine\0PG\0Own\0SQLite3\0\0?"s);
    EXPECT_EQ(length, 20);
}

TEST(DriverList, ATemplateOfADriversPackageIsEnough) {
    const InstallerHome home{{kSystemDrivers,
                              "[PostgreSQL ANSI]\nDescription\t\t= A driver\nDriver\t\t= psqlodbca.so\n"
                              "Setup\t\t= libodbcpsqlS.so\nDebug\t\t= 0\nThreading\t= \n"}};
    EXPECT_EQ(value("postgresql ansi", "Driver", "odbcinst.ini"), "psqlodbca.so");
    EXPECT_EQ(value("PostgreSQL ANSI", "Threading", "odbcinst.ini"), "");
    char room[64];
    EXPECT_EQ(SQLGetInstalledDrivers(room, sizeof room, nullptr), TRUE);
    EXPECT_STREQ(room, "PostgreSQL ANSI");
}

TEST(DriverList, TheLengthIsThatOfTheWholeListAlsoWhenItIsCut) {
    const InstallerHome home{{kSystemDrivers, "[ODBC Drivers]\nAlpha=Installed\nB\xC3\xA9=Installed\n"}};
    for (const WORD size :
         {WORD{1}, WORD{2}, WORD{5}, WORD{9}, WORD{10}, WORD{11}, WORD{32767}, WORD{32768}, WORD{65535}}) {
        SCOPED_TRACE(size);
        GuardedBuffer buffer(size);
        WORD length = 0;
        EXPECT_EQ(SQLGetInstalledDrivers(buffer.data(), size, &length), TRUE);
        EXPECT_EQ(length, 10);
        EXPECT_TRUE(buffer.isGuarded());
        if (size >= 2) {
            EXPECT_NE(buffer.all().find("\0\0"s), std::string::npos);
        }
    }
    SQLWCHAR room[16];
    WORD length = 0;
    EXPECT_EQ(SQLGetInstalledDriversW(room, 16, &length), TRUE);
    EXPECT_EQ(length, 9);
    EXPECT_EQ(fromWide(room, 10), u"Alpha\0B\u00E9\0\0"s);
}

TEST(DriverList, ALengthThatDoesNotFitAWordIsToldAs65535) {
    std::string list = "[ODBC Drivers]\n";
    for (int i = 10'000; i < 20'000; ++i)
        list += "driver" + std::to_string(i) + "=Installed\n";
    const InstallerHome home{{kSystemDrivers, list}};
    std::vector<char> room(65'535);
    WORD length = 0;
    EXPECT_EQ(SQLGetInstalledDrivers(room.data(), 65'535, &length), TRUE);
    EXPECT_EQ(length, 65'535);
}

TEST(DriverList, AnEmptyListIsNotFoundAndNoBufferIsRefused) {
    const InstallerHome home;
    char room[8];
    EXPECT_EQ(SQLGetInstalledDrivers(room, 8, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_COMPONENT_NOT_FOUND});
    EXPECT_EQ(SQLGetInstalledDrivers(nullptr, 8, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_BUFF_LEN});
    EXPECT_EQ(SQLGetInstalledDrivers(room, 0, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_BUFF_LEN});
}

}  // namespace
