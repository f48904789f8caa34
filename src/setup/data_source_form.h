// What a user edits of a data source: its name, its keys with their values, and which of them the file could hold.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "setup/data_source_request.h"
#include "setup/setup_files.h"

namespace jx::setup {

// Where a keyword stands among attributes, without regard to case; attributes.size() when it does not.
std::size_t placeOf(const std::vector<Attribute>& attributes, const std::string& keyword);

// Gives the attributes of changes their values; an empty value removes its attribute.
void overlay(std::vector<Attribute>& attributes, const std::vector<Attribute>& changes);

// What leads from one set of attributes to another: removals first, then what is new or has another value.
std::vector<KeyChange> changesBetween(const std::vector<Attribute>& before, const std::vector<Attribute>& now);

// Whether the pair is not to be read over a shoulder: the key is a secret's, or the value holds one, as a connection
// string or an address does.
bool isSecret(const Attribute& attribute);

// "Key = value" as a list shows it; secrets become stars, as many for a long one as for a short one.
std::string rowText(const Attribute& attribute);

// Why something typed cannot be stored as it stands, as a sentence; empty when it can.
std::string objectionToName(std::string_view name, const SetupFiles& files);
std::string objectionToKeyword(std::string_view keyword);
std::string objectionToValue(std::string_view value);

}  // namespace jx::setup
