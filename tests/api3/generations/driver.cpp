// A driver that is linked with one generation of the installer library and looks its server up, as drivers do.
#include <odbcinst.h>

extern "C" __attribute__((visibility("default"))) int lookUpServer(char* buffer, int size) {
#if JX_GENERATION == 1
    const char* file = ".odbc.ini";
    return SQLGetPrivateProfileString("Sales", "Server", "none", buffer, size, file);
#else
    return SQLGetPrivateProfileString("Sales", "Server", "none", buffer, size, "odbc.ini");
#endif
}

// Which setup goes on in this generation: the first has no system's file.
extern "C" __attribute__((visibility("default"))) int addSource(const char* name) {
    return SQLWriteDSNToIni(name, "Plain");
}
