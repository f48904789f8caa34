// driver, translator and trace.
#include "admin_test.h"

namespace jx::test {
namespace {

class Drivers : public AdminTest {};

TEST_F(Drivers, AddRegistersAndKeepsTheRest) {
    const ProgramResult result =
        run({"driver", "add", "New Driver", "--lib", "/opt/new.so", "--setup", "/opt/set.so", "FileUsage=1"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "Added driver New Driver\n");
    EXPECT_NE(result.err.find("the library /opt/new.so is not there"), std::string::npos);
    EXPECT_NE(result.err.find("the setup library /opt/set.so is not there"), std::string::npos);
    EXPECT_EQ(drivers(), with(kDrivers, "Plain=Installed\n", "Plain=Installed\nNew Driver=Installed\n") +
                             "\n[New Driver]\nDriver=/opt/new.so\nSetup=/opt/set.so\nFileUsage=1\n");
    EXPECT_EQ(sources(), kSources);
}

TEST_F(Drivers, AddMakesPathsAbsoluteAndLeavesNamesToTheLoader) {
    out({"driver", "add", "A", "--lib", "lib/../b.so", "-q"});
    EXPECT_EQ(out({"config", "get", ".odbcinst.ini", "A", "Driver"}).front(), '/');
    out({"driver", "add", "B", "--lib", "libb.so"});
    EXPECT_EQ(out({"config", "get", ".odbcinst.ini", "B", "Driver"}), "libb.so\n");
}

TEST_F(Drivers, OneWithoutASetupLibraryGetsTheGeneralOneUnlessThatIsNotWanted) {
    const std::string general = " with the general setup library " JX_SETUP_LIBRARY "\n";
    const std::string setup = "Setup=" JX_SETUP_LIBRARY "\n";
    EXPECT_EQ(out({"driver", "add", "A", "--lib", "liba.so"}), "Added driver A" + general);
    EXPECT_EQ(out({"driver", "show", "A", "-q"}), "[A]\nDriver=liba.so\n" + setup);
    EXPECT_EQ(out({"driver", "add", "B", "--lib", "libb.so", "--no-setup"}), "Added driver B\n");
    EXPECT_EQ(out({"driver", "show", "B", "-q"}), "[B]\nDriver=libb.so\n");
    EXPECT_EQ(out({"driver", "add", "C", "--lib", "libc.so", "--setup", "libs.so"}), "Added driver C\n");
    EXPECT_EQ(out({"driver", "ensure", "C"}), "unchanged: nothing to do\n");
    EXPECT_EQ(out({"driver", "ensure", "B"}), "Changed driver B" + general);
    EXPECT_EQ(out({"driver", "ensure", "B"}), "unchanged: nothing to do\n");
    EXPECT_EQ(out({"driver", "show", "B", "-q"}), "[B]\nDriver=libb.so\n" + setup);
    EXPECT_EQ(run({"translator", "add", "T", "--lib", "libt.so"}).out, "Added translator T\n");
}

TEST_F(Drivers, AddRefusesWhatIsThere) {
    EXPECT_EQ(run({"driver", "add", "plain", "--lib", "/x.so"}).code, 4);
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(Drivers, RefusesNamesTheFileCouldNotGiveBack) {
    for (const char* name : {"", "a ", "a=b", "[a", "a ;b", "ODBC Drivers", "odbc translators", "Default", "ODBC"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(run({"driver", "add", name, "--lib", "/x.so"}).code, 5);
        EXPECT_EQ(run({"driver", "ensure", name, "--lib", "/x.so"}).code, 5);
        EXPECT_EQ(run({"driver", "remove", name}).code, 5);
        EXPECT_EQ(run({"translator", "add", name, "--lib", "/x.so"}).code, 5);
    }
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(Drivers, EnsureIsIdempotent) {
    const std::vector<std::string> line{"-q",    "driver",      "ensure",     "Plain",
                                        "--lib", "/opt/two.so", "--no-setup", "FileUsage=2"};
    out(line);
    const std::string after =
        with(with(kDrivers, "Driver=/opt/libplain.so", "Driver=/opt/two.so"), "FileUsage=0", "FileUsage=2");
    EXPECT_EQ(drivers(), after);
    EXPECT_EQ(out({"driver", "ensure", "Plain", "--lib", "/opt/two.so", "--no-setup", "FileUsage=2"}),
              "unchanged: nothing to do\n");
    EXPECT_EQ(drivers(), after);
    EXPECT_EQ(out({"driver", "ensure", "Plain", "--no-setup"}), "unchanged: nothing to do\n");
    EXPECT_EQ(run({"driver", "ensure", "Other"}).code, 2);
}

TEST_F(Drivers, ListTellsTheStateOfEachLibrary) {
    home_.put("text.so", "no library");
    out({"-q", "driver", "add", "Good", "--lib", JX_ECHO});
    out({"-q", "driver", "add", "Text", "--lib", home_.file("text.so")});
    EXPECT_EQ(out({"driver", "list"}), "Plain  missing  /opt/libplain.so\nGood   ok       " JX_ECHO
                                       "\nText   broken   " +
                                           home_.file("text.so") + "\n");
    EXPECT_EQ(out({"driver", "list", "-q"}), "Plain\nGood\nText\n");
    EXPECT_EQ(json({"driver", "list"})["drivers"][1]["state"], "ok");
}

TEST_F(Drivers, ListNamesSectionsThatAreNotOnTheList) {
    home_.put(".odbcinst.ini", "[Loose]\nDriver=/x.so\n[Default]\nDriver=Loose\n[T]\nTranslator=/t.so\n");
    EXPECT_EQ(out({"driver", "list"}), "Loose  missing  /x.so  (not listed)\n");
}

TEST_F(Drivers, ShowTellsKeysAndUsers) {
    EXPECT_EQ(out({"driver", "show", "plain", "-q"}), "[Plain]\nDriver=/opt/libplain.so\nFileUsage=0\n");
    const auto shown = json({"driver", "show", "Plain"});
    EXPECT_EQ(shown["keys"]["FileUsage"], "0");
    EXPECT_EQ(shown["dataSources"], (nlohmann::ordered_json{"Sales", "Accounts"}));
    const ProgramResult wrong = run({"driver", "show", "Plaim"});
    EXPECT_EQ(wrong.code, 3);
    EXPECT_NE(wrong.err.find("Did you mean Plain?"), std::string::npos);
}

TEST_F(Drivers, RemoveSparesTheLibraryAndWarnsOfUsers) {
    home_.put("lib.so", "bytes");
    out({"-q", "driver", "ensure", "Plain", "--lib", home_.file("lib.so")});
    const ProgramResult result = run({"driver", "remove", "Plain"});
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.err.find("these data sources use it still: Sales, Accounts"), std::string::npos);
    EXPECT_EQ(drivers(), "[ODBC Drivers]\n\n");
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(home_.text("lib.so"), "bytes");
    EXPECT_EQ(run({"driver", "remove", "Plain"}).code, 3);
}

TEST_F(Drivers, RemoveWithDataSourcesTakesThemToo) {
    EXPECT_EQ(out({"driver", "remove", "Plain", "--with-dsns"}),
              "Removed driver Plain and data source Sales, Accounts\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "");
    EXPECT_EQ(out({"config", "get", ".odbc.ini", "ODBC", "Trace"}), "0\n");
}

TEST_F(Drivers, TranslatorsAreAddedListedAndRemoved) {
    out({"translator", "add", "Latin", "--lib", "/opt/latin.so", "--setup", "/opt/set.so"});
    EXPECT_EQ(drivers(), std::string(kDrivers) +
                             "\n[ODBC Translators]\nLatin=Installed\n\n[Latin]\n"
                             "Translator=/opt/latin.so\nSetup=/opt/set.so\n");
    EXPECT_EQ(run({"translator", "add", "latin", "--lib", "/x.so"}).code, 4);
    EXPECT_EQ(run({"translator", "add", "Plain", "--lib", "/x.so"}).code, 4);
    EXPECT_EQ(out({"translator", "list"}), "Latin  /opt/latin.so\n");
    EXPECT_EQ(json({"translator", "list"})["translators"][0]["setup"], "/opt/set.so");
    EXPECT_EQ(run({"translator", "remove", "Latim"}).code, 3);
    out({"translator", "remove", "Latin"});
    EXPECT_EQ(out({"translator", "list", "-q"}), "");
}

TEST_F(Drivers, TraceIsSwitchedAndShown) {
    EXPECT_EQ(out({"trace", "status"}), "Tracing is off, file sql.log\n");
    EXPECT_EQ(out({"trace", "off"}), "unchanged: nothing to do\n");
    EXPECT_EQ(out({"trace", "on", home_.file("t.log")}), "Tracing to " + home_.file("t.log") + "\n");
    EXPECT_EQ(sources(), with(kSources, "Trace=0\n", "Trace=1\nTraceFile=" + home_.file("t.log") + "\n"));
    home_.put("t.log", "12345");
    EXPECT_EQ(out({"trace", "status"}), "Tracing is on, file " + home_.file("t.log") + " (5 bytes)\n");
    EXPECT_EQ(json({"trace", "status"})["bytes"], 5);
    EXPECT_EQ(out({"trace", "off"}), "Tracing is off\n");
    EXPECT_EQ(sources(), with(kSources, "Trace=0\n", "Trace=0\nTraceFile=" + home_.file("t.log") + "\n"));
    EXPECT_EQ(json({"trace", "status"})["trace"], false);
    EXPECT_EQ(run({"trace", "on", ""}).code, 2);
}

TEST_F(Drivers, TraceOffDoesNotMakeASection) {
    home_.put(".odbc.ini", "");
    out({"trace", "off"});
    EXPECT_EQ(sources(), "");
}

}  // namespace
}  // namespace jx::test
