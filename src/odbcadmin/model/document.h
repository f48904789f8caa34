// What is configured as one document that can be kept and applied elsewhere, whatever form it is written in.
//
//     const Exchange all = documentOf(configuration, ChangeWay::Secrets::masked);
//     const ChangeResult result = applyDocument(elsewhere, all.document, way);
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"

namespace jx::model {

// A value of nothing stands for a secret that was left out: applying leaves the key as it is.
struct DocumentKey {
    std::string name;
    std::optional<std::string> value;
};

struct DocumentEntry {
    std::string name;
    std::string driver;  // of a data source; empty for one that stands in no list and has a library of its own
    std::vector<DocumentKey> keys;
};

// Document: the default data source is the one called Default. The path of a data source's driver goes with the driver,
// unless the data source has another one.
struct Document {
    std::vector<DocumentEntry> drivers;
    std::vector<DocumentEntry> translators;
    std::vector<DocumentEntry> dataSources;
};

struct Exchange {
    Document document;
    std::size_t secretsLeftOut = 0;
    std::vector<DataSource> leftOut;  // data sources that lead to no library, so that apply could not enter them
};

// Everything that the files say; secrets are left out unless they are to be shown.
Exchange documentOf(const Configuration& configuration, ChangeWay::Secrets secrets);

// Enters everything that the document names and leaves alone what it does not. All of it is checked before anything is
// written; each of the two files is then written whole or not at all, the file of drivers first.
ChangeResult applyDocument(const Configuration& configuration, const Document& document, const ChangeWay& way);

}  // namespace jx::model
