// The record that the Select Translator dialog works on.
#pragma once

#include <cstddef>

class OdbcIns;

namespace jx {

inline constexpr std::size_t kTranslatorNameSize = 256;

// What the dialog leaves as the name when the user wants no translator.
inline constexpr char kNoTranslator[] = "<No Translator>";

// TranslatorChoice: made by the caller of the dialog, who owns what it points to.
struct TranslatorChoice {
    unsigned char* name;  // kTranslatorNameSize bytes: the first choice on entry, the user's choice on return
    OdbcIns* installer;
    unsigned int chosen;  // set by the dialog: 0 when it opens, 1 when the user confirms
};

}  // namespace jx
