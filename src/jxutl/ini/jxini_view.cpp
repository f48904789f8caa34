// The store's own interface: asking a file that seldom changes.
#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <new>
#include <optional>
#include <string_view>

#include <jxini.h>
#include "jxutl/ini/ini_index.h"
#include "jxutl/ini/ini_scan.h"
#include "jxutl/ini/profile_cache.h"
#include "jxutl/ini/profile_file.h"
#include "jxutl/thread/failure.h"
#include "rules/names.h"

namespace ini = jx::ini;
namespace rules = jx::rules;

namespace {

// A view is an index of the thread's cache under a name for programs.
ini::IniIndex& indexOf(JxIniView* view) {
    return *reinterpret_cast<ini::IniIndex*>(view);
}

JxIniAnswer answer(std::optional<std::string_view> found, JxIniAnswer otherwise, JxIniPart* part) {
    if (!found)
        return otherwise;
    *part = {found->data(), found->size()};
    return JxIniFound;
}

JxIniAnswer ask(ini::IniIndex& index, const char* section, const char* key, JxIniPart* part) {
    if (section == nullptr)
        return answer(index.sections(), JxIniNoSection, part);
    const std::string_view sectionName = rules::argument(section);
    if (key == nullptr)
        return answer(index.keys(sectionName), JxIniNoSection, part);
    const ini::IniIndex::Finding found = index.find(sectionName, rules::argument(key));
    if (found.value || !found.hasSection)
        return answer(found.value, JxIniNoSection, part);
    *part = {nullptr, found.keysWithAt};
    return JxIniNoKey;
}

std::size_t lineAt(std::string_view text, std::size_t place) {
    return 1 + static_cast<std::size_t>(std::count(text.data(), text.data() + place, '\n'));
}

}  // namespace

JxIniView* jxIniLook(JxIniFileCache* file) {
    if (file == nullptr || file->file.empty()) {
        ini::noteFailure(JxIniStepLocate, {}, EINVAL);
        return nullptr;
    }
    try {
        if (ini::ProfileCache* cache = ini::threadCache(); cache != nullptr)
            return reinterpret_cast<JxIniView*>(cache->read(file->file));
    } catch (const std::bad_alloc&) {
        // Noted below, as for a thread that cannot have a cache.
    }
    ini::noteFailure(JxIniStepMemory, file->file, ENOMEM);
    return nullptr;
}

JxIniAnswer jxIniAsk(JxIniView* view, const char* section, const char* key, JxIniPart* part) {
    if (view == nullptr || part == nullptr)
        return JxIniNoSection;
    try {
        return ask(indexOf(view), section, key, part);
    } catch (const std::bad_alloc&) {
        ini::noteFailure(JxIniStepMemory, {}, ENOMEM);
        return JxIniAskFailed;
    }
}

size_t jxIniLine(JxIniView* view, const char* section, const char* key) {
    const std::string_view name = rules::argument(section);
    if (view == nullptr || !rules::canBeAskedFor(name))
        return 0;
    const std::string_view text = indexOf(view).text();
    ini::SectionWalk walk(text);
    while (walk.nextNamed(name)) {
        if (key == nullptr)
            return lineAt(text, walk.header());
        if (const auto line = ini::findEntry(text, walk.body(), walk.bodyEnd(), rules::argument(key)))
            return lineAt(text, line.begin);
    }
    return 0;
}
