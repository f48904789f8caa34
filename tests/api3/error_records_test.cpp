// Every failure of every function with the record it leaves: the code, and a sentence that names what was asked for and
// why it was not done.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "setup_home.h"

using namespace jx::test;

namespace {

// Failure: a call that fails, and all records it leaves, a line each; the home is called "~".
struct Failure {
    std::function<BOOL()> call;
    std::string_view records;
};

std::string records(const std::string& home) {
    std::string all;
    for (WORD number = 1; number <= recordCount(); ++number)
        all += (all.empty() ? "" : "\n") + record(number);
    for (std::size_t at = all.find(home); at != std::string::npos; at = all.find(home))
        all.replace(at, home.size(), "~");
    return all;
}

class ErrorRecords : public testing::Test {
protected:
    void expect(const std::vector<Failure>& failures) const {
        for (const Failure& failure : failures) {
            EXPECT_EQ(failure.call(), FALSE) << failure.records;
            EXPECT_EQ(records(home_.files().path()), failure.records);
        }
    }

    // In the place of a file of the user or the system: what cannot be read.
    void block(std::string_view name) const {
        std::filesystem::remove_all(home_.file(name));
        std::filesystem::create_directory(home_.file(name));
    }

    SetupHome home_;
    char room_[256] = "";
    WORD length_ = 0;
    DWORD count_ = 0;
};

BOOL write(const char* section, const char* key, const char* value, const char* file) {
    return SQLWritePrivateProfileString(section, key, value, file);
}

BOOL configure(WORD request, const char* driver, const char* attributes) {
    return SQLConfigDataSource(nullptr, request, driver, attributes);
}

TEST_F(ErrorRecords, OfWrites) {
    home_.put(kSystemSources, "[Stock]\nServer=db\n");
    const std::string absolute = home_.file("none/a.ini");
    expect({
        {[] { return write("A", "k", "v", nullptr); },
         "7: The key \"k\" of section \"A\" was not written: no file is named."},
        {[] { return write("A", "k", "v", "relative.ini"); },
         "12: Nothing was written to \"relative.ini\": it is not an absolute path."},
        {[] { return write(nullptr, "k", "v", "odbc.ini"); },
         "11: The key \"k\" of section \"\" was not written to ~/.odbc.ini: ~/.odbc.ini: cannot store a section "
         "without a name."},
        {[] { return write("A\nB", "k", "v", "odbc.ini"); },
         "11: The key \"k\" of section \"A\nB\" was not written to ~/.odbc.ini: ~/.odbc.ini: cannot store the section "
         "\"A\nB\": it holds a line break."},
        {[] { return write("A", "k=", "v", "odbc.ini"); },
         "11: The key \"k=\" of section \"A\" was not written to ~/.odbc.ini: ~/.odbc.ini: cannot store the key "
         "\"k=\": it holds =."},
        {[] { return write("A", "k", "v\n", "odbc.ini"); },
         "11: The key \"k\" of section \"A\" was not written to ~/.odbc.ini: ~/.odbc.ini: cannot store the value of "
         "the key \"k\": it holds a line break."},
        {[] { return write("A", "k", "\xFF", "odbc.ini"); }, "4: A text of the call is not UTF-8."},
        {[] { return write("Stock", "k", "v", "odbc.ini"); },
         "11: Data source \"Stock\" was not written: it stands in the system's file ~/system/odbc.ini only, and a key "
         "in the user's file would hide all of it."},
        {[&] { return write("A", "k", "v", absolute.c_str()); },
         "11: The key \"k\" of section \"A\" was not written to ~/none/a.ini: Cannot lock ~/none/.a.ini.jxlock: No "
         "such file or directory."},
    });
    block(kUserSources);
    expect({{[] { return write("A", "k", "v", "odbc.ini"); },
             "11: The key \"k\" of section \"A\" was not read: Cannot open ~/.odbc.ini: Is a directory."}});
}

TEST_F(ErrorRecords, OfTheMode) {
    expect({
        {[] { return SQLGetConfigMode(nullptr); }, "14: There is no place for the mode."},
        {[] { return SQLSetConfigMode(3); }, "14: There is no configuration mode 3."},
    });
}

TEST_F(ErrorRecords, OfEntries) {
    home_.put(kSystemSources, "[Stock]\nServer=db\n");
    expect({
        {[] { return SQLWriteDSNToIni(nullptr, "Plain"); }, "9: No data source is named."},
        {[] { return SQLWriteDSNToIni("", "Plain"); }, "9: No data source can be called \"\": it is empty."},
        {[] { return SQLWriteDSNToIni("a;b", "Plain"); },
         "9: No data source can be called \"a;b\": it holds one of []{}(),;?*=!@\\."},
        {[] { return SQLWriteDSNToIni("ODBC", "Plain"); },
         "9: No data source can be called \"ODBC\": the section of that name has another use."},
        {[] { return SQLWriteDSNToIni("Sales", nullptr); }, "7: No driver is named."},
        {[] { return SQLWriteDSNToIni("Sales", "Nothing"); },
         "7: Driver \"Nothing\" is not registered: neither the user's nor the system's odbcinst.ini has it."},
        {[] { return SQLWriteDSNToIni("Stock", "Plain"); },
         "11: Data source \"Stock\" was not written: it stands in the system's file ~/system/odbc.ini only, and a key "
         "in the user's file would hide all of it."},
        {[] { return SQLRemoveDSNFromIni(nullptr); }, "9: No data source is named."},
        {[] { return SQLRemoveDSNFromIni("ODBC Data Sources"); },
         "9: No data source can be called \"ODBC Data Sources\": the section of that name has another use."},
        {[] { return SQLRemoveDSNFromIni("\xFF"); }, "4: A text of the call is not UTF-8."},
    });
    block(kUserSources);
    expect({
        {[] { return SQLWriteDSNToIni("Sales", "Plain"); },
         "11: Section \"Sales\" was not read: Cannot open ~/.odbc.ini: Is a directory."},
        {[] { return SQLRemoveDSNFromIni("Sales"); },
         "11: Section \"Sales\" was not read: Cannot open ~/.odbc.ini: Is a directory."},
        {[] { return SQLRemoveDefaultDataSource(); },
         "11: Section \"Default\" was not read: Cannot open ~/.odbc.ini: Is a directory."},
    });
    block(kSystemDrivers);
    expect({{[] { return SQLWriteDSNToIni("Sales", "Plain"); },
             "11: The key \"Driver\" of section \"Plain\" was not read: Cannot open ~/system/odbcinst.ini: Is a "
             "directory."}});
}

TEST_F(ErrorRecords, OfDataSourceConfiguration) {
    home_.put(kSystemSources, "[Stock]\nServer=db\n");
    expect({
        {[] { return configure(0, "Plain", "DSN=A\0"); }, "5: There is no request 0 to configure a data source."},
        {[] { return configure(99, "Plain", "DSN=A\0"); }, "5: There is no request 99 to configure a data source."},
        {[] { return configure(ODBC_ADD_DSN, nullptr, "DSN=A\0"); }, "7: No driver is named."},
        {[] { return configure(ODBC_ADD_DSN, "Nothing", "DSN=A\0"); },
         "6: Driver \"Nothing\" is not registered: neither the user's nor the system's odbcinst.ini has it."},
        {[] { return configure(ODBC_ADD_DSN, "Plain", nullptr); },
         "9: The attributes name no data source: DSN=NAME is missing."},
        {[] { return configure(ODBC_ADD_DSN, "Plain", "DSN=a*b\0"); },
         "9: No data source can be called \"a*b\": it holds one of []{}(),;?*=!@\\."},
        {[] { return configure(ODBC_ADD_DSN, "Plain", "Server=db\0"); },
         "9: The attributes name no data source: DSN=NAME is missing."},
        {[] { return configure(ODBC_ADD_DSN, "Plain", "DSN=A\0Server\0"); },
         "8: The attributes are not a list of KEYWORD=VALUE texts in which no keyword stands twice."},
        {[] { return configure(ODBC_ADD_DSN, "Plain", "DSN=A\0k=1\0K=2\0"); },
         "8: The attributes are not a list of KEYWORD=VALUE texts in which no keyword stands twice."},
        {[] { return configure(ODBC_ADD_DSN, "Plain", "DSN=A\0k=a\nb\0"); },
         "8: The value of keyword \"k\" cannot be stored: it holds a line break."},
        {[] { return configure(ODBC_ADD_DSN, "Plain", "DSN=A\0;k=b\0"); },
         "8: The keyword \";k\" cannot be stored: it begins with ;."},
        {[] { return configure(ODBC_CONFIG_DSN, "Plain", "DSN=Nothing\0"); },
         "11: There is no data source \"Nothing\" in ~/.odbc.ini."},
        {[] { return configure(ODBC_REMOVE_DSN, "Plain", "DSN=Nothing\0"); },
         "11: There is no data source \"Nothing\" in ~/.odbc.ini."},
        {[] { return configure(ODBC_CONFIG_DSN, "Plain", "DSN=Stock\0k=v\0"); },
         "11: Data source \"Stock\" was not written: it stands in the system's file ~/system/odbc.ini only, and a key "
         "in the user's file would hide all of it."},
        {[] { return configure(ODBC_ADD_DSN, "Plain", "DSN=\xFF\0"); }, "4: A text of the call is not UTF-8."},
    });
    block(kUserSources);
    expect({{[] { return configure(ODBC_ADD_DSN, "Plain", "DSN=A\0"); },
             "11: Data source \"A\" was not written to ~/.odbc.ini: Cannot open ~/.odbc.ini: Is a directory."}});
}

TEST_F(ErrorRecords, OfSetupRoutines) {
    const TestVariable fails("JX_SETUP_DOES", "fail");
    expect({
        {[] { return configure(ODBC_ADD_DSN, "Narrow", "DSN=A\0"); },
         "11: The setup library of driver \"Narrow\" failed and gave no reason."},
        {[] { return SQLConfigDriver(nullptr, ODBC_INSTALL_DRIVER, "Narrow", "", nullptr, 0, nullptr); },
         "11: ConfigDriver of driver \"Narrow\" failed and gave no reason."},
        {[&] { return SQLRemoveDriver("Narrow", FALSE, &count_); },
         "11: ConfigDriver of driver \"Narrow\" failed and gave no reason."},
    });
    const TestVariable posts("JX_SETUP_DOES", "post fail");
    expect({
        {[] { return configure(ODBC_ADD_DSN, "Narrow", "DSN=A\0"); }, "8: the routine's own reason"},
        {[] { return SQLConfigDriver(nullptr, ODBC_INSTALL_DRIVER, "Narrow", "", nullptr, 0, nullptr); },
         "8: the routine's own reason"},
    });
}

TEST_F(ErrorRecords, OfDriverConfiguration) {
    const auto request = [](WORD number, const char* driver, const char* text) {
        return [=] { return SQLConfigDriver(nullptr, number, driver, text, nullptr, 0, nullptr); };
    };
    expect({
        {request(0, "Plain", ""), "5: There is no request 0 to a driver."},
        {request(50, "Plain", ""), "5: There is no request 50 to a driver."},
        {request(ODBC_CONFIG_DRIVER, nullptr, "CPTimeout=1"), "7: No driver is named."},
        {request(ODBC_CONFIG_DRIVER, "Nothing", "CPTimeout=1"),
         "6: Driver \"Nothing\" is not registered: neither the user's nor the system's odbcinst.ini has it."},
        {request(ODBC_CONFIG_DRIVER, "Plain", nullptr),
         "8: Driver \"Plain\" was not configured: the text is not CPTimeout=SECONDS."},
        {request(ODBC_CONFIG_DRIVER, "Plain", "CPTimeout=-1"),
         "8: Driver \"Plain\" was not configured: the text is not CPTimeout=SECONDS."},
        {request(ODBC_CONFIG_DRIVER, "Plain", "Other=1"),
         "8: Driver \"Plain\" was not configured: the text is not CPTimeout=SECONDS."},
        {request(ODBC_INSTALL_DRIVER, "Missing", ""),
         "13: The setup library was not loaded: /opt/missing-setup.so: cannot open shared object file: No such file or "
         "directory."},
    });
}

TEST_F(ErrorRecords, OfInstallations) {
    const auto install = [this](const char* list, const char* in = nullptr, WORD size = 256, WORD request = 2) {
        return [=, this] { return SQLInstallDriverEx(list, in, room_, size, &length_, request, &count_); };
    };
    expect({
        {install(nullptr), "14: Driver was not installed: there is no list."},
        {install(""), "14: Driver was not installed: there is no list."},
        {install("New\0"), "14: Driver was not installed: nothing stands behind the name \"New\"."},
        {install("a\nb\0Driver=x.so\0"),
         "7: Driver was not installed: nothing can be called \"a\nb\": it holds a line break."},
        {install("ODBC\0Driver=x.so\0"),
         "7: Driver was not installed: nothing can be called \"ODBC\": the section of that name has another use."},
        {install("New\0Driver\0"), "8: Driver was not installed: \"Driver\" is not KEYWORD=VALUE."},
        {install("New\0Driver=x.so\0UsageCount=4\0"),
         "8: Driver was not installed: UsageCount is counted by the library."},
        {install("New\0Setup=x.so\0"), "8: Driver was not installed: its second text is not Driver=FILE."},
        {install("New\0Driver=x.so\0k=a\nb\0"),
         "8: Driver was not installed: the value of \"k\" cannot be stored: it holds a line break."},
        {install("New\0Driver=some/x.so\0"),
         "8: Driver \"New\" was not installed: a library is neither a file's name nor an absolute path."},
        {install("New\0Driver=x.so\0", "relative"), "12: \"relative\" is not an absolute path."},
        {install("New\0Driver=x.so\0", "/opt", 2), "2: The path /opt does not fit the buffer."},
        {install("New\0Driver=x.so\0", "/opt", 256, 7), "5: There is no installation request 7."},
        {[this] { return SQLInstallTranslatorEx("New\0Driver=x.so\0", nullptr, room_, 256, &length_, 2, &count_); },
         "8: Translator was not installed: its second text is not Translator=FILE."},
        {[this] {
             return SQLInstallTranslator("a.inf", "New\0Translator=x.so\0", nullptr, room_, 256, &length_, 2, &count_);
         },
         "10: Installation scripts are not read: the script's path must be null."},
        {[this] { return SQLInstallDriverManager(room_, 2, &length_); },
         "2: The path /usr/local/lib does not fit the buffer."},
    });
    block(kSystemDrivers);
    expect({
        {install("New\0Driver=x.so\0", "/opt"),
         "17: Driver \"New\" was not written to ~/system/odbcinst.ini: Cannot open ~/system/odbcinst.ini: Is a "
         "directory."},
        {[this] { return SQLInstallTranslatorEx("New\0Translator=x.so\0", "/opt", room_, 256, &length_, 2, &count_); },
         "17: Translator \"New\" was not written to ~/system/odbcinst.ini: Cannot open ~/system/odbcinst.ini: Is a "
         "directory."},
        {[this] { return SQLInstallDriverManager(room_, 256, &length_); },
         "17: The driver manager's count was not written to ~/system/odbcinst.ini: Cannot open ~/system/odbcinst.ini: "
         "Is a directory."},
    });
}

TEST_F(ErrorRecords, OfRemovals) {
    home_.put(kUserDrivers, "[Mine]\nDriver=/opt/mine.so\n");
    expect({
        {[this] { return SQLRemoveDriver(nullptr, FALSE, &count_); }, "7: Driver to be removed: none is named."},
        {[this] { return SQLRemoveDriver("", FALSE, &count_); }, "7: Driver to be removed: none is named."},
        {[this] { return SQLRemoveDriver("Nothing", FALSE, &count_); },
         "6: Driver \"Nothing\" is not in the system's file ~/system/odbcinst.ini."},
        {[this] { return SQLRemoveDriver("Mine", FALSE, &count_); },
         "6: Driver \"Mine\" is not in the system's file ~/system/odbcinst.ini; it stands in the user's file "
         "~/.odbcinst.ini only."},
        {[this] { return SQLRemoveDriver("ODBC", FALSE, &count_); },
         "6: Driver \"ODBC\" is not in the system's file ~/system/odbcinst.ini."},
        {[this] { return SQLRemoveTranslator(nullptr, &count_); }, "7: Translator to be removed: none is named."},
        {[this] { return SQLRemoveTranslator("Nothing", &count_); },
         "6: Translator \"Nothing\" is not in the system's file ~/system/odbcinst.ini."},
        {[this] { return SQLRemoveDriverManager(&count_); },
         "6: No driver manager is entered in ~/system/odbcinst.ini."},
    });
    block(kSystemDrivers);
    expect({
        {[this] { return SQLRemoveDriver("Plain", FALSE, &count_); },
         "17: Driver \"Plain\" was not written to ~/system/odbcinst.ini: Cannot open ~/system/odbcinst.ini: Is a "
         "directory."},
        {[this] { return SQLRemoveTranslator("Plain", &count_); },
         "17: Translator \"Plain\" was not written to ~/system/odbcinst.ini: Cannot open ~/system/odbcinst.ini: Is a "
         "directory."},
        {[this] { return SQLRemoveDriverManager(&count_); },
         "17: The driver manager's count was not written to ~/system/odbcinst.ini: Cannot open ~/system/odbcinst.ini: "
         "Is a directory."},
    });
}

TEST_F(ErrorRecords, OfDriverLists) {
    expect({{[this] { return SQLGetInstalledDrivers(nullptr, 10, &length_); },
             "2: There is no buffer for the list of drivers."},
            {[this] { return SQLGetInstalledDrivers(room_, 0, &length_); },
             "2: There is no buffer for the list of drivers."}});
    home_.put(kSystemDrivers, "");
    expect({{[this] { return SQLGetInstalledDrivers(room_, 256, &length_); },
             "6: No driver is registered: neither the user's nor the system's odbcinst.ini has one."}});
    block(kUserDrivers);
    expect({{[this] { return SQLGetInstalledDrivers(room_, 256, &length_); },
             "11: Section \"ODBC Drivers\" was not read: Cannot open ~/.odbcinst.ini: Is a directory."}});
}

TEST_F(ErrorRecords, OfFileDataSources) {
    home_.put("a.dsn", "[ODBC]\nDRIVER=PG\n");
    const std::string a = home_.file("a.dsn");
    const std::string blocked = home_.file("b.dsn");
    const std::string value(32768, 'v');
    block("b.dsn");
    home_.put("system/ODBCDataSources", "a file");
    const auto read = [this](const char* file, const char* section, const char* key, WORD size = 256) {
        return [=, this] { return SQLReadFileDSN(file, section, key, room_, size, &length_); };
    };
    expect({
        {read(nullptr, "ODBC", "DRIVER"), "12: \"\" is not the path of a file data source."},
        {read("../a", "ODBC", "DRIVER"), "12: \"../a\" is not the path of a file data source."},
        {read(a.c_str(), nullptr, "DRIVER"), "5: The key \"DRIVER\" is asked for without a section."},
        {read(a.c_str(), "ODBC", "DRIVER", 2), "22: The text has a length of 2 and was cut."},
        {read(a.c_str(), "ODBC", "DRIVER", 0), "2: There is no buffer for the text."},
        {read(a.c_str(), "ODBC", "SERVER"), "11: The key \"SERVER\" of section \"ODBC\" is not in ~/a.dsn."},
        {read(blocked.c_str(), "ODBC", "DRIVER"),
         "11: The key \"DRIVER\" of section \"ODBC\" was not read: Cannot open ~/b.dsn: Is a directory."},
        {[&] { return SQLWriteFileDSN(a.c_str(), nullptr, "k", "v"); },
         "5: A file data source is written without a section."},
        {[&] { return SQLWriteFileDSN(a.c_str(), "ODBC", "k", value.c_str()); },
         "4: The key \"k\" of section \"ODBC\" was not written: its value has more than 32767 bytes."},
        {[&] { return SQLWriteFileDSN(a.c_str(), "ODBC", "k=", "v"); },
         "11: The key \"k=\" of section \"ODBC\" was not written to ~/a.dsn: ~/a.dsn: cannot store the key \"k=\": it "
         "holds =."},
        {[&] { return SQLWriteFileDSN(blocked.c_str(), "ODBC", "k", "v"); },
         "11: The key \"k\" of section \"ODBC\" was not written to ~/b.dsn: Cannot open ~/b.dsn: Is a directory."},
        {[] { return SQLWriteFileDSN("Sales", "ODBC", "k", "v"); },
         "11: The key \"k\" of section \"ODBC\" was not written to ~/system/ODBCDataSources/Sales.dsn: Cannot lock "
         "~/system/ODBCDataSources/.Sales.dsn.jxlock: Not a directory."},
    });
}

TEST_F(ErrorRecords, OfScreens) {
    HWND const window = reinterpret_cast<HWND>(1);
    const auto translator = [this](HWND owner) {
        return SQLGetTranslator(owner, room_, 10, &length_, room_, 10, &length_, &count_);
    };
    expect({
        {[] { return SQLCreateDataSource(nullptr, "Sales"); }, "3: The dialogs for data sources need a window."},
        {[=] { return SQLCreateDataSource(window, "Sales"); },
         "11: The dialogs for data sources need a host that shows dialogs; there is none."},
        {[] { return SQLManageDataSources(nullptr); }, "3: The dialogs for data sources need a window."},
        {[=] { return SQLManageDataSources(window); },
         "11: The dialogs for data sources need a host that shows dialogs; there is none."},
        {[=] { return translator(nullptr); }, "3: The dialogs for translators need a window."},
        {[=] { return translator(window); },
         "11: The dialogs for translators need a host that shows dialogs; there is none."},
    });
}

// A look-up never fails: it gives the default, and the record says what was wrong.
TEST_F(ErrorRecords, OfLookUps) {
    home_.put(kUserSources, "[Sales]\nPWD@file=secret\nUID@env=JX_NOT_SET\nToken@credential=a/b\n");
    const auto left = [this](const char* key) {
        EXPECT_EQ(value("Sales", key), "(default)");
        return records(home_.files().path());
    };
    EXPECT_EQ(left("PWD"),
              "11: The key \"PWD@file\" of section \"Sales\" in ~/.odbc.ini was not followed: secret: it is not an "
              "absolute path.");
    EXPECT_EQ(left("UID"),
              "11: The key \"UID@env\" of section \"Sales\" in ~/.odbc.ini was not followed: JX_NOT_SET: there is no "
              "such environment variable.");
    EXPECT_EQ(left("Token"),
              "11: The key \"Token@credential\" of section \"Sales\" in ~/.odbc.ini was not followed: a/b: it is not "
              "the name of a credential.");
    EXPECT_EQ(left("\xFF"), "4: A text of the call is not UTF-8.");
    block(kUserSources);
    EXPECT_EQ(left("Server"),
              "11: The key \"Server\" of section \"Sales\" was not read: Cannot open ~/.odbc.ini: Is a directory.");
}

}  // namespace
