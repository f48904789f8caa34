// What is known of a driver: which keys it looks up in a data source, what they mean, what it never asks for.
//
//     if (const KnownDriver* known = knownDriverOf("/usr/lib/odbc/psqlodbcw.so"))
//         if (const auto mistake = mistakeIn(*known, "PWD"))
//             ... mistake->fact, mistake->advice ...
//
// It stands in small files that this product and makers of drivers bring along; docs/known-drivers.md has their format.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/model/file_change.h"

namespace jx::model {

struct KnownKey {
    std::string name;
    std::string says;     // one sentence without its full stop; may be empty
    std::string initial;  // the value when the key is not there; may be empty
    bool isNeeded = false;
};

struct KnownDriver {
    std::string name;  // "PostgreSQL"
    std::string file;  // that says so
    Pairs libraries;   // file names, and the names under which they are usually registered
    std::vector<KnownKey> keys;
    Pairs otherNames;  // keys that the driver never asks for, and those that it asks for instead, which may be empty

    // Null when there is none. In any case.
    const KnownKey* key(std::string_view name) const;

    // The name under which the library is usually registered; empty when it is another driver's.
    std::string registeredName(const std::string& library) const;
};

// The driver whose library it is, by its file name without version; null when no file knows it. Files beside the
// library (share/jxodbc/drivers of the same prefix) go before this product's own. Read once.
const KnownDriver* knownDriverOf(const std::string& library);

struct KeyMistake {
    enum class Kind { misspelt, notAsked };
    Kind kind;
    std::string fact;    // a sentence without its full stop
    std::string advice;  // a sentence
};

// What is wrong with the name of a key of a data source. Nothing for keys that the driver asks for, for Driver and
// Description, and for references to a key that is right.
std::optional<KeyMistake> mistakeIn(const KnownDriver& driver, std::string_view key);

// The keys without which the driver is of no use, as far as given has them neither as they are nor as references.
std::vector<std::string> missingKeys(const KnownDriver& driver, const std::vector<std::string>& given);

// Where this product's own files are looked for; without a call beside this program. For tests.
void useKnownDrivers(const std::string& directory);

}  // namespace jx::model
