// Any bytes as an INI text: its pieces join to it, walking finds what a search through all lines finds, and an edit
// keeps every other line.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "../jxutl/ini/text_model.h"
#include "fuzz_check.h"
#include "jxutl/ini/ini_index.h"
#include "jxutl/ini/ini_text.h"
#include "rules/names.h"

namespace rules = jx::rules;

namespace {

using jx::ini::Edit;
using jx::ini::IniIndex;
using jx::ini::IniText;
using jx::ini::test::TextModel;

// Three lines that are a change, and the rest, which is the file. A missing line is null.
struct Input {
    std::optional<std::string> section;
    std::optional<std::string> key;
    std::optional<std::string> value;
    std::string text;
};

const char* orNull(const std::optional<std::string>& argument) {
    return argument ? argument->c_str() : nullptr;
}

// An argument ends at its first NUL. A line that is only "!" means null.
std::optional<std::string> takeArgument(std::string_view& rest) {
    const std::size_t end = rest.find('\n');
    const std::string line(rest.substr(0, end));
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return line == "!" ? std::nullopt : std::optional<std::string>(line.c_str());
}

Input inputOf(std::string_view bytes) {
    Input input;
    input.section = takeArgument(bytes);
    input.key = takeArgument(bytes);
    input.value = takeArgument(bytes);
    input.text = bytes;
    return input;
}

void checkPieces(std::string_view text) {
    std::size_t at = 0;
    for (const JxIniPiece& piece : jx::ini::splitLines(text)) {
        FUZZ_CHECK(piece.begin == at && piece.end > at);
        at = piece.end;
    }
    FUZZ_CHECK(at == text.size());
}

void checkLookUps(const std::string& text, std::string_view section, std::string_view key) {
    const TextModel model(text);
    IniIndex index;
    index.reset(text);
    for (int again = 0; again < 2; ++again)
        FUZZ_CHECK(index.value(section, key) == model.value(section, key));
    FUZZ_CHECK(index.keys(section) == model.keys(section));
    FUZZ_CHECK(index.sections() == model.sections());
}

std::string expected(const Input& input) {
    const TextModel model(input.text);
    const std::string_view section = rules::trimmed(*input.section);
    if (!input.key)
        return model.withoutSection(section);
    const std::string_view key = rules::trimmed(*input.key);
    if (key.empty())
        return input.text;
    return input.value ? model.with(section, key, rules::trimmed(*input.value)) : model.withoutKey(section, key);
}

void checkEdit(const Input& input) {
    IniText text(input.text);
    const Edit edit = text.apply(orNull(input.section), orNull(input.key), orNull(input.value));
    if (edit != Edit::changed)
        FUZZ_CHECK(text.bytes() == input.text);
    if (edit == Edit::refused)
        return;
    FUZZ_CHECK(text.bytes() == expected(input));
    const bool sets = input.key && !rules::trimmed(*input.key).empty() && input.value;
    IniIndex index;
    index.reset(text.bytes());
    if (sets)
        FUZZ_CHECK(index.value(rules::trimmed(*input.section), rules::trimmed(*input.key)) ==
                   rules::trimmed(*input.value));
    FUZZ_CHECK(text.apply(orNull(input.section), orNull(input.key), orNull(input.value)) == Edit::unchanged);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input = inputOf({reinterpret_cast<const char*>(data), size});
    checkPieces(input.text);
    checkLookUps(input.text, rules::argument(orNull(input.section)), rules::argument(orNull(input.key)));
    checkEdit(input);
    return 0;
}
