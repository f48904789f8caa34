// The part of the store's own interface that asks a file again and again, and the changes of shared files.
#include <jxini.h>
#include <jxprofile.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "disk_check.h"
#include "stamped_files.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;

struct Terminate {
    void operator()(JxIniFileCache* file) const { jxPrivateProfileTerm(file); }
};
using File = std::unique_ptr<JxIniFileCache, Terminate>;

File open(const std::string& path) {
    return File(jxPrivateProfileInit(reinterpret_cast<const unsigned char*>(path.c_str())));
}

// The answer as a text: the value, a list with | for each NUL, or what there is not.
std::string asked(JxIniView* view, const char* section, const char* key) {
    JxIniPart part{"untouched", 4711};
    switch (jxIniAsk(view, section, key, &part)) {
        case JxIniFound:
            break;
        case JxIniNoKey:
            EXPECT_EQ(part.text, nullptr);
            return "no key, " + std::to_string(part.length) + " with @";
        case JxIniNoSection:
            EXPECT_EQ(part.length, 4711U);
            return "no section";
        case JxIniAskFailed:
            return "failed";
    }
    std::string text(part.text == nullptr ? "" : part.text, part.length);
    for (char& character : text)
        if (character == '\0')
            character = '|';
    return text;
}

constexpr std::string_view kText =
    "; top\n"
    "[A]\n"
    "k=1\n"
    "flag\n"
    "[B]\n"
    "Password@file=/run/x\n"
    "pin@ENV=P\n"
    "[Empty]\n"
    "[a]\n"
    "late=4\n"
    "k=5\n";

TEST(JxIniView, TellsAnAbsentSectionFromAnAbsentKey) {
    const TestHome home{{"x.ini", kText}};
    const File file = open(home.file("x.ini"));
    struct Row {
        const char* section;
        const char* key;
        const char* answer;
    };
    constexpr Row kRows[] = {{"A", "k", "1"},
                             {" a ", " K ", "1"},
                             {"A", "late", "4"},
                             {"A", "flag", ""},
                             {"A", "none", "no key, 0 with @"},
                             {"A", "", "no key, 0 with @"},
                             {"B", "Password", "no key, 2 with @"},
                             {"B", "password@FILE", "/run/x"},
                             {"Empty", "k", "no key, 0 with @"},
                             {"C", "k", "no section"},
                             {"", "k", "no section"},
                             {"A", nullptr, "k|flag|late|"},
                             {"Empty", nullptr, ""},
                             {"C", nullptr, "no section"},
                             {nullptr, nullptr, "A|B|Empty|"},
                             {nullptr, "k", "A|B|Empty|"}};
    JxIniView* view = jxIniLook(file.get());
    ASSERT_NE(view, nullptr);
    for (int time = 0; time < 2; ++time)
        for (const Row& row : kRows)
            EXPECT_EQ(asked(view, row.section, row.key), row.answer)
                << time << " [" << (row.section == nullptr ? "(null)" : row.section) << "] "
                << (row.key == nullptr ? "(null)" : row.key);
}

// Each row is the first question of a text of its own, which is answered before anything is prepared.
TEST(JxIniView, AnswersTheFirstQuestionAsTheLaterOnes) {
    const TestHome home;
    for (const auto& [key, answer] : {std::pair{"late", "4"}, std::pair{"none", "no key, 0 with @"}}) {
        home.put(key, kText);
        const File file = open(home.file(key));
        EXPECT_EQ(asked(jxIniLook(file.get()), "A", key), answer);
    }
    home.put("third", kText);
    const File file = open(home.file("third"));
    EXPECT_EQ(asked(jxIniLook(file.get()), "C", "k"), "no section");
}

TEST(JxIniView, TellsTheLineOfAnAnswer) {
    const TestHome home{{"x.ini", kText}};
    const File file = open(home.file("x.ini"));
    JxIniView* view = jxIniLook(file.get());
    EXPECT_EQ(jxIniLine(view, "A", "k"), 3U);
    EXPECT_EQ(jxIniLine(view, " a", "FLAG"), 4U);
    EXPECT_EQ(jxIniLine(view, "A", "late"), 10U);
    EXPECT_EQ(jxIniLine(view, "A", nullptr), 2U);
    EXPECT_EQ(jxIniLine(view, "b", nullptr), 5U);
    EXPECT_EQ(jxIniLine(view, "A", "none"), 0U);
    EXPECT_EQ(jxIniLine(view, "A", ""), 0U);
    EXPECT_EQ(jxIniLine(view, "C", "k"), 0U);
    EXPECT_EQ(jxIniLine(view, nullptr, nullptr), 0U);
    EXPECT_EQ(jxIniLine(nullptr, "A", "k"), 0U);
}

TEST(JxIniView, SeesTheNextStateOfTheFile) {
    const TestHome home{{"x.ini", "[A]\nk=1\n"}};
    const File file = open(home.file("x.ini"));
    EXPECT_EQ(asked(jxIniLook(file.get()), "A", "k"), "1");
    home.put("x.ini", "[A]\nk=22\n");
    EXPECT_EQ(asked(jxIniLook(file.get()), "A", "k"), "22");
}

TEST(JxIniView, CostsOneLookAtAFileThatDidNotChange) {
    const TestHome home{{"x.ini", "[A]\nk=1\n"}};
    const File file = open(home.file("x.ini"));
    StampedFiles files;
    const InUse inUse(files);
    EXPECT_EQ(asked(jxIniLook(file.get()), "A", "k"), "1");
    files.forget();
    EXPECT_EQ(asked(jxIniLook(file.get()), "A", "k"), "1");
    EXPECT_EQ(files.calls(), "look 1");
}

TEST(JxIniView, TwoFilesCanBeAskedInTurns) {
    const TestHome home{{"x.ini", "[A]\nk=1\n"}, {"y.ini", "[A]\nk=2\n"}};
    const File first = open(home.file("x.ini"));
    const File second = open(home.file("y.ini"));
    JxIniView* one = jxIniLook(first.get());
    JxIniView* other = jxIniLook(second.get());
    EXPECT_EQ(asked(one, "A", "k"), "1");
    EXPECT_EQ(asked(other, "A", "k"), "2");
    EXPECT_EQ(asked(one, "A", nullptr), "k|");
}

TEST(JxIniView, AnAbsentFileIsNoFailureAndOneThatCannotBeReadIs) {
    const TestHome home;
    mkdir(home.file("directory").c_str(), 0700);
    EXPECT_EQ(jxIniLook(open(home.file("none.ini")).get()), nullptr);
    EXPECT_EQ(jxIniLastFailure().step, JxIniStepNone);
    EXPECT_EQ(jxIniLook(open(home.file("directory")).get()), nullptr);
    EXPECT_EQ(jxIniLastFailure().error, EISDIR);
    EXPECT_EQ(jxIniLook(nullptr), nullptr);
    EXPECT_EQ(jxIniLastFailure().error, EINVAL);
    EXPECT_EQ(jxIniLook(open("").get()), nullptr);
    EXPECT_EQ(jxIniLastFailure().error, EINVAL);
}

TEST(JxIniView, NothingIsAskedOfNothing) {
    const TestHome home{{"x.ini", kText}};
    const File file = open(home.file("x.ini"));
    JxIniPart part{};
    EXPECT_EQ(jxIniAsk(nullptr, "A", "k", &part), JxIniNoSection);
    EXPECT_EQ(jxIniAsk(jxIniLook(file.get()), "A", "k", nullptr), JxIniNoSection);
}

TEST(JxIniView, EachThreadHasItsOwn) {
    const TestHome home{{"x.ini", kText}};
    const auto askOften = [&] {
        const File file = open(home.file("x.ini"));
        for (int i = 0; i < 200; ++i)
            EXPECT_EQ(asked(jxIniLook(file.get()), "A", "k"), "1");
    };
    std::thread other(askOften);
    askOften();
    other.join();
}

// ---- changes of shared files ----

TEST(JxIniChange, ANewSharedFileIsForEverybodyAndAnOldOneKeepsItsMode) {
    const TestHome home;
    const Umask set(0022);
    const struct {
        JxIniChange* (*begin)(const char*);
        mode_t mode;
    } rows[] = {{jxIniBegin, 0600}, {jxIniBeginShared, 0644}};
    for (const auto& [begin, mode] : rows) {
        JxIniChange* change = begin(home.file("x.ini").c_str());
        ASSERT_EQ(jxIniSet(change, "A", "k", "1"), 1);
        ASSERT_EQ(jxIniCommit(change), 1);
        EXPECT_EQ(modeOf(home.file("x.ini")), mode);
        EXPECT_EQ(home.text("x.ini"), "[A]\nk=1\n");
        unlink(home.file("x.ini").c_str());
    }
    home.put("x.ini", "");
    JxIniChange* change = jxIniBeginShared(home.file("x.ini").c_str());
    jxIniSet(change, "A", "k", "1");
    ASSERT_EQ(jxIniCommit(change), 1);
    EXPECT_EQ(modeOf(home.file("x.ini")), mode_t{0600});
}

TEST(JxIniChange, ASharedFileNeedsANameToo) {
    EXPECT_EQ(jxIniBeginShared(nullptr), nullptr);
    EXPECT_EQ(jxIniBeginShared(""), nullptr);
    EXPECT_EQ(jxIniLastFailure().error, EINVAL);
}

}  // namespace
}  // namespace jx::ini::test
