// Lists of names as the installer functions give them: each name with its NUL.
//
//     NameList names;
//     for (const std::string_view name : NamesIn(first)) names.add(name);
//     output.placeList(names.text());
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "rules/names.h"

namespace jx::api3 {

// NamesIn: goes over the names of such a list. The list must outlive it.
class NamesIn {
public:
    explicit NamesIn(std::string_view list) : list_(list) {}

    class Iterator {
    public:
        explicit Iterator(std::string_view rest) : rest_(rest) {}
        std::string_view operator*() const { return rest_.substr(0, rest_.find('\0')); }
        Iterator& operator++() {
            rest_.remove_prefix((**this).size() + (rest_.find('\0') == std::string_view::npos ? 0 : 1));
            return *this;
        }
        bool operator!=(const Iterator& other) const { return rest_.size() != other.rest_.size(); }

    private:
        std::string_view rest_;
    };

    Iterator begin() const { return Iterator(list_); }
    Iterator end() const { return Iterator(list_.substr(list_.size())); }

private:
    std::string_view list_;
};

// The names with semicolons between.
inline std::string withSemicolons(std::string_view list) {
    std::string joined;
    for (const std::string_view name : NamesIn(list))
        joined.append(joined.empty() ? "" : ";").append(name);
    return joined;
}

// NameList: a list that is put together, no name twice in any case.
// Failure  std::bad_alloc may be thrown.
class NameList {
public:
    // False when the name is there already.
    bool add(std::string_view name) {
        if (!known_.insert(rules::foldedName(name)).second)
            return false;
        text_.append(name).push_back('\0');
        return true;
    }

    bool holds(std::string_view name) const { return known_.contains(rules::foldedName(name)); }

    const std::string& text() const& { return text_; }
    std::string text() && { return std::move(text_); }

private:
    std::unordered_set<std::string> known_;
    std::string text_;
};

}  // namespace jx::api3
