// Where dialogs and their controls stand at every size of a terminal.
#include "odbcadmin/terminal/layout.h"

#include <gtest/gtest.h>
#include <jxwindow.h>

#include <vector>

#include "resources/templates.h"
#include "setup/setup_template.h"

namespace jx::test {
namespace {

using terminal::DialogPlace;
using terminal::partsOf;
using terminal::placeDialog;
using terminal::Point;
using terminal::Rect;
using terminal::ScreenParts;

unsigned int doNothing(HWND /*dialog*/, int /*message*/, int /*wparam*/, uintptr_t /*lparam*/) {
    return 1;
}

// A dialog of a template, without a screen.
class Dialog {
public:
    Dialog(const JxwTemplate* templates, unsigned short id) {
        JXW_RegisterModule("layout", nullptr, templates);
        info_.dialog = JXW_CreateDialog("layout", id, 0, doNothing, nullptr);
        JXW_GetDialogInfo(info_.dialog, &info_);
    }
    ~Dialog() { JXW_DestroyDialog(info_.dialog); }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    const JxwDialogInfo& info() const { return info_; }

    DialogPlace in(int columns, int lines) const {
        return placeDialog(info_, partsOf(columns, lines, terminal::wantedLines(info_)).area, {});
    }

    std::vector<JxwControlInfo> controls() const {
        std::vector<JxwControlInfo> all;
        JxwControlInfo control{};
        for (int index = 0; JXW_GetControlInfo(info_.dialog, index, &control) != 0; ++index)
            all.push_back(control);
        return all;
    }

    Rect listIn(const DialogPlace& place) const {
        for (const JxwControlInfo& control : controls())
            if (control.kind == JXW_LISTBOX)
                return place.of(control);
        return {};
    }

private:
    JxwDialogInfo info_{};
};

template <class Check>
void withEveryDialog(Check check) {
    for (const JxwTemplate* templates : {kTemplates, setup::kSetupTemplates}) {
        for (const JxwTemplate* each = templates; each->id != 0; ++each) {
            SCOPED_TRACE(each->title);
            check(Dialog(templates, each->id));
        }
    }
}

TEST(Layout, A80x24TerminalShowsEveryDialogWholeWithHelpAndKeys) {
    withEveryDialog([](const Dialog& dialog) {
        const ScreenParts parts = partsOf(80, 24, terminal::wantedLines(dialog.info()));
        const DialogPlace place = dialog.in(80, 24);
        EXPECT_EQ(place.inside.columns, place.columns);
        EXPECT_EQ(place.inside.lines, place.lines);
        EXPECT_GE(parts.help.lines, 1);
        EXPECT_EQ(parts.keys, (Rect{0, 23, 80, 1}));
        for (const JxwControlInfo& control : dialog.controls())
            EXPECT_EQ(common(place.inside, place.onScreen(place.of(control))), place.onScreen(place.of(control)));
    });
}

TEST(Layout, NoTwoControlsOverlapAtAnySize) {
    for (const Point size : {Point{20, 5}, Point{40, 12}, Point{50, 19}, Point{60, 20}, Point{71, 23}, Point{80, 24},
                             Point{81, 25}, Point{100, 30}, Point{200, 60}}) {
        SCOPED_TRACE(testing::Message() << size.column << "x" << size.line);
        withEveryDialog([&size](const Dialog& dialog) {
            const DialogPlace place = dialog.in(size.column, size.line);
            const Rect whole{0, 0, place.columns, place.lines};
            const std::vector<JxwControlInfo> controls = dialog.controls();
            for (std::size_t i = 0; i < controls.size(); ++i) {
                const Rect one = place.of(controls[i]);
                EXPECT_EQ(common(one, whole), one) << controls[i].text;
                for (std::size_t j = 0; j < i; ++j) {
                    const Rect both = common(one, place.of(controls[j]));
                    if (controls[j].kind == JXW_GROUPBOX)
                        continue;
                    EXPECT_EQ(both.columns * both.lines, 0) << controls[i].text << " and " << controls[j].text;
                }
            }
        });
    }
}

TEST(Layout, ListsGrowWithTheTerminalUpToAWidthThatCanBeRead) {
    const Dialog dialog(kTemplates, JxDataSourcesDialog);
    const struct {
        int columns, lines;
        Point list;  // its columns and lines
    } rows[] = {{20, 5, {46, 13}},  {40, 12, {46, 13}},  {80, 24, {46, 13}},   {81, 24, {47, 13}},
                {72, 24, {46, 13}}, {71, 24, {45, 13}},  {60, 24, {34, 13}},   {50, 24, {24, 13}},
                {45, 24, {46, 13}}, {80, 20, {46, 13}},  {80, 19, {46, 13}},   {80, 18, {46, 13}},
                {80, 25, {46, 14}}, {132, 43, {98, 32}}, {200, 60, {106, 49}}, {500, 200, {106, 189}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.columns << "x" << row.lines);
        const Rect list = dialog.listIn(dialog.in(row.columns, row.lines));
        EXPECT_EQ((Point{list.columns, list.lines}), row.list);
    }
}

TEST(Layout, WhatStandsBesideAListMovesAsideAndWhatStandsBelowMovesDown) {
    const Dialog dialog(setup::kSetupTemplates, setup::kSetupDialog);
    const DialogPlace small = dialog.in(80, 24);
    const DialogPlace large = dialog.in(100, 40);
    const int wider = large.columns - small.columns;
    const int higher = large.lines - small.lines;
    EXPECT_EQ((Point{wider, higher}), (Point{20, 12}));
    for (const JxwControlInfo& control : dialog.controls()) {
        const Rect before = small.of(control);
        const Rect after = large.of(control);
        switch (control.id) {
            case setup::kAddButton:
                EXPECT_EQ(after, (Rect{before.column + wider, before.line, before.columns, 1}));
                break;
            case setup::kValueEdit:
                EXPECT_EQ(after, (Rect{before.column, before.line + higher, before.columns + wider, 1}));
                break;
            case IDOK:
                EXPECT_EQ(after, (Rect{before.column + wider, before.line + higher, before.columns, 1}));
                break;
            case setup::kNameEdit:
                EXPECT_EQ(after, (Rect{before.column, before.line, before.columns + wider, 1}));
                break;
            default:
                break;
        }
    }
}

TEST(Layout, AListShrinksWhereThatMakesItsDialogWhole) {
    withEveryDialog([](const Dialog& dialog) {
        const DialogPlace place = dialog.in(68, 24);
        const bool hasList = dialog.listIn(place).lines > 0;
        EXPECT_EQ(place.inside.columns == place.columns, hasList);
    });
}

constexpr JxwControl kAcrossControls[] = {{JXW_LISTBOX, 1, 8, 8, 264, 80, nullptr, 0},
                                          {JXW_BUTTON, 2, 8, 96, 68, 14, "Left", 0},
                                          {JXW_BUTTON, IDOK, 128, 96, 68, 14, "OK", 0},
                                          {JXW_BUTTON, IDCANCEL, 204, 96, 68, 14, "Cancel", 0},
                                          kEndOfControls};
constexpr JxwTemplate kAcross[] = {{1, "Across", 280, 120, kAcrossControls}, {0, nullptr, 0, 0, nullptr}};

TEST(Layout, BelowAListAcrossTheDialogTheButtonsOfTheRightHalfKeepToTheRight) {
    const Dialog dialog(kAcross, 1);
    const struct {
        int columns;
        int change;  // from the template's 72 with the frame
    } rows[] = {{40, 0}, {59, 0}, {60, -12}, {72, 0}, {80, 0}, {100, 20}, {120, 40}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.columns);
        const DialogPlace place = dialog.in(row.columns, 24);
        std::vector<int> begins;
        for (const JxwControlInfo& control : dialog.controls())
            begins.push_back(place.of(control).column);
        EXPECT_EQ(begins, (std::vector<int>{2, 2, 32 + row.change, 51 + row.change}));
        EXPECT_EQ(dialog.listIn(place).columns, 66 + row.change);
    }
}

TEST(Layout, ADialogWithoutAListKeepsItsSize) {
    const Dialog dialog(kTemplates, JxOptionsDialog);
    EXPECT_EQ(dialog.in(200, 60).frame.columns, dialog.in(80, 24).frame.columns);
    EXPECT_EQ(dialog.in(200, 60).frame.lines, dialog.in(80, 24).frame.lines);
}

TEST(Layout, AHighDialogTakesTheHelpsSecondLineAndThenTheHeading) {
    const struct {
        int lines, wanted;
        int heading, help, keys;
    } rows[] = {{24, 20, 1, 2, 1}, {24, 21, 1, 1, 1}, {24, 22, 0, 1, 1}, {24, 23, 1, 2, 1}, {16, 18, 1, 2, 1},
                {15, 18, 1, 1, 1}, {10, 18, 1, 1, 1}, {9, 18, 0, 1, 1},  {8, 18, 0, 1, 1},  {7, 18, 0, 1, 0},
                {5, 18, 0, 1, 0},  {4, 18, 0, 0, 0},  {1, 18, 0, 0, 0},  {0, 18, 0, 0, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.lines << " lines for " << row.wanted);
        const ScreenParts parts = partsOf(80, row.lines, row.wanted);
        EXPECT_EQ(parts.heading.lines, row.heading);
        EXPECT_EQ(parts.help.lines, row.help);
        EXPECT_EQ(parts.keys.lines, row.keys);
        EXPECT_EQ(parts.area.lines, row.lines - row.heading - row.help - row.keys);
        EXPECT_EQ(parts.keys.bottom(), row.lines);
    }
}

}  // namespace
}  // namespace jx::test
