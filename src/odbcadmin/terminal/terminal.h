// What the screen needs of a terminal; tests put another one in its place.
#pragma once

#include <optional>

#include "odbcadmin/terminal/canvas.h"
#include "odbcadmin/terminal/input.h"

namespace jx::terminal {

// How a terminal can set off texts.
struct Abilities {
    Charset charset = Charset::utf8;
    bool dim = true;        // grey texts look grey; else they are put in brackets
    bool underline = true;  // edit fields are underlined; else they are filled with "_"
};

class Terminal {
public:
    Terminal() = default;
    virtual ~Terminal() = default;
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    virtual Abilities abilities() const = 0;

    // The size at this moment.
    virtual int columns() const = 0;
    virtual int lines() const = 0;

    // Shows a picture of that size, with the text cursor at a place or nowhere.
    virtual void show(const Canvas& canvas, std::optional<Point> cursor) = 0;

    // Waits for the user.
    virtual Input next() = 0;

    // Around what may run a driver's library and take its time. Keys that are typed meanwhile are dropped: they were
    // meant for what was seen then. Those typed before stay. Afterwards the modes are as before and everything is
    // painted anew.
    virtual void beforeWork() = 0;
    virtual void afterWork() = 0;

    // Whose code runs from now on, for the line that says who ended the program; empty: this program's own.
    virtual void setWorker(const std::string& worker) = 0;
};

}  // namespace jx::terminal
