// The lists of installed and of available drivers.
#include <jxfiles.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstddef>
#include <cstring>
#include <string_view>

#include "config/key_list.h"
#include "config/sized_output.h"
#include "config/text_bytes.h"

using jx::asBytes;

namespace {

// Whether path names an installation script: odbc.inf in any case, in any directory.
bool isScriptName(const unsigned char* path) {
    unsigned char directory[1024];
    unsigned char baseName[kBosBaseNameSize] = {};
    unsigned char extension[kBosExtensionSize] = {};
    if (BUTSTLEN(path) >= sizeof directory)
        return false;
    BUTSTCPY(directory, path);
    return bosParseName(directory, baseName, extension, 0) != 0 && strCompareCi(baseName, asBytes("ODBC")) == 0 &&
           strCompareCi(extension, asBytes("INF")) == 0;
}

// The part of a key between its double quotes. Without an opening quote it begins at the first character, without a
// closing one it goes to the end.
std::string_view withoutQuotes(std::string_view key) {
    if (key.front() == '"')
        key.remove_prefix(1);
    return key.substr(0, key.find('"'));
}

// UnquotedList: the names in a list of quoted keys, as a list.
class UnquotedList {
public:
    explicit UnquotedList(jx::NameList keys) {
        for (std::string_view key = keys.next(); !key.empty(); key = keys.next())
            append(withoutQuotes(key));
    }

    const unsigned char* bytes() const { return bytes_; }
    std::size_t sizeInBytes() const { return length_; }

private:
    // An empty name is left out, since it would end the list.
    void append(std::string_view name) {
        if (name.empty() || name.size() + 1 >= sizeof bytes_ - length_)
            return;
        std::memcpy(bytes_ + length_, name.data(), name.size());
        length_ += name.size() + 1;
    }

    unsigned char bytes_[2048]{};
    std::size_t length_ = 0;
};

}  // namespace

int OdbcIns::jxSQLGetInstalledDrivers(unsigned char* lpszBuf, unsigned short cbBufMax, unsigned short* pcbBufOut) {
    if (lpszBuf == nullptr || cbBufMax == 0)
        return 0;
    const jx::KeyList keys(asBytes(INS_ODBCINI_DRIVERS), jx::kNotAvailable, asBytes(INS_ODBCINST_FILENAME));
    const std::size_t total = keys.names().sizeInBytes();
    if (!keys.isThere() || total == 0)
        return 0;
    jx::handOutList(keys.bytes(), total, lpszBuf, cbBufMax, pcbBufOut);
    return 1;
}

int OdbcIns::jxSQLGetAvailableDrivers(const unsigned char* lpszInfFile, unsigned char* lpszBuf, unsigned short cbBufMax,
                                      unsigned short* pcbBufOut) {
    if (lpszInfFile == nullptr || lpszBuf == nullptr || cbBufMax == 0)
        return 0;
    if (!isScriptName(lpszInfFile))
        return 0;
    const jx::KeyList keys(asBytes(INS_ODBCINI_DRIVERS), jx::kNotAvailable, lpszInfFile);
    if (!keys.isThere() || keys.names().count() == 0)
        return 0;
    const UnquotedList names(keys.names());
    jx::handOutList(names.bytes(), names.sizeInBytes(), lpszBuf, cbBufMax, pcbBufOut);
    return 1;
}
