// The texts of the library by number.
#include <jxdialog.h>
#include <odbcinst.h>

unsigned short winGetString(unsigned char* buffer, unsigned short id) {
    return static_cast<unsigned short>(JXW_LoadString(BJXHINST, id, buffer, 0));
}
