// What a setup routine is asked to store: the parsed attribute list of a call.
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

// KeyChange: the new value of a key; none removes it.
struct KeyChange {
    std::string keyword;
    std::optional<std::string> value;
};

// DataSourceRequest: the data source that a list names, and its other attributes in the list's order. DSN and DRIVER
// are not among them: DSN is the name, and the library is always the one that the driver is registered with.
struct DataSourceRequest {
    std::string name;
    std::vector<Attribute> attributes;
};

// Parses a list of keyword=value texts, which an empty text ends; null is an empty list. Keywords are compared without
// regard to case. Returns nothing when DSN is missing or empty, an item has no "=", or a keyword is empty or given
// twice. Whether the file can store names and values is checked when they are stored.
std::optional<DataSourceRequest> parseRequest(const char* list);

// The same for a list that may have no DSN, since the user can be asked for the name.
std::optional<DataSourceRequest> parseNamelessRequest(const char* list);

// Whether keyword is "Driver", in any case.
bool isDriverKeyword(std::string_view keyword);

}  // namespace jx::setup
