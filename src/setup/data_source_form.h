// What a user edits of a data source: its name, its keys with their values, and which of them the file could hold.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "setup/data_source_request.h"

namespace jx::setup {

// Where a keyword stands among attributes, without regard to case; attributes.size() when it does not.
std::size_t placeOf(const std::vector<Attribute>& attributes, const std::string& keyword);

// Gives the attributes of changes their values; an empty value removes its attribute.
void overlay(std::vector<Attribute>& attributes, const std::vector<Attribute>& changes);

// What leads from one set of attributes to another: removals first, then what is new or has another value.
std::vector<KeyChange> changesBetween(const std::vector<Attribute>& before, const std::vector<Attribute>& now);

// Whether a key's values are not to be read over a shoulder: passwords, tokens, private keys and their like. In doubt
// they are not.
bool isSecret(const std::string& keyword);

// "Key = value" as a list shows it; a secret's value becomes stars, as many for a long one as for a short one, and so
// does a connect string with a password in it, under whatever key.
std::string rowText(const Attribute& attribute);

// text without outer blanks, which the file does not keep.
std::string trimmed(std::string_view text);

// Why something typed cannot be stored as it stands; null when it can.
const char* objectionToName(std::string_view name);
const char* objectionToKeyword(const std::string& keyword);
const char* objectionToValue(std::string_view value);

}  // namespace jx::setup
