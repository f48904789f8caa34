// Which controls move and which grow.
#include "odbcadmin/desktop/placement.h"

#include <algorithm>
#include <utility>

namespace jx::desktop {

namespace {

// A list that loses rows keeps this share of its height.
constexpr int kLeastListShare = 2;

// Margins of a row count as equal up to this share of the width; a row as wide as the window has smaller ones than
// that.
constexpr int kMarginShare = 8;

bool shareLine(const Place& one, const Place& other) {
    return one.y < other.bottom() && other.y < one.bottom();
}

}  // namespace

Placement::Placement(std::vector<Part> parts, int width, int height)
    : parts_(std::move(parts)), width_(width), height_(height) {
    chooseStretch();
}

void Placement::chooseStretch() {
    for (const Part& part : parts_) {
        const bool isList = part.growth == Growth::list;
        const bool isBetter = isList     ? !hasList_ || part.place.height > stretch_.height
                              : hasList_ ? false
                                         : part.growth == Growth::field && part.place.width > stretch_.width;
        if (!isBetter)
            continue;
        stretch_ = part.place;
        hasStretch_ = true;
        hasList_ = isList;
    }
    if (hasList_)
        spareHeight_ = spareHeight();
}

// How much the list can lose: what stands beside it keeps its place above the controls below.
int Placement::spareHeight() const {
    int end = stretch_.bottom() - stretch_.height / kLeastListShare;
    for (const Part& part : parts_)
        if (part.place.bottom() <= stretch_.bottom() && part.growth != Growth::list)
            end = std::max(end, part.place.bottom());
    return stretch_.bottom() - end;
}

// Buttons of a row move together: with the right edge when they stand nearer to it, half the way when they stand in the
// middle. In a row from edge to edge each goes with the edge that it is nearer to.
int Placement::shiftOfButton(const Part& button, int extra) const {
    int left = width_;
    int right = 0;
    for (const Part& other : parts_) {
        if (other.growth != Growth::button || !shareLine(other.place, button.place))
            continue;
        left = std::min(left, other.place.x);
        right = std::max(right, other.place.right());
    }
    const int leftMargin = left;
    const int rightMargin = width_ - right;
    if (leftMargin > width_ / kMarginShare) {
        if (std::abs(leftMargin - rightMargin) <= width_ / kMarginShare)
            return extra / 2;
        return rightMargin < leftMargin ? extra : 0;
    }
    return button.place.x + button.place.width / 2 > width_ / 2 ? extra : 0;
}

Place Placement::sideways(const Part& part, int extra) const {
    Place place = part.place;
    const bool reaches = place.right() >= stretch_.right();
    if (place.x >= stretch_.right())
        place.x += extra;
    else if (reaches && (part.growth != Growth::button || place.x <= stretch_.x))
        place.width += extra;
    else if (part.growth == Growth::button)
        place.x += shiftOfButton(part, extra);
    return place;
}

void Placement::down(const Part& part, int extra, Place& place) const {
    const bool isBeside = part.place.y < stretch_.bottom();
    const bool grows = part.growth == Growth::list || part.growth == Growth::frame;
    if (!isBeside)
        place.y += extra;
    else if (grows && part.place.bottom() >= stretch_.bottom())
        place.height += extra;
}

std::vector<Place> Placement::at(int width, int height) const {
    const int wider = hasStretch_ ? std::max(width, leastWidth()) - width_ : 0;
    const int taller = hasList_ ? std::max(height, leastHeight()) - height_ : 0;
    std::vector<Place> places;
    places.reserve(parts_.size());
    for (const Part& part : parts_) {
        Place place = sideways(part, wider);
        if (hasList_)
            down(part, taller, place);
        places.push_back(place);
    }
    return places;
}

}  // namespace jx::desktop
