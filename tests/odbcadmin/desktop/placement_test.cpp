// Where controls go when a window is resized.
#include "odbcadmin/desktop/placement.h"

#include <gtest/gtest.h>

#include <ostream>

namespace jx::desktop {

// For the messages of failed tests.
void PrintTo(const Place& place, std::ostream* out) {
    *out << place.x << "," << place.y << " " << place.width << "x" << place.height;
}

namespace {

// A list with its label, two buttons beside it, a field with its label and a row of buttons below.
Placement listDialog() {
    return {{{Growth::text, {10, 10, 200, 10}},
             {Growth::list, {10, 20, 200, 100}},
             {Growth::button, {220, 20, 70, 20}},
             {Growth::button, {220, 50, 70, 20}},
             {Growth::text, {10, 130, 60, 10}},
             {Growth::field, {70, 130, 140, 20}},
             {Growth::button, {140, 160, 70, 20}},
             {Growth::button, {220, 160, 70, 20}}},
            300,
            190};
}

TEST(Placement, OfTheTemplateIsTheTemplate) {
    const std::vector<Place> places = listDialog().at(300, 190);
    EXPECT_EQ(places[1], (Place{10, 20, 200, 100}));
    EXPECT_EQ(places[7], (Place{220, 160, 70, 20}));
}

TEST(Placement, TheListTakesTheRoomAndTheRestKeepsItsDistance) {
    const std::vector<Place> places = listDialog().at(400, 490);
    const std::vector<Place> expected = {{10, 10, 300, 10}, {10, 20, 300, 400}, {320, 20, 70, 20},  {320, 50, 70, 20},
                                         {10, 430, 60, 10}, {70, 430, 240, 20}, {240, 460, 70, 20}, {320, 460, 70, 20}};
    EXPECT_EQ(places, expected);
}

TEST(Placement, ALowWindowTakesRowsFromTheListDownToTheButtonsBesideIt) {
    const Placement placement = listDialog();
    EXPECT_EQ(placement.leastHeight(), 140);
    const std::vector<Place> places = placement.at(300, 150);
    EXPECT_EQ(places[1], (Place{10, 20, 200, 60}));
    EXPECT_EQ(places[3], (Place{220, 50, 70, 20}));
    EXPECT_EQ(places[5], (Place{70, 90, 140, 20}));
}

TEST(Placement, NothingIsSmallerThanTheLeastSize) {
    const Placement placement = listDialog();
    EXPECT_EQ(placement.at(1, 1), placement.at(placement.leastWidth(), placement.leastHeight()));
}

TEST(Placement, OfTwoListsTheTallerOneGrowsAndAFrameAroundItToo) {
    const Placement placement(
        {{Growth::frame, {5, 5, 200, 120}}, {Growth::list, {10, 10, 190, 100}}, {Growth::list, {10, 130, 190, 30}}},
        210, 170);
    const std::vector<Place> expected = {{5, 5, 210, 170}, {10, 10, 200, 150}, {10, 180, 200, 30}};
    EXPECT_EQ(placement.at(220, 220), expected);
}

TEST(Placement, WithoutAListTheWidestFieldTakesTheWidthAndNothingGrowsDown) {
    const Placement placement({{Growth::text, {10, 10, 60, 10}},
                               {Growth::field, {70, 10, 200, 20}},
                               {Growth::button, {70, 40, 200, 20}},
                               {Growth::field, {70, 70, 50, 20}},
                               {Growth::button, {120, 100, 70, 20}},
                               {Growth::button, {200, 100, 70, 20}}},
                              280, 130);
    EXPECT_TRUE(placement.growsSideways());
    EXPECT_FALSE(placement.growsDown());
    const std::vector<Place> expected = {{10, 10, 60, 10}, {70, 10, 300, 20},  {70, 40, 300, 20},
                                         {70, 70, 50, 20}, {220, 100, 70, 20}, {300, 100, 70, 20}};
    EXPECT_EQ(placement.at(380, 900), expected);
}

TEST(Placement, RowsOfButtonsStayTogetherWhereTheyStand) {
    struct Row {
        const char* name;
        std::vector<int> from;
        std::vector<int> to;
    };
    const Row rows[] = {{"right", {120, 160}, {220, 260}},
                        {"middle", {60, 100}, {110, 150}},
                        {"left", {10, 40}, {10, 40}},
                        {"from edge to edge", {10, 160}, {10, 260}}};
    for (const Row& row : rows) {
        std::vector<Part> parts = {{Growth::list, {10, 10, 180, 50}}};
        for (const int x : row.from)
            parts.push_back({Growth::button, {x, 70, 30, 20}});
        const std::vector<Place> places = Placement(parts, 200, 100).at(300, 100);
        for (std::size_t each = 0; each < row.to.size(); ++each)
            EXPECT_EQ(places[each + 1].x, row.to[each]) << row.name;
    }
}

TEST(Placement, ADialogOfTextsAndButtonsDoesNotGrow) {
    const Placement placement({{Growth::text, {10, 10, 100, 10}}, {Growth::button, {40, 30, 40, 20}}}, 120, 60);
    EXPECT_FALSE(placement.growsSideways());
    EXPECT_FALSE(placement.growsDown());
    EXPECT_EQ(placement.at(500, 500), placement.at(120, 60));
    EXPECT_TRUE(Placement({}, 0, 0).at(10, 10).empty());
}

}  // namespace
}  // namespace jx::desktop
