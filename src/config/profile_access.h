// Reading single profile strings.
#pragma once

namespace jx {

// What OdbcIns::jxSQLGetPrivateProfileString does; it needs no object, and drivers call it for every key they know.
int profileString(const unsigned char* section, const unsigned char* entry, const unsigned char* fallback,
                  unsigned char* buffer, short size, const unsigned char* file);

}  // namespace jx
