// The library's message boxes: sentences around a name, and the standard messages of the dialogs.
#include "config/message_box.h"

#include <gtest/gtest.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstring>
#include <string>

#include "message_box_script.h"

namespace jx::test {

namespace {

std::string messageAround(std::size_t nameLength, std::size_t before, std::size_t after) {
    return asChars(MessageText(std::string(before, 'b'), std::string(nameLength, 'n'), std::string(after, 'a')).text());
}

}  // namespace

TEST(MessageAroundAName, CutsTheNameAtTheLastByteThatFits) {
    EXPECT_EQ(messageAround(3, 2, 2), "bbnnnaa");
    EXPECT_EQ(messageAround(0, 0, 0), "");
    for (const std::size_t length : {1000U, 1018U, 1019U, 1020U, 32768U, 70000U}) {
        SCOPED_TRACE(length);
        const std::size_t kept = std::min<std::size_t>(length, 1023 - 4);
        EXPECT_EQ(messageAround(length, 2, 2), "bb" + std::string(kept, 'n') + "aa");
    }
}

TEST(MessageAroundAName, CutsASentenceThatIsTooLongItself) {
    EXPECT_EQ(messageAround(5, 1023, 1), std::string(1023, 'b'));
    EXPECT_EQ(messageAround(5, 1022, 5), std::string(1022, 'b') + "a");
    EXPECT_EQ(messageAround(5, 70000, 70000), std::string(1023, 'b'));
}

TEST(StandardMessages, AreShownUnderTheInstallersTitle) {
    OdbcIns ins;
    std::memset(ins.dataSourceName, 'n', 49);
    for (const unsigned long id : {50UL, 51UL, 52UL, 53UL, 54UL}) {
        SCOPED_TRACE(id);
        unsigned char pattern[256] = {};
        winGetString(pattern, static_cast<unsigned short>(id));
        std::string text = reinterpret_cast<char*>(pattern);
        if (id == 53)
            text.replace(text.find("%s"), 2, std::string(49, 'n'));
        MessageBoxScript boxes{IDYES};
        EXPECT_EQ(ins.DisplayMB(77, id), IDYES);
        EXPECT_EQ(boxes.boxes(), (Boxes{{77, text, "KALDERO ODBC Admin", id == 53 ? 36U : 48U}}));
    }
}

TEST(StandardMessages, HaveNoOtherNumbers) {
    OdbcIns ins;
    MessageBoxScript boxes;
    for (const unsigned long id : {0UL, 49UL, 55UL, 65586UL})
        EXPECT_EQ(ins.DisplayMB(77, id), 0) << id;
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(StandardMessages, GiveAnAnswerOfSixteenBits) {
    OdbcIns ins;
    MessageBoxScript boxes{0x10006U};
    EXPECT_EQ(ins.DisplayMB(77, 53), 6);
}

}  // namespace jx::test
