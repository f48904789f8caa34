// What a user edits of a data source: its name and its keys with their values.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "setup/data_source_request.h"
#include "setup/setup_files.h"

namespace jx::setup {

// The position of a keyword, in any case, among attributes; attributes.size() when it is not there.
std::size_t placeOf(const std::vector<Attribute>& attributes, const std::string& keyword);

// Applies changes to attributes; an empty value removes its attribute.
void overlay(std::vector<Attribute>& attributes, const std::vector<Attribute>& changes);

// The changes from one set of attributes to another: first what is removed, then what is new or has another value.
std::vector<KeyChange> changesBetween(const std::vector<Attribute>& before, const std::vector<Attribute>& now);

// Whether the pair must be hidden: the key is a secret's, or the value contains a secret, as a connection string may.
bool isSecret(const Attribute& attribute);

// "Key = value" as a list shows it. A secret is shown as stars, whose number does not depend on its length.
std::string rowText(const Attribute& attribute);

// Why the text cannot be stored, as a sentence for the user; empty when it can.
std::string objectionToName(std::string_view name, const SetupFiles& files);
std::string objectionToKeyword(std::string_view keyword);
std::string objectionToValue(std::string_view value);

}  // namespace jx::setup
