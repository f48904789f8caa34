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
    Scope scope = Scope::user;
};

// Document: the default data source is the one called Default. The path of a data source's driver goes with the driver,
// unless the data source has another one.
struct Document {
    std::vector<DocumentEntry> drivers;
    std::vector<DocumentEntry> translators;
    std::vector<DocumentEntry> dataSources;
    std::vector<DocumentEntry> tracing{};  // the settings of each scope that has some; entries without a name
};

struct Exchange {
    Document document;
    std::vector<DataSource> leftOut;  // data sources that lead to no library, so that apply could not enter them
};

// Everything that the files say, also what one hides from the other; secrets are left out unless they are to be shown.
Exchange documentOf(const Configuration& configuration, ChangeWay::Secrets secrets);

std::size_t secretsLeftOut(const Document& document);

// What the files of one scope have and a document has not in that scope.
struct Superfluous {
    Scope scope = Scope::user;
    std::vector<std::string> drivers, translators, dataSources;

    std::size_t count() const { return drivers.size() + translators.size() + dataSources.size(); }
};
Superfluous superfluous(const Document& document, Scope scope);

// Enters everything that the document names, each in the files of its scope, and removes what is superfluous; all else
// is left alone. All of it is checked before anything is written. Each file that changes is then written whole or not
// at all, the system's before the user's, drivers before data sources. The scope of the way plays no part.
ChangeResult applyDocument(const Configuration& configuration, const Document& document, const ChangeWay& way,
                           const std::vector<Superfluous>& removed = {});

}  // namespace jx::model
