// The file transfer of a batch installation.
#include <odbcinst.h>

unsigned int Decompress(unsigned int /*hwnd*/, unsigned char* /*source*/, unsigned char* /*target*/) {
    // Deliberate: nothing is transferred, since files are registered where they lie.
    return 1;
}
