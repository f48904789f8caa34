// Opening a library as a program does, without dying of a file that was copied in part.
#pragma once

// All its symbols are resolved, none is offered to others. Null when it cannot be loaded: openFailure says why.
void* openLibrary(const char* path);

// From now on a library that needs libodbcinst.so.2 where the loader finds none is tried once more, with this one.
// path must live as long as the process; "" is none.
void useInstaller(const char* path);

// The loader's sentence about the last library that could not be loaded; valid until the next call of openLibrary.
const char* openFailure(void);
