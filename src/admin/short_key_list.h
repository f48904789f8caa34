// Key lists of the configuration files in the size that the dialogs read.
#pragma once

#include <array>

class OdbcIns;

namespace jx::admin {

// ShortKeyList: the keys of a section, as many as fit 999 bytes; an empty text ends them. A key that does not fit whole
// is not among them: cut, it could be another key's name.
class ShortKeyList {
public:
    ShortKeyList(OdbcIns& ins, const char* section, const char* file);

    unsigned char* text() { return bytes_.data(); }

private:
    static constexpr short kSize = 999;

    std::array<unsigned char, kSize + 3> bytes_{};
};

}  // namespace jx::admin
