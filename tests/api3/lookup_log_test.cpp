// The look-up log that JXODBC_LOG asks for.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <thread>

#include "installer_home.h"

using namespace jx::test;

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1)
        lines.push_back(text.substr(at, text.find('\n', at) - at));
    return lines;
}

// The line without time and process, which are checked.
std::string fields(const std::string& line) {
    EXPECT_EQ(line.find('Z'), 26U) << line;
    const std::string pid = "\t" + std::to_string(getpid()) + "\t";
    EXPECT_EQ(line.find(pid), 27U) << line;
    return line.substr(27 + pid.size());
}

TEST(LookupLog, EachLookUpIsALineWithTheFileAndTheLineThatAnsweredOrWhyNoneDid) {
    const InstallerHome home{
        {kUserSources, "; a comment\n[Sales]\nServer=db.example\nEmpty=\n[Ref]\nk@file=/nowhere\n"},
        {kSystemSources, "[Sales]\nPort=1\n[Stock]\nServer=s\n"}};
    const TestVariable log("JXODBC_LOG", home.file("log"));
    value("Sales", "server");
    value("Stock", "Server", ".odbc.ini");
    value("Sales", "Port");
    value("Sales", "Absent", "odbc.ini", "fallback");
    value("Other", "Server");
    value("Ref", "k");
    value("Sales", nullptr);
    value(nullptr, nullptr, "ODBC.INI");
    value("PG", "Driver", "odbcinst.ini");
    value("PG", "Driver", "relative.ini");
    const std::string user = home.file(kUserSources);
    const std::string system = home.file(kSystemSources);
    const std::string expected[] = {"odbc.ini\tSales\tserver\t" + user + ":3\tdb.example",
                                    ".odbc.ini\tStock\tServer\t" + system + ":4\ts",
                                    "odbc.ini\tSales\tPort\thidden\t(default)",
                                    "odbc.ini\tSales\tAbsent\tno-key\tfallback",
                                    "odbc.ini\tOther\tServer\tno-section\t(default)",
                                    "odbc.ini\tRef\tk\treference-refused\t(default)",
                                    "odbc.ini\tSales\t*\t" + user + ":2\tServer;Empty",
                                    "ODBC.INI\t*\t*\t" + user + ":1\tSales;Ref;Stock",
                                    "odbcinst.ini\tPG\tDriver\tno-file\t(default)",
                                    "relative.ini\tPG\tDriver\tno-file\t(default)"};
    const std::vector<std::string> lines = linesOf(home.text("log"));
    ASSERT_EQ(lines.size(), std::size(expected));
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(fields(lines[i]), expected[i]);
}

TEST(LookupLog, SecretsTheirDefaultsAndWhatComesFromReferencesAreStars) {
    const InstallerHome home;
    home.put("secret", "topsecret");
    home.put(kUserSources,
             "[S]\nPassword=topsecret\nServer@file=" + home.file("secret") + "\nTranslation=Server=a;PWD=topsecret\n");
    const TestVariable log("JXODBC_LOG", home.file("log"));
    EXPECT_EQ(value("S", "Password"), "topsecret");
    EXPECT_EQ(value("S", "Server"), "topsecret");
    value("S", "PWD", "odbc.ini", "topsecret");
    value("S", "Translation");
    const std::string text = home.text("log");
    EXPECT_EQ(linesOf(text).size(), 4U);
    EXPECT_EQ(text.find("topsecret"), std::string::npos) << text;
    EXPECT_NE(text.find("Server\t" + home.file(kUserSources) + ":3\t*"), std::string::npos) << text;
}

TEST(LookupLog, ControlCharactersAreSpelledOut) {
    const InstallerHome home{{kUserSources, "[S]\nk=a\tb\x01\xC2\x85z\xC3\xA9\n"}};
    const TestVariable log("JXODBC_LOG", home.file("log"));
    value("S", "k");
    value("S\n2026", "k\x1B[2J");
    const std::vector<std::string> lines = linesOf(home.text("log"));
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].ends_with("\ta\\x09b\\x01\\xC2\\x85z\xC3\xA9")) << lines[0];
    EXPECT_NE(lines[1].find("S\\x0A2026\tk\\x1B[2J\t"), std::string::npos) << lines[1];
}

TEST(LookupLog, ANewFileIsPrivateAndAnOldOneIsAppendedTo) {
    const InstallerHome home{{"old", "first\n"}};
    {
        const TestVariable log("JXODBC_LOG", home.file("new"));
        value("S", "k");
    }
    struct stat state {};
    ASSERT_EQ(stat(home.file("new").c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 07777U, 0600U);
    const TestVariable log("JXODBC_LOG", home.file("old"));
    value("S", "k");
    EXPECT_EQ(linesOf(home.text("old")).size(), 2U);
    EXPECT_TRUE(home.text("old").starts_with("first\n"));
}

TEST(LookupLog, ADescriptorNumberIsWrittenTo) {
    const InstallerHome home;
    const int fd = open(home.file("log").c_str(), O_CREAT | O_WRONLY | O_APPEND, 0600);
    ASSERT_GE(fd, 0);
    const TestVariable log("JXODBC_LOG", std::to_string(fd));
    value("S", "k");
    close(fd);
    EXPECT_EQ(linesOf(home.text("log")).size(), 1U);
}

TEST(LookupLog, ALogThatCannotBeWrittenDisturbsNothing) {
    const InstallerHome home{{kUserSources, "[S]\nk=v\n"}};
    for (const std::string& where : {std::string("/nowhere/log"), home.path(), std::string("77777"),
                                     std::string("99999999999999999999"), std::string("/dev/full"), std::string("")}) {
        SCOPED_TRACE(where);
        const TestVariable log("JXODBC_LOG", where);
        errno = 4711;
        EXPECT_EQ(value("S", "k"), "v");
        EXPECT_EQ(recordCount(), 0);
    }
}

TEST(LookupLog, AFullPipeNeverBlocksAndAPipeWithoutAReaderRaisesNoSignal) {
    const InstallerHome home{{kUserSources, "[S]\nk=v\n"}};
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const TestVariable log("JXODBC_LOG", std::to_string(ends[1]));
    const std::string filler(4096, 'x');
    ASSERT_EQ(fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
    while (write(ends[1], filler.data(), filler.size()) > 0) {
    }
    ASSERT_EQ(fcntl(ends[1], F_SETFL, 0), 0);
    EXPECT_EQ(value("S", "k"), "v");
    close(ends[0]);
    struct sigaction before {};
    ASSERT_EQ(sigaction(SIGPIPE, nullptr, &before), 0);
    EXPECT_EQ(value("S", "k"), "v");
    struct sigaction after {};
    ASSERT_EQ(sigaction(SIGPIPE, nullptr, &after), 0);
    EXPECT_EQ(before.sa_handler, after.sa_handler);
    close(ends[1]);
}

TEST(LookupLog, ALineForAPipeIsCutToWhatAPipeTakesWhole) {
    const InstallerHome home;
    home.put(kUserSources, "[S]\nk=" + std::string(70'000, 'x') + "\n");
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const TestVariable log("JXODBC_LOG", std::to_string(ends[1]));
    value("S", "k");
    std::vector<char> room(100'000);
    EXPECT_EQ(read(ends[0], room.data(), room.size()), 4096);
    EXPECT_EQ(room[4095], '\n');
    close(ends[0]);
    close(ends[1]);
}

TEST(LookupLog, LinesOfThreadsAreNotMixed) {
    const InstallerHome home{{kUserSources, "[S]\nk=v\n"}};
    const TestVariable log("JXODBC_LOG", home.file("log"));
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int round = 0; round < 50; ++round)
                value("S", "k");
        });
    for (std::thread& thread : threads)
        thread.join();
    const std::vector<std::string> lines = linesOf(home.text("log"));
    EXPECT_EQ(lines.size(), 200U);
    for (const std::string& line : lines)
        EXPECT_EQ(fields(line), "odbc.ini\tS\tk\t" + home.file(kUserSources) + ":2\tv");
}

TEST(LookupLog, WLookUpsAreWrittenTheSameWay) {
    const InstallerHome home{{kUserSources,
                              "[B\xC3\xBC"
                              "cher]\nk=v\n"}};
    const TestVariable log("JXODBC_LOG", home.file("log"));
    SQLWCHAR room[8];
    SQLGetPrivateProfileStringW(wide(u"B\u00FCcher"), wide(u"x"), wide(u"\u00E9"), room, 8, wide(u"odbc.ini"));
    const std::vector<std::string> lines = linesOf(home.text("log"));
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(fields(lines[0]),
              "odbc.ini\tB\xC3\xBC"
              "cher\tx\tno-key\t\xC3\xA9");
}

}  // namespace
