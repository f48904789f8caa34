// The action "load".
#include <dlfcn.h>
#include <stddef.h>

#include "odbcadmin/trial/helper/actions.h"
#include "odbcadmin/trial/helper/library.h"
#include "odbcadmin/trial/helper/report.h"

void loadLibrary(const Request* request) {
    void* library = openLibrary(requestText(request, "library"));
    if (library == NULL) {
        report("refused", openFailure());
        return;
    }
    report("loaded", "");
    size_t at = 0;
    for (const char* name = nextText(request, "function", &at); name != NULL; name = nextText(request, "function", &at))
        if (dlsym(library, name) != NULL)
            report("offered", name);
    dlclose(library);
    report("unloaded", "");
}
