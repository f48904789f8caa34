// The line that describes one file in an installation script: fields, each ended by a comma.
//
//     const ScriptLine line(value.view());
//     if (!line.isComplete())
//         showMissingComma(0, line.fieldCount() + 1, script, section, key);
#pragma once

#include <jxtypes.h>

#include <array>
#include <cstddef>
#include <string_view>

#include "install/install_record.h"

namespace jx::install {

// ScriptLine: a line taken apart; the fields are views into it.
class ScriptLine {
public:
    // The fields a complete line has. The last one is not read, but the comma behind it must be there.
    static constexpr unsigned kFields = 20;

    enum Field : unsigned {
        kNumber0 = 0,
        kFileName = 1,
        kDate = 5,
        kText8 = 8,
        kText14 = 14,
        kNumber15 = 15,
        kVersion = 19
    };

    explicit ScriptLine(std::string_view line);

    // How many fields a comma ends, up to kFields.
    unsigned fieldCount() const { return count_; }
    bool isComplete() const { return count_ == kFields; }

    // A field without the blanks before it; empty when no comma ends it.
    std::string_view field(Field number) const { return fields_[number]; }

    // Fills entry (but for its key) with what the fields say; false when memory is short. Texts stored by then stay and
    // belong to entry.
    bool fill(InfEntry& entry) const;

private:
    std::array<std::string_view, kFields> fields_{};
    unsigned count_ = 0;
};

// Shows which comma of a line is missing. Null texts are empty; without memory for the message nothing is shown.
void showMissingComma(HWND owner, unsigned comma, const unsigned char* script, const unsigned char* section,
                      const unsigned char* key);

}  // namespace jx::install
