// The cases and their texts.
#include "installation_case.h"

#include <jxini.h>
#include <odbcinst.h>

#include "install/item_installation.h"

namespace jx::test {

namespace {

using Files = InstallationCase::Files;
using namespace std::string_literals;

constexpr char kOtherDriver[] = "[ODBC Drivers]\nOther=Installed\n\n[Other]\nDriver=/o/other.so\n";
constexpr char kOtherSource[] = "[ODBC Data Sources]\nMine=Other\n";
constexpr char kMine[] = "\n[Mine]\nDriver=/o/other.so\nUID=me\n";

// A batch installation whose script is read; true when it says that it has installed a file.
bool installBatch() {
    TestRecord record;
    record.directories("/l", "/l/");
    record.item(install::DriverItem, "D").file("Driver", "d.so").file("Setup", "s.so");
    record.capability("APILevel", "1").capability("CreateDSN", "Sales, Accounts");
    record.item(install::TranslatorItem, "T").file("Translator", "t.so");
    install::InstallItems(0, record.get());
    return record.get()->anyFileInstalled != 0;
}

bool installDriver(const char* script, const char* driver) {
    char path[64] = "?";
    WORD length = 999;
    const bool isInstalled = SQLInstallDriver(script, driver, path, sizeof path, &length) != FALSE;
    // A file of drivers that cannot be locked is reported there only.
    return isInstalled && jxIniLastFailure().step == JxIniStepNone;
}

}  // namespace

const Files& InstallationCase::before() {
    static const Files files{kOtherDriver + "\n[D]\nDriver=/old/d.so\nNote=old\n\n[Default]\nDriver=Other\n"s,
                             kOtherSource + "Sales=Other\n"s + kMine +
                                 "\n[Sales]\nDriver=/o/other.so\nPWD=secret\n\n[Default]\nDriver=/o/other.so\n"};
    return files;
}

std::string installationScript() {
    return "[D]\n\"Driver\"=" + scriptLine("d.so") + "\n[D-Keys]\nAPILevel=CreateDSN\nSQLLevel=1\n";
}

std::vector<InstallationCase> installationCases(const std::string& script) {
    const Files& before = InstallationCase::before();
    const std::string rest = "\n[Default]\nDriver=Other\n";
    const std::string defaultSource = "\n[Default]\nDriver=/o/other.so\n";
    const std::string sales = "\n[Sales]\nDriver=/o/other.so\nPWD=secret\n";
    return {
        {"a batch installation",
         {"[ODBC Drivers]\nOther=Installed\nD=Installed\n\n[Other]\nDriver=/o/other.so\n" + rest +
              "\n[D]\nDriver=/l/d.so\nAPILevel=1\nSetup=/l/s.so\n\n[ODBC Translators]\nT=Installed\n\n"
              "[T]\nTranslator=/l/t.so\n",
          kOtherSource + "Sales=D\nAccounts=D\n"s + kMine + defaultSource +
              "\n[Sales]\nDriver=/l/d.so\n\n[Accounts]\nDriver=/l/d.so\n"},
         installBatch},
        {"a driver from a list",
         {kOtherDriver + "\n[D]\nDriver=/l/d.so\nNote=old\nSetup=/l/s.so\nA=1\n"s + rest,
          kOtherSource + "Sales=D\n"s + kMine + defaultSource + "\n[Sales]\nDriver=/l/d.so\n"},
         [] { return installDriver(nullptr, "D\0Driver=/l/d.so\0Setup=/l/s.so\0CreateDSN=Sales\0A=1\0"); }},
        {"a driver from a script",
         {kOtherDriver + "\n[D]\nDriver=/old/d.so\nNote=old\nSetup=/old/d.so\nSQLLevel=1\n"s + rest,
          kOtherSource + "Sales=Other\nCreateDSN=D\n"s + kMine + sales + defaultSource +
              "\n[CreateDSN]\nDriver=/old/d.so\n"},
         [script] { return installDriver(script.c_str(), "D"); }},
        {"a data source",
         {before.drivers, kOtherSource + "Sales=D\n"s + kMine + defaultSource + "\n[Sales]\nDriver=/old/d.so\n"},
         [] { return SQLWriteDSNToIni("Sales", "D") != FALSE; }},
        {"the default data source",
         {kOtherDriver + "\n[D]\nDriver=/old/d.so\nNote=old\n\n[Default]\nDriver=D\n"s,
          kOtherSource + "Sales=Other\n"s + kMine + sales + "\n[Default]\nDriver=/old/d.so\n"},
         [] { return SQLWriteDSNToIni("Default", "D") != FALSE; }},
        {"the removal of a data source",
         {before.drivers, kOtherSource + std::string(kMine) + defaultSource},
         [] { return SQLRemoveDSNFromIni("Sales") != FALSE; }},
        {"the removal of the default data source",
         {kOtherDriver + "\n[D]\nDriver=/old/d.so\nNote=old\n\n"s,
          kOtherSource + "Sales=Other\n"s + kMine + sales + "\n"},
         [] { return SQLRemoveDSNFromIni("Default") != FALSE; }},
    };
}

}  // namespace jx::test
