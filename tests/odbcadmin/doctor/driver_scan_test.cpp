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

}  // namespace
}  // namespace jx::doctor::test
