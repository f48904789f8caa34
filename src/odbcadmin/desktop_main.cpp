// The program xodbcadmin: the dialogs in windows of the desktop.
#include <FL/Fl.H>
#include <FL/x.H>
#include <odbcinst.h>

#include <cstdio>
#include <cstring>
#include <exception>

#include "odbcadmin/desktop/desktop_screen.h"
#include "odbcadmin/trial/installer_library.h"

namespace {

constexpr int kWrongUse = 2;

// The toolkit would end the program itself where there is no display.
bool openDisplay() {
    Display* display = XOpenDisplay(nullptr);
    if (display != nullptr)
        fl_open_display(display);
    return display != nullptr;
}

int refuse(const char* why) {
    std::fprintf(stderr,
                 "xodbcadmin: %s\nIt takes no arguments and shows its dialogs in windows; odbcadmin shows them in a "
                 "terminal.\n",
                 why);
    return kWrongUse;
}

}  // namespace

int main(int count, char** arguments) {
    if (count == 2 && std::strcmp(arguments[1], "--version") == 0) {
        std::puts("xodbcadmin " JX_VERSION);
        return 0;
    }
    if (count != 1)
        return refuse("wrong use");
    if (!openDisplay())
        return refuse("there is no display (is DISPLAY set?)");
    const auto manage = jx::trial::installerFunction<decltype(&SQLManageDataSources)>("SQLManageDataSources");
    if (manage == nullptr)
        return refuse(jx::trial::installerTrouble().c_str());
    try {
        Fl::scheme("gtk+");
        Fl::visible_focus(1);
        const jx::desktop::DesktopScreen screen;
        manage(0);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "xodbcadmin: %s\n", error.what());
        return 1;
    } catch (...) {
        // Drivers throw what they like.
        std::fputs("xodbcadmin: A driver ended its work with an exception that says nothing\n", stderr);
        return 1;
    }
    return 0;
}
