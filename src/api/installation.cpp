// The exported functions that install drivers.
#include <odbcinst.h>

#include "config/text_bytes.h"
#include "install/batch_installation.h"
#include "install/driver_installation.h"

using jx::asBytes;

BOOL SQLInstallDriver(LPCSTR lpszInfFile, LPCSTR lpszDriver, LPSTR lpszPath, WORD cbPathMax, WORD* pcbPathOut) {
    return jx::install::installDriver(asBytes(lpszInfFile), asBytes(lpszDriver), asBytes(lpszPath), cbPathMax,
                                      pcbPathOut);
}

BOOL SQLInstallODBC(HWND hwndParent, LPCSTR lpszInfFile, LPCSTR lpszSrcPath, LPSTR lpszDrivers) {
    return jx::install::installOdbc(hwndParent, asBytes(lpszInfFile), asBytes(lpszSrcPath), asBytes(lpszDrivers));
}
