// Reads a section's keys and drops the one at the edge.
#include "admin/short_key_list.h"

#include <odbcins.h>

#include "config/name_list.h"
#include "config/text_bytes.h"

namespace jx::admin {

ShortKeyList::ShortKeyList(OdbcIns& ins, const char* section, const char* file) {
    ins.jxSQLGetPrivateProfileString(asBytes(section), nullptr, nullptr, bytes_.data(), kSize + 1, asBytes(file));
    dropCutName(bytes_.data(), kSize);
}

}  // namespace jx::admin
