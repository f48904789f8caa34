// Registering one driver in .odbcinst.ini.
#pragma once

namespace jx::install {

// Registers a driver from a keyword list (infFile null) or from a script: the work behind SQLInstallDriver, whose
// comment in odbcinst.h says what it does. Returns 1 or 0.
int installDriver(const unsigned char* infFile, const unsigned char* driver, unsigned char* path,
                  unsigned short pathSize, unsigned short* pathLength);

}  // namespace jx::install
