// Any units as a text, a list and a result of the W functions: what is whole comes back as it was, and a cut parts no
// pair and no character.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "api3/text_conversion.h"
#include "api3/text_output.h"
#include "fuzz_check.h"
#include "rules/utf8.h"

using namespace jx::api3;

namespace {

bool holdsHalf(const SQLWCHAR* units, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (isFirstOfPair(units[i]) && i + 1 < count && isSecondOfPair(units[i + 1]))
            ++i;
        else if (isFirstOfPair(units[i]) || isSecondOfPair(units[i]))
            return true;
    }
    return false;
}

void checkText(const std::vector<SQLWCHAR>& units) {
    const auto whole = unitsOf(units.data());
    const auto text = toUtf8(whole);
    FUZZ_CHECK(text.has_value() != holdsHalf(whole.data(), whole.size()));
    FUZZ_CHECK(jx::rules::isUtf8(toUtf8WithMarks(whole)));
    if (!text)
        return;
    FUZZ_CHECK(jx::rules::isUtf8(*text) && unitCount(*text) == whole.size());
    const std::vector<SQLWCHAR> again = toUtf16(*text);
    FUZZ_CHECK(again.size() == whole.size() + 1 && again.back() == 0);
    FUZZ_CHECK(std::memcmp(again.data(), whole.data(), whole.size_bytes()) == 0);
}

void checkCuts(const std::string& bytes) {
    for (std::size_t size = 1; size <= 9; ++size) {
        std::vector<SQLWCHAR> room(size, 0x7777);
        const Placed placed = TextOutput(room.data(), size).place(bytes);
        FUZZ_CHECK(placed.held < size && room[placed.held] == 0 && !holdsHalf(room.data(), placed.held));
        FUZZ_CHECK(placed.isCut == (placed.length >= size));
        std::vector<char> narrow(size, '?');
        const Placed cut = TextOutput(narrow.data(), size).place(bytes);
        FUZZ_CHECK(cut.held < size && narrow[cut.held] == '\0');
        FUZZ_CHECK(!jx::rules::isUtf8(bytes) || jx::rules::isUtf8({narrow.data(), cut.held}));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<SQLWCHAR> units(size / 2 + 2, 0);
    if (size >= 2)
        std::memcpy(units.data(), data, size / 2 * 2);
    checkText(units);
    const auto list = listUnitsOf(units.data());
    FUZZ_CHECK(list.size() < units.size() && (list.empty() || list.back() == 0));
    checkCuts({reinterpret_cast<const char*>(data), size});
    return 0;
}
