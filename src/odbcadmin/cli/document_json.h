// The JSON document that export writes and apply reads:
//     {"schema": "odbcadmin/1",
//      "drivers": [{"name": ..., "keys": {"Driver": path, ...}}], "translators": the same with "Translator",
//      "dataSources": [{"name": ..., "driver": ..., "keys": {...}}]}
// Each of the three lists may be missing. A null instead of a key's value stands for a secret that was left out.
#pragma once

#include <optional>
#include <string>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/model/document.h"

namespace jx::cli {

// Takes a text apart; nothing when it is not such a document, and fault says where and why.
std::optional<model::Document> parseDocument(const std::string& text, std::string& fault);

// The document without its schema. Where a text is not UTF-8, which JSON cannot hold, notText gets the name of the key
// or entry.
Json documentJson(const model::Document& document, std::string& notText);

}  // namespace jx::cli
