// Reading an installation script.
#include "install/script.h"

#include <jxtext.h>

#include "config/named_profile.h"

namespace jx::install {

KeyList Script::fileKeys(const unsigned char* section) const {
    const NamedProfile open(file_);
    return {section, kNotAvailable, open.get()};
}

unsigned char* quotedName(unsigned char* key) {
    unsigned char* name = *key == 0 ? key : key + 1;
    if (unsigned char* quote = strFind(name, static_cast<unsigned char>('"')); quote != nullptr)
        *quote = 0;
    return name;
}

}  // namespace jx::install
