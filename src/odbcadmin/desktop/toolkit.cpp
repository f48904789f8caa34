// Display, preferences, scale, colours.
#include "odbcadmin/desktop/toolkit.h"

#include <FL/Fl.H>
#include <FL/x.H>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <optional>

#include "odbcadmin/desktop/look.h"
#include "odbcadmin/desktop/scale.h"

namespace jx::desktop {

namespace {

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

}  // namespace

bool openToolkit() {
    // The toolkit would end the program itself where there is no display.
    Display* display = XOpenDisplay(nullptr);
    if (display == nullptr)
        return false;
    readOptionsWithoutHome();
    fl_open_display(display);
    takeLook();  // before the scale, for it sets sizes, too
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
