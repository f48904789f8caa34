// The exported driver lists: buffers of every size, cut lists, odd scripts.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <string>

#include "guarded_buffer.h"
#include "test_home.h"

namespace jx::test {

namespace {

constexpr char kInstalled[] = "[ODBC Drivers]\nSample Driver=Installed\nOther=Installed\n";
constexpr char kScript[] = "[ODBC Drivers]\n\"Sample Driver\" = \n\"Other\" = \n";
constexpr WORD kLengthBefore = 4711;

// "Sample Driver", NUL, "Other", NUL
const std::string kNames = listBytes({"Sample Driver", "Other"});

// A section with more keys than 1024 bytes hold.
std::string longSection(std::string_view quote) {
    std::string text = "[ODBC Drivers]\n";
    for (int key = 0; key < 130; ++key)
        text += std::string(quote) + "drv" + std::to_string(1000 + key) + std::string(quote) + "=Installed\n";
    return text;
}

struct Answer {
    BOOL result;
    WORD length;
    GuardedBuffer buffer;
};

Answer installed(WORD size) {
    Answer answer{0, kLengthBefore, GuardedBuffer(size)};
    answer.result = SQLGetInstalledDrivers(answer.buffer.data(), size, &answer.length);
    return answer;
}

Answer available(const std::string& script, WORD size) {
    Answer answer{0, kLengthBefore, GuardedBuffer(size)};
    answer.result = SQLGetAvailableDrivers(script.c_str(), answer.buffer.data(), size, &answer.length);
    return answer;
}

void expectRefused(const Answer& answer) {
    EXPECT_EQ(answer.result, FALSE);
    EXPECT_EQ(answer.length, kLengthBefore);
    EXPECT_TRUE(answer.buffer.isUntouched());
}

// The part of the list that a caller with size bytes gets.
void expectList(const Answer& answer, const std::string& list, WORD size) {
    const std::size_t copied = list.size() < size ? list.size() : std::size_t{size} - 1;
    EXPECT_EQ(answer.result, TRUE);
    EXPECT_EQ(answer.length, copied);
    EXPECT_EQ(answer.buffer.all(), list.substr(0, copied) + std::string(size - copied, '\0'));
    EXPECT_TRUE(answer.buffer.isGuarded());
}

}  // namespace

TEST(InstalledDrivers, AreGivenWholeWhenTheFinalNulFitsToo) {
    const TestHome home{{".odbcinst.ini", kInstalled}};
    ASSERT_EQ(kNames.size(), 20U);
    for (const WORD size : {WORD{21}, WORD{22}, WORD{1024}, WORD{32767}, WORD{32768}, WORD{65535}}) {
        SCOPED_TRACE(size);
        expectList(installed(size), kNames, size);
    }
}

TEST(InstalledDrivers, AreCutByOneByteInABufferOfExactlyTheirSize) {
    const TestHome home{{".odbcinst.ini", kInstalled}};
    const Answer answer = installed(20);
    EXPECT_EQ(answer.result, TRUE);
    EXPECT_EQ(answer.length, 19);
    EXPECT_EQ(answer.buffer.all(), kNames.substr(0, 19) + '\0');
}

TEST(InstalledDrivers, AreCutInsideANameWithoutSayingSo) {
    const TestHome home{{".odbcinst.ini", kInstalled}};
    for (WORD size = 1; size < 20; ++size) {
        SCOPED_TRACE(size);
        expectList(installed(size), kNames, size);
    }
}

TEST(InstalledDrivers, AreRefusedAndNothingIsTouchedWithoutASectionOrKeys) {
    for (const char* text : {"", "[Sample Driver]\nDriver=x\n", "[ODBC Drivers]\n", "[ODBC Drivers]\n; none\n"}) {
        SCOPED_TRACE(text);
        const TestHome home{{".odbcinst.ini", text}};
        expectRefused(installed(100));
    }
    const TestHome empty;
    expectRefused(installed(100));
}

TEST(InstalledDrivers, AreTakenAsNoneWhenTheFirstIsCalledLikeTheAnswerForNone) {
    const TestHome home{{".odbcinst.ini", "[ODBC Drivers]\nNOT AVAILABLE=Installed\nOther=Installed\n"}};
    expectRefused(installed(100));
}

TEST(InstalledDrivers, RefuseANullBufferAndASizeOf0) {
    const TestHome home{{".odbcinst.ini", kInstalled}};
    WORD length = kLengthBefore;
    EXPECT_EQ(SQLGetInstalledDrivers(nullptr, 100, &length), FALSE);
    EXPECT_EQ(length, kLengthBefore);
    GuardedBuffer buffer(10);
    EXPECT_EQ(SQLGetInstalledDrivers(buffer.data(), 0, &length), FALSE);
    EXPECT_EQ(length, kLengthBefore);
    EXPECT_TRUE(buffer.isUntouched());
}

TEST(InstalledDrivers, NeedNoPlaceForTheLength) {
    const TestHome home{{".odbcinst.ini", kInstalled}};
    GuardedBuffer buffer(21);
    EXPECT_EQ(SQLGetInstalledDrivers(buffer.data(), 21, nullptr), TRUE);
    EXPECT_EQ(buffer.all(), kNames + '\0');
}

TEST(InstalledDrivers, OfAVeryLongSectionAreCutAt1023BytesAndStillEnded) {
    const TestHome home{{".odbcinst.ini", longSection("")}};
    const Answer answer = installed(65535);
    EXPECT_EQ(answer.result, TRUE);
    EXPECT_EQ(answer.length, 1024);
    std::string expected;
    for (int key = 0; expected.size() < 1023; ++key)
        expected += listBytes({"drv" + std::to_string(1000 + key)});
    EXPECT_EQ(answer.buffer.all(), expected.substr(0, 1023) + std::string(65535 - 1023, '\0'));
}

TEST(AvailableDrivers, ComeWithoutTheirQuotes) {
    const TestHome home{{"odbc.inf", kScript}};
    for (const WORD size : {WORD{1}, WORD{2}, WORD{14}, WORD{19}, WORD{20}, WORD{21}, WORD{32768}, WORD{65535}}) {
        SCOPED_TRACE(size);
        expectList(available(home.file("odbc.inf"), size), kNames, size);
    }
}

TEST(AvailableDrivers, AcceptTheScriptsNameInAnyCaseInAnyDirectory) {
    for (const char* name : {"ODBC.INF", "odbc.inf", "Odbc.Inf"}) {
        SCOPED_TRACE(name);
        const TestHome home;
        home.put(name, kScript);
        expectList(available(home.file(name), 100), kNames, 100);
    }
}

TEST(AvailableDrivers, RefuseEveryOtherName) {
    const TestHome home;
    for (const char* name :
         {"setup.inf", "odbc.txt", "odbc", "odbc.info", "odbcx.inf", "odbc.in", ".inf", "odbc.inf.bak", "x.odbc.inf"}) {
        SCOPED_TRACE(name);
        home.put(name, kScript);
        expectRefused(available(home.file(name), 100));
    }
    expectRefused(available("", 100));
    expectRefused(available(home.path() + "/", 100));
    expectRefused(available(home.path() + "/" + std::string(140, 'o') + ".inf", 100));
}

TEST(AvailableDrivers, RefuseAPathThatIsLongerThanAnyWouldBe) {
    const TestHome home{{"odbc.inf", kScript}};
    std::string path = home.path();
    while (path.size() + 2 + 8 < 1023)
        path += "/.";
    path += "/odbc.inf";
    while (path.size() < 1023)
        path.insert(home.path().size(), "/");
    ASSERT_EQ(path.size(), 1023U);
    expectList(available(path, 100), kNames, 100);
    path.insert(home.path().size(), "/");
    expectRefused(available(path, 100));
    path.insert(home.path().size(), std::string(70000, '/'));
    expectRefused(available(path, 100));
}

TEST(AvailableDrivers, RefuseScriptsWithoutDrivers) {
    for (const char* text : {"", "[ODBC Drivers]\n", "[ODBC Translators]\n\"T\"=\n"}) {
        SCOPED_TRACE(text);
        const TestHome home{{"odbc.inf", text}};
        expectRefused(available(home.file("odbc.inf"), 100));
    }
    const TestHome empty;
    expectRefused(available(empty.file("odbc.inf"), 100));
}

TEST(AvailableDrivers, RefuseNullsAndASizeOf0) {
    const TestHome home{{"odbc.inf", kScript}};
    const std::string script = home.file("odbc.inf");
    WORD length = kLengthBefore;
    GuardedBuffer buffer(10);
    EXPECT_EQ(SQLGetAvailableDrivers(nullptr, buffer.data(), 10, &length), FALSE);
    EXPECT_EQ(SQLGetAvailableDrivers(script.c_str(), nullptr, 10, &length), FALSE);
    EXPECT_EQ(SQLGetAvailableDrivers(script.c_str(), buffer.data(), 0, &length), FALSE);
    EXPECT_EQ(length, kLengthBefore);
    EXPECT_TRUE(buffer.isUntouched());
    EXPECT_EQ(SQLGetAvailableDrivers(script.c_str(), buffer.data(), 10, nullptr), TRUE);
    EXPECT_EQ(buffer.all(), kNames.substr(0, 9) + '\0');
}

TEST(AvailableDrivers, SurviveKeysThatAreNotQuotedAsTheyShouldBe) {
    struct Row {
        const char* keys;
        std::string names;
    };
    const Row rows[] = {
        {"Plain=\n\"Other\"=\n", listBytes({"Plain", "Other"})},
        {"\"Open=\n\"Other\"=\n", listBytes({"Open", "Other"})},
        {"\"=\n\"Other\"=\n", listBytes({"Other"})},
        {"\"\"=\n\"Other\"=\n", listBytes({"Other"})},
        {"\"A\"tail=\n\"Other\"=\n", listBytes({"A", "Other"})},
        {"Pl\"ain\"=\n", listBytes({"Pl"})},
        {"x=\n\"=\n", listBytes({"x"})},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.keys);
        const TestHome home;
        home.put("odbc.inf", std::string("[ODBC Drivers]\n") + row.keys);
        expectList(available(home.file("odbc.inf"), 100), row.names, 100);
    }
}

TEST(AvailableDrivers, OfAVeryLongSectionAreCutInsideTheLastName) {
    const TestHome home;
    home.put("odbc.inf", longSection("\""));
    const Answer answer = available(home.file("odbc.inf"), 65535);
    // 102 keys of 10 bytes fit into 1023 bytes; three bytes are left of the next one, the first of them a quote.
    std::string expected;
    for (int key = 0; key < 102; ++key)
        expected += listBytes({"drv" + std::to_string(1000 + key)});
    expectList(answer, expected + listBytes({"dr"}), 65535);
}

// The keys are read into 1024 bytes, their quotes with them.
TEST(AvailableDrivers, OfASectionThatEndsAtTheEdgeAreWholeOnlyWithTheirClosingQuote) {
    struct Row {
        std::size_t length;
        std::string names;
    };
    for (const Row& row :
         {Row{1019, listBytes({std::string(1019, 'x'), "B"})}, Row{1020, listBytes({std::string(1020, 'x')})},
          Row{1022, listBytes({std::string(1022, 'x')})}, Row{70000, listBytes({std::string(1022, 'x')})}}) {
        SCOPED_TRACE(row.length);
        const TestHome home;
        home.put("odbc.inf", "[ODBC Drivers]\n\"" + std::string(row.length, 'x') + "\"=\nB=\n");
        expectList(available(home.file("odbc.inf"), 2000), row.names, 2000);
    }
}

}  // namespace jx::test
