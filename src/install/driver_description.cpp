// What a caller passes to SQLInstallDriver: a driver's description, or a keyword list that begins with it.
#include "install/driver_description.h"

#include <jxtext.h>

#include <cstring>

namespace jx::install {

std::size_t descriptionSize(const unsigned char* source, DescriptionForm form) {
    for (std::size_t offset = 0; offset < kDescriptionSize;) {
        const std::size_t room = kDescriptionSize - offset;
        const std::size_t length = strnlen(reinterpret_cast<const char*>(source) + offset, room);
        if (length == room)
            return 0;
        offset += length + 1;
        if (length == 0 || form == DescriptionForm::name)
            return offset;
    }
    return 0;
}

bool DriverDescription::take(const unsigned char* source, DescriptionForm form) {
    const std::size_t size = descriptionSize(source, form);
    if (size == 0)
        return false;
    BUTMEMCP(bytes_.data(), source, size);
    return true;
}

unsigned char* keywordText(unsigned char* list, unsigned position) {
    unsigned char* text = list;
    for (unsigned passed = 0; passed < position && *text != 0; ++passed)
        text += BUTSTLEN(text) + 1;
    return text;
}

}  // namespace jx::install
