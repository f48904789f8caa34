// Taking changes of a field back.
#include "odbcadmin/terminal/edit_history.h"

#include <gtest/gtest.h>

namespace jx::test {
namespace {

using terminal::EditHistory;
using terminal::EditState;
using terminal::Key;

std::string takenBack(EditHistory& history) {
    const std::optional<EditState> state = history.takeBack();
    return state ? state->text : "(nothing)";
}

TEST(EditHistory, ARunOfCharactersIsOneChangeAndEveryOtherKeyOneOfItsOwn) {
    EditHistory history;
    history.keep({"", 0}, Key::character);
    history.keep({"a", 1}, Key::character);
    history.keep({"ab", 2}, Key::backspace);
    history.keep({"a", 1}, Key::backspace);
    history.keep({"", 0}, Key::paste);
    history.keep({"x", 1}, Key::paste);
    EXPECT_EQ(takenBack(history), "x");
    EXPECT_EQ(takenBack(history), "");
    EXPECT_EQ(takenBack(history), "ab");
    EXPECT_EQ(takenBack(history), "");
    EXPECT_EQ(takenBack(history), "(nothing)");
}

TEST(EditHistory, ARunEndsWhereTheCaretMovesAndWhereAChangeIsTakenBack) {
    EditHistory history;
    history.keep({"", 0}, Key::character);
    history.endRun();
    history.keep({"a", 1}, Key::character);
    EXPECT_EQ(takenBack(history), "a");
    history.keep({"a", 1}, Key::character);
    EXPECT_EQ(takenBack(history), "a");
    EXPECT_EQ(takenBack(history), "");
}

TEST(EditHistory, ForgetsTheOldestBeyondAHundred) {
    EditHistory history;
    for (int i = 0; i < 150; ++i)
        history.keep({std::to_string(i), 0}, Key::paste);
    for (int i = 149; i >= 50; --i)
        ASSERT_EQ(takenBack(history), std::to_string(i));
    EXPECT_EQ(takenBack(history), "(nothing)");
}

TEST(EditHistory, IsEmptyAfterClear) {
    EditHistory history;
    history.keep({"a", 1}, Key::character);
    history.clear();
    EXPECT_EQ(takenBack(history), "(nothing)");
    history.keep({"b", 1}, Key::character);
    EXPECT_EQ(takenBack(history), "b");
}

}  // namespace
}  // namespace jx::test
