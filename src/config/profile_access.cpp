// Reading and writing single profile strings on behalf of callers.
#include <jxprofile.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstddef>
#include <cstring>

#include "config/named_profile.h"
#include "config/text_bytes.h"

namespace {

// The user's configuration file that a name means, in its standard spelling; null for every other name. The exact
// comparison comes first, since comparing without regard to case takes a tenth of a read's time.
const unsigned char* userFile(const unsigned char* file) {
    const char* const names[] = {INS_ODBCINI_FILENAME, INS_ODBCINST_FILENAME};
    for (const char* name : names) {
        if (std::strcmp(jx::asChars(file), name) == 0)
            return jx::asBytes(name);
    }
    for (const char* name : names) {
        if (strCompareCi(file, jx::asBytes(name)) == 0)
            return jx::asBytes(name);
    }
    return nullptr;
}

}  // namespace

int OdbcIns::jxSQLGetPrivateProfileString(const unsigned char* section, const unsigned char* entry,
                                          const unsigned char* fallback, unsigned char* buffer, short size,
                                          const unsigned char* file) {
    if (buffer == nullptr || size <= 0 || file == nullptr)
        return 0;
    std::memset(buffer, 0, static_cast<std::size_t>(size));
    if (const unsigned char* known = userFile(file); known != nullptr)
        return jxGetPrivateProfileString(section, entry, fallback, buffer, size, known);
    const jx::NamedProfile cache(file);
    return jxGetPrivateProfileString(section, entry, fallback, buffer, size, cache.get());
}

int OdbcIns::jxSQLWritePrivateProfileString(const unsigned char* section, const unsigned char* entry,
                                            const unsigned char* text, const unsigned char* file) {
    if (file == nullptr)
        return 0;
    if (const unsigned char* known = userFile(file); known != nullptr)
        return jxWritePrivateProfileString(section, entry, text, known);
    const jx::NamedProfile cache(file);
    return jxWritePrivateProfileString(section, entry, text, cache.get());
}
