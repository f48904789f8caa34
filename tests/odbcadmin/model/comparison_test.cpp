// What became of the entries between two looks at the files.
#include "odbcadmin/model/comparison.h"

#include "model_fixture.h"

namespace jx::model::test {
namespace {

class ComparisonTest : public ModelTest {
protected:
    static std::string dump(const std::vector<Compared>& rows) {
        std::string text;
        for (const Compared& row : rows)
            text.append(text.empty() ? "" : ", ").append(row.name + " " + statusWord(row.status));
        return text;
    }
};

TEST_F(ComparisonTest, TellsWhatIsNewAndWhatSaysSomethingElse) {
    const Configuration before = Configuration::read();
    EXPECT_EQ(dump(compareRegistered(kDriverKind, before, Configuration::read())), "Plain unchanged");
    home_.put(".odbcinst.ini", std::string(kDrivers) +
                                   "More=1\n[ODBC Drivers]\nNew=Installed\n[New]\nDriver=/new.so\n"
                                   "[ODBC Translators]\nLatin=Installed\n");
    home_.put(".odbc.ini",
              "[odbc data sources]\nSALES=Plain\nAccounts=Other\nStock=Plain\n[sales]\nDriver=/opt/libplain.so\n"
              "Server=db1\nPWD=geheim\n[Accounts]\nDriver=/opt/libplain.so\n");
    const Configuration after = Configuration::read();
    EXPECT_EQ(dump(compareRegistered(kDriverKind, before, after)), "Plain changed, New added");
    EXPECT_EQ(dump(compareRegistered(kTranslatorKind, before, after)), "Latin added");
    EXPECT_EQ(dump(compareDataSources(before, after)), "SALES unchanged, Accounts changed, Stock added");
}

TEST_F(ComparisonTest, SeesEachKindOfChange) {
    const struct {
        std::string before, after, told;
    } rows[] = {
        {"[A]\nDriver=/a\n", "[A]\nDriver=/a\n", "A unchanged"},
        {"[A]\nDriver=/a\n", "[A]\nDriver=/b\n", "A changed"},
        {"[A]\nDriver=/a\n", "[A]\nDriver=/a\nk=v\n", "A changed"},
        {"[A]\nDriver=/a\nk=v\n", "[A]\nDriver=/a\n", "A changed"},
        {"[A]\nDriver=/a\n", "[A]\nDriver=/a\n[ODBC Drivers]\nA=Installed\n", "A changed"},
        {"[ODBC Drivers]\nA=\n", "[ODBC Drivers]\nA=\n[A]\nk=v\n", "A changed"},
        {"[ODBC Drivers]\nA=\n[A]\nk=v\n", "[ODBC Drivers]\nA=\n", "A changed"},
        {"[ODBC Drivers]\nA=1\n", "[ODBC Drivers]\nA=2\n", "A changed"},
        {"[ODBC Drivers]\nA=1\n", "; moved\n[ODBC Drivers]\n\nA = 1\n", "A unchanged"},
        {"[ODBC Drivers]\nA=1\n", "", ""},
        {"[A]\nDriver=/a\nk=v\n", "[ODBC Drivers]\nA=\n[A]\nDriver=/a\nk=v\n", "A changed"},
        {"[ODBC Drivers]\nA=\n[A]\nDriver=/a\nk=v\n", "[A]\nDriver=/a\nk=v\n", "A changed"},
        {"[A]\nDriver=/a\nk=v\n", "[A]\nDriver=/a\nk=w\n", "A changed"},
        {"[A]\nDriver=/a\nk=v\n", "[A]\nDriver=/a\nK=v\n", "A changed"},
        {"[A]\nDriver=/a\na=1\nb=2\n", "[A]\nDriver=/a\nb=2\na=1\n", "A changed"},
        {"[A]\nDriver=/a\nk=v\n", "[A]\nDriver=/a\n; note\nk = v\n", "A unchanged"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before + "---\n" + row.after);
        home_.put(".odbcinst.ini", row.before);
        const Configuration before = Configuration::read();
        home_.put(".odbcinst.ini", row.after);
        EXPECT_EQ(dump(compareRegistered(kDriverKind, before, Configuration::read())), row.told);
    }
}

}  // namespace
}  // namespace jx::model::test
