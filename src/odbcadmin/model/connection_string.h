// Connection strings: "DRIVER={SQLite3};Database=/srv/sales.db;PWD={a;b}}c};".
//
//     const std::string text = connectionString({{"DSN", "Sales"}, {"PWD", "a;b"}});     // "DSN=Sales;PWD={a;b};"
//     const ConnectionPairs read = readConnectionString(text);
//     if (!read.error.empty()) ... "attribute 2, PWD, has a { that is never closed" ...
//
// A value in braces may hold anything; "}}" in it is one "}". What is written is read back as it was.
#pragma once

#include <string>
#include <string_view>

#include "odbcadmin/model/file_change.h"

namespace jx::model {

// The value as it stands in a connection string: in braces when it would be read as another one without them.
std::string connectionValue(std::string_view value);

// The value in braces, as drivers' names are written.
std::string bracedValue(std::string_view value);

// All of them, each with a ";" behind it. The values must be written as above.
std::string joinedAttributes(const Pairs& written);

// Why a key cannot stand in a connection string, as the end of a sentence; null when it can.
const char* whyNoKeyword(std::string_view key);

struct ConnectionPairs {
    Pairs pairs;        // in order; of equal keywords the first, as drivers have it
    std::string error;  // what is wrong, without any part of a value; empty when nothing is
};

// Reads any text. Blanks around keywords and values are not part of them; attributes may be empty.
ConnectionPairs readConnectionString(std::string_view text);

}  // namespace jx::model
