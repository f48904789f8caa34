// Drivers from the templates that their packages bring.
#include <filesystem>

#include "admin_test.h"

namespace jx::test {
namespace {

class Templates : public AdminTest {
protected:
    Templates() {
        for (const char* folder : {"usr/share/acme", "usr/lib/odbc"})
            std::filesystem::create_directories(home_.file(folder));
        home_.put("usr/lib/odbc/libacmea.so", "x");
        home_.put("usr/lib/odbc/libacmew.so", "x");
        home_.put(kTemplate,
                  "[Acme ANSI]\nDescription\t= The driver (8 bits)\nDriver\t\t= libacmea.so\nSetup\t\t= libnone.so\n"
                  "Debug\t\t= 0\nCPTimeout\t=\n\n[Acme Unicode]\nDriver=libacmew.so\n");
    }

    std::string library(const char* name) const { return home_.file(std::string("usr/lib/odbc/") + name); }

    static constexpr const char* kTemplate = "usr/share/acme/odbcinst.ini.template";
};

TEST_F(Templates, AddRegistersEveryDriverOfATemplateInOneChange) {
    EXPECT_EQ(out({"driver", "add", "-f", home_.file(kTemplate)}),
              "Registered driver Acme ANSI, Acme Unicode from " + home_.file(kTemplate) + "\n");
    EXPECT_EQ(drivers(),
              with(kDrivers, "Plain=Installed\n", "Plain=Installed\nAcme ANSI=Installed\nAcme Unicode=Installed\n") +
                  "\n[Acme ANSI]\nDriver=" + library("libacmea.so") +
                  "\nDescription=The driver (8 bits)\nDebug=0\n\n[Acme Unicode]\nDriver=" + library("libacmew.so") +
                  "\n");
}

TEST_F(Templates, AddOfATemplateIsIdempotentAndKeepsWhatAUserChanged) {
    out({"driver", "add", "-f", home_.file(kTemplate)});
    out({"config", "set", ".odbcinst.ini", "Acme ANSI", "Debug", "1"});
    const std::string before = drivers();
    EXPECT_EQ(out({"driver", "add", "-f", home_.file(kTemplate)}), "unchanged: nothing to do\n");
    EXPECT_EQ(run({"driver", "add", "-f", home_.file(kTemplate), "--check"}).code, 0);
    EXPECT_EQ(drivers(), before);
    // What moved is found again.
    out({"config", "set", ".odbcinst.ini", "Acme ANSI", "Driver", "/gone/libacmea.so"});
    out({"driver", "add", "-f", home_.file(kTemplate)});
    EXPECT_EQ(drivers(), before);
}

TEST_F(Templates, AddTakesOneDriverOfATemplate) {
    out({"driver", "add", "-f", home_.file(kTemplate), "acme unicode"});
    EXPECT_EQ(drivers(), with(kDrivers, "Plain=Installed\n", "Plain=Installed\nAcme Unicode=Installed\n") +
                             "\n[Acme Unicode]\nDriver=" + library("libacmew.so") + "\n");
}

TEST_F(Templates, AddRefusesWhatItCannotRegisterWhole) {
    const auto refused = [&](const std::vector<std::string>& more, int code, const std::string& sentence) {
        std::vector<std::string> line{"driver", "add", "-f", home_.file(kTemplate)};
        line.insert(line.end(), more.begin(), more.end());
        const ProgramResult result = run(line);
        EXPECT_EQ(result.code, code);
        EXPECT_NE(result.err.find(sentence), std::string::npos) << result.err;
        EXPECT_EQ(drivers(), kDrivers);
    };
    refused({"Acme Unicoed"}, 3, "Did you mean Acme Unicode?");
    refused({"--lib", "/x.so"}, 2, "-f takes everything from the template");
    std::filesystem::remove(library("libacmew.so"));
    refused({}, 3, "The library was not found where drivers are installed: Acme Unicode (libacmew.so)");
    home_.put(kTemplate, "[ODBC Drivers]\nA=Installed\n[Default]\nDriver=x.so\n");
    refused({}, 3, "There is no section with a Driver in");
    home_.put(kTemplate, "");
    refused({}, 3, "There is no section with a Driver in");
    std::filesystem::remove(home_.file(kTemplate));
    refused({}, 7, "There is no file ");
    std::filesystem::create_directory(home_.file(kTemplate));
    refused({}, 7, "");
}

TEST_F(Templates, AddWithoutATemplateNeedsNameAndLibrary) {
    EXPECT_NE(run({"driver", "add"}).err.find("NAME is required"), std::string::npos);
    EXPECT_NE(run({"driver", "add", "X"}).err.find("--lib is required"), std::string::npos);
    EXPECT_EQ(run({"driver", "add", "X"}).code, 2);
}

}  // namespace
}  // namespace jx::test
