// Finding headers among the pieces that mean nothing.
#include "odbcadmin/doctor/unclosed_headers.h"

#include <jxini.h>

#include <cstdint>
#include <memory>

#include "rules/names.h"

namespace jx::doctor {

namespace {

using Text = std::unique_ptr<JxIniText, void (*)(JxIniText*)>;

// "Sales" of "  [Sales  ; ours\n"; empty for a line that is no such header.
std::string nameIn(std::string_view line) {
    line = rules::trimmed(line.substr(0, line.find_first_of("\r\n")));
    if (!line.starts_with('['))
        return {};
    for (const std::string_view mark : {" ;", " #", "\t;", "\t#"})
        line = line.substr(0, line.find(mark));
    return std::string(rules::trimmed(line.substr(1)));
}

void endAt(std::vector<UnclosedHeader>& headers, std::size_t line) {
    for (UnclosedHeader& each : headers)
        if (each.last == SIZE_MAX)
            each.last = line - 1;
}

std::vector<UnclosedHeader> headersIn(const std::string& path, const Text& text) {
    std::vector<UnclosedHeader> headers;
    if (text == nullptr)
        return headers;
    std::size_t length = 0;
    const char* bytes = jxIniBytes(text.get(), &length);
    JxIniPiece piece;
    for (std::size_t i = 0; jxIniPieceAt(text.get(), i, &piece) != 0; ++i) {
        const bool isOther = piece.kind == JxIniOther;
        std::string name = isOther ? nameIn({bytes + piece.begin, piece.end - piece.begin}) : std::string();
        if (piece.kind == JxIniSection || !name.empty())
            endAt(headers, piece.line);
        if (!name.empty())
            headers.push_back({path, std::move(name), piece.line, SIZE_MAX});
    }
    return headers;
}

}  // namespace

bool UnclosedHeader::means(std::string_view other) const {
    return rules::sameName(name, other);
}

std::vector<UnclosedHeader> unclosedHeaders(const model::Configuration& configuration) {
    std::vector<UnclosedHeader> all;
    for (const std::string& path : configuration.paths())
        for (UnclosedHeader& each : headersIn(path, Text(jxIniRead(path.c_str()), jxIniRelease)))
            all.push_back(std::move(each));
    return all;
}

}  // namespace jx::doctor
