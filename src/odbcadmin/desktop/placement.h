// Where the controls of a dialog stand in a window that the user has resized.
#pragma once

#include <vector>

namespace jx::desktop {

struct Place {
    int x, y, width, height;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    bool operator==(const Place&) const = default;
};

// What a control does with room: lists grow both ways, fields and texts sideways, buttons move, frames grow around
// what they hold.
enum class Growth { list, field, text, button, frame };

struct Part {
    Growth growth;
    Place place;
};

// Placement: the places in a template, and from them those at any size.
//
// The tallest list takes all further height and the further width; without a list the widest field takes the width.
// What is right of it or below it keeps its distance to the window's edge; rows of buttons stay together.
class Placement {
public:
    Placement(std::vector<Part> parts, int width, int height);

    // The places in a window of that size, in the order of the parts. A size below the least one counts as that.
    std::vector<Place> at(int width, int height) const;

    // The least size at which everything can be used: the template's, but a list may lose rows.
    int leastWidth() const { return width_; }
    int leastHeight() const { return height_ - spareHeight_; }

    // What can grow at all.
    bool growsSideways() const { return hasStretch_; }
    bool growsDown() const { return hasList_; }

private:
    void chooseStretch();
    int spareHeight() const;
    int shiftOfButton(const Part& button, int extra) const;
    Place sideways(const Part& part, int extra) const;
    void down(const Part& part, int extra, Place& place) const;

    std::vector<Part> parts_;
    int width_;
    int height_;
    Place stretch_{};
    bool hasStretch_ = false;
    bool hasList_ = false;
    int spareHeight_ = 0;
};

}  // namespace jx::desktop
