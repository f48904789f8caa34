// SQLGetTranslator with real setup libraries.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <exception>
#include <string>

#include "guarded_buffer.h"
#include "message_box_script.h"
#include "setup_calls.h"
#include "test_home.h"

namespace jx::test {

namespace {

constexpr HWND kWindow = 77;
constexpr WORD kLengthBefore = 4711;

std::string translators(std::string_view setup) {
    return "[ODBC Translators]\nLatin=Installed\n\n[Latin]\nTranslator=/opt/latin.so\nSetup=" + std::string(setup) +
           "\n";
}

// One call with its outputs.
struct Asked {
    Asked(std::string_view name, WORD nameSize, WORD pathSize, HWND hwnd = kWindow)
        : nameBuffer(std::max<std::size_t>(nameSize, name.size() + 1)), pathBuffer(pathSize) {
        std::copy(name.begin(), name.end(), nameBuffer.data());
        nameBuffer.data()[name.size()] = '\0';
        before = nameBuffer.all();
        result = SQLGetTranslator(hwnd, nameBuffer.data(), nameSize, &nameLength, pathBuffer.data(), pathSize,
                                  &pathLength, &option);
        EXPECT_TRUE(nameBuffer.isGuarded());
        EXPECT_TRUE(pathBuffer.isGuarded());
    }

    bool nothingWritten() const { return nameBuffer.all() == before && pathBuffer.isUntouched(); }

    GuardedBuffer nameBuffer;
    GuardedBuffer pathBuffer;
    std::string before;
    WORD nameLength = kLengthBefore;
    WORD pathLength = kLengthBefore;
    DWORD option = 5;
    BOOL result = -1;
};

std::string resourceText(unsigned short id) {
    unsigned char text[256] = {};
    winGetString(text, id);
    return reinterpret_cast<const char*>(text);
}

// Text id with path in its place.
std::string resourceText(unsigned short id, const std::string& path) {
    std::string text = resourceText(id);
    const std::size_t place = text.find("%1");
    return place == std::string::npos ? text : text.replace(place, 2, path);
}

}  // namespace

TEST(GetTranslator, ConfiguresTheTranslatorThatTheCallerNames) {
    const std::string path = setupLibrary("translator_mixed");
    const TestHome home{{".odbcinst.ini", translators(path)}};
    const SetupCalls calls;
    const Asked asked("Latin", 100, 1000);
    EXPECT_EQ(asked.result, TRUE);
    EXPECT_EQ(asked.nameBuffer.text(), "Latin");
    EXPECT_EQ(asked.nameLength, 5);
    EXPECT_EQ(asked.pathBuffer.text(), path);
    EXPECT_EQ(asked.pathLength, path.size());
    EXPECT_EQ(calls.lines(), (Lines{"loaded", "ConfigTranslator hwnd=77 option=5"}));
}

TEST(GetTranslator, CallsTheUpperCaseEntryPointAndHandsTheOptionBack) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_both"))}};
    const SetupCalls calls;
    const Asked asked("Latin", 100, 1000);
    EXPECT_EQ(asked.result, TRUE);
    EXPECT_EQ(asked.option, 4711U);
    EXPECT_EQ(calls.lines().back(), "CONFIGTRANSLATOR hwnd=77 option=5");
}

TEST(GetTranslator, LeavesTheSetupLibraryLoaded) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_both"))}};
    const SetupCalls calls;
    for (int call = 0; call < 3; ++call)
        EXPECT_EQ(Asked("Latin", 100, 1000).result, TRUE);
    const Lines lines = calls.lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "unloaded"), 0);
}

TEST(GetTranslator, WithoutAWindowIsRefused) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_mixed"))}};
    const SetupCalls calls;
    MessageBoxScript boxes;
    const Asked asked("Latin", 100, 1000, 0);
    EXPECT_EQ(asked.result, FALSE);
    EXPECT_TRUE(asked.nothingWritten());
    EXPECT_EQ(asked.nameLength, kLengthBefore);
    EXPECT_EQ(asked.pathLength, kLengthBefore);
    EXPECT_EQ(calls.lines(), Lines{});
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(GetTranslator, NoTranslatorGivesLengthsOf0AndTouchesNoBuffer) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_mixed"))}};
    MessageBoxScript boxes;
    const Asked asked("<No Translator>", 100, 1000);
    EXPECT_EQ(asked.result, TRUE);
    EXPECT_TRUE(asked.nothingWritten());
    EXPECT_EQ(asked.nameLength, 0);
    EXPECT_EQ(asked.pathLength, 0);
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(GetTranslator, TakesNoTranslatorInItsExactSpellingOnly) {
    const TestHome home;
    MessageBoxScript boxes;
    const Asked asked("<no translator>", 100, 1000);
    EXPECT_EQ(asked.result, TRUE);
    EXPECT_EQ(asked.nameLength, kLengthBefore);
    EXPECT_EQ(boxes.boxes().size(), 1U);
}

TEST(GetTranslator, CutsTheNameToItsBuffer) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_mixed"))}};
    struct Row {
        WORD size;
        std::string name;
    };
    const Row rows[] = {{0, "Latin"}, {1, ""},      {2, "L"},         {4, "Lat"},       {5, "Lati"},
                        {6, "Latin"}, {7, "Latin"}, {32767, "Latin"}, {32768, "Latin"}, {65535, "Latin"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.size);
        const Asked asked("Latin", row.size, 1000);
        EXPECT_EQ(asked.result, TRUE);
        EXPECT_EQ(asked.nameBuffer.text(), row.name);
        EXPECT_EQ(asked.nameLength, row.size == 0 ? 0 : row.name.size());
        if (row.size == 0) {
            EXPECT_EQ(asked.nameBuffer.all(), asked.before);
        }
    }
}

TEST(GetTranslator, CutsThePathToItsBuffer) {
    const std::string path = setupLibrary("translator_mixed");
    const TestHome home{{".odbcinst.ini", translators(path)}};
    const auto exact = static_cast<WORD>(path.size());
    for (const WORD size : {WORD{0}, WORD{1}, WORD{2}, WORD(exact - 1), exact, WORD(exact + 1), WORD(exact + 2),
                            WORD{32767}, WORD{32768}, WORD{65535}}) {
        SCOPED_TRACE(size);
        const Asked asked("Latin", 100, size);
        EXPECT_EQ(asked.result, TRUE);
        const std::size_t copied = size == 0 ? 0 : std::min<std::size_t>(path.size(), size - std::size_t{1});
        EXPECT_EQ(asked.pathLength, copied);
        EXPECT_EQ(asked.pathBuffer.isUntouched(), size == 0);
        EXPECT_EQ(asked.pathBuffer.text().substr(0, copied), path.substr(0, copied));
        EXPECT_TRUE(size == 0 || asked.pathBuffer.text().size() == copied);
    }
}

TEST(GetTranslator, SkipsNullOutputsAndPassesANullOptionOn) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_both"))}};
    const SetupCalls calls;
    char name[] = "Latin";
    EXPECT_EQ(SQLGetTranslator(kWindow, name, sizeof name, nullptr, nullptr, 100, nullptr, nullptr), TRUE);
    EXPECT_STREQ(name, "Latin");
    EXPECT_EQ(calls.lines().back(), "CONFIGTRANSLATOR hwnd=77 option=(null)");
    WORD pathLength = kLengthBefore;
    EXPECT_EQ(SQLGetTranslator(kWindow, name, sizeof name, nullptr, nullptr, 100, &pathLength, nullptr), TRUE);
    EXPECT_EQ(pathLength, 0);
    char none[] = "<No Translator>";
    EXPECT_EQ(SQLGetTranslator(kWindow, none, sizeof none, nullptr, nullptr, 0, nullptr, nullptr), TRUE);
}

TEST(GetTranslator, WithoutANameHasNoLibraryToLoad) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_both"))}};
    MessageBoxScript boxes;
    WORD length = kLengthBefore;
    EXPECT_EQ(SQLGetTranslator(kWindow, nullptr, 100, &length, nullptr, 100, &length, nullptr), TRUE);
    EXPECT_EQ(Asked("", 100, 100).result, TRUE);
    EXPECT_EQ(length, kLengthBefore);
    ASSERT_EQ(boxes.boxes().size(), 2U);
    EXPECT_EQ(boxes.boxes()[0].text, resourceText(56, ""));
}

TEST(GetTranslator, ASetupLibraryThatCannotBeLoadedShowsOneMessageAndStillGivesTrue) {
    const TestHome home{{".odbcinst.ini", translators("/nowhere/libsetup.so")}};
    MessageBoxScript boxes;
    const Asked asked("Latin", 100, 1000);
    EXPECT_EQ(asked.result, TRUE);
    EXPECT_TRUE(asked.nothingWritten());
    EXPECT_EQ(asked.nameLength, kLengthBefore);
    EXPECT_EQ(asked.pathLength, kLengthBefore);
    EXPECT_EQ(boxes.boxes(), (Boxes{{kWindow, resourceText(56, "/nowhere/libsetup.so"), resourceText(58), 0}}));
    EXPECT_NE(boxes.boxes()[0].text.find("/nowhere/libsetup.so"), std::string::npos);
    EXPECT_NE(boxes.boxes()[0].title, "");
}

TEST(GetTranslator, ASetupLibraryWithoutEntryPointShowsOneMessageAndStillGivesTrue) {
    const std::string path = setupLibrary("no_entry");
    const TestHome home{{".odbcinst.ini", translators(path)}};
    MessageBoxScript boxes;
    const Asked asked("Latin", 100, 1000);
    EXPECT_EQ(asked.result, TRUE);
    EXPECT_TRUE(asked.nothingWritten());
    EXPECT_EQ(boxes.boxes(), (Boxes{{kWindow, resourceText(57, path), resourceText(58), 0}}));
    EXPECT_NE(resourceText(57), resourceText(56));
}

TEST(GetTranslator, GivesTrueWithoutOutputsForEveryAnswerButExactly1) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_both"))}};
    MessageBoxScript boxes;
    for (const char* answer : {"0", "2", "-1", "65537"}) {
        SCOPED_TRACE(answer);
        setenv("JX_TRANSLATOR_ANSWER", answer, 1);
        const Asked asked("Latin", 100, 1000);
        unsetenv("JX_TRANSLATOR_ANSWER");
        EXPECT_EQ(asked.result, TRUE);
        EXPECT_TRUE(asked.nothingWritten());
        EXPECT_EQ(asked.nameLength, kLengthBefore);
        EXPECT_EQ(asked.pathLength, kLengthBefore);
    }
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(GetTranslator, TakesANameOf255BytesAndRefusesALongerOneInsteadOfCuttingIt) {
    const std::string path = setupLibrary("translator_mixed");
    for (const std::size_t length : {254U, 255U, 256U, 257U, 32767U, 32768U, 65535U, 70000U}) {
        SCOPED_TRACE(length);
        const std::string name(length, 'n');
        const TestHome home;
        home.put(".odbcinst.ini",
                 "[" + name + "]\nSetup=" + path + "\n[" + std::string(255, 'n') + "]\nSetup=" + path + "\n");
        MessageBoxScript boxes;
        const Asked asked(name, 65535, 1000);
        EXPECT_EQ(asked.result, length <= 255);
        EXPECT_EQ(asked.nameLength, length <= 255 ? length : kLengthBefore);
        EXPECT_EQ(asked.pathBuffer.isUntouched(), length > 255);
        EXPECT_EQ(boxes.boxes(), Boxes{});
    }
}

TEST(GetTranslator, PassesAnExceptionOnAndWritesNothing) {
    const TestHome home{{".odbcinst.ini", translators(setupLibrary("translator_throwing"))}};
    const SetupCalls calls;
    char name[100] = "Latin";
    GuardedBuffer path(100);
    WORD length = kLengthBefore;
    std::string what;
    try {
        SQLGetTranslator(kWindow, name, sizeof name, &length, path.data(), 100, &length, nullptr);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::exception& thrown) {
        what = thrown.what();
    }
    EXPECT_EQ(what, "the translator's own words");
    EXPECT_EQ(length, kLengthBefore);
    EXPECT_TRUE(path.isUntouched());
    EXPECT_EQ(calls.lines(), (Lines{"loaded", "ConfigTranslator hwnd=77 option=(null)", "frame destroyed"}));
}

TEST(GetTranslator, PassesAnExceptionOfTheMessageBoxOn) {
    const TestHome home;
    JXW_SetMessageBoxHandler([](void*, HWND, const char*, const char*, unsigned int) -> unsigned int { throw 7; },
                             nullptr);
    char name[] = "Absent";
    EXPECT_THROW(SQLGetTranslator(kWindow, name, sizeof name, nullptr, nullptr, 0, nullptr, nullptr), int);
    JXW_SetMessageBoxHandler(nullptr, nullptr);
}

}  // namespace jx::test
