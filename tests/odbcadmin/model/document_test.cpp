// Documents made of files, and files made of documents.
#include "odbcadmin/model/document.h"

#include <filesystem>

#include "model_fixture.h"

namespace jx::model::test {
namespace {

using Secrets = ChangeWay::Secrets;

std::string dump(const std::string& kind, const std::vector<DocumentEntry>& entries) {
    std::string text;
    for (const DocumentEntry& entry : entries) {
        text += kind + " " + entry.name + (entry.driver.empty() ? "" : " for " + entry.driver) + "\n";
        for (const DocumentKey& key : entry.keys)
            text += "  " + key.name + (key.value ? "=" + *key.value : " left out") + "\n";
    }
    return text;
}

std::string dump(const Document& document) {
    return dump("driver", document.drivers) + dump("translator", document.translators) +
           dump("data source", document.dataSources);
}

class DocumentTest : public ModelTest {
protected:
    std::string apply(const Document& document) {
        return change(
            [&](const auto& configuration, const auto& way) { return applyDocument(configuration, document, way); });
    }
};

TEST_F(DocumentTest, HoldsEverythingWithSecretsLeftOut) {
    home_.put(".odbcinst.ini", std::string(kDrivers) +
                                   "[ODBC Translators]\nLatin=Installed\n[Latin]\nTranslator=/l.so\n[Default]\n"
                                   "Driver=Plain\n[Hollow]\nDriver=\n");
    home_.put(".odbc.ini", std::string(kSources) +
                               "[ODBC Data "
                               "Sources]\nGone=Unknown\n[Other]\nDriver=/other.so\n[Default]\nDriver=/"
                               "special.so\nUrl=db://anna:geheim@host/\n");
    const Configuration configuration = Configuration::read();
    const Exchange made = documentOf(configuration, Secrets::masked);
    EXPECT_EQ(dump(made.document), R"(driver Plain
  Driver=/opt/libplain.so
  Setup=/opt/setup.so
  FileUsage=0
translator Latin
  Translator=/l.so
data source Sales for Plain
  Server=db1
  PWD left out
data source Accounts for Plain
data source Other
  Driver=/other.so
data source Default for Plain
  Driver=/special.so
  Url left out
)");
    EXPECT_EQ(secretsLeftOut(made.document), 2U);
    EXPECT_EQ(namesOf(made.leftOut), (std::vector<std::string>{"Gone"}));
    const Exchange open = documentOf(configuration, Secrets::shown);
    EXPECT_EQ(secretsLeftOut(open.document), 0U);
    EXPECT_EQ(open.document.dataSources[0].keys[1].value, "geheim");
}

TEST_F(DocumentTest, AppliedToTheFilesItWasMadeOfItChangesNothing) {
    for (const Secrets secrets : {Secrets::masked, Secrets::shown}) {
        EXPECT_EQ(apply(documentOf(Configuration::read(), secrets).document), "");
        EXPECT_EQ(sources(), kSources);
        EXPECT_EQ(drivers(), kDrivers);
    }
}

TEST_F(DocumentTest, TakesTheSettingsOfTracingAlongAndNothingElseOfTheirSection) {
    home_.put(".odbc.ini", "[ODBC]\nTrace=1\nTraceFile=/tmp/a.log\nOther=x\n");
    const Document document = documentOf(Configuration::read(), Secrets::masked).document;
    home_.put(".odbc.ini", "[ODBC]\nTrace=0\nOther=y\n");
    EXPECT_EQ(apply(document), "");
    EXPECT_EQ(sources(), "[ODBC]\nTrace=1\nOther=y\nTraceFile=/tmp/a.log\n");
}

TEST_F(DocumentTest, AppliedElsewhereItMakesTheSame) {
    const Document document = documentOf(Configuration::read(), Secrets::shown).document;
    home_.put(".odbc.ini", "");
    home_.put(".odbcinst.ini", "");
    EXPECT_EQ(apply(document), "");
    EXPECT_EQ(sources(),
              "[ODBC Data Sources]\nSales=Plain\nAccounts=Plain\n\n[Sales]\nDriver=/opt/libplain.so\nServer=db1\n"
              "PWD=geheim\n\n[Accounts]\nDriver=/opt/libplain.so\n\n[ODBC]\nTrace=0\n");
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(DocumentTest, WhatItDoesNotNameStays) {
    const Document document{
        {{"New", "", {{"Driver", "/new.so"}}}},
        {},
        {{"Stock", "New", {{"Server", "db2"}}}, {"sales", "Plain", {{"Server", "db9"}, {"PWD", {}}}}}};
    EXPECT_EQ(apply(document), "");
    EXPECT_EQ(sources(), with(with(kSources, "Accounts=Plain\n", "Accounts=Plain\nStock=New\n"), "db1", "db9") +
                             "\n[Stock]\nDriver=/new.so\nServer=db2\n");
    EXPECT_EQ(drivers(),
              with(kDrivers, "Plain=Installed\n", "Plain=Installed\nNew=Installed\n") + "\n[New]\nDriver=/new.so\n");
}

TEST_F(DocumentTest, TheDefaultDataSourceGoesIntoBothFiles) {
    EXPECT_EQ(apply({{}, {}, {{"Default", "Plain", {{"Server", "db2"}}}}}), "");
    EXPECT_EQ(sources(), std::string(kSources) + "\n[Default]\nDriver=/opt/libplain.so\nServer=db2\n");
    EXPECT_EQ(drivers(), std::string(kDrivers) + "\n[Default]\nDriver=Plain\n");
}

TEST_F(DocumentTest, IsCheckedWholeBeforeAnythingIsWritten) {
    const DocumentEntry driver{"New", "", {{"Driver", "/new.so"}}};
    const DocumentEntry source{"Stock", "New", {}};
    const struct {
        Document document;
        std::string told;
    } rows[] = {
        {{{driver, {"a;b", "", {{"Driver", "/x"}}}}, {}, {source}},
         "refused: No driver can be called \"a;b\": it holds one of []{};=\"\\ | Choose another name."},
        {{{driver}, {{"ODBC", "", {{"Translator", "/x"}}}}, {source}},
         "refused: No translator can be called \"ODBC\": the section of that name has another use | Choose another "
         "name."},
        {{{driver}, {}, {source, {"a@b", "New", {}}}},
         "refused: No data source can be called \"a@b\": it holds one of []{}(),;?*=!@\\ | Choose another name."},
        {{{driver}, {}, {source, {"B", "Nev", {}}}},
         "not found: There is no driver Nev in ~/.odbcinst.ini | See odbcadmin driver list; odbcadmin driver add "
         "registers one."},
        {{{driver}, {}, {source, {"B", "New", {{"k", "a\nb"}}}}},
         "refused: This value of k cannot be stored: it holds a line break | ~/.odbc.ini could not give it back as it "
         "is; use another one."},
        {{{driver, {"C", "", {{"Driver", "/x"}, {"k=", "v"}}}}, {}, {source}},
         "refused: The key \"k=\" cannot be stored: it holds = | ~/.odbcinst.ini could not give it back as it is; use "
         "another one."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.told);
        EXPECT_EQ(apply(row.document), row.told);
        EXPECT_EQ(sources(), kSources);
        EXPECT_EQ(drivers(), kDrivers);
    }
}

// Names that the rules for new ones forbid stay within reach of whoever has them.
TEST_F(DocumentTest, ChangesWhatHasAForbiddenNameAlready) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\na@b=Plain\n[a@b]\nDriver=/opt/libplain.so\n");
    EXPECT_EQ(apply(documentOf(Configuration::read(), Secrets::shown).document), "");
    EXPECT_EQ(apply({{}, {}, {{"A@B", "Plain", {{"k", "v"}}}}}), "");
    EXPECT_EQ(sources(), "[ODBC Data Sources]\na@b=Plain\n[a@b]\nDriver=/opt/libplain.so\nk=v\n");
}

TEST_F(DocumentTest, WhenTheSecondFileCannotBeWrittenTheFirstIsNotEither) {
    std::filesystem::remove(home_.file(".odbc.ini"));
    std::filesystem::create_directory(home_.file(".odbc.ini"));
    const ChangeResult result =
        applyDocument(Configuration::read(), {{{"New", "", {{"Driver", "/new.so"}}}}, {}, {{"Stock", "New", {}}}}, {});
    EXPECT_TRUE(told(result.reason).starts_with("file trouble: ")) << told(result.reason);
    EXPECT_TRUE(result.files.empty());
    EXPECT_EQ(drivers(), kDrivers);
}

// What stands in both scopes is in the document twice, each in its own.
TEST_F(DocumentTest, CarriesTheScopeThereAndBack) {
    home_.putSystem("odbcinst.ini", "[ODBC Drivers]\nPlain=Installed\n\n[Plain]\nDriver=/opt/wide.so\n");
    home_.putSystem("odbc.ini", "[ODBC Data Sources]\nSales=Plain\n\n[Sales]\nDriver=/opt/wide.so\nServer=db9\n");
    home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Plain\n\n[Sales]\nDriver=/opt/libplain.so\nServer=db1\n");
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nPlain=Installed\n\n[Plain]\nDriver=/opt/libplain.so\n");
    const std::string before = sources() + drivers() + home_.systemText("odbc.ini") + home_.systemText("odbcinst.ini");
    const Document document = documentOf(Configuration::read(Scopes()), Secrets::shown).document;
    ASSERT_EQ(document.dataSources.size(), 2U);
    EXPECT_EQ(document.dataSources[0].scope, Scope::user);
    EXPECT_EQ(document.dataSources[1].scope, Scope::system);
    // The path goes with the driver of its own scope.
    EXPECT_EQ(dump("data source", document.dataSources),
              "data source Sales for Plain\n  Server=db1\n"
              "data source Sales for Plain\n  Server=db9\n");
    for (const char* name : {".odbc.ini", ".odbcinst.ini"})
        home_.put(name, "");
    for (const char* name : {"odbc.ini", "odbcinst.ini"})
        home_.putSystem(name, "");
    EXPECT_EQ(told(applyDocument(Configuration::read(Scopes()), document, ChangeWay()).reason), "");
    EXPECT_EQ(sources() + drivers() + home_.systemText("odbc.ini") + home_.systemText("odbcinst.ini"), before);
}

TEST_F(DocumentTest, ASystemsDataSourceNeedsADriverThatAllUsersHave) {
    Document document;
    document.dataSources.push_back({"Stock", "Plain", {}, Scope::system});
    EXPECT_EQ(
        told(applyDocument(Configuration::read(Scopes()), document, ChangeWay()).reason),
        "not found: The driver Plain stands in ~/.odbcinst.ini only, the file of the user | Leave --system out, or "
        "copy it first: see odbcadmin driver copy --help.");
    EXPECT_EQ(home_.systemText("odbc.ini"), "(absent)");
    document.drivers.push_back({"Plain", "", {{"Driver", "/all.so"}}, Scope::system});
    EXPECT_EQ(told(applyDocument(Configuration::read(Scopes()), document, ChangeWay()).reason), "");
    EXPECT_EQ(home_.systemText("odbc.ini"), "[ODBC Data Sources]\nStock=Plain\n\n[Stock]\nDriver=/all.so\n");
}

TEST_F(DocumentTest, WhatItHasNotIsSuperfluousInItsScopeAndGoesWhenAsked) {
    home_.putSystem("odbc.ini", "[Stock]\nDriver=/all.so\n\n[ODBC]\nTrace=0\n");
    Document document;
    document.dataSources.push_back({"sales", "Plain", {}});
    document.drivers.push_back({"Plain", "", {{"Driver", "/opt/libplain.so"}}});
    const Superfluous user = superfluous(document, Scope::user);
    EXPECT_EQ(user.dataSources, (std::vector<std::string>{"Accounts"}));
    EXPECT_EQ(user.count(), 1U);
    const Superfluous system = superfluous(document, Scope::system);
    EXPECT_EQ(system.dataSources, (std::vector<std::string>{"Stock"}));
    EXPECT_EQ(told(applyDocument(Configuration::read(Scopes()), document, ChangeWay(), {system}).reason), "");
    EXPECT_EQ(home_.systemText("odbc.ini"), "[ODBC]\nTrace=0\n");
    EXPECT_TRUE(Configuration::read().dataSource("Accounts"));
    EXPECT_EQ(told(applyDocument(Configuration::read(Scopes()), document, ChangeWay(), {user}).reason), "");
    EXPECT_FALSE(Configuration::read().dataSource("Accounts"));
    EXPECT_TRUE(Configuration::read().dataSource("Sales"));
}

// A user's data source may have its driver from the document's other scope, one of all users only from its own.
TEST_F(DocumentTest, DriversAreLookedForInTheDocumentFirst) {
    const DocumentEntry systems{"Wide", "", {{"Driver", "/wide.so"}}, Scope::system};
    const DocumentEntry users{"Wide", "", {{"Driver", "/mine.so"}}};
    const struct {
        std::vector<DocumentEntry> drivers;
        Scope scope;
        const char* library;  // nothing when it is refused
    } rows[] = {
        {{systems}, Scope::user, "/wide.so"},
        {{users, systems}, Scope::user, "/mine.so"},
        {{systems, users}, Scope::system, "/wide.so"},
        {{users}, Scope::system, nullptr},
        {{}, Scope::user, nullptr},
    };
    for (const auto& row : rows) {
        for (const char* name : {"odbc.ini", "odbcinst.ini"}) {
            home_.putSystem(name, "");
            home_.put("." + std::string(name), "");
        }
        const Document document{row.drivers, {}, {{"New", "wide", {}, row.scope}}};
        const Reason reason = applyDocument(Configuration::read(Scopes()), document, ChangeWay()).reason;
        const std::string text = row.scope == Scope::user ? sources() : home_.systemText("odbc.ini");
        EXPECT_EQ(told(reason) == "", row.library != nullptr) << told(reason);
        EXPECT_EQ(text, row.library == nullptr
                            ? ""
                            : "[ODBC Data Sources]\nNew=wide\n\n[New]\nDriver=" + std::string(row.library) + "\n");
    }
}

TEST_F(DocumentTest, ADataSourceOutsideTheListNeedsALibraryOfItsOwn) {
    const struct {
        std::vector<DocumentKey> keys;
        bool isEntered;
    } rows[] = {
        {{{"driver", "/own.so"}}, true},
        {{{"Driver", ""}}, false},
        {{{"Driver", std::nullopt}}, false},
        {{{"Server", "db1"}}, false},
        {{}, false},
    };
    for (const auto& row : rows) {
        home_.put(".odbc.ini", kSources);
        EXPECT_EQ(apply({{}, {}, {{"Loose", "", row.keys}}}) == "", row.isEntered);
        EXPECT_EQ(Configuration::read().dataSource("Loose").has_value(), row.isEntered);
    }
}

TEST_F(DocumentTest, StarsAreNeverASecretWhereverTheyStand) {
    const DocumentEntry stars{"Latin", "", {{"Translator", "/l.so"}, {"Token", "********"}}};
    const std::string refused =
        "refused: The value given for Token is what a hidden secret is shown as, not the secret | Give the secret "
        "itself; --show-secrets prints one that is stored.";
    EXPECT_EQ(apply({{}, {stars}, {}}), refused);
    EXPECT_EQ(apply({{{"New", "", {{"Driver", "/l.so"}, {"Token", "********"}}}}, {}, {}}), refused);
    EXPECT_EQ(apply({{}, {}, {{"Sales", "Plain", {{"Token", "********"}}}}}), refused);
    EXPECT_EQ(apply({{}, {}, {{"Sales", "Plain", {{"PWD", std::nullopt}, {"Server", "********"}}}}}), "");
    EXPECT_EQ(sources(), with(kSources, "Server = db1", "Server = ********"));
}

}  // namespace
}  // namespace jx::model::test
