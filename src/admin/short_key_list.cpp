// Reads a section's keys and drops the one at the edge.
#include "admin/short_key_list.h"

#include <odbcins.h>

#include "config/text_bytes.h"

namespace jx::admin {

ShortKeyList::ShortKeyList(OdbcIns& ins, const char* section, const char* file) {
    // One byte more than the list has: where that one is no end, the last key goes on beyond it.
    ins.jxSQLGetPrivateProfileString(asBytes(section), nullptr, nullptr, bytes_.data(), kSize + 1, asBytes(file));
    for (std::size_t at = kSize; at-- > 0 && bytes_[at] != 0;)
        bytes_[at] = 0;
}

}  // namespace jx::admin
