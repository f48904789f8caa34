// Calling a translator's setup routine through the object.
#include <gtest/gtest.h>
#include <odbcins.h>

#include <string>

#include "guarded_buffer.h"
#include "message_box_script.h"
#include "setup_calls.h"
#include "test_home.h"

namespace jx::test {

namespace {

unsigned char* bytes(std::string& text) {
    return reinterpret_cast<unsigned char*>(text.data());
}

// Named: a translator in a home of its own.
struct Named {
    explicit Named(const std::string& path) { home.put(".odbcinst.ini", "[Latin]\nSetup=" + path + "\n"); }
    TestHome home;
    std::string name = "Latin";
};

}  // namespace

TEST(ConfigTranslator, ReturnsTheRoutinesAnswerUnchangedAndKeepsItsLibrary) {
    for (const int answer : {0, 1, 2, -1, 65537}) {
        SCOPED_TRACE(answer);
        const std::string path = setupLibrary("translator_both");
        Named translator(path);
        GuardedBuffer buffer(255);
        OdbcIns ins;
        DWORD option = 5;
        setenv("JX_TRANSLATOR_ANSWER", std::to_string(answer).c_str(), 1);
        EXPECT_EQ(ins.jxConfigTranslator(77, bytes(translator.name), buffer.bytes(), &option), answer);
        unsetenv("JX_TRANSLATOR_ANSWER");
        EXPECT_EQ(option, 4711U);
        EXPECT_EQ(buffer.all(), path + std::string(255 - path.size(), '\0'));
        EXPECT_TRUE(buffer.isGuarded());
        EXPECT_NE(ins.hSetupLib, nullptr);
        EXPECT_NE(ins.pfnConfigTranslator, nullptr);
    }
}

TEST(ConfigTranslator, ClearsThePathAndReportsAMissingOne) {
    Named translator("");
    MessageBoxScript boxes;
    GuardedBuffer buffer(300);
    OdbcIns ins;
    EXPECT_EQ(ins.jxConfigTranslator(77, bytes(translator.name), buffer.bytes(), nullptr), 0);
    EXPECT_EQ(buffer.all(), std::string(255, '\0') + std::string(45, '?'));
    EXPECT_EQ(boxes.boxes().size(), 1U);
    EXPECT_EQ(ins.hSetupLib, nullptr);
}

TEST(ConfigTranslator, KeepsTheMessageOfALongPathInsideItsBuffers) {
    for (const std::size_t length : {253U, 254U, 255U, 256U, 1023U, 1024U, 32768U, 70000U}) {
        SCOPED_TRACE(length);
        Named translator("/" + std::string(length - 1, 'p'));
        MessageBoxScript boxes;
        GuardedBuffer buffer(255);
        OdbcIns ins;
        EXPECT_EQ(ins.jxConfigTranslator(77, bytes(translator.name), buffer.bytes(), nullptr), 0);
        EXPECT_TRUE(buffer.isGuarded());
        EXPECT_EQ(buffer.text().size(), std::min<std::size_t>(length, 254));
        ASSERT_EQ(boxes.boxes().size(), 1U);
        EXPECT_NE(boxes.boxes()[0].text.find(buffer.text()), std::string::npos);
    }
}

TEST(ConfigTranslator, RefusesNullNamesAndPathBuffers) {
    Named translator(setupLibrary("translator_both"));
    MessageBoxScript boxes;
    GuardedBuffer buffer(255);
    OdbcIns ins;
    EXPECT_EQ(ins.jxConfigTranslator(77, nullptr, buffer.bytes(), nullptr), 0);
    EXPECT_EQ(ins.jxConfigTranslator(77, bytes(translator.name), nullptr, nullptr), 0);
    EXPECT_TRUE(buffer.isUntouched());
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

}  // namespace jx::test
