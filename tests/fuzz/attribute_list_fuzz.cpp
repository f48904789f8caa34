// Any bytes as an attribute list: it is refused, or its items come out in their order.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_check.h"
#include "setup/data_source_request.h"

namespace {

void checkRequest(const jx::setup::DataSourceRequest& request, const std::string& list) {
    FUZZ_CHECK(!request.name.empty());
    std::size_t from = 0;
    for (const auto& [keyword, value] : request.attributes) {
        FUZZ_CHECK(!keyword.empty() && keyword.find('=') == std::string::npos);
        const std::string item = keyword + "=" + value + '\0';
        from = list.find(item, from);
        FUZZ_CHECK(from != std::string::npos);
        from += item.size();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string list = std::string(reinterpret_cast<const char*>(data), size) + std::string(2, '\0');
    const auto request = jx::setup::parseRequest(list.c_str());
    if (request)
        checkRequest(*request, list);
    return 0;
}
