/* A setup library that does what its data source says: crashes or ends the program. */
#include <signal.h>
#include <stdlib.h>
#include <string.h>

typedef unsigned int HWND;

__attribute__((visibility("default"))) int ConfigDSN(HWND window, unsigned short request, const char* driver,
                                                     const char* attributes);

int ConfigDSN(HWND window, unsigned short request, const char* driver, const char* attributes) {
    (void)window;
    (void)request;
    (void)driver;
    if (strstr(attributes, "Crash") != NULL)
        raise(SIGSEGV);
    exit(5);
}
