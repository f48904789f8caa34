// Display, preferences, scale, colours.
#include "odbcadmin/desktop/toolkit.h"

#include <FL/Fl.H>
#include <FL/Fl_Window.H>
#include <FL/x.H>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <optional>

#include "odbcadmin/desktop/scale.h"

namespace jx::desktop {

namespace {

constexpr unsigned char kGrey = 238;
constexpr int kTitleHeight = 30;  // of a window, drawn by the desktop

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string xftResource(const char* name) {
    const char* value = XGetDefault(fl_display, "Xft", name);
    return value != nullptr ? value : "";
}

// The toolkit looks for its options once, at the first use of one, and makes ~/.fltk on that occasion. A home that can
// hold no folder leaves it with the options it brings along.
void readOptionsWithoutHome() {
    const char* home = std::getenv("HOME");
    const std::optional<std::string> kept = home != nullptr ? std::optional<std::string>(home) : std::nullopt;
    setenv("HOME", "/dev/null", 1);
    Fl::visible_focus(1);
    if (kept)
        setenv("HOME", kept->c_str(), 1);
    else
        unsetenv("HOME");
}

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

}  // namespace

bool openToolkit() {
    // The toolkit would end the program itself where there is no display.
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr)
        return false;
    readOptionsWithoutHome();
    fl_open_display(display);
    takeColours();
    Fl::scheme("gtk+");  // sets sizes of its own, too
    setScale(wantedScale(xftResource, variable));
    Fl_Window::default_xclass(kProgramName);
    // Names of data sources may be in any language, also where the user's locale is not installed.
    if (std::setlocale(LC_CTYPE, "") == nullptr)
        std::setlocale(LC_CTYPE, "C.UTF-8");
    return true;
}

Place workArea() {
    Place area{};
    Fl::screen_work_area(area.x, area.y, area.width, area.height);
    const int title = std::min(scaled(kTitleHeight), area.height);
    return {area.x, area.y + title, area.width, area.height - title};
}

void standOnScreen(Fl_Window& window, int x, int y) {
    const Place area = workArea();
    window.position(std::max(area.x, std::min(x, area.right() - window.w())),
                    std::max(area.y, std::min(y, area.bottom() - window.h())));
}

std::string titleOf(const std::string& dialogTitle) {
    return dialogTitle + " - " + kProgramName;
}

}  // namespace jx::desktop
