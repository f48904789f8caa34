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

// ScriptLine: a line split into fields, which are views into it.
class ScriptLine {
public:
    // A complete line has this many fields. Those without a name below are not read.
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

    // How many fields the line has, counted up to kFields. What follows the last comma is not a field.
    unsigned fieldCount() const { return count_; }
    bool isComplete() const { return count_ == kFields; }

    // A field without leading blanks; empty when the line has fewer fields.
    std::string_view field(Field number) const { return fields_[number]; }

    // Fills entry, all but its key, from the fields; false when memory is short (texts stored by then belong to entry).
    bool fill(InfEntry& entry) const;

private:
    std::array<std::string_view, kFields> fields_{};
    unsigned count_ = 0;
};

// Shows a message box that says which comma of a line is missing. Null texts count as empty. Shows nothing when memory
// is short.
void showMissingComma(HWND owner, unsigned comma, const unsigned char* script, const unsigned char* section,
                      const unsigned char* key);

}  // namespace jx::install
