// Drivers that lie on the disk: their names, their templates, who registered them.
#include "odbcadmin/doctor/driver_scan.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "doctor_fixture.h"
#include "odbcadmin/doctor/examination.h"
#include "run_program.h"

namespace jx::doctor::test {
namespace {

using jx::test::ProgramResult;

class DriverScan : public testing::Test {
protected:
    DriverScan() {
        std::filesystem::create_directories(home_.file("usr/share/acme"));
        home_.take("libdriver.so", "usr/lib/odbc/libacme.so");
        home_.take("libdriver.so", "usr/lib/odbc/psqlodbcw.so");
        home_.take("libdriver.so", "usr/lib/odbc/libplain.so");
        home_.take("libsetup.so", "usr/lib/libacmeS.so");
        home_.put("usr/share/acme/odbcinst.ini",
                  "[Acme Unicode]\nDriver\t= libacme.so\nSetup = libacmeS.so\nDebug = 0\nUsage =\n");
        home_.put(".odbcinst.ini", "");
    }

    std::string run(const std::vector<std::string>& arguments) {
        const ProgramResult result = jx::test::runProgram(JX_ODBCADMIN, arguments);
        return replaced(std::to_string(result.code) + "\n" + result.out + "--\n" + result.err, home_.path(), "~");
    }

    std::string libraries() const { return home_.file("usr/lib/odbc"); }

    DoctorHome home_;
};

TEST_F(DriverScan, NamesComeFromTemplatesAndFromWhatIsKnown) {
    EXPECT_EQ(
        run({"driver", "scan", libraries()}),
        "0\n"
        "odbcadmin driver add 'Acme Unicode' --lib ~/usr/lib/odbc/libacme.so --setup ~/usr/lib/libacmeS.so Debug=0\n"
        "odbcadmin driver add plain --lib ~/usr/lib/odbc/libplain.so\n"
        "odbcadmin driver add 'PostgreSQL Unicode' --lib ~/usr/lib/odbc/psqlodbcw.so\n--\n");
}

TEST_F(DriverScan, AdoptRegistersUnderTheNameThatScanShows) {
    EXPECT_EQ(run({"driver", "adopt", "acme unicode", "--in", libraries()}), "0\nRegistered driver Acme Unicode\n--\n");
    EXPECT_EQ(home_.text(".odbcinst.ini"),
              "[ODBC Drivers]\nAcme Unicode=Installed\n\n[Acme Unicode]\nDriver=" + libraries() +
                  "/libacme.so\nSetup=" + home_.file("usr/lib/libacmeS.so") + "\nDebug=0\n");
    EXPECT_EQ(run({"driver", "adopt", "Acme Unicode", "--in", libraries()}), "0\nunchanged: nothing to do\n--\n");
    EXPECT_EQ(run({"driver", "adopt", libraries() + "/libplain.so", "plain", "--in", libraries()}),
              "0\nRegistered driver plain\n--\n");
}

TEST_F(DriverScan, AdoptNamesWhatIsNear) {
    EXPECT_EQ(run({"driver", "adopt", "Acme Unicoed", "--in", libraries()}),
              "3\n--\nodbcadmin: No driver Acme Unicoed was found in ~/usr/lib/odbc\n  Did you mean Acme Unicode?\n");
    EXPECT_EQ(run({"driver", "adopt", "x", "--in", home_.file("none")}).substr(0, 2), "7\n");
    home_.put(".odbcinst.ini", "[Plain]\nDriver=/other.so\n");
    EXPECT_EQ(run({"driver", "adopt", "plain", "--in", libraries()}).substr(0, 2), "4\n");
}

TEST_F(DriverScan, TellsWhereADriverIsRegistered) {
    home_.put(".odbcinst.ini", "[Mine]\nDriver=" + libraries() + "/libacme.so\n");
    EXPECT_NE(run({"driver", "scan", libraries()})
                  .find("# ~/usr/lib/odbc/libacme.so is registered: Mine, ~/.odbcinst.ini:2\n"),
              std::string::npos);
    EXPECT_NE(run({"driver", "scan", libraries(), "--json"}).find("\"registeredAs\": \"Mine\""), std::string::npos);
}

TEST_F(DriverScan, ATemplateThatWasNeverRegisteredIsNoted) {
    home_.put("usr/share/acme/odbcinst.ini.old", "[Gone]\nDriver=libgone.so\n");
    ExaminationOptions options;
    options.library.places = loaderPlaces();
    options.dataFolders = {home_.file("usr/share")};
    EXPECT_EQ(home_.dump(checkTemplates(model::Configuration::read(), options)),
              "note environment.driver-unregistered driver Acme Unicode\n"
              "  ~/usr/share/acme/odbcinst.ini has the driver, ~/usr/lib/odbc/libacme.so is there, and no driver is "
              "registered with it.\n"
              "  Register it: odbcadmin driver add -f ~/usr/share/acme/odbcinst.ini 'Acme Unicode'\n");
    run({"driver", "add", "-f", home_.file("usr/share/acme/odbcinst.ini")});
    EXPECT_EQ(home_.dump(checkTemplates(model::Configuration::read(), options)), "");
}

// Each file of the folder, why it is no driver, or under which name it is one.
TEST_F(DriverScan, KnowsDriversByWhatTheyOffer) {
    const std::string folder = home_.file("mixed");
    std::filesystem::create_directories(folder + "/libfolder.so");
    home_.take("libdriver.so", "mixed/notes.sorry");
    home_.take("libdriver.so", "mixed/driver");
    home_.take("libdriver.so", "mixed/libodbc.so.2");
    home_.take("libsetup.so", "mixed/libset.so");
    home_.put("mixed/libtext.so", "text");
    home_.put("mixed/libempty.so", "");
    home_.take("libdriver.so", "mixed/libzeta.so.1.2");
    std::filesystem::create_symlink("libzeta.so.1.2", folder + "/libzeta.so");
    std::filesystem::create_symlink("nowhere.so", folder + "/libgone.so");
    std::string foreign(64, '\0');
    foreign.replace(0, 6,
                    "\x7F"
                    "ELF\x02\x02");
    home_.put("mixed/libforeign.so", foreign);
    home_.take("libdriver.so", "mixed/alpha.so");
    home_.take("libsetup.so", "mixed/alpha_setup.so");
    EXPECT_EQ(run({"driver", "scan", folder}),
              "0\nodbcadmin driver add alpha --lib ~/mixed/alpha.so --setup ~/mixed/alpha_setup.so\n"
              "odbcadmin driver add zeta --lib ~/mixed/libzeta.so\n--\n");
    EXPECT_EQ(run({"driver", "scan", folder, "-q"}), "0\n~/mixed/alpha.so\n~/mixed/libzeta.so\n--\n");
}

// Shown in the order of these names, which need not be that of the files.
TEST_F(DriverScan, AFileOfSeveralNamesIsKnownByTheShortest) {
    home_.take("libdriver.so", "names/zulu.so.1");
    home_.take("libdriver.so", "names/mike.so");
    for (const char* name : {"a-very-long-name.so", "b.so", "c-long-name.so"})
        std::filesystem::create_symlink("zulu.so.1", home_.file("names/" + std::string(name)));
    EXPECT_EQ(run({"driver", "scan", home_.file("names"), "-q"}), "0\n~/names/b.so\n~/names/mike.so\n--\n");
}

TEST_F(DriverScan, JsonHoldsAllThatIsKnownOfEachDriver) {
    home_.put(".odbcinst.ini", "[Mine]\nDriver=" + libraries() + "/libplain.so\n");
    EXPECT_EQ(run({"driver", "scan", libraries(), "--json"}), R"(0
{
  "schema": "odbcadmin/1",
  "directories": [
    "~/usr/lib/odbc"
  ],
  "drivers": [
    {
      "name": "Acme Unicode",
      "lib": "~/usr/lib/odbc/libacme.so",
      "setup": "~/usr/lib/libacmeS.so",
      "keys": {
        "Debug": "0"
      },
      "registered": false
    },
    {
      "name": "plain",
      "lib": "~/usr/lib/odbc/libplain.so",
      "setup": "",
      "keys": {},
      "registered": true,
      "registeredAs": "Mine",
      "where": "~/.odbcinst.ini:2"
    },
    {
      "name": "PostgreSQL Unicode",
      "lib": "~/usr/lib/odbc/psqlodbcw.so",
      "setup": "",
      "keys": {},
      "registered": false
    }
  ]
}
--
)");
    std::filesystem::create_directories(home_.file("none"));
    EXPECT_EQ(run({"driver", "scan", home_.file("none"), "--json"}),
              "0\n{\n  \"schema\": \"odbcadmin/1\",\n  \"directories\": [\n    \"~/none\"\n  ],\n"
              "  \"drivers\": []\n}\n--\n");
}

TEST_F(DriverScan, AdoptOfSeveralIsAllOrNothing) {
    const std::string before = "[Plain]\nDriver=/other.so\n";
    home_.put(".odbcinst.ini", before);
    EXPECT_EQ(run({"driver", "adopt", "Acme Unicode", "plain", "--in", libraries()}),
              "4\n--\nodbcadmin: There is a driver plain in ~/.odbcinst.ini\n"
              "  Use odbcadmin driver ensure to change it.\n");
    EXPECT_EQ(run({"driver", "adopt", "Acme Unicode", "nothing", "--in", libraries()}),
              "3\n--\nodbcadmin: No driver nothing was found in ~/usr/lib/odbc\n"
              "  odbcadmin driver scan shows what there is.\n");
    EXPECT_EQ(home_.text(".odbcinst.ini"), before);
    home_.put(".odbcinst.ini", "");
    EXPECT_EQ(run({"driver", "adopt", "plain", "Acme Unicode", "--in", libraries()}),
              "0\nRegistered driver plain, Acme Unicode\n--\n");
    EXPECT_EQ(home_.text(".odbcinst.ini").find("[ODBC Drivers]\nplain=Installed\nAcme Unicode=Installed\n"), 0U);
}

TEST_F(DriverScan, ATemplateMayNameTheSetupLibraryAlone) {
    home_.put("usr/share/acme/odbcinst.ini", "[Acme]\nDriver=libacme.so\nSetup=libgone.so\n");
    home_.put("usr/share/acme/other.ini", "[Plain]\nDriver=libplain.so\n");
    EXPECT_EQ(run({"driver", "scan", libraries(), "--json"}).find("libgone"), std::string::npos);
    EXPECT_EQ(run({"driver", "add", "-f", home_.file("usr/share/acme/odbcinst.ini")}),
              "0\nRegistered driver Acme from ~/usr/share/acme/odbcinst.ini\n--\n");
    EXPECT_EQ(home_.text(".odbcinst.ini"),
              "[ODBC Drivers]\nAcme=Installed\n\n[Acme]\nDriver=" + libraries() + "/libacme.so\n");
}

}  // namespace
}  // namespace jx::doctor::test
