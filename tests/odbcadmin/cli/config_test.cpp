// config get, set, unset and list.
#include "admin_test.h"

namespace jx::test {
namespace {

class Config : public AdminTest {
protected:
    Config() { home_.put("x.ini", "; top\n[One]\na = 1\ntoken=abc\n\n[Two]\nb=2\n"); }
    const std::string file_ = home_.file("x.ini");
};

TEST_F(Config, GetsAValue) {
    EXPECT_EQ(out({"config", "get", file_, "one", "A"}), "1\n");
    EXPECT_EQ(out({"config", "get", ".odbc.ini", "Sales", "Server"}), "db1\n");
    EXPECT_EQ(json({"config", "get", file_, "One", "a"})["line"], 3);
    EXPECT_EQ(run({"config", "get", file_, "One", "token"}).code, 1);
    EXPECT_EQ(out({"config", "get", file_, "One", "token", "--show-secrets"}), "abc\n");
}

TEST_F(Config, NotFoundNamesNearOnes) {
    EXPECT_EQ(run({"config", "get", file_, "Ome", "a"}).code, 3);
    EXPECT_NE(run({"config", "get", file_, "Ome", "a"}).err.find("Did you mean One?"), std::string::npos);
    EXPECT_NE(run({"config", "get", file_, "One", "tokem"}).err.find("Did you mean token?"), std::string::npos);
    EXPECT_EQ(run({"config", "get", home_.file("absent.ini"), "a", "b"}).code, 7);
}

TEST_F(Config, SetsAndUnsets) {
    out({"config", "set", file_, "One", "a", "2"});
    out({"config", "set", file_, "Three", "c", ""});
    EXPECT_EQ(home_.text("x.ini"), "; top\n[One]\na = 2\ntoken=abc\n\n[Two]\nb=2\n\n[Three]\nc=\n");
    EXPECT_EQ(out({"config", "set", file_, "One", "a", "2"}), "unchanged: nothing to do\n");
    out({"config", "unset", file_, "One", "a"});
    out({"config", "unset", file_, "Two"});
    out({"config", "unset", file_, "Three"});
    EXPECT_EQ(home_.text("x.ini"), "; top\n[One]\ntoken=abc\n\n");
    EXPECT_EQ(out({"config", "unset", file_, "Nothing"}), "unchanged: nothing to do\n");
}

// The lists and settings are within its reach: it is the tool for what has no verb of its own.
TEST_F(Config, ReachesReservedSections) {
    out({"config", "set", ".odbc.ini", "ODBC", "TraceAutoStop", "1"});
    EXPECT_EQ(sources(), std::string(kSources) + "TraceAutoStop=1\n");
}

TEST_F(Config, RefusesWhatTheFileCouldNotGiveBack) {
    EXPECT_EQ(run({"config", "set", file_, "a ;b", "k", "v"}).code, 5);
    EXPECT_EQ(run({"config", "set", file_, "One", "k=l", "v"}).code, 5);
    EXPECT_EQ(run({"config", "set", file_, "One", "k", " v"}).code, 5);
    EXPECT_EQ(run({"config", "set", file_, "One", "k", "a\nb"}).code, 5);
    EXPECT_NE(run({"config", "set", file_, "One", "k", " v"}).err.find("This value of k cannot be stored: it begins"),
              std::string::npos);
    EXPECT_EQ(run({"config", "unset", file_, ""}).code, 5);
    EXPECT_EQ(run({"config", "get", file_, "One"}).code, 2);
}

TEST_F(Config, ListsSections) {
    EXPECT_EQ(out({"config", "list", file_}), "[One]\na=1\ntoken=********\n[Two]\nb=2\n");
    EXPECT_EQ(out({"config", "list", file_, "-q"}), "One\nTwo\n");
    EXPECT_EQ(out({"config", "list", file_, "two"}), "[Two]\nb=2\n");
    EXPECT_EQ(run({"config", "list", file_, "Three"}).code, 3);
    const auto list = json({"config", "list", file_});
    EXPECT_EQ(list["sections"][0]["keys"]["a"], "1");
    EXPECT_EQ(list["sections"][1]["line"], 6);
}

}  // namespace
}  // namespace jx::test
