// Places on a screen, in columns and lines.
#pragma once

#include <algorithm>

namespace jx::terminal {

struct Point {
    int column = 0;
    int line = 0;

    bool operator==(const Point&) const = default;
};

struct Rect {
    int column = 0;
    int line = 0;
    int columns = 0;
    int lines = 0;

    int right() const { return column + columns; }  // the first column behind it
    int bottom() const { return line + lines; }     // the first line below it
    bool contains(Point point) const {
        return point.column >= column && point.column < right() && point.line >= line && point.line < bottom();
    }
    bool operator==(const Rect&) const = default;
};

// The part of a that lies in b.
inline Rect common(const Rect& a, const Rect& b) {
    const int column = std::max(a.column, b.column);
    const int line = std::max(a.line, b.line);
    return {column, line, std::max(0, std::min(a.right(), b.right()) - column),
            std::max(0, std::min(a.bottom(), b.bottom()) - line)};
}

}  // namespace jx::terminal
