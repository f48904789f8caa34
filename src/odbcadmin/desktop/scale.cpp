// The factor and what follows it.
#include "odbcadmin/desktop/scale.h"

#include <FL/Fl.H>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace jx::desktop {

namespace {

constexpr int kDotsOfUnit = 2;
constexpr double kUsualDpi = 96, kLeastScale = 0.5, kMostScale = 8;

double currentScale = 1;

// 0 for what is no number above 0.
double numberOf(const std::string& text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
    return isNumber ? std::max(number, 0.0) : 0;
}

}  // namespace

double wantedScale(const Setting& resource, const Setting& variable) {
    const double wanted = std::max({numberOf(resource("dpi")) / kUsualDpi, numberOf(variable("GDK_SCALE")),
                                    numberOf(variable("QT_SCALE_FACTOR"))});
    return wanted == 0 ? 1 : std::clamp(wanted, kLeastScale, kMostScale);
}

void setScale(double factor) {
    currentScale = factor;
    FL_NORMAL_SIZE = scaled(FL_NORMAL_SIZE);
    Fl::scrollbar_size(scaled(Fl::scrollbar_size()));
}

int scaled(int pixels) {
    return static_cast<int>(std::lround(pixels * currentScale));
}

int dots(int units) {
    return scaled(units * kDotsOfUnit);
}

}  // namespace jx::desktop
