// Changing and removing data sources through the setup library, and its other entry point.
#include <string>
#include <thread>
#include <vector>

#include "setup_library.h"

namespace {

using jx::test::installedDriver;
using jx::test::kDriver;
using jx::test::list;

class SetupChange : public jx::test::SetupLibrary {};
class SetupRemove : public jx::test::SetupLibrary {};
class SetupRoutines : public jx::test::SetupLibrary {};

constexpr char kSales[] =
    "[ODBC Data Sources]\n"
    "Sales=Sample Driver ; mine\n"
    "\n"
    "[Sales]\n"
    "Driver=/opt/sample/libsample.so\n"
    "; kept\n"
    "server = old\n"
    "Port=1\n"
    "\n"
    "[ODBC]\n"
    "Trace=1\n";

TEST_F(SetupChange, StoresTheAttributesGivenAndKeepsTheOthers) {
    home.put(".odbc.ini", kSales);
    EXPECT_EQ(change(list({"DSN=Sales", "Server=new", "Database=d"})), TRUE);
    EXPECT_EQ(
        dataSources(),
        "[ODBC Data Sources]\nSales=Sample Driver ; mine\n\n"
        "[Sales]\nDriver=/opt/sample/libsample.so\n; kept\nserver = new\nPort=1\nDatabase=d\n\n[ODBC]\nTrace=1\n");
}

TEST_F(SetupChange, IsReachedThroughTheInstaller) {
    home.put(".odbc.ini", "[Sales]\nDriver=x\nPort=1\n");
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_CONFIG_DSN, kDriver, list({"DSN=Sales", "Port=2"}).c_str()), TRUE);
    EXPECT_EQ(dataSources(), "[Sales]\nDriver=x\nPort=2\n");
}

TEST_F(SetupChange, RemovesAKeyWithAnEmptyValue) {
    home.put(".odbc.ini", "[Sales]\nDriver=x\nPort=1\nServer=a\n");
    EXPECT_EQ(change(list({"DSN=Sales", "PORT=", "Absent="})), TRUE);
    EXPECT_EQ(dataSources(), "[Sales]\nDriver=x\nServer=a\n");
}

TEST_F(SetupChange, LeavesTheDriverAlone) {
    home.put(".odbc.ini", "[Sales]\nDriver=x\n");
    EXPECT_EQ(change(list({"DSN=Sales", "DRIVER=y", "Port=1"})), TRUE);
    EXPECT_EQ(change(list({"DSN=Sales", "Driver="})), TRUE);
    EXPECT_EQ(dataSources(), "[Sales]\nDriver=x\nPort=1\n");
}

TEST_F(SetupChange, SucceedsWithNothingToChange) {
    home.put(".odbc.ini", kSales);
    EXPECT_EQ(change(list({"DSN=sales", "Server=old"})), TRUE);
    EXPECT_EQ(dataSources(), kSales);
}

TEST_F(SetupChange, TakesADataSourceThatCouldNotBeAdded) {
    home.put(".odbc.ini", "[a(b)]\nDriver=x\n");
    EXPECT_EQ(change(list({"DSN=a(b)", "Port=1"})), TRUE);
    EXPECT_EQ(dataSources(), "[a(b)]\nDriver=x\nPort=1\n");
}

TEST_F(SetupChange, ChangesNothingOnBadRequests) {
    home.put(".odbc.ini", kSales);
    const struct {
        std::string list;
        const char* driver;
    } rows[] = {
        {list({"DSN=Other", "Port=2"}), kDriver},
        {list({"DSN= Sales", "Port=2"}), kDriver},
        {list({"DSN=ODBC", "Trace=0"}), kDriver},
        {list({"DSN=odbc data sources", "Sales="}), kDriver},
        {list({"DSN=Sales", "Port=2 "}), kDriver},
        {list({"DSN=Sales", "Port=2", "Server=a\nb"}), kDriver},
        {list({"DSN=Sales", "Port=2", " Server="}), kDriver},
        {list({"DSN=Sales", "Port=2", "[x="}), kDriver},
        {list({"DSN=Sales", "Port=2", "Server"}), kDriver},
        {list({"DSN=Sales", "Port=2", "port=3"}), kDriver},
        {list({"Port=2"}), kDriver},
        {list({"DSN=Sales", "Port=2"}), "Unknown Driver"},
        {list({"DSN=Sales", "Port=2"}), "Sample Driver "},
        {list({"DSN=Sales", "Port=2"}), nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.list);
        EXPECT_EQ(change(row.list, row.driver), FALSE);
        EXPECT_EQ(dataSources(), kSales);
    }
}

TEST_F(SetupRemove, RemovesListEntryAndSection) {
    home.put(".odbc.ini", kSales);
    EXPECT_EQ(remove(list({"DSN=Sales"})), TRUE);
    EXPECT_EQ(dataSources(), "[ODBC Data Sources]\n\n[ODBC]\nTrace=1\n");
}

TEST_F(SetupRemove, IsReachedThroughTheInstaller) {
    home.put(".odbc.ini", kSales);
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_REMOVE_DSN, kDriver, list({"DSN=Sales"}).c_str()), TRUE);
    EXPECT_EQ(dataSources(), "[ODBC Data Sources]\n\n[ODBC]\nTrace=1\n");
}

TEST_F(SetupRemove, TakesWhatIsThereOfADataSource) {
    home.put(".odbc.ini", "[ODBC Data Sources]\nListed=x\n\n[Bare]\nDriver=x\n");
    EXPECT_EQ(remove(list({"DSN=Listed"})), TRUE);
    EXPECT_EQ(remove(list({"DSN=bare"})), TRUE);
    EXPECT_EQ(dataSources().find("x"), std::string::npos);
    EXPECT_EQ(remove(list({"DSN=Bare"})), FALSE);
}

TEST_F(SetupRemove, TakesNamesThatCouldNotBeAdded) {
    for (const char* name : {"a=b", "a(b)", "a;b", "a]b", "a name that is longer than thirty-two characters"}) {
        SCOPED_TRACE(name);
        home.put(".odbc.ini", std::string("[") + name + "]\nDriver=x\n");
        EXPECT_EQ(remove(list({std::string("DSN=") + name})), TRUE);
        EXPECT_EQ(dataSources(), "");
    }
}

TEST_F(SetupRemove, DoesNotNeedTheDriver) {
    home.put(".odbc.ini", kSales);
    EXPECT_EQ(configure(ODBC_REMOVE_DSN, list({"DSN=Sales", "Server=ignored "}), nullptr), TRUE);
    EXPECT_EQ(dataSources(), "[ODBC Data Sources]\n\n[ODBC]\nTrace=1\n");
}

TEST_F(SetupRemove, RemovesTheDefaultDataSourceFromBothFiles) {
    for (const char* name : {"Default", "default"}) {
        SCOPED_TRACE(name);
        home.put(".odbc.ini", "[Default]\nDriver=x\n");
        home.put(".odbcinst.ini", installedDriver() + "[Default]\nDriver=Sample Driver\n");
        EXPECT_EQ(remove(list({std::string("DSN=") + name})), TRUE);
        EXPECT_EQ(dataSources(), "");
        EXPECT_EQ(drivers(), installedDriver());
        EXPECT_EQ(remove(list({std::string("DSN=") + name})), FALSE);
    }
}

TEST_F(SetupRemove, RemovesADefaultDataSourceThatOneFileHolds) {
    home.put(".odbcinst.ini", installedDriver() + "[Default]\nDriver=Sample Driver\n");
    EXPECT_EQ(remove(list({"DSN=Default"})), TRUE);
    EXPECT_EQ(drivers(), installedDriver());
    home.put(".odbc.ini", "[Default]\nDriver=x\n");
    EXPECT_EQ(remove(list({"DSN=Default"})), TRUE);
    EXPECT_EQ(dataSources(), "");
}

TEST_F(SetupRemove, ChangesNothingOnBadRequests) {
    home.put(".odbc.ini", kSales);
    for (const char* name : {"ODBC", "odbc", "ODBC Data Sources", "ODBC DATA SOURCES", "ODBC Drivers", " ODBC", "ODBC ",
                             " ODBC Data Sources", "\tODBC Data Sources", " Sales", "Sales ", "Other", ""}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(remove(list({std::string("DSN=") + name})), FALSE);
        EXPECT_EQ(dataSources(), kSales);
    }
    EXPECT_EQ(remove(list({"DSN=Sales", "Server"})), FALSE);
    EXPECT_EQ(remove(list({})), FALSE);
    EXPECT_EQ(dataSources(), kSales);
}

TEST_F(SetupRoutines, FailForOtherRequestCodes) {
    home.put(".odbc.ini", kSales);
    for (const WORD request : std::initializer_list<WORD>{0, 4, 5, 65535}) {
        SCOPED_TRACE(request);
        EXPECT_EQ(configure(request, list({"DSN=Sales"})), FALSE);
        EXPECT_EQ(dataSources(), kSales);
    }
}

TEST_F(SetupRoutines, TakeANullListAsEmpty) {
    const auto configDsn = routine<BOOL(HWND, WORD, LPCSTR, LPCSTR)>("ConfigDSN");
    for (const WORD request : {ODBC_ADD_DSN, ODBC_CONFIG_DSN, ODBC_REMOVE_DSN})
        EXPECT_EQ(configDsn(0, request, kDriver, nullptr), FALSE);
}

TEST_F(SetupRoutines, GiveTranslatorOptionZero) {
    const auto configTranslator = routine<BOOL(HWND, DWORD*)>("ConfigTranslator");
    DWORD option = 77;
    EXPECT_EQ(configTranslator(0, &option), TRUE);
    EXPECT_EQ(option, 0U);
    EXPECT_EQ(configTranslator(1, nullptr), TRUE);
}

TEST_F(SetupRoutines, LoseNoDataSourceWhenThreadsAddAtATime) {
    constexpr int kThreads = 4;
    constexpr int kEach = 8;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread)
        threads.emplace_back([this, thread] {
            for (int number = 0; number < kEach; ++number) {
                const std::string name = "DSN=Source " + std::to_string(thread) + "-" + std::to_string(number);
                EXPECT_EQ(configure(ODBC_ADD_DSN, list({name, "Server=a"})), TRUE);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    for (int thread = 0; thread < kThreads; ++thread)
        for (int number = 0; number < kEach; ++number) {
            const std::string name = "Source " + std::to_string(thread) + "-" + std::to_string(number);
            EXPECT_NE(dataSources().find(name + "=Sample Driver\n"), std::string::npos) << name;
            EXPECT_NE(dataSources().find("[" + name + "]\nDriver=/opt/sample/libsample.so\nServer=a\n"),
                      std::string::npos)
                << name;
        }
}

}  // namespace
