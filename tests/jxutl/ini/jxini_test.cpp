// The store's own interface: texts, look-ups, lists, changes, failures.
#include <jxini.h>
#include <jxprofile.h>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "child_process.h"
#include "disk_check.h"
#include "faulty_files.h"
#include "jxini_c99.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;
using Names = std::vector<std::string>;

struct Release {
    void operator()(JxIniText* text) const { jxIniRelease(text); }
};
using Text = std::unique_ptr<JxIniText, Release>;

Text parse(std::string_view bytes) {
    return Text(jxIniParse(bytes.data(), bytes.size()));
}

std::string_view bytesOf(const JxIniText* text) {
    std::size_t length = 0;
    const char* bytes = jxIniBytes(text, &length);
    return {bytes, length};
}

std::string nameOf(const JxIniPiece& piece) {
    return piece.name == nullptr ? "(none)" : std::string(piece.name, piece.nameLength);
}

std::string valueOf(const JxIniPiece& piece) {
    return piece.value == nullptr ? "(none)" : std::string(piece.value, piece.valueLength);
}

std::string find(const Text& text, const char* section, const char* key) {
    JxIniPiece piece;
    if (jxIniFind(text.get(), section, key, &piece) == 0)
        return "(absent)";
    return std::to_string(piece.line) + ":" + nameOf(piece) + "=" + valueOf(piece);
}

int collect(void* context, const JxIniPiece* piece) {
    static_cast<Names*>(context)->push_back(std::to_string(piece->line) + ":" + nameOf(*piece));
    return 1;
}

Names list(const Text& text, const char* section) {
    Names names;
    const std::size_t visits = jxIniEach(text.get(), section, collect, &names);
    EXPECT_EQ(visits, names.size());
    return names;
}

std::string sentence() {
    char room[1000];
    EXPECT_LT(jxIniFailureText(room, sizeof room), sizeof room);
    return room;
}

constexpr std::string_view kText =
    "\xEF\xBB\xBF; top\r\n"
    "stray=1\n"
    "[A]\n"
    "k=1\n"
    "K=2\n"
    "flag\n"
    "\n"
    "[ B ] ; note\n"
    "b = x y \n"
    "[a]\n"
    "k=3\n"
    "late=4\n"
    "=5\n"
    "[open\n"
    "[]\n"
    "e=6";

// ---- reading ----

TEST(JxIni, ThePiecesJoinedAreTheText) {
    const Text text = parse(kText);
    std::string joined;
    std::string kinds;
    JxIniPiece piece;
    for (std::size_t i = 0; jxIniPieceAt(text.get(), i, &piece) == 1; ++i) {
        joined += kText.substr(piece.begin, piece.end - piece.begin);
        kinds += "bcseo"[piece.kind];
    }
    EXPECT_EQ(joined, kText);
    EXPECT_EQ(kinds,
              "ocesee"
              "ebsesee"
              "oose");
    EXPECT_EQ(jxIniPieceCount(text.get()), kinds.size());
    EXPECT_EQ(bytesOf(text.get()), kText);
}

TEST(JxIni, FindsWhatALookUpAnswersWith) {
    const Text text = parse(kText);
    struct Row {
        const char* section;
        const char* key;
        const char* found;
    };
    constexpr Row kRows[] = {{"A", "k", "4:k=1"},
                             {"a", "K", "4:k=1"},
                             {" A ", " k ", "4:k=1"},
                             {"A", "late", "12:late=4"},
                             {"A", "flag", "6:flag=(none)"},
                             {"B", "b", "9:b=x y"},
                             {"A", nullptr, "3:A=(none)"},
                             {"B", nullptr, "8:B=(none)"},
                             {"A", "stray", "(absent)"},
                             {"A", "", "(absent)"},
                             {"", "e", "(absent)"},
                             {nullptr, "k", "(absent)"},
                             {nullptr, nullptr, "(absent)"},
                             {"C", "k", "(absent)"},
                             {"A", "b", "(absent)"}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::string(row.section == nullptr ? "null" : row.section) + "|" +
                     (row.key == nullptr ? "null" : row.key));
        EXPECT_EQ(find(text, row.section, row.key), row.found);
    }
    EXPECT_EQ(jxIniFind(text.get(), "A", "k", nullptr), 1);
    EXPECT_EQ(jxIniFind(text.get(), "A", "no", nullptr), 0);
}

TEST(JxIni, ListsJoinTheSectionsOfOneNameAndHoldNoNameTwice) {
    const Text text = parse(kText);
    EXPECT_EQ(list(text, "A"), (Names{"4:k", "6:flag", "12:late"}));
    EXPECT_EQ(list(text, "b"), Names{"9:b"});
    EXPECT_EQ(list(text, nullptr), (Names{"3:A", "8:B"}));
    EXPECT_EQ(list(text, "No"), Names{});
    EXPECT_EQ(list(text, ""), Names{});
}

TEST(JxIni, AWalkEndsWhenItsVisitorSaysSo) {
    const Text text = parse("[A]\na\nb\nc\n");
    int left = 2;
    const auto visit = [](void* context, const JxIniPiece*) { return --*static_cast<int*>(context); };
    EXPECT_EQ(jxIniEach(text.get(), "A", visit, &left), 2U);
}

TEST(JxIni, AnExceptionOfAVisitorPassesThrough) {
    const Text text = parse("[A]\na\n");
    const auto visit = [](void*, const JxIniPiece*) -> int { throw std::runtime_error("mine"); };
    EXPECT_THROW(jxIniEach(text.get(), "A", visit, nullptr), std::runtime_error);
}

TEST(JxIni, AnyBytesAreAText) {
    using namespace std::string_literals;
    const std::string odd = "\0[A\0]\n\0=\0\nk\0=v\r\xff\n[A]\nk=v\0w"s;
    const Text text = parse(odd);
    EXPECT_EQ(bytesOf(text.get()), odd);
    EXPECT_EQ(list(text, nullptr), Names{"4:A"});
    EXPECT_EQ(find(text, "A", "k"), "5:k=v\0w"s);
    const Text empty = parse("");
    EXPECT_EQ(jxIniPieceCount(empty.get()), 0U);
    EXPECT_EQ(bytesOf(empty.get()), "");
    const Text nothing(jxIniParse(nullptr, 0));
    EXPECT_EQ(bytesOf(nothing.get()), "");
    EXPECT_EQ(jxIniParse(nullptr, 1), nullptr);
    EXPECT_EQ(jxIniLastFailure().step, JxIniStepArgument);
}

TEST(JxIni, LookUpsHaveNoSizeLimit) {
    const std::string name(100'000, 'n');
    const std::string value(200'000, 'v');
    const Text text = parse("[" + name + "]\n" + name + "=" + value);
    EXPECT_EQ(find(text, name.c_str(), name.c_str()), "2:" + name + "=" + value);
    std::string many = "[Many]\n";
    for (int i = 0; i < 10'000; ++i)
        many += "key" + std::to_string(i) + "=\n";
    EXPECT_EQ(list(parse(many), "many").size(), 10'000U);
}

TEST(JxIni, ReadsAFileAndFollowsItsLinks) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    ASSERT_EQ(::symlink(".odbc.ini", home.file("link").c_str()), 0);
    EXPECT_EQ(bytesOf(Text(jxIniRead(".odbc.ini")).get()), "[A]\nk=1\n");
    EXPECT_EQ(bytesOf(Text(jxIniRead(home.file("link").c_str())).get()), "[A]\nk=1\n");
    EXPECT_EQ(jxIniLastFailure().step, JxIniStepNone);
    EXPECT_EQ(home.names(), (Names{".odbc.ini", "link"}));
}

TEST(JxIni, AFileThatCannotBeReadIsAFailure) {
    const TestHome home;
    ASSERT_EQ(::mkfifo(home.file("fifo").c_str(), 0666), 0);
    ASSERT_EQ(::mkdir(home.file("directory").c_str(), 0777), 0);
    ASSERT_EQ(::symlink("loop", home.file("loop").c_str()), 0);
    home.put("huge", "");
    ASSERT_EQ(::truncate(home.file("huge").c_str(), off_t{1} << 30), 0);
    struct Row {
        std::string file;
        JxIniStep step;
        int error;
    };
    const Row rows[] = {{home.file("absent"), JxIniStepOpen, ENOENT}, {home.file("no/x"), JxIniStepOpen, ENOENT},
                        {home.file("fifo"), JxIniStepOpen, ENOTSUP},  {home.file("directory"), JxIniStepOpen, EISDIR},
                        {"/dev/zero", JxIniStepOpen, ENOTSUP},        {home.file("loop"), JxIniStepLocate, ELOOP},
                        {home.file("huge"), JxIniStepRead, EFBIG}};
    const std::size_t descriptors = openDescriptors();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.file);
        EXPECT_EQ(jxIniRead(row.file.c_str()), nullptr);
        const JxIniFailure failure = jxIniLastFailure();
        EXPECT_EQ(failure.step, row.step);
        EXPECT_EQ(failure.error, row.error);
        EXPECT_STREQ(failure.path, row.file.c_str());
        EXPECT_EQ(failure.afterRename, 0);
    }
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(jxIniRead(none), nullptr);
        EXPECT_EQ(jxIniLastFailure().step, JxIniStepLocate);
    }
    EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(JxIni, ReadsOrFailsOnAFaultyDisk) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    const std::size_t descriptors = openDescriptors();
    for (int n = 1;; ++n) {
        SCOPED_TRACE(n);
        FaultyFiles files(n, Fail::once, EIO);
        const InUse inUse(files);
        const Text text(jxIniRead(".odbc.ini"));
        EXPECT_EQ(openDescriptors(), descriptors);
        if (!files.fired())
            break;
        EXPECT_TRUE(text != nullptr || jxIniLastFailure().error == EIO);
    }
    ShortFiles files(1, 3);
    const InUse inUse(files);
    EXPECT_EQ(bytesOf(Text(jxIniRead(".odbc.ini")).get()), "[A]\nk=1\n");
}

TEST(JxIni, NullTextsGiveNothing) {
    JxIniPiece piece;
    std::size_t length = 7;
    EXPECT_EQ(jxIniBytes(nullptr, &length), nullptr);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(jxIniPieceCount(nullptr), 0U);
    EXPECT_EQ(jxIniPieceAt(nullptr, 0, &piece), 0);
    EXPECT_EQ(jxIniFind(nullptr, "A", "k", &piece), 0);
    EXPECT_EQ(jxIniEach(nullptr, "A", collect, nullptr), 0U);
    jxIniRelease(nullptr);
    const Text text = parse("[A]\n");
    EXPECT_EQ(jxIniPieceAt(text.get(), 0, nullptr), 0);
    EXPECT_EQ(jxIniEach(text.get(), "A", nullptr, nullptr), 0U);
    EXPECT_EQ(std::string_view(jxIniBytes(text.get(), nullptr)), "[A]\n");
}

// ---- where the files are ----

TEST(JxIni, GivesThePathOfAFile) {
    const TestHome home;
    char room[1000];
    const std::string expected = home.file(".odbc.ini");
    EXPECT_EQ(jxIniPath(".odbc.ini", room, sizeof room), expected.size());
    EXPECT_EQ(room, expected);
    EXPECT_EQ(jxIniPath("as/spelled.ini", room, sizeof room), 14U);
    EXPECT_STREQ(room, "as/spelled.ini");
    EXPECT_EQ(jxIniPath("as/spelled.ini", room, 4), 14U);
    EXPECT_STREQ(room, "as/");
    EXPECT_EQ(jxIniPath("as/spelled.ini", room, 0), 14U);
    EXPECT_EQ(jxIniPath("as/spelled.ini", nullptr, 100), 14U);
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(jxIniPath(none, room, sizeof room), 0U);
        EXPECT_STREQ(room, "");
    }
}

// ---- changing ----

TEST(JxIniChange, ShowsTheTextBeforeAndAfterAndCommitsAllAtOnce) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    JxIniChange* change = jxIniBegin(".odbc.ini");
    ASSERT_NE(change, nullptr);
    EXPECT_EQ(jxIniSet(change, "A", "k", "2"), 1);
    EXPECT_EQ(jxIniSet(change, "B", "l", "3"), 1);
    std::size_t length = 0;
    EXPECT_STREQ(jxIniBefore(change, &length), "[A]\nk=1\n");
    EXPECT_EQ(length, 8U);
    EXPECT_STREQ(jxIniAfter(change, &length), "[A]\nk=2\n\n[B]\nl=3\n");
    EXPECT_EQ(length, 17U);
    EXPECT_STREQ(jxIniAfter(change, nullptr), "[A]\nk=2\n\n[B]\nl=3\n");
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1\n");
    EXPECT_EQ(jxIniCommit(change), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=2\n\n[B]\nl=3\n");
    EXPECT_EQ(home.names(), Names{".odbc.ini"});
}

TEST(JxIniChange, AnAbsentFileIsEmptyAndIsMade) {
    const TestHome home;
    JxIniChange* change = jxIniBegin(".odbc.ini");
    ASSERT_NE(change, nullptr);
    EXPECT_STREQ(jxIniBefore(change, nullptr), "");
    EXPECT_EQ(jxIniSet(change, "A", "k", "1"), 1);
    EXPECT_EQ(jxIniCommit(change), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1\n");
    EXPECT_EQ(modeOf(home.file(".odbc.ini")), 0600U);
}

TEST(JxIniChange, DiscardAndNothingChangedLeaveTheFileUntouched) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    const Identity before(home.file(".odbc.ini"));
    JxIniChange* discarded = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniSet(discarded, "A", nullptr, nullptr), 1);
    jxIniDiscard(discarded);
    jxIniDiscard(nullptr);
    JxIniChange* empty = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniCommit(empty), 1);
    JxIniChange* undone = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniSet(undone, "A", "k", "2"), 1);
    EXPECT_EQ(jxIniSet(undone, "A", "k", "1"), 1);
    EXPECT_EQ(jxIniCommit(undone), 1);
    EXPECT_TRUE(before == Identity(home.file(".odbc.ini")));
    EXPECT_EQ(home.names(), Names{".odbc.ini"});
}

TEST(JxIniChange, ARefusalSaysWhichTextAndWhyButNeverTheValue) {
    const struct {
        const char *section, *key, *value, *words;
    } rows[] = {{"A ;b", "k", "1", "the section \"A ;b\": a blank and ; begin a comment in it"},
                {"  ", "k", "1", "a section without a name"},
                {"A", "l=", "3", "the key \"l=\": it holds ="},
                {"A", "[l", "3", "the key \"[l\": it begins with ["},
                {"A", "PWD", "ge\nheim", "the value of the key \"PWD\": it holds a line break"}};
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    for (const auto& row : rows) {
        JxIniChange* change = jxIniBegin(".odbc.ini");
        EXPECT_EQ(jxIniSet(change, row.section, row.key, row.value), 0);
        EXPECT_EQ(sentence(), home.file(".odbc.ini") + ": cannot store " + row.words);
        jxIniDiscard(change);
        const auto bytes = [](const char* text) { return reinterpret_cast<const unsigned char*>(text); };
        EXPECT_EQ(jxWritePrivateProfileString(bytes(row.section), bytes(row.key), bytes(row.value), bytes(".odbc.ini")),
                  0);
        EXPECT_EQ(sentence(), home.file(".odbc.ini") + ": cannot store " + row.words);
    }
}

TEST(JxIniChange, ARefusedSetLeavesTheChangeAsItWas) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    JxIniChange* change = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniSet(change, "A", "l", "2"), 1);
    EXPECT_EQ(jxIniSet(change, "A", "l=", "3"), 0);
    EXPECT_EQ(jxIniSet(change, nullptr, "l", "3"), 0);
    EXPECT_EQ(jxIniLastFailure().step, JxIniStepArgument);
    EXPECT_EQ(sentence(), home.file(".odbc.ini") + ": cannot store a section without a name");
    EXPECT_STREQ(jxIniAfter(change, nullptr), "[A]\nk=1\nl=2\n");
    EXPECT_EQ(jxIniCommit(change), 1);
    EXPECT_EQ(jxIniLastFailure().step, JxIniStepNone);
    EXPECT_EQ(sentence(), "");
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1\nl=2\n");
}

TEST(JxIniChange, APreviewMakesNothingAndIsNeverCommitted) {
    const TestHome home;
    for (const char* value : {static_cast<const char*>(nullptr), "1"}) {
        JxIniChange* preview = jxIniPreview(".odbc.ini");
        ASSERT_NE(preview, nullptr);
        EXPECT_EQ(home.names(), Names{});
        EXPECT_EQ(jxIniSet(preview, "A", "k", value), 1);
        EXPECT_EQ(jxIniCommit(preview), 0);
        EXPECT_EQ(jxIniLastFailure().step, JxIniStepArgument);
        EXPECT_EQ(jxIniLastFailure().error, EPERM);
    }
    EXPECT_EQ(home.names(), Names{});
}

TEST(JxIniChange, BeginAndPreviewReportWhyTheyFail) {
    const TestHome home;
    ASSERT_EQ(::mkdir(home.file("directory").c_str(), 0700), 0);
    for (const auto begin : {jxIniBegin, jxIniPreview}) {
        EXPECT_EQ(begin(home.file("directory").c_str()), nullptr);
        EXPECT_EQ(jxIniLastFailure().step, JxIniStepOpen);
        EXPECT_EQ(sentence(), "Cannot open " + home.file("directory") + ": Is a directory");
        for (const char* none : {static_cast<const char*>(nullptr), ""}) {
            EXPECT_EQ(begin(none), nullptr);
            EXPECT_EQ(jxIniLastFailure().step, JxIniStepLocate);
        }
    }
    EXPECT_EQ(home.names(), Names{"directory"});
}

TEST(JxIniChange, ASecondChangeInTheSameThreadTimesOut) {
    const TestHome home;
    FaultyFiles clock(1'000'000, Fail::once, EIO);
    const InUse inUse(clock);
    JxIniChange* first = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniBegin(".odbc.ini"), nullptr);
    EXPECT_EQ(jxIniLastFailure().step, JxIniStepLock);
    EXPECT_EQ(jxIniLastFailure().error, ETIMEDOUT);
    EXPECT_EQ(sentence(),
              "Cannot lock " + home.file(".odbc.ini.jxlock") + ": another writer kept it locked for 10 seconds");
    jxIniDiscard(first);
    JxIniChange* second = jxIniBegin(".odbc.ini");
    EXPECT_NE(second, nullptr);
    jxIniDiscard(second);
}

TEST(JxIniChange, NullChangesGiveNothing) {
    std::size_t length = 7;
    EXPECT_EQ(jxIniSet(nullptr, "A", "k", "1"), 0);
    EXPECT_EQ(jxIniBefore(nullptr, &length), nullptr);
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(jxIniAfter(nullptr, nullptr), nullptr);
    EXPECT_EQ(jxIniCommit(nullptr), 0);
    EXPECT_EQ(jxIniLastFailure().step, JxIniStepArgument);
}

// ---- failures ----

TEST(JxIniFailure, ItsSentenceIsCutToTheBuffer) {
    EXPECT_EQ(jxIniRead(""), nullptr);
    const std::string whole = sentence();
    EXPECT_EQ(whole, "Cannot find the file: Invalid argument");
    char room[8] = "unused";
    EXPECT_EQ(jxIniFailureText(room, 7), whole.size());
    EXPECT_STREQ(room, "Cannot");
    EXPECT_EQ(jxIniFailureText(room, 1), whole.size());
    EXPECT_STREQ(room, "");
    EXPECT_EQ(jxIniFailureText(room, 0), whole.size());
    EXPECT_EQ(jxIniFailureText(nullptr, 100), whole.size());
}

TEST(JxIniFailure, SaysThatTheNewTextIsInPlace) {
    class NoDirectoryFlush : public WatchedFiles {
        int before(Call call, std::string_view) override {
            flushes_ += call == Call::flush ? 1 : 0;
            return call == Call::flush && flushes_ == 2 ? EIO : 0;
        }
        int flushes_ = 0;
    };
    const TestHome home;
    NoDirectoryFlush files;
    const InUse inUse(files);
    JxIniChange* change = jxIniBegin(".odbc.ini");
    jxIniSet(change, "A", "k", "1");
    EXPECT_EQ(jxIniCommit(change), 0);
    const JxIniFailure failure = jxIniLastFailure();
    EXPECT_EQ(failure.step, JxIniStepFlushDirectory);
    EXPECT_EQ(failure.afterRename, 1);
    EXPECT_STREQ(failure.path, home.path().c_str());
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nk=1\n");
}

TEST(JxIni, PlainCCanUseAllOfIt) {
    const TestHome home{{"x.ini", "; mine\n[A]\nb = c\n"}};
    EXPECT_EQ(use_jxini(home.file("x.ini").c_str()), 0);
    EXPECT_EQ(home.text("x.ini"), "; mine\n[A]\nb = 2\n");
    EXPECT_EQ(home.names(), Names{"x.ini"});
}

}  // namespace
}  // namespace jx::ini::test
