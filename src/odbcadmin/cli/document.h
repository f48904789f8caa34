// The JSON document that export writes and apply reads.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/session.h"

namespace jx::admin {

// A value of nothing stands for a secret that was left out: apply leaves the key as it is.
struct DocumentKey {
    std::string name;
    std::optional<std::string> value;
};

struct DocumentDriver {
    std::string name;
    std::vector<DocumentKey> keys;
};

struct DocumentSource {
    std::string name;
    std::string driver;
    std::vector<DocumentKey> keys;
};

// Document: {"schema": "odbcadmin/1",
//            "drivers": [{"name": ..., "keys": {"Driver": path, ...}}], "translators": the same with "Translator",
//            "dataSources": [{"name": ..., "driver": ..., "keys": {...}}]}
// Each of the three lists may be missing. The default data source is the one called Default.
struct Document {
    std::vector<DocumentDriver> drivers;
    std::vector<DocumentDriver> translators;
    std::vector<DocumentSource> dataSources;
};

// Takes a text apart; nothing when it is not such a document, and fault says where and why.
std::optional<Document> parseDocument(const std::string& text, std::string& fault);

}  // namespace jx::admin
