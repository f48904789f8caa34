// dsn set --from-file, --from-env and --from-credential: a key whose value lies elsewhere.
#pragma once

#include "odbcadmin/cli/verb.h"

namespace jx::cli {

// Adds the three options, of which one may be given.
void addReferenceOptions(Verb& verb);

// Whether one of them is given.
bool hasReference(const Line& line);

// Stores the reference for the one KEY on the line.
ExitCode setReference(const Session& session, const model::Configuration& configuration, const Line& line);

}  // namespace jx::cli
