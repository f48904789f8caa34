// Any bytes as a connection string: what is read and written again is read as the same; and any bytes as values, which
// are read back as they were.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz_check.h"
#include "odbcadmin/model/connection_string.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace jx::model;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const ConnectionPairs read = readConnectionString(text);
    Pairs written;
    for (const auto& [keyword, value] : read.pairs) {
        FUZZ_CHECK(whyNoKeyword(keyword) == nullptr);
        written.emplace_back(keyword, connectionValue(value));
    }
    const ConnectionPairs again = readConnectionString(joinedAttributes(written));
    FUZZ_CHECK(again.error.empty() && again.pairs == read.pairs);
    const std::string both = joinedAttributes({{"A", connectionValue(text)}, {"B", bracedValue(text)}});
    FUZZ_CHECK(readConnectionString(both).pairs == (Pairs{{"A", std::string(text)}, {"B", std::string(text)}}));
    return 0;
}
