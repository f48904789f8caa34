// The library's calls of its own functions reach its own definitions, whatever else the process has loaded.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <jxerrors.h>
#include <odbcinst.h>

#include <string>

#include "message_box_script.h"
#include "rival.h"
#include "setup_calls.h"
#include "test_home.h"

namespace jx::test {

namespace {

constexpr char kDrivers[] = "[Sample Driver]\nDriver=/opt/sample.so\n";

}  // namespace

TEST(Rivals, AreReallyFoundFirst) {
    const int before = rivalCalls();
    EXPECT_EQ(SQLRemoveDSNFromIni("Sales"), 0);
    EXPECT_EQ(rivalCalls(), before + 1);
    for (const char* name : {"winGetString", "SQLWritePrivateProfileString", "_ZN7OdbcInsC1Ev"}) {
        SCOPED_TRACE(name);
        Dl_info found{};
        ASSERT_NE(dladdr(dlsym(RTLD_DEFAULT, name), &found), 0);
        EXPECT_NE(std::string(found.dli_fname).find("jx_rival"), std::string::npos);
    }
}

TEST(Rivals, DoNotCaptureTheEnteringOfADataSource) {
    const int before = rivalCalls();
    const TestHome home{{".odbcinst.ini", kDrivers}};
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "Sample Driver"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample.so\n");
    EXPECT_EQ(rivalCalls(), before);
}

TEST(Rivals, DoNotCaptureAConfiguration) {
    const int before = rivalCalls();
    const TestHome home{{".odbc.ini", "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nx=1\n"}};
    home.put(".odbcinst.ini", "[Sample Driver]\nSetup=" + setupLibrary("driver_mixed") + "\n");
    const SetupCalls calls;
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(calls.lines().size(), 3U);
    EXPECT_EQ(home.text(".odbc.ini"), "[ODBC Data Sources]\n\n");
    EXPECT_EQ(rivalCalls(), before);
}

TEST(Rivals, DoNotCaptureTheSetupLibraryOfDriversThatBringNone) {
    const int before = rivalCalls();
    const TestHome home;
    const std::string drivers = "[Sample Driver]\nDriver=/opt/sample.so\nSetup=" + std::string(JX_SETUP_LIBRARY) + "\n";
    home.put(".odbcinst.ini", drivers);
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Default\0k=1\0"), TRUE);
    EXPECT_EQ(home.text(".odbc.ini"), "[Default]\nDriver=/opt/sample.so\nk=1\n");
    EXPECT_EQ(home.text(".odbcinst.ini"), drivers + "\n[Default]\nDriver=Sample Driver\n");
    EXPECT_EQ(rivalCalls(), before);
}

TEST(Rivals, DoNotCaptureTranslatorsAndTheirTexts) {
    const int before = rivalCalls();
    const TestHome home;
    MessageBoxScript boxes;
    char name[] = "Latin";
    EXPECT_EQ(SQLGetTranslator(77, name, sizeof name, nullptr, nullptr, 0, nullptr, nullptr), TRUE);
    ASSERT_EQ(boxes.boxes().size(), 1U);
    EXPECT_NE(boxes.boxes()[0].text, "");
    EXPECT_NE(boxes.boxes()[0].title, "");
    EXPECT_EQ(rivalCalls(), before);
}

TEST(Rivals, DoNotCaptureErrorsAndDialogs) {
    const int before = rivalCalls();
    JxErrorKeeper::clear();
    const JxError* error = addError(50);
    ASSERT_NE(error, nullptr);
    EXPECT_STRNE(reinterpret_cast<const char*>(error->text()), "");
    EXPECT_EQ(SQLManageDataSources(77), 0);
    EXPECT_EQ(SQLRemoveDefaultDataSource(), TRUE);
    EXPECT_EQ(rivalCalls(), before);
}

}  // namespace jx::test
