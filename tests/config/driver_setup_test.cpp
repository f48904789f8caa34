// Loading a setup library and calling its routine, one step at a time.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstring>
#include <string>

#include "setup_calls.h"
#include "test_home.h"

namespace jx::test {

namespace {

// Seen: the arguments of the last call of a routine of this program, and its answer.
struct Seen {
    HWND hwnd = 0;
    int request = 0;
    std::string driver;
    std::string attributes;
    int calls = 0;
    BOOL answer = TRUE;
};

Seen seen;

// The bytes of a list up to and with its final NUL.
std::string wholeList(LPCSTR list) {
    std::size_t length = 0;
    while (list[length] != '\0')
        length += std::strlen(list + length) + 1;
    return {list, length + 1};
}

BOOL see(HWND hwnd, WORD request, LPCSTR driver, LPCSTR attributes) {
    seen = Seen{hwnd, request, driver, wholeList(attributes), seen.calls + 1, seen.answer};
    return seen.answer;
}

// Loaded: an object as it is after LoadDriver found see.
struct Loaded : OdbcIns {
    explicit Loaded(BOOL answer) {
        seen = Seen{};
        seen.answer = answer;
        pfnConfigDSN = &see;
        std::memcpy(driverName, "Sample Driver", 14);
        std::memcpy(dataSourceName, "Sales", 6);
    }
};

// Finds the setup library of "Sample Driver" under path.
struct Driver : OdbcIns {
    explicit Driver(std::string_view path) {
        home.put(".odbcinst.ini", "[Sample Driver]\nSetup=" + std::string(path) + "\n");
        std::memcpy(driverName, "Sample Driver", 14);
    }
    TestHome home;
};

BOOL otherRoutine(HWND, WORD, LPCSTR, LPCSTR) {
    return FALSE;
}

}  // namespace

TEST(LoadDriver, FindsTheRoutineUnderEitherName) {
    for (const char* library : {"driver_mixed", "driver_both"}) {
        SCOPED_TRACE(library);
        Driver ins(setupLibrary(library));
        ASSERT_EQ(ins.LoadDriver(), 0);
        ASSERT_NE(ins.hSetupLib, nullptr);
        ASSERT_NE(ins.pfnConfigDSN, nullptr);
        const char* expected = std::string_view(library) == "driver_both" ? "CONFIGDSN" : "ConfigDSN";
        EXPECT_EQ(reinterpret_cast<void*>(ins.pfnConfigDSN), dlsym(ins.hSetupLib, expected));
        dlclose(ins.hSetupLib);
    }
}

TEST(LoadDriver, SucceedsForALibraryWithoutRoutineWhichThenFails) {
    Driver ins(setupLibrary("no_entry"));
    ins.pfnConfigDSN = &otherRoutine;
    ASSERT_EQ(ins.LoadDriver(), 0);
    EXPECT_EQ(ins.pfnConfigDSN, nullptr);
    for (const unsigned long request : {1UL, 2UL, 3UL})
        EXPECT_EQ(ins.ConfigDSN(0, request, nullptr), 1);
    dlclose(ins.hSetupLib);
}

TEST(LoadDriver, FailsWithoutALibraryAndLeavesTheRoutineAsItWas) {
    for (const std::string path : {"", "/nowhere/libsetup.so", "/", "  "}) {
        SCOPED_TRACE(path);
        Driver ins(path);
        ins.pfnConfigDSN = &otherRoutine;
        EXPECT_EQ(ins.LoadDriver(), 1);
        EXPECT_EQ(ins.hSetupLib, nullptr);
        EXPECT_EQ(ins.pfnConfigDSN, &otherRoutine);
    }
}

TEST(LoadDriver, FailsForAnUnknownDriverAFileThatIsNoLibraryAndAPathThatIsTooLong) {
    Driver unknown(setupLibrary("driver_mixed"));
    unknown.driverName[0] = 'X';
    EXPECT_EQ(unknown.LoadDriver(), 1);
    unknown.driverName[0] = '\0';
    EXPECT_EQ(unknown.LoadDriver(), 1);
    Driver text("");
    text.home.put(".odbcinst.ini", "[Sample Driver]\nSetup=" + text.home.file(".odbcinst.ini") + "\n");
    EXPECT_EQ(text.LoadDriver(), 1);
    Driver tooLong(std::string(2000, '/') + setupLibrary("driver_mixed"));
    EXPECT_EQ(tooLong.LoadDriver(), 1);
}

TEST(DriverOfARequest, MayBeTheObjectsOwnDescriptionAndLeavesNothingOfALongerOne) {
    Driver ins(setupLibrary("driver_mixed"));
    const auto* own = reinterpret_cast<const unsigned char*>(ins.driverName);
    EXPECT_EQ(ins.jxSQLConfigDataSource(77, ODBC_ADD_DSN, own, nullptr), 1);
    EXPECT_STREQ(ins.driverName, "Sample Driver");
    std::memset(ins.driverName, 'x', sizeof ins.driverName);
    ins.jxSQLConfigDataSource(77, ODBC_ADD_DSN, reinterpret_cast<const unsigned char*>("D"), nullptr);
    EXPECT_EQ(std::string(ins.driverName, sizeof ins.driverName), "D" + std::string(49, '\0'));
}

TEST(ConfigDSN, AddPassesTheListOrAnEmptyOneAndMarksTheObject) {
    Loaded ins(TRUE);
    unsigned char list[] = "x=1\0y=2\0";
    EXPECT_EQ(ins.ConfigDSN(77, ODBC_ADD_DSN, list), 0);
    EXPECT_EQ(seen.hwnd, 77U);
    EXPECT_EQ(seen.request, 1);
    EXPECT_EQ(seen.driver, "Sample Driver");
    EXPECT_EQ(seen.attributes, std::string("x=1\0y=2\0\0", 9));
    EXPECT_EQ(ins.dataSourceAdded, 1);
    EXPECT_EQ(ins.ConfigDSN(77, ODBC_ADD_DSN, nullptr), 0);
    EXPECT_EQ(seen.attributes, std::string(1, '\0'));
}

TEST(ConfigDSN, ARefusedAddLeavesTheMarkAsItWas) {
    Loaded ins(FALSE);
    EXPECT_EQ(ins.ConfigDSN(77, ODBC_ADD_DSN, nullptr), 1);
    EXPECT_EQ(ins.dataSourceAdded, 0);
    ins.dataSourceAdded = 1;
    EXPECT_EQ(ins.ConfigDSN(77, ODBC_ADD_DSN, nullptr), 1);
    EXPECT_EQ(ins.dataSourceAdded, 1);
}

TEST(ConfigDSN, ChangeAndRemoveNameTheObjectsDataSourceWithoutAList) {
    for (const unsigned long request : {2UL, 3UL}) {
        Loaded ins(TRUE);
        EXPECT_EQ(ins.ConfigDSN(77, request, nullptr), 0);
        EXPECT_EQ(seen.request, static_cast<int>(request));
        EXPECT_EQ(seen.attributes, std::string("DSN=Sales\0\0", 11));
        EXPECT_EQ(ins.dataSourceAdded, 0);
        unsigned char list[] = "DSN=Other\0";
        EXPECT_EQ(ins.ConfigDSN(77, request, list), 0);
        EXPECT_EQ(seen.attributes, std::string("DSN=Other\0\0", 11));
        seen.answer = FALSE;
        EXPECT_EQ(ins.ConfigDSN(77, request, nullptr), 1);
    }
}

TEST(ConfigDSN, NamesADataSourceOf49BytesWholeAndSurvivesOneWithoutEnd) {
    Loaded ins(TRUE);
    std::memset(ins.dataSourceName, 'n', 50);
    EXPECT_EQ(ins.ConfigDSN(0, ODBC_REMOVE_DSN, nullptr), 0);
    EXPECT_EQ(seen.attributes, "DSN=" + std::string(50, 'n') + std::string(2, '\0'));
    ins.dataSourceName[49] = '\0';
    EXPECT_EQ(ins.ConfigDSN(0, ODBC_REMOVE_DSN, nullptr), 0);
    EXPECT_EQ(seen.attributes, "DSN=" + std::string(49, 'n') + std::string(2, '\0'));
    ins.dataSourceName[0] = '\0';
    EXPECT_EQ(ins.ConfigDSN(0, ODBC_CONFIG_DSN, nullptr), 0);
    EXPECT_EQ(seen.attributes, std::string("DSN=\0\0", 6));
}

TEST(ConfigDSN, TakesEveryAnswerButFalseAsAccepted) {
    for (const BOOL answer : {1, 2, -1, 65536}) {
        Loaded ins(answer);
        EXPECT_EQ(ins.ConfigDSN(0, ODBC_ADD_DSN, nullptr), 0);
        EXPECT_EQ(ins.dataSourceAdded, 1);
    }
}

TEST(ConfigDSN, FailsWithoutCallingForOtherRequests) {
    for (const unsigned long request : {0UL, 4UL, 7UL, 32768UL, 65535UL, 65537UL, 65538UL, ~0UL}) {
        SCOPED_TRACE(request);
        Loaded ins(TRUE);
        EXPECT_EQ(ins.ConfigDSN(77, request, nullptr), 1);
        EXPECT_EQ(seen.calls, 0);
        EXPECT_EQ(ins.dataSourceAdded, 0);
    }
}

TEST(ConfigDSN, FailsOnAFreshObject) {
    OdbcIns ins;
    EXPECT_EQ(ins.ConfigDSN(77, ODBC_ADD_DSN, nullptr), 1);
}

TEST(ConfigDSN, PassesAnExceptionOnWithoutMarkingTheObject) {
    Loaded ins(TRUE);
    ins.pfnConfigDSN = [](HWND, WORD, LPCSTR, LPCSTR) -> BOOL { throw 7; };
    for (const unsigned long request : {1UL, 2UL, 3UL})
        EXPECT_THROW(ins.ConfigDSN(0, request, nullptr), int);
    EXPECT_EQ(ins.dataSourceAdded, 0);
}

}  // namespace jx::test
