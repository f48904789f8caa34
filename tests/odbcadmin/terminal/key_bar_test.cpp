// The line of keys: what it names at every width, and what a click on it means.
#include "odbcadmin/terminal/key_bar.h"

#include <gtest/gtest.h>

namespace jx::test {
namespace {

using assist::FunctionKey;
using terminal::Canvas;
using terminal::Charset;
using terminal::Key;
using terminal::KeyBar;

const std::vector<FunctionKey> kTwo{{1, "help", "", {}}, {2, "new driver", "", {}}};
const std::vector<FunctionKey> kEight{{1, "help", "", {}},   {2, "new driver", "", {}}, {3, "test", "", {}},
                                      {4, "view", "", {}},   {5, "reload", "", {}},     {6, "copy", "", {}},
                                      {7, "rename", "", {}}, {8, "filter", "", {}}};

std::string textOf(const std::vector<FunctionKey>& keys, int columns) {
    Canvas canvas(columns, 1);
    KeyBar(keys, columns, Charset::utf8).paint(canvas, canvas.whole());
    return canvas.line(0);
}

TEST(KeyBar, NamesAsManyKeysAsFitTheFirstOnesBeforeTheLastOnes) {
    const struct {
        const std::vector<FunctionKey>& keys;
        int columns;
        const char* text;
    } rows[] = {
        {kTwo, 80, " Tab next  Arrows choose  Enter <button>  Esc leave  F1 help  F2 new driver"},
        {kTwo, 60, " Tab  Enter  Esc  F1 help  F2 new driver"},
        {kTwo, 40, " Tab Enter Esc F1 help F2 new driver"},
        {kTwo, 30, " F1 help  F2 new driver"},
        {kTwo, 23, " F1 help F2 new driver"},
        {kTwo, 22, " F1 help"},
        {kTwo, 5, " F1 h"},
        {kTwo, 1, ""},
        {kTwo, 0, ""},
        {kEight, 120,
         " Tab  Enter  Esc  F1 help  F2 new driver  F3 test  F4 view  F5 reload  F6 copy  F7 rename  F8 filter"},
        {kEight, 80, " F1 help F2 new driver F3 test F4 view F5 reload F6 copy F7 rename F8 filter"},
        {kEight, 40, " F1 help F2 new driver F3 test F4 view"},
        {{}, 80, " Tab next  Arrows choose  Enter <button>  Esc leave"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.columns);
        EXPECT_EQ(textOf(row.keys, row.columns), row.text);
    }
}

TEST(KeyBar, AClickMeansTheKeyThatStandsThere) {
    const KeyBar bar(kTwo, 80, Charset::utf8);
    const std::string text = textOf(kTwo, 80);
    const struct {
        const char* part;
        Key key;
    } rows[] = {{"Tab", Key::tab},    {"next", Key::tab}, {"Arrows", Key::none}, {"<button>", Key::enter},
                {"Esc", Key::escape}, {"F1", Key::f1},    {"F2", Key::f2},       {"driver", Key::f2}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.part);
        const std::size_t begin = text.find(row.part);
        EXPECT_EQ(bar.keyAt(static_cast<int>(begin)), row.key);
        EXPECT_EQ(bar.keyAt(static_cast<int>(begin + std::string(row.part).size()) - 1), row.key);
    }
    for (const int between : {-1, 0, 9, static_cast<int>(text.size()), 79, 1000})
        EXPECT_EQ(bar.keyAt(between), Key::none) << between;
}

}  // namespace
}  // namespace jx::test
