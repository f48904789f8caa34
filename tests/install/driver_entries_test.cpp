// The entries of a driver's section, each step of writing them on its own.
#include <gtest/gtest.h>

#include <string>

#include "config/text_bytes.h"
#include "install/driver_entries.h"
#include "record_text.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using jx::asBytes;
using namespace jx::test;
using namespace std::string_literals;

const std::string kList = "D\0Driver=/l/d=1.so\0Setup=/l/s.so\0A=1\0no pair\0B=2=3\0"s;

// Writes one library entry in directory /t; key is cut.
int writeEntry(WritableText& list, WritableText& key, const unsigned char* script = nullptr, const char* path = "/t") {
    return WriteTheDriverAndSetupEntryToTheOdbcInstIni(script, list.bytes(), asBytes(path), key.bytes());
}

TEST(DriverEntry, IsWrittenUnderBothKeysAndLeavesTheListWhole) {
    const TestHome home;
    WritableText list(kList);
    WritableText key("\"Driver\"");
    EXPECT_EQ(writeEntry(list, key), 1);
    EXPECT_EQ(list.all(), kList);
    EXPECT_EQ(key.all(), "\"Driver\0"s) << "the closing quote is cut off in place";
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nDriver=/t/d=1.so\nSetup=/t/d=1.so\n");
}

TEST(SetupEntry, IsWrittenAloneAndLeavesTheListWhole) {
    const TestHome home;
    WritableText list(kList);
    WritableText key("\"Setup\"");
    EXPECT_EQ(writeEntry(list, key), 1);
    EXPECT_EQ(list.all(), kList);
    EXPECT_EQ(key.all(), "\"Setup\0"s);
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nSetup=/t/s.so\n");
}

TEST(LibraryEntries, WithoutAUsablePairFailForTheDriverAndSucceedForTheSetupLibrary) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=1,d.so\n\"Setup\"=1,s.soap,\n"}});
    const std::string script = home.file("odbc.inf");
    for (const std::string& text : {"D\0X=/l/d.so\0Y=/l/s.so\0"s, "D\0Driver\0Setup\0"s, "D\0"s, "\0"s,
                                    "D\0Driver=/l/d.soap\0Setup=/l/s.soap\0"s}) {
        SCOPED_TRACE(text);
        for (const unsigned char* source : {static_cast<const unsigned char*>(nullptr), asBytes(script.c_str())}) {
            WritableText list(text);
            WritableText driverKey("\"Driver\"");
            WritableText setupKey("\"Setup\"");
            EXPECT_EQ(writeEntry(list, driverKey, source), 0);
            EXPECT_EQ(writeEntry(list, setupKey, source), 1);
            EXPECT_EQ(list.all(), text);
            EXPECT_EQ(setupKey.all(), "\"Setup\"");
        }
    }
    EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
}

TEST(LibraryEntries, AreNotWrittenInADirectoryThatIsTooLong) {
    const TestHome home;
    WritableText list(kList);
    WritableText key("\"Driver\"");
    EXPECT_EQ(writeEntry(list, key, nullptr, ("/" + std::string(70000, 'p')).c_str()), 0);
    EXPECT_EQ(home.text(".odbcinst.ini"), "(absent)");
}

TEST(DriverSection, OfAListAreAllButTheLibrariesAndStayCut) {
    const TestHome home;
    WritableText list(kList);
    WriteDriverKeysToOdbcInstIni(nullptr, list.bytes());
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nA=1\nB=2=3\n");
    EXPECT_EQ(list.all(), "D\0Driver\0/l/d=1.so\0Setup\0/l/s.so\0A\0001\0no pair\0B\0002=3\0"s);
}

TEST(DriverSection, OfAScriptGoIntoTheDriversSectionInTheOrderOfTheTable) {
    const TestHome home({{"odbc.inf", "[D-Keys]\nSQLLevel=1\nFileUsage=\nCreateDSN=a\nAPILevel=2\nX=y\n"}});
    WritableText name("D");
    WriteDriverKeysToOdbcInstIni(asBytes(home.file("odbc.inf").c_str()), name.bytes());
    EXPECT_EQ(home.text(".odbcinst.ini"), "[D]\nAPILevel=2\nCreateDSN=a\nFileUsage=\nSQLLevel=1\n");
    EXPECT_EQ(home.text(".odbc.ini"), "(absent)");
}

}  // namespace
