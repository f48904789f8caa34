// Any bytes as the keyword list of SQLInstallDriverEx: it has a fault, or holds what every later step relies on.
#include <cstdint>
#include <string>

#include "api3/keyword_list.h"
#include "api3/name_list.h"
#include "api3/text_conversion.h"
#include "fuzz_check.h"
#include "rules/names.h"
#include "rules/valid_names.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Exactly the bytes that the parser may read: two NULs end them at the latest.
    std::string bytes(reinterpret_cast<const char*>(data), size);
    bytes.append(1, '\0');
    const jx::api3::KeywordList list = jx::api3::parseKeywordList(bytes.c_str(), "Driver");
    if (!list.fault.empty()) {
        FUZZ_CHECK(list.code != 0);
        return 0;
    }
    FUZZ_CHECK(!list.name.empty() && !list.library.empty());
    FUZZ_CHECK(jx::rules::whyNoName(list.name, jx::rules::kAnyDriver) == nullptr);
    for (const auto& [keyword, value] : list.others) {
        FUZZ_CHECK(!keyword.empty() && keyword.find('=') == std::string::npos);
        FUZZ_CHECK((keyword + value).find_first_of("\r\n") == std::string::npos);
        FUZZ_CHECK(!jx::rules::sameName(keyword, "Driver") && !jx::rules::sameName(keyword, "Setup"));
    }
    std::size_t length = 0;
    for (const std::string_view text : jx::api3::NamesIn(jx::api3::listOf(bytes.c_str())))
        length += text.size() + 1;
    FUZZ_CHECK(length == jx::api3::listOf(bytes.c_str()).size());
    return 0;
}
