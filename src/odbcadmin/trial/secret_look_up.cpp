// Calling the library of today's generation, which nobody else in the process sees.
#include "odbcadmin/trial/secret_look_up.h"

#include <dlfcn.h>

#include <cstdint>

#include "odbcadmin/trial/installer_library.h"

namespace jx::trial {

namespace {

constexpr int kRoom = (64 << 10) + 2;

using LookUp = int (*)(const char*, const char*, const char*, char*, int, const char*);
using ErrorOf = short (*)(std::uint16_t, std::uint32_t*, char*, std::uint16_t, std::uint16_t*);

struct Functions {
    LookUp lookUp = nullptr;
    ErrorOf errorOf = nullptr;
};

const Functions& functions() {
    static const Functions found = [] {
        const std::string path = driversInstallerPath();
        void* library = path.empty() ? nullptr : ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr)
            return Functions();
        return Functions{reinterpret_cast<LookUp>(::dlsym(library, "SQLGetPrivateProfileString")),
                         reinterpret_cast<ErrorOf>(::dlsym(library, "SQLInstallerError"))};
    }();
    return found;
}

}  // namespace

SecretLookUp lookUpSecret(const std::string& file, const std::string& section, const std::string& key) {
    SecretLookUp answer;
    if (functions().lookUp == nullptr || functions().errorOf == nullptr)
        return answer;
    answer.isAsked = true;
    answer.value.resize(kRoom);
    const int count = functions().lookUp(section.c_str(), key.c_str(), "", answer.value.data(), kRoom, file.c_str());
    answer.value.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    char message[2048] = "";
    std::uint32_t code = 0;
    std::uint16_t length = 0;
    constexpr short kNoMore = 100;
    if (functions().errorOf(1, &code, message, sizeof message, &length) != kNoMore)
        answer.refusal = message;
    return answer;
}

}  // namespace jx::trial
