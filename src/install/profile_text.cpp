// One value or one list of names as read from an INI file.
#include "install/profile_text.h"

#include <jxtext.h>

#include "config/key_list.h"
#include "config/text_bytes.h"
#include "install/owned_text.h"

namespace jx::install {

namespace {

void dropCutName(unsigned char* list, std::size_t size) {
    while (size > 0 && list[size - 1] != 0)
        list[--size] = 0;
}

}  // namespace

template <typename File>
bool ProfileText::readFrom(const unsigned char* section, const unsigned char* key, File file, std::size_t size) {
    bytes_.fill(0);
    readFailed_ = false;
    if (file == nullptr)
        return false;
    jxGetPrivateProfileString(section, key, asBytes(kNotAvailable), bytes_.data(), static_cast<int>(size), file);
    readFailed_ = jxProfileReadFailed() != 0;
    return !readFailed_ && BUTSTCMP(bytes_.data(), asBytes(kNotAvailable)) != 0;
}

bool ProfileText::read(const unsigned char* section, const unsigned char* key, const unsigned char* file) {
    return readFrom(section, key, file);
}

bool ProfileText::read(const unsigned char* section, const unsigned char* key, JxIniFileCache* cache) {
    return readFrom(section, key, cache);
}

bool ProfileText::readWholeKeys(const unsigned char* section, const unsigned char* file) {
    const bool found = readFrom(section, nullptr, file, kProfileTextSize + 1);
    dropCutName(bytes_.data(), kProfileTextSize);
    return found;
}

unsigned char* textAfter(unsigned char* text) {
    return *text == 0 ? text : text + BUTSTLEN(text) + 1;
}

std::uint32_t countTexts(unsigned char* list) {
    std::uint32_t count = 0;
    for (unsigned char* text = list; *text != 0; text = textAfter(text))
        ++count;
    return count;
}

unsigned char* cutAtEquals(unsigned char* text) {
    unsigned char* equals = strFind(text, static_cast<unsigned char>('='));
    if (equals == nullptr)
        return nullptr;
    *equals = 0;
    return equals + 1;
}

std::string_view quotedName(const unsigned char* key) {
    std::string_view name = viewOf(key);
    name.remove_prefix(name.empty() ? 0 : 1);
    return name.substr(0, name.find('"'));
}

}  // namespace jx::install
