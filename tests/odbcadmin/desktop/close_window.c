/* Asks a window to close, as the desktop does when the user clicks on the cross in its frame. Usage: close_window
 * NUMBER */
#include <X11/Xlib.h>
#include <stdlib.h>

int main(int count, char** arguments) {
    Display* display = XOpenDisplay(NULL);
    if (count != 2 || display == NULL)
        return 2;
    XEvent event = {0};
    event.xclient.type = ClientMessage;
    event.xclient.window = strtoul(arguments[1], NULL, 10);
    event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = (long)XInternAtom(display, "WM_DELETE_WINDOW", False);
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display, event.xclient.window, False, NoEventMask, &event);
    XCloseDisplay(display);
    return 0;
}
