// dsn add, ensure, set, unset and remove: whole files before and after.
#include <unistd.h>

#include "admin_test.h"

namespace jx::test {
namespace {

class DsnChange : public AdminTest {};

const std::string kAdded = with(kSources, "Accounts=Plain\n", "Accounts=Plain\nStock=Plain\n") +
                           "\n[Stock]\nDriver=/opt/libplain.so\nServer=db2\n";

TEST_F(DsnChange, AddEntersListAndSectionAndKeepsTheRest) {
    const ProgramResult result = run({"dsn", "add", "Stock", "--driver", "plain", "Server=db2"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "Added data source Stock\n");
    EXPECT_EQ(result.err, "odbcadmin: written directly: Plain has no setup library\n");
    EXPECT_EQ(sources(), kAdded);
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(home_.names(), (std::vector<std::string>{".odbc.ini", ".odbcinst.ini"}));
}

TEST_F(DsnChange, AddRefusesANameThatIsThere) {
    for (const char* name : {"Sales", "SALES", "accounts"}) {
        SCOPED_TRACE(name);
        const ProgramResult result = run({"dsn", "add", name, "--driver", "Plain"});
        EXPECT_EQ(result.code, 4);
        EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(sources(), kSources);
}

TEST_F(DsnChange, AddRefusesASectionThatIsNotOnTheListToo) {
    home_.put(".odbc.ini", "[Mine]\nkey=kept\n");
    EXPECT_EQ(run({"dsn", "add", "Mine", "--driver", "Plain"}).code, 4);
    EXPECT_EQ(sources(), "[Mine]\nkey=kept\n");
}

TEST_F(DsnChange, AddNeedsARegisteredDriver) {
    const ProgramResult result = run({"dsn", "add", "Stock", "--driver", "Plani"});
    EXPECT_EQ(result.code, 3);
    EXPECT_NE(result.err.find("Did you mean Plain?"), std::string::npos);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(DsnChange, RefusesNamesTheFileCouldNotGiveBack) {
    for (const char* name : {"",
                             " a",
                             "a ",
                             "a=b",
                             "[a",
                             ";a",
                             "#a",
                             "a ;b",
                             "a #b",
                             "a\nb",
                             "a\rb",
                             "ODBC",
                             "odbc",
                             "a;b",
                             "a,b",
                             "A(B)",
                             "a[b]c",
                             "{}",
                             "x\\y",
                             "a@b",
                             "123456789012345678901234567890123",
                             "ODBC Data Sources",
                             "ODBC DRIVERS",
                             "ODBC Translators"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(run({"dsn", "add", "--driver", "Plain", "--", name}).code, 5);
        EXPECT_EQ(run({"dsn", "ensure", "--driver", "Plain", "--", name}).code, 5);
        EXPECT_EQ(run({"dsn", "copy", "Sales", name}).code, 5);
        EXPECT_EQ(run({"dsn", "rename", "Sales", name}).code, 5);
    }
    EXPECT_EQ(sources(), kSources);
}

TEST_F(DsnChange, TakesEveryNameThatTheStandardAllows) {
    for (const char* name : {"a b", "M\xC3\xBCller \xE2\x82\xAC", "a#b", "\"q\"", "'", "%s", "$HOME", "-dash", "--json",
                             "show", "a.b/c"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(run({"-q", "dsn", "add", "--driver", "Plain", "--", name, "K=[1,2]", "L={}"}).code, 0);
        EXPECT_EQ(out({"dsn", "get", "--", name, "K"}), "[1,2]\n");
        EXPECT_EQ(out({"dsn", "get", "--", name, "L"}), "{}\n");
        EXPECT_EQ(run({"-q", "dsn", "remove", "--", name}).code, 0);
    }
    // The store spares the blank line above a section it removes.
    EXPECT_EQ(sources(), std::string(kSources) + "\n");
}

TEST_F(DsnChange, RefusesValuesAndKeysTheFileCouldNotGiveBack) {
    for (const char* pair : {"K= v", "K=v ", "K=a\nb", "K=a\rb", " K=v", "K =v", "[K=v", ";K=v", "#K=v"}) {
        SCOPED_TRACE(pair);
        EXPECT_EQ(run({"dsn", "add", "Stock", "--driver", "Plain", pair}).code, 5);
        EXPECT_EQ(run({"dsn", "ensure", "Stock", "--driver", "Plain", pair}).code, 5);
        EXPECT_EQ(run({"dsn", "set", "Sales", pair}).code, 5);
    }
    EXPECT_EQ(sources(), kSources);
}

TEST_F(DsnChange, KeepsValuesWithEqualsBracketsAndCommentSigns) {
    out({"dsn", "set", "Sales", "Opt=a=b;c # d", "Empty="});
    EXPECT_EQ(out({"dsn", "get", "Sales", "Opt"}), "a=b;c # d\n");
    EXPECT_EQ(out({"dsn", "get", "Sales", "Empty"}), "\n");
}

TEST_F(DsnChange, RefusesOperandsThatAreNoPairs) {
    for (const char* operand : {"Server", "=x", "Driver=x", "DSN=x", "driver=x"}) {
        SCOPED_TRACE(operand);
        EXPECT_EQ(run({"dsn", "add", "Stock", "--driver", "Plain", operand}).code, 2);
        EXPECT_EQ(run({"dsn", "set", "Sales", operand}).code, 2);
    }
    EXPECT_EQ(run({"dsn", "set", "Sales", "a=1", "A=2"}).code, 2);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(DsnChange, EnsureAddsOnceAndThenSaysUnchanged) {
    const std::vector<std::string> line{"dsn", "ensure", "Stock", "--driver", "Plain", "Server=db2"};
    EXPECT_EQ(out(line), "Added data source Stock\n");
    EXPECT_EQ(sources(), kAdded);
    EXPECT_EQ(out(line), "unchanged: nothing to do\n");
    EXPECT_EQ(sources(), kAdded);
    EXPECT_EQ(json(line)["result"], "unchanged");
}

TEST_F(DsnChange, EnsureKeepsOtherKeysUnlessExact) {
    EXPECT_EQ(out({"dsn", "ensure", "Sales", "Server=db9"}), "Changed data source Sales\n");
    EXPECT_EQ(sources(), with(kSources, "Server = db1", "Server = db9"));
    out({"dsn", "ensure", "Sales", "Server=db9", "--exact"});
    EXPECT_EQ(sources(), with(with(kSources, "Server = db1", "Server = db9"), "PWD=geheim\n", ""));
}

TEST_F(DsnChange, EnsureRepairsListEntryAndDriver) {
    home_.put(".odbc.ini", "[Sales]\nDriver=/old/path.so\nServer=db1\n");
    out({"dsn", "ensure", "Sales", "--driver", "Plain"});
    EXPECT_EQ(sources(), "[Sales]\nDriver=/opt/libplain.so\nServer=db1\n\n[ODBC Data Sources]\nSales=Plain\n");
}

TEST_F(DsnChange, EnsureOfANewOneNeedsADriver) {
    EXPECT_EQ(run({"dsn", "ensure", "Stock"}).code, 2);
}

TEST_F(DsnChange, EnsureFindsTheDriverOfAnUnlistedDataSourceByItsLibrary) {
    home_.put(".odbc.ini", "[Lone]\nDriver=/opt/libplain.so\n[Stray]\nDriver=/opt/libother.so\n");
    EXPECT_EQ(out({"dsn", "ensure", "Lone", "Server=db9"}), "Changed data source Lone\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Lone\nStray\n");
    EXPECT_TRUE(sources().find("Lone=Plain\n") != std::string::npos) << sources();
    const ProgramResult unknown = run({"dsn", "ensure", "Stray", "Server=db9"});
    EXPECT_EQ(unknown.code, 2);
    EXPECT_EQ(unknown.err,
              "odbcadmin: The driver of data source Stray is not known: no driver is registered with its library\n"
              "  Say with --driver what it is to use.\n");
}

TEST_F(DsnChange, SetChangesInPlaceAndAddsAtTheSectionsEnd) {
    EXPECT_EQ(out({"dsn", "set", "Sales", "server=db5", "Timeout=30"}), "Changed data source Sales\n");
    EXPECT_EQ(sources(),
              with(with(kSources, "Server = db1", "Server = db5"), "PWD=geheim\n", "PWD=geheim\nTimeout=30\n"));
}

TEST_F(DsnChange, SetReadsAValueFromStandardInput) {
    for (const char* input : {"new secret", "new secret\n", "new secret\r\n"}) {
        home_.put(".odbc.ini", kSources);
        const ProgramResult result = run({"dsn", "set", "Sales", "PWD", "--stdin", "-q"}, input);
        EXPECT_EQ(result.code, 0) << result.err;
        EXPECT_EQ(sources(), with(kSources, "geheim", "new secret"));
    }
    EXPECT_EQ(run({"dsn", "set", "Sales", "PWD", "--stdin"}, "two\nlines").code, 5);
    EXPECT_EQ(run({"dsn", "set", "Sales", "PWD=x", "--stdin"}, "a").code, 2);
    EXPECT_EQ(run({"dsn", "set", "Sales", "PWD", "UID", "--stdin"}, "a").code, 2);
}

TEST_F(DsnChange, SetOfAnUnknownDataSourceIsNotFound) {
    EXPECT_EQ(run({"dsn", "set", "Nothing", "a=b"}).code, 3);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(DsnChange, UnsetRemovesKeysAndSparesTheDriver) {
    EXPECT_EQ(out({"dsn", "unset", "Sales", "pwd", "Server", "NotThere"}), "Changed data source Sales\n");
    EXPECT_EQ(sources(), with(with(kSources, "PWD=geheim\n", ""), "Server = db1\n", ""));
    EXPECT_EQ(out({"dsn", "unset", "Sales", "pwd"}), "unchanged: nothing to do\n");
    EXPECT_EQ(run({"dsn", "unset", "Sales", "Driver"}).code, 5);
    EXPECT_EQ(run({"dsn", "unset", "Nothing", "pwd"}).code, 3);
    EXPECT_EQ(run({"dsn", "unset", "ODBC", "Trace"}).code, 5);
}

TEST_F(DsnChange, RemoveTakesListEntryAndSection) {
    out({"dsn", "remove", "Accounts"});
    EXPECT_EQ(sources(), with(with(kSources, "Accounts=Plain\n", ""), "[Accounts]\nDriver=/opt/libplain.so\n\n", ""));
}

TEST_F(DsnChange, AnEmptyInputIsNoPasswordUnlessItIsSaidToBeOne) {
    for (const char* input : {"", "\n", "\r\n"}) {
        SCOPED_TRACE(input);
        const ProgramResult result = run({"dsn", "set", "Sales", "PWD", "--stdin"}, input);
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.err,
                  "odbcadmin: Standard input gave no value for PWD; nothing was changed\n"
                  "  Look at the command before the |; --allow-empty stores an empty value.\n");
        EXPECT_EQ(sources(), kSources);
    }
    out({"dsn", "set", "Sales", "PWD", "--stdin", "--allow-empty"});
    EXPECT_EQ(sources(), with(kSources, "PWD=geheim\n", "PWD=\n"));
}

TEST_F(DsnChange, StarsAreNeverStoredAsASecret) {
    const std::vector<std::vector<std::string>> rows = {
        {"dsn", "set", "Sales", "PWD=********"},
        {"dsn", "set", "Sales", "PWD=********", "--direct"},
        {"dsn", "set", "Sales", "Connection=Server=x;Pwd=********"},
        {"dsn", "ensure", "Sales", "pwd=********"},
        {"dsn", "add", "New", "--driver", "Plain", "PWD=********"},
        {"driver", "ensure", "Plain", "Token=********"},
        {"config", "set", ".odbc.ini", "Sales", "PWD", "********"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row));
        const ProgramResult result = run(row);
        EXPECT_EQ(result.code, 5);
        EXPECT_NE(result.err.find("is what a hidden secret is shown as, not the secret\n"), std::string::npos);
    }
    EXPECT_EQ(run({"dsn", "set", "Sales", "PWD", "--stdin"}, "********\n").code, 5);
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(run({"dsn", "set", "Sales", "Comment=********"}).code, 0);
}

TEST_F(DsnChange, RemoveOfSeveralIsAllOrNothing) {
    EXPECT_EQ(run({"dsn", "remove", "Sales", "Nothing"}).code, 3);
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(out({"dsn", "remove", "Sales", "Nothing", "Accounts", "--if-exists"}),
              "Removed data source Sales, Accounts\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "");
    EXPECT_EQ(out({"dsn", "remove", "Sales", "--if-exists"}), "unchanged: nothing to do\n");
    EXPECT_EQ(run({"dsn", "remove", "ODBC"}).code, 5);
}

TEST_F(DsnChange, RenameKeepsEveryKey) {
    out({"dsn", "rename", "Accounts", "Books 2026"});
    EXPECT_EQ(sources(), with(with(kSources, "Accounts=Plain\n", "Books 2026=Plain\n"),
                              "[Accounts]\nDriver=/opt/libplain.so\n\n", "") +
                             "\n[Books 2026]\nDriver=/opt/libplain.so\n");
}

TEST_F(DsnChange, RenameMayChangeCapitalsOnly) {
    out({"dsn", "rename", "Sales", "SALES"});
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Accounts\nSALES\n");
    EXPECT_EQ(out({"dsn", "get", "SALES", "PWD", "--show-secrets"}), "geheim\n");
    EXPECT_EQ(out({"dsn", "rename", "SALES", "SALES"}), "unchanged: nothing to do\n");
}

TEST_F(DsnChange, RenameAndCopyNeverOverwrite) {
    EXPECT_EQ(run({"dsn", "rename", "Sales", "accounts"}).code, 4);
    EXPECT_EQ(run({"dsn", "copy", "Sales", "Accounts"}).code, 4);
    EXPECT_EQ(run({"dsn", "copy", "Sales", "Sales"}).code, 4);
    EXPECT_EQ(run({"dsn", "copy", "Nothing", "New"}).code, 3);
    EXPECT_EQ(run({"dsn", "copy", "Sales", "Default"}).code, 5);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(DsnChange, CopyLeavesTheOldOne) {
    out({"dsn", "copy", "Sales", "Test"});
    EXPECT_EQ(sources(), with(kSources, "Accounts=Plain\n", "Accounts=Plain\nTest=Plain\n") +
                             "\n[Test]\nDriver=/opt/libplain.so\nServer=db1\nPWD=geheim\n");
}

TEST_F(DsnChange, DefaultIsMadeShownAndRemoved) {
    EXPECT_EQ(run({"dsn", "default"}).code, 3);
    EXPECT_EQ(out({"dsn", "default", "Sales"}), "The default data source is now a copy of Sales\n");
    EXPECT_EQ(drivers(), std::string(kDrivers) + "\n[Default]\nDriver=Plain\n");
    EXPECT_EQ(sources(), std::string(kSources) + "\n[Default]\nDriver=/opt/libplain.so\nServer=db1\nPWD=geheim\n");
    EXPECT_EQ(out({"dsn", "default"}), "Default  Plain  same as Sales\n");
    EXPECT_EQ(json({"dsn", "default"})["sameAs"], "Sales");
    EXPECT_EQ(out({"dsn", "default", "Sales"}), "unchanged: nothing to do\n");
    EXPECT_EQ(out({"dsn", "default", "--unset"}), "Removed the default data source\n");
    EXPECT_EQ(out({"dsn", "default", "--unset"}), "unchanged: nothing to do\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Sales\nAccounts\n");
}

TEST_F(DsnChange, DefaultReplacesTheKeysOfTheOneBefore) {
    out({"dsn", "default", "Sales"});
    out({"dsn", "default", "Accounts"});
    EXPECT_EQ(sources(), std::string(kSources) + "\n[Default]\nDriver=/opt/libplain.so\n");
    EXPECT_EQ(run({"dsn", "default", "Nothing"}).code, 3);
    EXPECT_EQ(run({"dsn", "default", "Sales", "--unset"}).code, 2);
}

TEST_F(DsnChange, LineEndsAndByteOrderMarkStay) {
    home_.put(".odbc.ini", "\xEF\xBB\xBF[ODBC Data Sources]\r\nSales=Plain\r\n[Sales]\r\nDriver=/opt/libplain.so\r\n");
    out({"dsn", "set", "Sales", "a=b"});
    EXPECT_EQ(sources(),
              "\xEF\xBB\xBF[ODBC Data Sources]\r\nSales=Plain\r\n[Sales]\r\nDriver=/opt/libplain.so\r\na=b\r\n");
}

}  // namespace
}  // namespace jx::test
