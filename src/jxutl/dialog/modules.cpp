// Keeps the modules of this process, and finds their texts and templates.
#include "jxutl/dialog/modules.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <jxtemplate.h>

namespace {

struct Text {
    unsigned short id = 0;
    std::string bytes;
    bool operator==(const Text&) const = default;
};

using Texts = std::vector<Text>;  // by id; of equal ids the first counts

// What a module registered at one time. It is never changed and never released: readers take no lock, so one may be
// reading it at any moment, and a child that was forked meanwhile finds nothing locked. Registering the same again, as
// a setup library does whenever it is loaded, makes no new one.
struct Contents {
    Texts texts;
    jx::dialog::DialogTemplates templates;
    const Contents* earlier = nullptr;
};

struct Module {
    explicit Module(const char* moduleName) : name(moduleName) {}

    const std::string name;
    std::atomic<const Contents*> current = nullptr;
    std::atomic<const Contents*> all = nullptr;  // and by earlier
    Module* next = nullptr;
};

constinit std::atomic<Module*> modules = nullptr;

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

Module* findModule(std::string_view name) {
    for (Module* module = modules.load(std::memory_order_acquire); module != nullptr; module = module->next)
        if (module->name == name)
            return module;
    return nullptr;
}

const Contents* currentOf(const char* name) {
    const Module* module = findModule(name);
    return module != nullptr ? module->current.load(std::memory_order_acquire) : nullptr;
}

// Puts made before the others that head leads to through link, unless a same one is there already: then that one is
// returned and made is released.
template <class Node, class Owner, class Link, class Find>
Node* pushUnlessThere(std::atomic<Node*>& head, Owner made, Link link, Find find) {
    Node* first = head.load(std::memory_order_acquire);
    do {
        if (Node* known = find(); known != nullptr)
            return known;
        (*made).*link = first;
    } while (!head.compare_exchange_weak(first, made.get(), std::memory_order_acq_rel));
    return made.release();
}

Module& moduleOf(const char* name) {
    Module* known = findModule(name);
    if (known == nullptr)
        known = pushUnlessThere(modules, std::make_unique<Module>(name), &Module::next,
                                [name] { return findModule(name); });
    return *known;
}

const Contents* sameAs(const Module& module, const Contents& made) {
    for (const Contents* known = module.all.load(std::memory_order_acquire); known != nullptr; known = known->earlier)
        if (known->texts == made.texts && known->templates == made.templates)
            return known;
    return nullptr;
}

// Memory is allocated before anything changes.
void put(const char* name, const JxwString* strings, const JxwTemplate* templates) {
    auto made = std::make_unique<Contents>(Contents{copyOf(strings), jx::dialog::copyOf(templates)});
    Module& module = moduleOf(name);
    const Contents& contents = *made;
    const Contents* kept =
        pushUnlessThere(module.all, std::move(made), &Contents::earlier, [&] { return sameAs(module, contents); });
    module.current.store(kept, std::memory_order_release);
}

const std::string* find(const Texts& texts, unsigned short id) {
    const auto text =
        std::lower_bound(texts.begin(), texts.end(), id,
                         [](const Text& candidate, unsigned short wanted) { return candidate.id < wanted; });
    return text != texts.end() && text->id == id ? &text->bytes : nullptr;
}

}  // namespace

const jx::dialog::DialogTemplate* jx::dialog::findTemplate(const char* module, unsigned short id) {
    const Contents* contents = currentOf(module);
    if (contents == nullptr)
        return nullptr;
    const auto found = std::find_if(contents->templates.begin(), contents->templates.end(),
                                    [id](const DialogTemplate& candidate) { return candidate.id == id; });
    return found != contents->templates.end() ? &*found : nullptr;
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
    const Contents* contents = currentOf(module);
    const std::string* text = contents != nullptr ? find(contents->texts, id) : nullptr;
    if (text == nullptr)
        return 0;
    const std::size_t length = std::min(text->size(), room);
    std::memcpy(buffer, text->data(), length);
    buffer[length] = 0;
    return static_cast<int>(length);
}
