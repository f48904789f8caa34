// Colours of the desktop, and edges that can be seen on them.
#include "odbcadmin/desktop/look.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <FL/x.H>

#include "odbcadmin/desktop/toolkit.h"

namespace jx::desktop {

namespace {

constexpr unsigned char kGrey = 238;

using ColourSetter = void (*)(unsigned char red, unsigned char green, unsigned char blue);

// Sets a colour to that of an X resource of this program or of all. False when there is none.
bool takeColour(const char* resource, ColourSetter set) {
    constexpr int kByte = 8;
    const char* value = XGetDefault(fl_display, kProgramName, resource);
    XColor colour{};
    if (value == nullptr || XParseColor(fl_display, DefaultColormap(fl_display, fl_screen), value, &colour) == 0)
        return false;
    set(static_cast<unsigned char>(colour.red >> kByte), static_cast<unsigned char>(colour.green >> kByte),
        static_cast<unsigned char>(colour.blue >> kByte));
    return true;
}

// Desktops of high contrast set background and foreground. Fields that have no colour of their own then stand on the
// same background, on which the text can be read.
void takeColours() {
    const bool isSet = takeColour("background", Fl::background);
    if (!isSet)
        Fl::background(kGrey, kGrey, kGrey);
    if (!takeColour("Text.background", Fl::background2) && isSet)
        takeColour("background", Fl::background2);
    takeColour("foreground", Fl::foreground);
}

bool isDark() {
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
    Fl::get_color(FL_BACKGROUND_COLOR, red, green, blue);
    return red + green + blue < 3 * kGrey / 2;
}

void drawFrame(int x, int y, int width, int height, Fl_Color /*fill*/) {
    fl_color(FL_FOREGROUND_COLOR);
    fl_rect(x, y, width, height);
}

void drawBox(int x, int y, int width, int height, Fl_Color fill) {
    fl_rectf(x, y, width, height, fill);
    drawFrame(x, y, width, height, fill);
}

void drawRound(int x, int y, int width, int height, Fl_Color fill) {
    constexpr double kFull = 360;
    fl_color(fill);
    fl_pie(x, y, width, height, 0, kFull);
    fl_color(FL_FOREGROUND_COLOR);
    fl_arc(x, y, width, height, 0, kFull);
}

// The toolkit draws edges in shades of the background, which on a dark one nobody sees. There they have the text's
// colour.
void chooseEdges() {
    if (!isDark()) {
        Fl::scheme("gtk+");
        return;
    }
    Fl::scheme("none");
    for (const Fl_Boxtype box : {FL_UP_BOX, FL_DOWN_BOX, FL_THIN_UP_BOX, FL_THIN_DOWN_BOX})
        Fl::set_boxtype(box, drawBox, 2, 2, 4, 4);
    Fl::set_boxtype(FL_ENGRAVED_FRAME, drawFrame, 2, 2, 4, 4);
    Fl::set_boxtype(FL_ROUND_DOWN_BOX, drawRound, 2, 2, 4, 4);
}

}  // namespace

void takeLook() {
    takeColours();
    chooseEdges();
}

}  // namespace jx::desktop
