// The text resources of the modules in this process.
#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lasting.h"
#include "platform/jxdialog.h"

namespace {

struct Text {
    unsigned short id = 0;
    std::string bytes;
};

using Texts = std::vector<Text>;                            // by id; of equal ids the first counts
using Modules = std::map<std::string, Texts, std::less<>>;  // looked up by the caller's bytes, without a copy

// One mutex for loads too: they hold it for a look-up and a short copy, and unlike with a lock that loads could share,
// no stream of them keeps a registration waiting.
struct Registry {
    std::mutex lock;
    Modules modules;
};

// Made by the first registration and then kept: std::map has no constant start of its own.
Registry& registry() {
    static jx::Lasting<Registry> kept;
    return kept.object;
}

bool hasLowerId(const Text& left, const Text& right) {
    return left.id < right.id;
}

Texts copyOf(const JxwString* strings) {
    Texts texts;
    for (const JxwString* next = strings; next != nullptr && next->text != nullptr; ++next)
        texts.push_back({next->id, next->text});
    std::stable_sort(texts.begin(), texts.end(), hasLowerId);
    return texts;
}

// Everything that needs memory happens before the lock is taken and what is replaced is released after it is given
// back: loads wait for the exchange of a few pointers only.
void put(const char* name, const JxwString* strings) {
    Modules made;
    made.emplace(name, copyOf(strings));
    auto node = made.extract(made.begin());
    Registry& known = registry();
    const std::lock_guard turn(known.lock);
    auto place = known.modules.find(node.key());
    if (place == known.modules.end())
        known.modules.insert(std::move(node));
    else
        place->second.swap(node.mapped());
}

const std::string* find(const Modules& modules, const char* module, unsigned short id) {
    const auto texts = modules.find(std::string_view(module));
    if (texts == modules.end())
        return nullptr;
    const auto text = std::lower_bound(texts->second.begin(), texts->second.end(), Text{id, {}}, hasLowerId);
    return text != texts->second.end() && text->id == id ? &text->bytes : nullptr;
}

}  // namespace

int JXW_RegisterModule(const char* name, const JxwString* strings, const JxwTemplate* /*templates*/) {
    if (name == nullptr || *name == 0)
        return 0;
    try {
        put(name, strings);
        return 1;
    } catch (const std::bad_alloc&) {
        return 0;
    }
}

int JXW_LoadString(const char* module, unsigned short id, unsigned char* buffer, int size) {
    constexpr int kSizeOfUnsized = 256;
    if (module == nullptr || buffer == nullptr)
        return 0;
    const auto room = static_cast<std::size_t>((size > 0 ? size : kSizeOfUnsized) - 1);
    Registry& known = registry();
    const std::lock_guard turn(known.lock);
    const std::string* text = find(known.modules, module, id);
    if (text == nullptr)
        return 0;
    const std::size_t length = std::min(text->size(), room);
    std::memcpy(buffer, text->data(), length);
    buffer[length] = 0;
    return static_cast<int>(length);
}
