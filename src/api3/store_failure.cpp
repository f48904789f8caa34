// Makes sentences of failures.
#include "api3/store_failure.h"

#include <cstring>

#include <jxini.h>

namespace jx::api3 {

std::string storeReason() {
    std::string reason(jxIniFailureText(nullptr, 0), '\0');
    jxIniFailureText(reason.data(), reason.size() + 1);
    return reason.empty() ? "The file was not written." : reason + ".";
}

std::string whyNotRead(const Place& place) {
    return place.isThere() ? storeReason() : whyNowhere(place);
}

std::string whyNowhere(const Place& place) {
    std::string sentence = "The home directory of the account is not known";
    if (place.error() == 0)
        return sentence + ".";
    const char* words = strerrordesc_np(place.error());
    return sentence + ": " + (words != nullptr ? words : "the system does not tell") + ".";
}

}  // namespace jx::api3
