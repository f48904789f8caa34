// References to secrets, tried as a driver would follow them.
#include "odbcadmin/doctor/reference_checks.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "doctor_fixture.h"

namespace jx::doctor::test {
namespace {

class References : public testing::Test {
protected:
    // What is said of a data source with this line, without the loader's libraries.
    std::string told(const std::string& line) {
        home_.put(".odbc.ini", "[S]\nDriver=/opt/none.so\n" + line + "\n");
        const model::Configuration configuration = model::Configuration::read();
        return home_.dump(checkReferences(*configuration.dataSource("S"), configuration, home_.options().places));
    }

    std::string toldOfFile(const char* text, mode_t mode = 0600) {
        home_.put("secret", text);
        ::chmod(home_.file("secret").c_str(), mode);
        return told("PWD@file=" + home_.file("secret"));
    }

    DoctorHome home_;
};

TEST_F(References, ThatWorkAreNotMentioned) {
    EXPECT_EQ(toldOfFile("geheim\n"), "");
    EXPECT_EQ(toldOfFile("geheim"), "");
    EXPECT_EQ(told("PWD=x"), "");
    ::setenv("JX_TEST_SECRET", "geheim", 1);
    EXPECT_EQ(told("PWD@env=JX_TEST_SECRET"), "");
    ::unsetenv("JX_TEST_SECRET");
    ::setenv("CREDENTIALS_DIRECTORY", home_.path().c_str(), 1);
    EXPECT_EQ(told("PWD@credential=secret"), "");
    ::unsetenv("CREDENTIALS_DIRECTORY");
}

TEST_F(References, ToAFileThatIsRefusedHaveTheReasonAndItsRights) {
    EXPECT_EQ(told("PWD@file=" + home_.file("none")),
              "error reference.refused data source S\n"
              "  ~/.odbc.ini:3: The key \"PWD@file\" of section \"S\" in ~/.odbc.ini was not followed: ~/none: No such "
              "file or "
              "directory.\n"
              "  The driver gets no value for PWD.\n");
    const std::string open = toldOfFile("geheim\n", 0606);
    EXPECT_NE(open.find("others than its owner may write it"), std::string::npos) << open;
    EXPECT_NE(open.find("Its rights are -rw----rw-"), std::string::npos) << open;
    EXPECT_EQ(open.find("geheim"), std::string::npos);
    const std::string large = toldOfFile(std::string(70000, 'x').c_str());
    EXPECT_NE(large.find("it holds more than 64 KiB"), std::string::npos) << large;
    std::filesystem::create_directory(home_.file("folder"));
    EXPECT_NE(told("PWD@file=" + home_.file("folder")).find("it is not a regular file"), std::string::npos);
    home_.put("nul", std::string("a\0b", 3));
    EXPECT_NE(told("PWD@file=" + home_.file("nul")).find("it holds a NUL"), std::string::npos);
}

TEST_F(References, ToAnEmptyValueOrSeveralLineEndsAreDoubted) {
    EXPECT_TRUE(toldOfFile("\n").starts_with("warning reference.empty data source S\n")) << toldOfFile("\n");
    EXPECT_TRUE(toldOfFile("geheim\n\n").starts_with("warning reference.line-end data source S\n"));
}

TEST_F(References, ToAVariableOrCredentialOfAnotherProcessAreNoted) {
    ::unsetenv("CREDENTIALS_DIRECTORY");
    EXPECT_EQ(told("PWD@env=JX_TEST_UNSET"),
              "note reference.elsewhere data source S\n"
              "  ~/.odbc.ini:3: PWD@env cannot be tried here: JX_TEST_UNSET is not set.\n"
              "  It must be set where the program runs.\n");
    EXPECT_TRUE(told("PWD@credential=x").starts_with("note reference.elsewhere"));
    ::setenv("CREDENTIALS_DIRECTORY", home_.path().c_str(), 1);
    EXPECT_TRUE(told("PWD@credential=none").starts_with("error reference.refused"));
    ::unsetenv("CREDENTIALS_DIRECTORY");
}

TEST_F(References, OfADriverThatGetsAnotherInstallerLibraryAreNotFollowed) {
    home_.take("libwants_installer.so");
    home_.take("installer/libodbcinst.so.2", "libodbcinst.so.2");
    home_.put("secret", "geheim\n");
    home_.put(".odbc.ini",
              "[S]\nDriver=" + home_.file("libwants_installer.so") + "\nPWD@file=" + home_.file("secret") + "\n");
    const model::Configuration configuration = model::Configuration::read();
    EXPECT_EQ(home_.dump(checkReferences(*configuration.dataSource("S"), configuration, home_.options().places)),
              "error reference.other-library data source S\n"
              "  ~/.odbc.ini:3: PWD@file is followed by this product's libodbcinst.so.2 only, and the driver gets "
              "~/libodbcinst.so.2.\n"
              "  Start the program with odbcadmin run -- PROGRAM.\n");
}

TEST_F(References, AreNotTriedWhereTheirTextShowsThatTheyNeverWork) {
    EXPECT_EQ(told("PWD@file=relative"), "");
    EXPECT_EQ(told("PWD=x\nPWD@file=/none"), "");
}

}  // namespace
}  // namespace jx::doctor::test
