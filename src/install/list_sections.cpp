// The sections that list what is there, and so can be nothing else.
#include "install/list_sections.h"

#include <jxtext.h>
#include <odbcinst.h>

#include <algorithm>
#include <array>

#include "config/text_bytes.h"
#include "install/bounded_text.h"
#include "install/owned_text.h"

namespace jx::install {

namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view withoutOuterBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

}  // namespace

bool isListSection(const unsigned char* name) {
    constexpr std::size_t kLongerThanAnyList = 32;
    BoundedText<kLongerThanAnyList> bare;
    const std::array lists{INS_ODBCINI_DS, INS_ODBCINI_DRIVERS, INS_ODBCINST_TRANSLATORS};
    return bare.append(withoutOuterBlanks(viewOf(name))) &&
           std::any_of(lists.begin(), lists.end(),
                       [&](const char* list) { return strCompareCi(bare.text(), asBytes(list)) == 0; });
}

}  // namespace jx::install
