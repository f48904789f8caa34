// The texts that a caller passes: checked, and made UTF-8.
//
//     if (!areUtf8({lpszDSN, lpszDriver})) return false;              // with its record
//     const WideTexts texts{lpszDSN, lpszDriver};
//     return texts.areWhole() && writeDataSource(texts[0], texts[1]);
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>

#include "api3/text_conversion.h"

namespace jx::api3 {

// Whether each text, null allowed, is UTF-8; posts ODBC_ERROR_INVALID_STR and gives false otherwise.
bool areUtf8(std::initializer_list<const char*> texts);
bool isUtf8List(const char* list);

// WideTexts: the texts of a W call in UTF-8. A null one stays null.
// Failure  std::bad_alloc may be thrown.
class WideTexts {
public:
    WideTexts() = default;
    WideTexts(std::initializer_list<const SQLWCHAR*> texts);

    // False, with ODBC_ERROR_INVALID_STR posted, when one held half of a pair.
    bool areWhole() const;

    const char* operator[](std::size_t index) const { return texts_[index] ? texts_[index]->c_str() : nullptr; }

private:
    static constexpr std::size_t kMost = 4;

    std::array<std::optional<std::string>, kMost> texts_;
    bool areWhole_ = true;
};

// WideList: the same for a list.
class WideList {
public:
    explicit WideList(const SQLWCHAR* list);

    bool isWhole() const;
    const char* list() const { return list_ ? list_->c_str() : nullptr; }

private:
    std::optional<std::string> list_;
    bool isWhole_ = true;
};

}  // namespace jx::api3
