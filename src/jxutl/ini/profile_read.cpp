// Profile reads, and whether the last one failed.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include <jxprofile.h>
#include "jxutl/ini/ini_line.h"
#include "jxutl/ini/ini_location.h"
#include "jxutl/ini/profile_cache.h"
#include "jxutl/ini/profile_file.h"
#include "jxutl/thread/failure.h"
#include "rules/names.h"

namespace jx::ini {

namespace {

// The caller's buffer; size is at least 1.
struct Target {
    unsigned char* bytes;
    std::size_t size;
};

const char* asText(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

// Copies what fits and a NUL; returns the number of bytes before it.
int place(const Target& target, std::string_view text) {
    const std::size_t length = std::min(text.size(), target.size - 1);
    if (length > 0)
        std::memmove(target.bytes, text.data(), length);
    target.bytes[length] = 0;
    return static_cast<int>(length);
}

// One look-up; a null section or key means the list.
struct Question {
    const unsigned char* section;
    const unsigned char* key;
    const unsigned char* fallback;
};

int placeFallback(const Target& target, const Question& question) {
    if (question.fallback == nullptr)
        return place(target, {});
    return place(target, {asText(question.fallback), strnlen(asText(question.fallback), target.size - 1)});
}

int answer(const Target& target, const Question& question, IniIndex& index) {
    if (question.section == nullptr)
        return place(target, index.sections());
    const std::string_view section = rules::argument(asText(question.section));
    if (question.key == nullptr) {
        const std::optional<std::string_view> keys = index.keys(section);
        return keys ? place(target, *keys) : placeFallback(target, question);
    }
    const std::optional<std::string_view> value = index.value(section, rules::argument(asText(question.key)));
    return value ? place(target, *value) : placeFallback(target, question);
}

// find gives the file's path as IniLocator does.
template <class Find>
int answerFrom(ProfileCache& cache, const Target& target, const Question& question, Find find) {
    const IniLocator::Found found = find(cache);
    if (found.path == nullptr) {
        noteFailure(JxIniStepLocate, {}, errno);
        return placeFallback(target, question);
    }
    IniIndex* index = cache.read(*found.path, found.number);
    return index != nullptr ? answer(target, question, *index) : placeFallback(target, question);
}

// For a thread without data. Out of line, so that other reads have no cache on their stack.
template <class Find>
[[gnu::noinline]] int answerOnce(const Target& target, const Question& question, Find find) {
    ProfileCache once;
    return answerFrom(once, target, question, find);
}

template <class Find>
int read(const Target& target, const Question& question, Find find) {
    try {
        if (ProfileCache* cache = threadCache(); cache != nullptr)
            return answerFrom(*cache, target, question, find);
        return answerOnce(target, question, find);
    } catch (const std::bad_alloc&) {
        noteFailure(JxIniStepMemory, {}, ENOMEM);
        return placeFallback(target, question);
    }
}

}  // namespace

}  // namespace jx::ini

int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* fallback,
                              unsigned char* buffer, int size, const unsigned char* file) {
    if (size <= 0 || buffer == nullptr || file == nullptr)
        return 0;
    const jx::ini::Target target{buffer, static_cast<std::size_t>(size)};
    return jx::ini::read(target, {section, key, fallback},
                         [file](jx::ini::ProfileCache& files) { return files.locator().find(jx::ini::asText(file)); });
}

int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* fallback,
                              unsigned char* buffer, int size, JxIniFileCache* cache) {
    if (size <= 0 || buffer == nullptr || cache == nullptr)
        return 0;
    const jx::ini::Target target{buffer, static_cast<std::size_t>(size)};
    return jx::ini::read(target, {section, key, fallback}, [cache](jx::ini::ProfileCache&) {
        errno = EINVAL;
        return jx::ini::IniLocator::Found{cache->file.empty() ? nullptr : &cache->file};
    });
}

int jxProfileReadFailed(void) {
    return jx::ini::lastFailure().step != JxIniStepNone ? 1 : 0;
}
