// What this product's libodbcinst.so.2 makes of a key whose value lies elsewhere.
#pragma once

#include <string>

namespace jx::trial {

struct SecretLookUp {
    bool isAsked = false;  // false: the library is not there or could not be loaded
    std::string value;
    std::string refusal;  // the library's sentence; empty when it followed the reference
};

// Asks for a key of a section of the file with that absolute path, as a driver does, with this process's rights and
// environment. For one thread.
SecretLookUp lookUpSecret(const std::string& file, const std::string& section, const std::string& key);

}  // namespace jx::trial
