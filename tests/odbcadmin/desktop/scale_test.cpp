// The factor of the desktop.
#include "odbcadmin/desktop/scale.h"

#include <gtest/gtest.h>

#include <map>

namespace jx::desktop {
namespace {

struct Case {
    const char* dpi;
    const char* gdk;
    const char* qt;
    double factor;
};

double scaleOf(const Case& each) {
    const auto resource = [&each](const char* name) { return std::string(name) == "dpi" ? each.dpi : ""; };
    const auto variable = [&each](const char* name) {
        const std::map<std::string, std::string> all = {{"GDK_SCALE", each.gdk}, {"QT_SCALE_FACTOR", each.qt}};
        return all.at(name);
    };
    return wantedScale(resource, variable);
}

TEST(Scale, IsTheLargestThatTheDesktopNames) {
    const Case cases[] = {{"", "", "", 1},       {"96", "", "", 1},     {"192", "", "", 2},
                          {"144", "1", "", 1.5}, {"", "2", "", 2},      {"", "", "1.25", 1.25},
                          {"192", "2", "2", 2},  {"96", "2", "1.5", 2}, {"", "", "0.75", 0.75}};
    for (const Case& each : cases)
        EXPECT_DOUBLE_EQ(scaleOf(each), each.factor) << each.dpi << " " << each.gdk << " " << each.qt;
}

TEST(Scale, IgnoresWhatIsNoNumberAboveZero) {
    for (const char* text : {"nonsense", "-2", "0", "2x", " 2", "nan", "inf", "1e999", "2,5"})
        EXPECT_DOUBLE_EQ(scaleOf({text, text, text, 1}), 1) << text;
}

TEST(Scale, StaysWithinWhatCanBeSeen) {
    EXPECT_DOUBLE_EQ(scaleOf({"960000", "", "", 8}), 8);
    EXPECT_DOUBLE_EQ(scaleOf({"", "", "0.001", 0.5}), 0.5);
}

TEST(Scale, LengthsFollowIt) {
    EXPECT_EQ(scaled(10), 10);
    EXPECT_EQ(dots(10), 20);
    setScale(1.5);
    EXPECT_EQ(scaled(10), 15);
    EXPECT_EQ(dots(10), 30);
    EXPECT_EQ(scaled(0), 0);
    setScale(1);
}

}  // namespace
}  // namespace jx::desktop
