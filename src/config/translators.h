// The record of the Select Translator dialog.
#pragma once

#include <cstddef>

class OdbcIns;

namespace jx {

inline constexpr std::size_t kTranslatorNameSize = 256;

// The name that the dialog returns when the user wants no translator.
inline constexpr char kNoTranslator[] = "<No Translator>";

// TranslatorChoice: the caller of the dialog makes it and owns what it points to.
struct TranslatorChoice {
    unsigned char* name;  // kTranslatorNameSize bytes: the first choice on entry, the user's choice on return
    OdbcIns* installer;
    unsigned int chosen;  // set by the dialog: 0 when it opens, 1 when the user confirms
};

}  // namespace jx
