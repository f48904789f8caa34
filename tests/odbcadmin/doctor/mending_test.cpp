// Texts before and after they are mended, and where libraries are looked for that are not at their place.
#include "odbcadmin/doctor/mending.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "test_home.h"

namespace jx::doctor::test {
namespace {

namespace fs = std::filesystem;
using jx::test::TestHome;

class MendingTest : public testing::Test {
protected:
    MendingTest() {
        fs::create_directory(home_.file("a"));
        fs::create_directory(home_.file("b"));
        places_.defaults = {home_.file("a"), home_.file("b")};
    }

    std::string mended(const std::string& text, Holds holds = Holds::other) {
        const MovedLibraries libraries(model::Configuration::read(), places_);
        const Mending mending = mend(text, holds, libraries);
        fixes_.clear();
        for (const Fix& fix : mending.fixes)
            fixes_ += std::to_string(fix.line) + " " + fix.what + "\n";
        EXPECT_EQ(mending.fixes.empty(), mending.text == text);
        EXPECT_TRUE(mend(mending.text, holds, libraries).fixes.empty()) << "a second time";
        return mending.text;
    }

    TestHome home_;
    LoaderPlaces places_;
    std::string fixes_;
};

struct MendingRow {
    const char* before;
    const char* after;
    const char* fixes;
};

TEST_F(MendingTest, MendsWhatHasOneWayAndNothingElse) {
    const MendingRow rows[] = {
        {"", "", ""},
        {"[A]\nDriver=libx.so\n; \"c\" \n\n x\n", "[A]\nDriver=libx.so\n; \"c\" \n\n x\n", ""},
        {"\xEF\xBB\xBF[A]\nx=1", "[A]\nx=1", "1 the byte order mark\n"},
        {"\xEF\xBB\xBF", "", "1 the byte order mark\n"},
        {"\xFF\xFE[A]\r\n", "\xFF\xFE[A]\r\n", ""},
        {"\xFE\xFF[A]\r\n", "\xFE\xFF[A]\r\n", ""},
        {"[A]\r\nx= 1 \r\n\r\ny=2\n", "[A]\nx= 1 \n\ny=2\n", "0 the carriage returns at the ends of 3 lines\n"},
        {"[A]\r\r\nx=1\r", "[A]\nx=1", "0 the carriage returns at the ends of 2 lines\n"},
        {"[A]\nx=1\ry\n", "[A]\nx=1\ry\n", ""},
        {"[A]\n driver = \"/no/x.so\" \n", "[A]\n driver = /no/x.so \n", "2 the quotes around the value of driver\n"},
        {"[A]\nDriver={/no/x.so}\n", "[A]\nDriver=/no/x.so\n", "2 the braces around the value of Driver\n"},
        {"[A]\nSetup='libs.so'\nTranslator=\" t.so\"\n", "[A]\nSetup=libs.so\nTranslator=t.so\n",
         "2 the quotes around the value of Setup\n3 the quotes around the value of Translator\n"},
        {"[A]\nDriver=\"/no/x.so'\nDriver=\"\nDriver=\"\"\n", "[A]\nDriver=\"/no/x.so'\nDriver=\"\nDriver=\"\"\n", ""},
        {"[A]\nServer=\"db\"\nPWD='x'\nDriver\n", "[A]\nServer=\"db\"\nPWD='x'\nDriver\n", ""},
        {"[ODBC Drivers]\nDriver=\"Installed\"\n", "[ODBC Drivers]\nDriver=\"Installed\"\n", ""},
        {"[A]\nDriver=~/x.so ; mine\n", "[A]\nDriver=~/x.so ; mine\n", ""},
        {"[open\nDriver=\"/no/x.so\"\n", "[open\nDriver=/no/x.so\n", "2 the quotes around the value of Driver\n"},
    };
    for (const MendingRow& row : rows) {
        SCOPED_TRACE(row.before);
        EXPECT_EQ(mended(row.before), row.after);
        EXPECT_EQ(fixes_, row.fixes);
    }
}

TEST_F(MendingTest, FindsALibraryThatLiesElsewhereNow) {
    home_.put("a/libx.so", "");
    EXPECT_EQ(mended("[A]\nDriver=/no/such/libx.so\n"), "[A]\nDriver=" + home_.file("a/libx.so") + "\n");
    EXPECT_EQ(fixes_, "2 the path of Driver, which is " + home_.file("a/libx.so") + " now\n");
    EXPECT_EQ(mended("[A]\nSetup=\"/no/such/libx.so\"\n"), "[A]\nSetup=" + home_.file("a/libx.so") + "\n");
    for (const std::string path : {"/no/such/liby.so", "libx.so", "no/libx.so", "/no/such/", "/"})
        EXPECT_EQ(mended("[A]\nDriver=" + path + "\n"), "[A]\nDriver=" + path + "\n");
}

TEST_F(MendingTest, AsksNothingWhenSeveralAreMeantAndTakesOneOfSeveralNames) {
    const std::string text = "[A]\nDriver=/no/such/libx.so\n";
    home_.put("a/libx.so", "one");
    fs::create_symlink(home_.file("a/libx.so"), home_.file("b/libx.so"));
    EXPECT_EQ(mended(text), "[A]\nDriver=" + home_.file("a/libx.so") + "\n");
    unlink(home_.file("b/libx.so").c_str());
    home_.put("b/libx.so", "two");
    EXPECT_EQ(mended(text), text);
    unlink(home_.file("b/libx.so").c_str());
    unlink(home_.file("a/libx.so").c_str());
    fs::create_directory(home_.file("a/libx.so"));
    EXPECT_EQ(mended(text), text);
}

TEST_F(MendingTest, LeavesAPathThatLeadsSomewhere) {
    home_.put("a/libx.so", "");
    home_.put("libx.so", "text");
    const std::string text = "[A]\nDriver=" + home_.file("libx.so") + "\n";
    EXPECT_EQ(mended(text), text);
}

TEST_F(MendingTest, ADataSourceFollowsItsDriver) {
    home_.put("new.so", "");
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nD=Installed\nE=Installed\n[D]\nDriver=" + home_.file("new.so") +
                                   "\n[E]\nDriver=/gone.so\n");
    home_.put(".odbc.ini", "[ODBC Data Sources]\nA=D\nB=E\n");
    const std::string before = "[a]\nDriver=/old.so\n[B]\nDriver=/old.so\n[C]\nDriver=/old.so\n";
    EXPECT_EQ(mended(before, Holds::dataSources),
              "[a]\nDriver=" + home_.file("new.so") + "\n[B]\nDriver=/old.so\n[C]\nDriver=/old.so\n");
    EXPECT_EQ(mended(before, Holds::other), before);
    EXPECT_EQ(mended("[a]\nSetup=/old.so\n", Holds::dataSources), "[a]\nSetup=/old.so\n");
}

TEST_F(MendingTest, OnlyAPathThatLeadsToNothingIsReplaced) {
    home_.put("a/libx.so", "");
    home_.put("file", "");
    fs::create_symlink("libx.so", home_.file("libx.so"));
    const struct {
        const char* path;
        bool isMended;
    } rows[] = {{"file/libx.so", true}, {"none/libx.so", true}, {"libx.so", false}, {"a/libx.so", false}};
    for (const auto& row : rows) {
        const std::string text = "[A]\nDriver=" + home_.file(row.path) + "\n";
        EXPECT_EQ(mended(text), row.isMended ? "[A]\nDriver=" + home_.file("a/libx.so") + "\n" : text) << row.path;
    }
}

TEST_F(MendingTest, LooksBesideTheLibrariesOfDrivers) {
    fs::create_directory(home_.file("c"));
    home_.put("c/libs.so", "");
    home_.put(".odbcinst.ini", "[D]\nDriver=" + home_.file("c/libd.so") + "\n");
    EXPECT_EQ(mended("[D]\nSetup=/no/libs.so\n"), "[D]\nSetup=" + home_.file("c/libs.so") + "\n");
}

}  // namespace
}  // namespace jx::doctor::test
