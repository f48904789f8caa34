// Owners for texts and blocks of the utility library's allocator.
#include "install/owned_text.h"

#include <jxtext.h>

namespace jx::install {

std::string_view viewOf(const unsigned char* text) {
    return {reinterpret_cast<const char*>(text), BUTSTLEN(text)};
}

OwnedText copyOf(std::string_view text) {
    return joined(text, {});
}

OwnedText joined(std::string_view first, std::string_view second) {
    OwnedText made(static_cast<unsigned char*>(ramAlloc(first.size() + second.size() + 1)));
    if (made != nullptr) {
        BUTMEMCP(made.get(), first.data(), first.size());
        BUTMEMCP(made.get() + first.size(), second.data(), second.size());
        made[first.size() + second.size()] = 0;
    }
    return made;
}

}  // namespace jx::install
