// All pieces of a text as a list.
#pragma once

#include <string_view>
#include <vector>

#include "jxutl/ini/ini_line.h"

namespace jx::ini {

inline std::vector<JxIniPiece> splitLines(std::string_view text) {
    const Pieces all(text);
    std::vector<JxIniPiece> pieces;
    for (std::size_t i = 0; i < all.size(); ++i)
        pieces.push_back(all[i]);
    return pieces;
}

}  // namespace jx::ini
