// Keeps the modules of this process, and finds their texts and templates.
#include "jxutl/dialog/modules.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <jxtemplate.h>
#include "jxutl/thread/lasting.h"

namespace {

struct Text {
    unsigned short id = 0;
    std::string bytes;
};

using Texts = std::vector<Text>;  // by id; of equal ids the first counts
using Templates = std::shared_ptr<const jx::dialog::DialogTemplates>;

struct Module {
    Texts texts;
    Templates templates;
};

using Modules = std::map<std::string, Module, std::less<>>;  // std::less<>: looked up without a copy of the name

// Loads take the same mutex: they hold it for a look-up and a short copy. With a shared lock, many loads could keep a
// registration waiting.
struct Registry {
    std::mutex lock;
    Modules modules;
};

// Made by the first call and never destroyed; std::map cannot be constant-initialized.
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

// Memory is allocated before the lock and what is replaced is released after it, so loads wait only while a few
// pointers are exchanged.
void put(const char* name, const JxwString* strings, const JxwTemplate* templates) {
    Modules made;
    made.emplace(name, Module{copyOf(strings),
                              std::make_shared<const jx::dialog::DialogTemplates>(jx::dialog::copyOf(templates))});
    auto node = made.extract(made.begin());
    Registry& known = registry();
    const std::lock_guard locked(known.lock);
    auto place = known.modules.find(node.key());
    if (place == known.modules.end())
        known.modules.insert(std::move(node));
    else
        std::swap(place->second, node.mapped());
}

const std::string* find(const Modules& modules, const char* module, unsigned short id) {
    const auto found = modules.find(std::string_view(module));
    if (found == modules.end())
        return nullptr;
    const Texts& texts = found->second.texts;
    const auto text = std::lower_bound(texts.begin(), texts.end(), Text{id, {}}, hasLowerId);
    return text != texts.end() && text->id == id ? &text->bytes : nullptr;
}

// Null for an unknown module.
Templates templatesOf(const char* module) {
    Registry& known = registry();
    const std::lock_guard locked(known.lock);
    const auto found = known.modules.find(std::string_view(module));
    return found != known.modules.end() ? found->second.templates : nullptr;
}

}  // namespace

std::shared_ptr<const jx::dialog::DialogTemplate> jx::dialog::findTemplate(const char* module, unsigned short id) {
    const Templates templates = templatesOf(module);
    if (templates == nullptr)
        return nullptr;
    const auto found = std::find_if(templates->begin(), templates->end(),
                                    [id](const DialogTemplate& candidate) { return candidate.id == id; });
    // Points to one template and keeps all of the module's.
    return found != templates->end() ? std::shared_ptr<const DialogTemplate>(templates, &*found) : nullptr;
}

int JXW_RegisterModule(const char* name, const JxwString* strings, const JxwTemplate* templates) {
    if (name == nullptr || *name == 0)
        return 0;
    try {
        put(name, strings, templates);
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
    const std::lock_guard locked(known.lock);
    const std::string* text = find(known.modules, module, id);
    if (text == nullptr)
        return 0;
    const std::size_t length = std::min(text->size(), room);
    std::memcpy(buffer, text->data(), length);
    buffer[length] = 0;
    return static_cast<int>(length);
}
