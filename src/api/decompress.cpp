// The file transfer of a batch installation.
#include <odbcinst.h>

unsigned int Decompress(unsigned int /*hwnd*/, unsigned char* /*source*/, unsigned char* /*target*/) {
    // Deliberate: files are registered where they lie, so none is transferred and the answer is always the same.
    return 1;
}
