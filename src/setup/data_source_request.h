// What a setup routine is asked to store: the attribute list of a call, taken apart and checked.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jx::setup {

struct Attribute {
    std::string keyword;
    std::string value;
};

// KeyChange: a key's new value, or nothing to remove the key.
struct KeyChange {
    std::string keyword;
    std::optional<std::string> value;
};

// DataSourceRequest: the data source a list names, and the attributes to store for it in the list's order. The items
// DSN and DRIVER are not among them: the first is the name, and a data source always uses its driver's registered
// library.
struct DataSourceRequest {
    std::string name;
    std::vector<Attribute> attributes;
};

// Takes a list of keyword=value texts apart; an empty text ends it, and null is an empty list. Keywords match without
// regard to case. Nothing for a list without a DSN item or with an empty name, an item without "=", an empty keyword or
// a keyword that stands twice. Whether the file can hold names and values shows when they are stored.
std::optional<DataSourceRequest> parseRequest(const char* list);

// The same for a list that need not have a name: somebody can still be asked for it.
std::optional<DataSourceRequest> parseNamelessRequest(const char* list);

// Whether keyword is, in any case, the one that names a driver's library.
bool isDriverKeyword(std::string_view keyword);

}  // namespace jx::setup
